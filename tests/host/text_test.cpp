// Text blocks, fonts and raw texts; caret commands, text portions and what a plain portion
// says; music font characters read as marks, dynamics, metronome marks, accidentals and
// noteheads.
#include <gtest/gtest.h>

#include <optional>
#include <tuple>
#include <vector>

#include "host/text/caret.h"
#include "host/text/fonts.h"
#include "host/text/jazz_text.h"
#include "host/text/music_font.h"
#include "host/text/noteheads.h"
#include "host/text/raw_text.h"
#include "host/text/text_block.h"
#include "host/text/text_failures.h"
#include "host/text/text_nodes.h"
#include "host/text/text_portion.h"
#include "host_fixture.h"
#include "xml/xml_document.h"

namespace ostin {
namespace {

using testing::FailureOf;
using testing::FromCodes;
using testing::OfYear;
using Fault = sim::Host::Fault;
using TextTest = testing::DefaultDocumentTest;

// The text goes through the host code page both ways; the plain call of years before 2004
// neither reads nor writes the tag.
TEST_F(TextTest, TextBlockKeepsItsTextAndTheTagOfTheNewerCall) {
  TextBlock block = OfYear<TextBlock>(2004), second = OfYear<TextBlock>(2004);
  block.Create(-1, 0);
  second.Create(-1, 0);
  EXPECT_EQ((std::pair<int, int>(block.Cmper(), second.Cmper())), std::pair(1, 2))
      << "-1 takes the next free number";
  block.TextTag = kNameTextTag;
  block.Text = "^font(Times New Roman,8192)^size(12)^efx(plain)Flöte – «solo»";
  block.Save();
  TextBlock old = OfYear<TextBlock>(2003);
  ASSERT_TRUE(old.Load(1, 0));
  EXPECT_EQ(std::pair(old.Text, old.TextTag), std::pair(block.Text, 0));
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, old.Text), "Flöte – «solo»");
  old.Text = "second";
  old.Save();
  ASSERT_TRUE(block.Load(1, 0));
  EXPECT_EQ(std::pair(block.Text, block.TextTag), std::pair(std::string("second"), kNameTextTag));
  // An absent block raises the number of the call of its year.
  EXPECT_EQ(FailureOf([] { OfYear<TextBlock>(2003).MustLoad(42, 0); }), Code(0x80040308));
  EXPECT_EQ(FailureOf([] { OfYear<TextBlock>(2004).MustLoad(42, 0); }), Code(0x8004079F));
}

TEST_F(TextTest, FontTableWalksInNumberOrderAndClassesItsFonts) {
  FontName font;
  std::vector<std::string> names;
  for (int16_t number = 0; font.GetNext(number, 0); number = font.Cmper())
    names.push_back(font.Text);
  ASSERT_EQ(names.size(), 16u);
  EXPECT_EQ(std::pair(names.front(), names.back()),
            std::pair(std::string("Maestro"), std::string("EngraverTextNCS")));
  EXPECT_EQ(font.Cmper(), 16) << "the walk's end leaves the key at the last font";
  ASSERT_TRUE(font.Load(2, 0));
  EXPECT_EQ(font.Text, "Times New Roman");
  EXPECT_TRUE(font.WindowsFont() && font.WesternFont() && !font.MacFont());
  ASSERT_TRUE(font.Load(1, 0));
  EXPECT_TRUE(font.SymbolFont());
  EXPECT_FALSE(font.Load(40, 0));
  EXPECT_EQ(FailureOf([&] { font.MustLoad(40, 0); }), Code(0x80040442));
  EXPECT_EQ((std::pair<int, int>(FirstMusicFont(), FirstTextFont())), std::pair(1, 2));
  // Fonts are classed by name as music, music text or text; an unknown number is text.
  const std::tuple<int16_t, bool, bool, bool> cases[] = {
      {1, true, false, false}, {12, true, false, false}, {14, false, true, false},
      {2, false, false, true}, {0, false, false, true},  {99, false, false, true}};
  for (const auto& [number, music, musicText, text] : cases) {
    FontClass kind = CheckFont(number);
    EXPECT_EQ(std::tuple(kind.IsMusic, kind.IsMusicText, kind.IsText),
              std::tuple(music, musicText, text))
        << number;
  }
}

