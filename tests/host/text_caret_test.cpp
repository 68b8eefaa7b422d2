// Caret commands, text portions and what a plain portion says.
#include <gtest/gtest.h>

#include <vector>

#include "host/text/caret.h"
#include "host/text/fonts.h"
#include "host/text/jazz_text.h"
#include "host/text/music_font.h"
#include "host/text/text_nodes.h"
#include "host/text/text_portion.h"
#include "text_fixture.h"

namespace ostin {
namespace {

using testing::TextTest;

constexpr const char* kTimes = "^font(Times New Roman,8192)^size(12)^efx(plain)";

TEST_F(TextTest, CaretCommandsLeaveTheTextWithItsInsertsAndLiteralCarets) {
  struct Case {
    std::string Text;
    std::string Plain;
  };
  const Case cases[] = {
      {std::string(kTimes) + "Allegro", "Allegro"},
      {"a^^b", "a^b"},
      {"^^", "^"},
      {"C^sharp() major, B^flat()", "C# major, Bb"},
      {"^natural()^doubleflat()^doublesharp()^cprsym()", "-naturalbbx©"},
      {"bar ^value() at ^control()^pass()^prftime()^totpages()", "bar  at "},
      {"page ^page() of ^title()", "page  of "},
      {"ends in a caret ^", "ends in a caret ^"},
      {"", ""},
      {"no commands at all", "no commands at all"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ParseCaretCommands(kExpressionTextTag, c.Text), c.Plain) << c.Text;
}

TEST_F(TextTest, EngraverFontSetShowsItsIAsANoBreakSpace) {
  EngraverFontSetNumber() = FindFont("EngraverFontSet");
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(EngraverFontSet,8194)Ix I"), "\u00A0x I");
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(Maestro,8194)Ix"), "Ix");
  EngraverFontSetNumber() = 0;
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(EngraverFontSet,8194)Ix"), "Ix");
}

TEST_F(TextTest, InsertValueKnowsOnlyWholeInsertsAtTheStart) {
  ExpressionValues expression{96, 7};
  struct Case {
    std::string Text;
    const ExpressionValues* Expression;
    std::string Value;
    int Consumed;
  };
  const Case cases[] = {
      {"^value() bpm", &expression, "96", 8}, {"^control()", &expression, "7", 10},
      {"^value()", nullptr, "", 8},           {"^sharp()^flat()", nullptr, "#", 8},
      {"^size(12)", nullptr, "", 0},          {"^sharp(", nullptr, "", 0},
      {"x^sharp()", nullptr, "", 0},          {"", nullptr, "", 0},
  };
  for (const Case& c : cases) {
    int consumed = -1;
    EXPECT_EQ(InsertValue(c.Text, consumed, c.Expression), c.Value) << c.Text;
    EXPECT_EQ(consumed, c.Consumed) << c.Text;
  }
}

struct Portions {
  std::vector<TextPortion> List;
  int16_t Count = 0, Plain = 0, Music = 0;
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const TextPortion& portion : List)
      texts.push_back(portion.Text);
    return texts;
  }
};

Portions Split(const std::string& text, const ExpressionValues* expression = nullptr) {
  Portions result;
  result.Count = ParseTextPortions(result.List, text, kExpressionTextTag, result.Plain,
                                   result.Music, expression);
  EXPECT_EQ(static_cast<size_t>(result.Count), result.List.size()) << text;
  return result;
}

TEST_F(TextTest, PortionsSplitAtFontChangesOnly) {
  struct Case {
    std::string Text;
    std::vector<std::string> Texts;
    int16_t Plain, Music;
  };
  const Case cases[] = {
      {"", {}, 0, 0},
      {"Allegro", {"Allegro"}, 1, 0},
      {std::string(kTimes) + "C^sharp() major", {"C# major"}, 1, 0},
      {"^font(Maestro,8194)^size(24)F^font(Times New Roman,8192)^size(12) dolce",
       {"F", " dolce"},
       1,
       1},
      {"a^^b", {"a", "^b"}, 2, 0},
      {"A^flat()^size(10)B", {"Ab", "B"}, 2, 0},
      {"x^^^size(8)y", {"x", "^", "y"}, 3, 0},
      {"^size(12)", {""}, 0, 0},
      {"^font(Times New Roman,8192)^efx(hidden)secret^efx(plain) shown", {"", " shown"}, 1, 0},
      {"^font(EngraverTextT,8194)q = 120", {"q = 120"}, 0, 1},
  };
  for (const Case& c : cases) {
    Portions portions = Split(c.Text);
    EXPECT_EQ(portions.Texts(), c.Texts) << c.Text;
    EXPECT_EQ(portions.Plain, c.Plain) << c.Text;
    EXPECT_EQ(portions.Music, c.Music) << c.Text;
  }
}

TEST_F(TextTest, PortionsCarryTheirFontIntoTheNext) {
  Portions portions = Split("^font(Maestro,8194)^size(24)^efx(bold)p^size(12)^efx(italic)f");
  ASSERT_EQ(portions.Count, 2);
  const TextPortion& first = portions.List[0];
  const TextPortion& second = portions.List[1];
  EXPECT_EQ(first.FontName, "Maestro");
  EXPECT_TRUE(first.IsMusic);
  EXPECT_EQ(first.Size, 24);
  EXPECT_EQ(first.Efx, kEfxBold);
  EXPECT_EQ(first.HostValues[0], 8194);
  EXPECT_EQ(second.Font, first.Font);
  EXPECT_EQ(second.HostValues, first.HostValues);
  EXPECT_EQ(second.Size, 12);
  EXPECT_EQ(second.Efx, kEfxBold | kEfxItalic);

  ExpressionValues tempo{132, 0};
  EXPECT_EQ(Split("q = ^value()", &tempo).Texts(), std::vector<std::string>{"q = 132"});
}

TEST_F(TextTest, PlainPortionDataRecodesTheJazzTextFonts) {
  struct Case {
    std::string Font;
    std::string Text;
    std::string Plain;
    bool Rehearsal;
  };
  const Case cases[] = {
      {"Times New Roman", "Grüße ©", "Grüße ©", false},
      {"JazzText", "Fine" + FromCodes({191, 200, 169, 174, 188, 190, 233, 123}), "Fine09©®¼¾",
       false},
      {"JazzText", FromCodes({216}), "A", true},
      {"JazzText", FromCodes({241}), "Z", true},
      {"JazzText", FromCodes({242}), "", false},
      {"JazzText", FromCodes({216, 217}), "", false},
      {"JazzTextExtended", "Ab" + FromCodes({128, 136, 140, 168, 216, 243, 250}), "AbÄåå©ÿÛ",
       false},
  };
  for (const Case& c : cases) {
    TextPortion portion;
    portion.FontName = c.Font;
    portion.Text = c.Text;
    PortionData data = TextPortionData(portion);
    EXPECT_EQ(data.Text, c.Plain) << c.Font << " " << c.Text;
    EXPECT_EQ(data.Rehearsal, c.Rehearsal) << c.Font << " " << c.Text;
  }

  TextPortion styled;
  styled.Efx = kEfxBold | kEfxItalic;
  styled.Text = "Très vite";
  PortionData data = TextPortionData(styled);
  EXPECT_TRUE(data.Bold);
  EXPECT_TRUE(data.Italic);
  EXPECT_EQ(data.Lang, "fr");
}

// Bytes the code page leaves undefined still stand for font characters: they must come back
// from UTF-8 as the bytes they were.
TEST_F(TextTest, UndefinedCodePageBytesReachTheFontTables) {
  EXPECT_EQ(JazzTextExtendedStrip(FromCodes({129, 143, 144})), "Åê");
  EXPECT_EQ(ParseMusicFont(FromCodes({141}), "Maestro", "").List, std::vector<std::string>{"sffz"});
}

TEST_F(TextTest, LanguageComesFromTheLettersInEitherCase) {
  const std::pair<std::string, std::string> cases[] = {
      {"Grüße", "de"}, {"ÄRGER", "de"},     {"ÉTUDE", "fr"}, {"garçon", "fr"},
      {"Señor", "es"}, {"Étude für", "de"}, {"plain", ""},   {"", ""},
  };
  for (const auto& [text, lang] : cases)
    EXPECT_EQ(LanguageCheckWestern(text), lang) << text;
}

TEST_F(TextTest, SmartShapeTextIsPlainTextInATextFontOnly) {
  const std::pair<std::string, std::string> cases[] = {
      {std::string(kTimes) + "H", "H"},   {"p", "p"},
      {"^font(Jazz,8194)^size(24)H", ""}, {"^font(Arial,8192)a^size(3)b", ""},
      {"^font(Arial,8192)", ""},          {"", ""},
  };
  for (const auto& [text, plain] : cases)
    EXPECT_EQ(SmartShapeText(text), plain) << text;
}

TEST_F(TextTest, TextNodesComeWholeOrTwoCharactersAtATime) {
  auto document = xml::XmlDocument::Create();
  ASSERT_TRUE(document->loadXML("<words/>"));
  xml::XmlNode words = document->documentElement();
  AddTextNodes(*document, words, "Très", 0);
  EXPECT_EQ(words.childNodes().length(), 1);
  AddTextNodes(*document, words, "éèüab", 1031);
  ASSERT_EQ(words.childNodes().length(), 4);
  EXPECT_EQ(words.childNodes().item(1).text(), "éè");
  EXPECT_EQ(words.childNodes().item(3).text(), "b");
  EXPECT_EQ(words.text(), "Trèséèüab");
}

} // namespace
} // namespace ostin