TEST_F(TextTest, UnknownFontFailsFindFontButTheHostAddsItByName) {
  ExpectRaised([] { FindFont("Garamond"); }, kFontNamePlaces.Create,
               "Finale create of FontName 17 failed");
  EXPECT_EQ(FontNumberOf("Times New Roman"), 2);
  EXPECT_EQ(FontNumberOf("Garamond"), 17);
  EXPECT_EQ(FontNumberOf("Garamond"), 17);
  EXPECT_EQ(FindFont("Garamond"), 17);
  EXPECT_EQ(FontNameOf(17), "Garamond");
}

TEST_F(TextTest, RawTextsRoundTripByTagThroughTheCodePage) {
  WriteRawText(kLineTextTag, 3, "Crescendo – «più» Ŝ");
  EXPECT_EQ(ReadRawText(kLineTextTag, 3), "Crescendo – «più» ?")
      << "a character the code page lacks becomes ?";
  EXPECT_EQ(*HostSim().Doc().Texts.FindRawText(kLineTextTag, 3), Utf8ToHost("Crescendo – «più» ?"));
  EXPECT_EQ(ReadRawText(kExpressionTextTag, 3), "") << "each tag has its own texts";
  EXPECT_EQ(ReadRawText(kLineTextTag, 4), "");
  ExpectRaised([] { WriteRawText(kLineTextTag, 0, "x"); }, text_failures::kSetRawTextRefused,
               "Finale SetRawText function call failed");
}

TEST_F(TextTest, RefusedOrFailingHostCallsRaiseInTheirOperations) {
  HostSim().Faults = {{"FxParseCaretCommand", Fault::Refuse}};
  EXPECT_EQ(FailureOf([] { ParseCaretCommands(kNameTextTag, "^size(3)x"); }),
            text_failures::kParseCaretCommandRefused);
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "no commands"), "no commands");
  HostSim().Faults = {{"FxParseCaretCommand", Fault::Throw}};
  ExpectRaised([] { ParseCaretCommands(kNameTextTag, "^size(3)x"); },
               text_failures::kParseCaretCommands, "ParseCaretCommands error ");
  HostSim().Faults = {{"FxFontNameToNum", Fault::Refuse}};
  EXPECT_EQ(FailureOf([] { FontNumberOf("Arial"); }), text_failures::kFontNameToNumRefused);
  HostSim().Faults.clear();
  EXPECT_EQ(FailureOf([] { ParseCaretCommands(kNameTextTag, "^size(huge)x"); }),
            text_failures::kParseCaretCommandRefused)
      << "the host refuses a command it cannot read";
}

constexpr const char* kTimes = "^font(Times New Roman,8192)^size(12)^efx(plain)";

TEST_F(TextTest, CaretCommandsLeaveTheTextWithItsInsertsAndLiteralCarets) {
  // clang-format off
  const std::pair<std::string, std::string> cases[] = {
      {std::string(kTimes) + "Allegro", "Allegro"}, {"a^^b", "a^b"}, {"^^", "^"}, {"", ""},
      {"C^sharp() major, B^flat()", "C# major, Bb"}, {"ends in a caret ^", "ends in a caret ^"},
      {"^natural()^doubleflat()^doublesharp()^cprsym()", "-naturalbbx©"},
      {"bar ^value() at ^control()^pass()^prftime()^totpages()^page() of ^title()", "bar  at  of "},
      {"no commands at all", "no commands at all"},
  };
  // clang-format on
  for (const auto& [text, plain] : cases)
    EXPECT_EQ(ParseCaretCommands(kExpressionTextTag, text), plain) << text;
  // EngraverFontSet shows its I as a no-break space, once its number is known.
  EngraverFontSetNumber() = FindFont("EngraverFontSet");
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(EngraverFontSet,8194)Ix I"), "\u00A0x I");
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(Maestro,8194)Ix"), "Ix");
  EngraverFontSetNumber() = 0;
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "^font(EngraverFontSet,8194)Ix"), "Ix");
}

TEST_F(TextTest, InsertValueKnowsOnlyWholeInsertsAtTheStart) {
  ExpressionValues expression{96, 7};
  // Text, expression, value, characters consumed.
  const std::tuple<std::string, const ExpressionValues*, std::string, int> cases[] = {
      {"^value() bpm", &expression, "96", 8}, {"^control()", &expression, "7", 10},
      {"^value()", nullptr, "", 8},           {"^sharp()^flat()", nullptr, "#", 8},
      {"^size(12)", nullptr, "", 0},          {"^sharp(", nullptr, "", 0},
      {"x^sharp()", nullptr, "", 0},          {"", nullptr, "", 0},
  };
  for (const auto& [text, values, value, consumed] : cases) {
    int used = -1;
    EXPECT_EQ(InsertValue(text, used, values), value) << text;
    EXPECT_EQ(used, consumed) << text;
  }
}

// The portions of text, each in brackets, then the counts of plain and of music portions.
std::string Split(const std::string& text, std::vector<TextPortion>& portions,
                  const ExpressionValues* expression = nullptr) {
  int16_t plain = 0, music = 0;
  int16_t count = ParseTextPortions(portions, text, kExpressionTextTag, plain, music, expression);
  EXPECT_EQ(static_cast<size_t>(count), portions.size()) << text;
  std::string said;
  for (const TextPortion& portion : portions)
    said += "[" + portion.Text + "]";
  return said + " " + std::to_string(plain) + "/" + std::to_string(music);
}

TEST_F(TextTest, PortionsSplitAtFontChangesOnly) {
  // clang-format off
  const std::pair<std::string, std::string> cases[] = {
      {"", " 0/0"}, {"^size(12)", "[] 0/0"}, {"Allegro", "[Allegro] 1/0"}, {"a^^b", "[a][^b] 2/0"},
      {"A^flat()^size(10)B", "[Ab][B] 2/0"},   {"x^^^size(8)y", "[x][^][y] 3/0"},
      {std::string(kTimes) + "C^sharp() major", "[C# major] 1/0"},
      {"^font(Maestro,8194)^size(24)F^font(Times New Roman,8192)^size(12) dolce",
       "[F][ dolce] 1/1"},
      {"^font(Times New Roman,8192)^efx(hidden)secret^efx(plain) shown", "[][ shown] 1/0"},
      {"^font(EngraverTextT,8194)q = 120", "[q = 120] 0/1"},
  };
  // clang-format on
  std::vector<TextPortion> portions;
  for (const auto& [text, said] : cases)
    EXPECT_EQ(Split(text, portions), said) << text;
}

TEST_F(TextTest, PortionsCarryTheirFontIntoTheNext) {
  std::vector<TextPortion> portions;
  Split("^font(Maestro,8194)^size(24)^efx(bold)p^size(12)^efx(italic)f", portions);
  ASSERT_EQ(portions.size(), 2u);
  const TextPortion& first = portions[0];
  const TextPortion& second = portions[1];
  EXPECT_EQ(std::tuple(first.FontName, first.IsMusic, first.Size, first.Efx, first.HostValues[0]),
            std::tuple("Maestro", true, 24, kEfxBold, 8194));
  EXPECT_EQ(std::tuple(second.Font, second.HostValues, second.Size, second.Efx),
            std::tuple(first.Font, first.HostValues, 12, kEfxBold | kEfxItalic));
  ExpressionValues tempo{132, 0};
  EXPECT_EQ(Split("q = ^value()", portions, &tempo), "[q = 132] 1/0");
}

TEST_F(TextTest, PlainPortionDataRecodesTheJazzTextFonts) {
  struct Case {
    std::string Font, Text, Plain;
    bool Rehearsal = false;
  } cases[] = {
      {"Times New Roman", "Grüße ©", "Grüße ©"},
      {"JazzText", "Fine" + FromCodes({191, 200, 169, 174, 188, 190, 233, 123}), "Fine09©®¼¾"},
      {"JazzText", FromCodes({216}), "A", true},
      {"JazzText", FromCodes({241}), "Z", true},
      {"JazzText", FromCodes({242}), ""},
      {"JazzText", FromCodes({216, 217}), ""},
      {"JazzTextExtended", "Ab" + FromCodes({128, 136, 140, 168, 216, 243, 250}), "AbÄåå©ÿÛ"},
      // Bytes the code page leaves undefined must come back from UTF-8 as they were.
      {"JazzTextExtended", FromCodes({129, 143, 144}), "Åê"},
  };
  for (const Case& c : cases) {
    TextPortion portion;
    portion.FontName = c.Font;
    portion.Text = c.Text;
    PortionData data = TextPortionData(portion);
    EXPECT_EQ(std::pair(data.Text, data.Rehearsal), std::pair(c.Plain, c.Rehearsal)) << c.Text;
  }
  TextPortion styled;
  styled.Efx = kEfxBold | kEfxItalic;
  styled.Text = "Très vite";
  PortionData data = TextPortionData(styled);
  EXPECT_TRUE(data.Bold && data.Italic);
  EXPECT_EQ(data.Lang, "fr");
}

// Bytes the code page leaves undefined still stand for font characters: they must come back
// from UTF-8 as the bytes they were.
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
  EXPECT_EQ(std::tuple(words.childNodes().item(1).text(), words.childNodes().item(3).text(),
                       words.text()),
            std::tuple("éè", "b", "Trèséèüab"));
}

// What a music text says: its kind, then each item of its list after a bar.
std::string Said(const MusicText& music) {
  std::string said = music.Kind;
  for (const std::string& item : music.List)
    said += "|" + item;
  return said;
}

TEST_F(TextTest, MusicFontCharactersReadAsMarksDynamicsAndMetronomeMarks) {
  // clang-format off
  const std::tuple<std::vector<unsigned char>, std::string, std::string> cases[] = {
      {{35}, "Maestro", "accidental-mark|sharp"},  {{233}, "Petrucci", "accidental-mark|natural"},
      {{84}, "Maestro", "ornaments|delayed-turn"}, {{84}, "Jazz", "|"}, // unknown: empty kind, name
      {{174}, "Jazz", "eyeglasses|eyeglasses"},    {{174}, "Maestro", "|"},
      {{117}, "Jazz", "fermata|fermata-inverted"}, {{130}, "Maestro", "dynamics|sfp"},
      {{83, 185}, "Maestro", "dynamics|sfpp"},     {{184, 184}, "Maestro", "dynamics|pppppp"},
      {{185, 184}, "Maestro", ""},                 {{}, "Maestro", ""},
      {{141}, "Maestro", "dynamics|sffz"}, // a byte the code page leaves undefined
      {{113, 200, 193, 170, 188}, "Maestro", "metronome|quarter|0|120"},
      {{101, '.', '.', 200, 165}, "Jazz", "metronome|eighth|2|8"},
      {{104, 'k', 200, 176}, "Petrucci", "metronome|half|1|5"}, {{104, 'k', 200, 176}, "Jazz", ""},
      {{120, 200, 193, '1'}, "Maestro", ""},       {{113, 200, 'x'}, "Maestro", ""},
      {{'a', 200, 193}, "Maestro", ""},
  };
  // clang-format on
  for (const auto& [codes, font, said] : cases) {
    std::string text = HostToUtf8(std::string(codes.begin(), codes.end()));
    EXPECT_EQ(Said(ParseMusicFont(text, font, "")), said) << text << " in " << font;
  }
}

TEST_F(TextTest, MusicTextFontReadsMetronomeMarks) {
  // Text, the value of #, what it says.
  // clang-format off
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"q = 120", "", "metronome|quarter|0|120"},
      {"(q = 120)", "", "metronome|quarter|0|120|paren"},
      {"(q = 120", "", "metronome|quarter|0|120"}, {"{h.= 60}", "", "metronome|half|1|60|paren"},
      {"qd =100-108", "", "metronome|quarter|1|100-108"},
      {"e=" + FromCodes({130}) + " 90", "", "metronome|eighth|0|ca. 90"},
      {"q = #", "132", "metronome|quarter|0|132"}, {"q = #", "", "metronome|quarter|0|#"},
      {"q. = h", "", "metronome|quarter|1|half"},  {"x = w", "", "metronome|16th|0|whole"},
      {"(x = w)", "", ""}, {"q : 120", "", ""},    {"z = 120", "", ""}, {"q = ", "", ""},
  };
  // clang-format on
  for (const auto& [text, value, said] : cases)
    EXPECT_EQ(Said(ParseMusicTextFont(text, "EngraverTextT", value)), said) << text;
}

TEST_F(TextTest, QuarterToneAccidentalsComeFromPercussionNoteFontsOnly) {
  const std::tuple<int, std::string, std::string> cases[] = {
      {66, "Tamburo", "quarter-flat"},
      {73, "EngraverFontExtras", "three-quarters-flat"},
      {181, "Maestro Percussion", "quarter-sharp"},
      {229, "EngraverFontExtras", "three-quarters-sharp"},
      {247, "JazzPerc", "three-quarters-sharp"},
      {229, "Tamburo", ""},
      {247, "EngraverFontExtras", ""},
      {66, "Maestro", ""},
      {67, "Tamburo", ""},
  };
  for (const auto& [character, font, text] : cases)
    EXPECT_EQ(ParseAccidental(character, font), text) << character << " " << font;
}

// A head reads as its text, "/" and its filling if any, and "()" for parentheses.
TEST_F(TextTest, NoteheadCharactersReadByTheirFont) {
  struct Case {
    int Character;
    std::string Font, Said;
    int32_t Dura = 1024;
    bool Option = false;
  };
  // clang-format off
  const Case cases[] = {
      {207, "Maestro", ""},                        {207, "Maestro", "normal/yes", 2048},
      {207, "Maestro", "normal/yes", 1024, true},  {250, "Maestro", "", 2048},
      {250, "Maestro", "normal/no", 2048, true},   {250, "Maestro", "normal/no"},
      {88, "EngraverFontSet", "circle-x"},         {88, "Maestro", ""},
      {121, "EngraverFontSet", "normal/yes()"},    {121, "Petrucci", "triangle/no"},
      {121, "Tamburo", "x"},                       {121, "EngraverFontExtras", ""},
      {173, "Maestro Wide", "square/no"},          {173, "Petrucci", ""},
      {32, "Times New Roman", ""},                 {0, "Maestro", ""},
  };
  // clang-format on
  for (const Case& c : cases) {
    NoteheadText head = ParseNotehead(c.Character, c.Font, c.Dura, c.Option);
    std::string said =
        head.Text + (head.Filled.empty() ? "" : "/" + head.Filled) + (head.Parentheses ? "()" : "");
    EXPECT_EQ(said, c.Said) << c.Character << " in " << c.Font;
  }
}

// An element is given as its attributes and its text; none at all means no element.
TEST_F(TextTest, NoteheadElementsGiveTheCharacterOfTheirFont) {
  auto document = xml::XmlDocument::Create();
  struct Case {
    std::optional<std::string> Attributes;
    std::string Text, Font;
    bool Filled;
    int16_t Character;
  };
  const std::string paren = R"(parentheses="yes")";
  // clang-format off
  const Case cases[] = {
      {{}, "", "Maestro", true, 207},        {{}, "", "Times New Roman", false, 250},
      {"", "triangle", "Jazz", true, 0},     {"", "triangle", "Jazz", false, 177},
      {R"(filled="no")", "diamond", "Maestro", true, 225},
      {R"(filled="yes")", "diamond", "JazzPerc", false, 51},
      {paren, "normal", "EngraverFontSet", true, 108}, {paren, "normal", "Maestro", true, 0},
      {paren, "slash", "Maestro", true, 243}, {"", "circle-x", "Jazz", true, 205},
      {"", "square", "Petrucci", false, 0},  {"", "square", "Maestro Wide", false, 173},
      {"", "x", "EngraverFontExtras", true, 120}, {"", "slash", "Times New Roman", true, 0},
      {"", "bogus", "Maestro", true, 0},
  };
  // clang-format on
  for (const Case& c : cases) {
    xml::XmlNode element;
    std::string xml = "<notehead " + c.Attributes.value_or("") + ">" + c.Text + "</notehead>";
    if (c.Attributes) {
      ASSERT_TRUE(document->loadXML(xml));
      element = document->documentElement();
    }
    EXPECT_EQ(GetNotehead(element, c.Font, c.Filled), c.Character) << xml << " " << c.Font;
  }
}

} // namespace
} // namespace ostin
