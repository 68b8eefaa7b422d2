// Text blocks, the font table, raw texts and the document's texts section.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <vector>

#include "host/text/caret.h"
#include "host/text/fonts.h"
#include "host/text/raw_text.h"
#include "host/text/text_block.h"
#include "host/text/text_failures.h"
#include "sim/document.h"
#include "text_fixture.h"

namespace ostin {
namespace {

using testing::TextTest;
using Fault = sim::Host::Fault;

// Runs act and gives the number of the failure it raises; 0 when it raises none.
int32_t FailureOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.IsOwn());
    return failure.Number;
  }
  return 0;
}

TextBlock BlockOf(int32_t version) {
  TextBlock block;
  block.FinaleVersion = version;
  return block;
}

TEST_F(TextTest, TextBlockTakesTheNextNumberAndKeepsItsTextThroughTheCodePage) {
  TextBlock fresh;
  EXPECT_EQ(fresh.TextID, -1);
  EXPECT_EQ(fresh.FinaleVersion, 2000);

  TextBlock block = BlockOf(2004);
  block.Create(-1, 0);
  EXPECT_EQ(block.Cmper(), 1);
  block.TextTag = kNameTextTag;
  block.Text = "^font(Times New Roman,8192)^size(12)^efx(plain)Flöte – «solo»";
  block.Save();
  TextBlock second = BlockOf(2004);
  second.Create(-1, 0);
  EXPECT_EQ(second.Cmper(), 2) << "-1 takes the next free number";

  TextBlock read = BlockOf(2004);
  ASSERT_TRUE(read.Load(1, 0));
  EXPECT_EQ(read.TextTag, kNameTextTag);
  EXPECT_EQ(read.Text, block.Text);
  EXPECT_EQ(ParseCaretCommands(read.TextTag, read.Text), "Flöte – «solo»");
}

TEST_F(TextTest, PlainTextBlockCallsLeaveTheTagOfTheYear) {
  TextBlock block = BlockOf(2004);
  block.Create(-1, 0);
  block.TextTag = kExpressionTextTag;
  block.Text = "first";
  block.Save();

  TextBlock old = BlockOf(2003);
  ASSERT_TRUE(old.Load(1, 0));
  EXPECT_EQ(old.Text, "first");
  EXPECT_EQ(old.TextTag, 0) << "the plain call carries no tag";
  old.Text = "second";
  old.Save();

  ASSERT_TRUE(block.Load(1, 0));
  EXPECT_EQ(block.Text, "second");
  EXPECT_EQ(block.TextTag, kExpressionTextTag);
}

TEST_F(TextTest, AbsentTextBlockIsAResultWithTheNumberOfTheCallMade) {
  for (int32_t version : {2003, 2004}) {
    TextBlock block = BlockOf(version);
    EXPECT_FALSE(block.Load(42, 0));
    EXPECT_EQ(block.Cmper(), 42) << "absence leaves the key as the call set it";
    int32_t expected = version == 2004 ? Code(0x8004079F) : Code(0x80040308);
    EXPECT_EQ(FailureOf([&] { block.MustLoad(42, 0); }), expected);
  }
  EXPECT_EQ(Log(), "");
}

TEST_F(TextTest, RefusedTextBlockCallsRaiseTheNumbersOfTheirYear) {
  struct Case {
    std::string Call;
    int32_t Version;
    std::function<void(TextBlock&)> Act;
    int32_t Number;
    std::string Logged;
  };
  auto create = [](TextBlock& b) { b.Create(-1, 0); };
  auto save = [](TextBlock& b) {
    b.Create(-1, 0);
    b.Save();
  };
  const Case cases[] = {
      {"CreateTextBlock", 2003, create, Code(0x80040306), "Finale create of TextBlock -1 failed"},
      {"CreateTextBlock2004", 2004, create, Code(0x8004079D),
       "Finale create of TextBlock2004 -1 failed"},
      {"LoadTextBlock", 2003, create, Code(0x80040307), "Finale load of new TextBlock 1 failed"},
      {"LoadTextBlock2004", 2004, create, Code(0x8004079E),
       "Finale load of new TextBlock2004 1 failed"},
      {"SaveTextBlock", 2003, save, Code(0x80040309), "Finale save of TextBlock 1 failed"},
      {"SaveTextBlock2004", 2004, save, Code(0x800407A0), "Finale save of TextBlock2004 1 failed"},
  };
  for (const Case& c : cases) {
    OpenDefault();
    HostSim().Faults = {{c.Call, Fault::Refuse}};
    TextBlock block = BlockOf(c.Version);
    EXPECT_EQ(FailureOf([&] { c.Act(block); }), c.Number) << c.Call;
    EXPECT_NE(Log().find(c.Logged), std::string::npos) << c.Call << ": " << Log();
    HostSim().Faults.clear();
  }
}

TEST_F(TextTest, FontTableWalksInNumberOrderAndEndsAsAResult) {
  FontName font;
  std::vector<std::string> names;
  for (int16_t number = 0; font.GetNext(number, 0); number = font.Cmper())
    names.push_back(font.Text);
  ASSERT_EQ(names.size(), 16u);
  EXPECT_EQ(names.front(), "Maestro");
  EXPECT_EQ(names.back(), "EngraverTextNCS");
  EXPECT_EQ(font.Cmper(), 16) << "the walk's end leaves the key at the last font";
  EXPECT_EQ(FontName::Places().Next, Code(0x800406AB));

  ASSERT_TRUE(font.Load(2, 0));
  EXPECT_EQ(font.Text, "Times New Roman");
  EXPECT_TRUE(font.WindowsFont());
  EXPECT_TRUE(font.WesternFont());
  EXPECT_FALSE(font.MacFont());
  ASSERT_TRUE(font.Load(1, 0));
  EXPECT_TRUE(font.SymbolFont());
  EXPECT_FALSE(font.Load(40, 0));
  EXPECT_EQ(FailureOf([&] { font.MustLoad(40, 0); }), Code(0x80040442));
}

TEST_F(TextTest, FontsAreFoundAndClassedByName) {
  EXPECT_EQ(FindFont("EngraverFontSet"), 12);
  EXPECT_EQ(FirstMusicFont(), 1);
  EXPECT_EQ(FirstTextFont(), 2);
  std::istringstream named(
      "Maestro,Maestro Wide,Jazz,Petrucci,EngraverFontSet,EngraverTextT,"
      "EngraverTextH,EngraverTextNCS,Times New Roman,Arial,JazzText,"
      "JazzTextExtended,Maestro Percussion,Tamburo,JazzPerc,EngraverFontExtras");
  for (std::string name; std::getline(named, name, ',');)
    EXPECT_EQ(FontNameOf(FindFont(name)), name) << "a new document knows " << name;

  struct Case {
    int16_t Font;
    bool Music, MusicText, Text;
  };
  const Case cases[] = {
      {1, true, false, false},  {6, true, false, false},  {12, true, false, false},
      {14, false, true, false}, {2, false, false, true},  {5, false, false, true},
      {0, false, false, true},  {99, false, false, true},
  };
  for (const Case& c : cases) {
    FontClass kind = CheckFont(c.Font);
    EXPECT_EQ(kind.IsMusic, c.Music) << c.Font;
    EXPECT_EQ(kind.IsMusicText, c.MusicText) << c.Font;
    EXPECT_EQ(kind.IsText, c.Text) << c.Font;
  }
}

TEST_F(TextTest, UnknownFontFailsFindFontButTheHostAddsItByName) {
  EXPECT_EQ(FailureOf([] { FindFont("Garamond"); }), kFontNamePlaces.Create);
  EXPECT_NE(Log().find("Finale create of FontName 17 failed"), std::string::npos) << Log();

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

  EXPECT_EQ(FailureOf([] { WriteRawText(kLineTextTag, 0, "x"); }),
            text_failures::kSetRawTextRefused);
  EXPECT_NE(Log().find("Finale SetRawText function call failed"), std::string::npos);
}

TEST_F(TextTest, RefusedOrFailingHostCallsRaiseInTheirOperations) {
  HostSim().Faults = {{"FxParseCaretCommand", Fault::Refuse}};
  EXPECT_EQ(FailureOf([] { ParseCaretCommands(kNameTextTag, "^size(3)x"); }),
            text_failures::kParseCaretCommandRefused);
  EXPECT_EQ(ParseCaretCommands(kNameTextTag, "no commands"), "no commands");

  HostSim().Faults = {{"FxParseCaretCommand", Fault::Throw}};
  EXPECT_EQ(FailureOf([] { ParseCaretCommands(kNameTextTag, "^size(3)x"); }),
            text_failures::kParseCaretCommands);
  EXPECT_NE(Log().find("ParseCaretCommands error "), std::string::npos) << Log();

  HostSim().Faults = {{"FxFontNameToNum", Fault::Refuse}};
  EXPECT_EQ(FailureOf([] { FontNumberOf("Arial"); }), text_failures::kFontNameToNumRefused);

  HostSim().Faults.clear();
  EXPECT_EQ(FailureOf([] { ParseCaretCommands(kNameTextTag, "^size(huge)x"); }),
            text_failures::kParseCaretCommandRefused)
      << "the host refuses a command it cannot read";
}

TEST_F(TextTest, TextsSectionRoundTripsReadably) {
  sim::TextStore& texts = HostSim().Doc().Texts;
  texts.RawTexts[{kLineTextTag, 2}] = Utf8ToHost("Rit. – poco «più»");
  texts.FontNumber(Utf8ToHost("Café Sans"), 0x2000);
  nlohmann::json json = texts.ToJson();
  EXPECT_EQ(json["rawTexts"][0]["text"], "Rit. – poco «più»");
  EXPECT_EQ(json["fonts"][16]["name"], "Café Sans");
  EXPECT_EQ(sim::TextStore::FromJson(json), texts);
  EXPECT_EQ(sim::TextStore::FromJson(nlohmann::json::object()), sim::TextStore{});
}

TEST_F(TextTest, BadTextsSectionIsRefusedNamingTheItem) {
  struct Case {
    std::string Json;
    std::string Says;
  };
  const Case cases[] = {
      {R"([])", "texts: an object expected"},
      {R"({"colours":[]})", "texts: unknown part \"colours\""},
      {R"({"fonts":{}})", "texts: \"fonts\" must be a list"},
      {R"({"fonts":[7]})", "texts: fonts, item 1: an object expected"},
      {R"({"fonts":[{"name":"A"}]})", "texts: fonts, item 1: \"number\" missing"},
      {R"({"fonts":[{"number":0,"name":"A"}]})", "\"number\" must be a number from 1"},
      {R"({"fonts":[{"number":3,"name":5}]})", "texts: font 3: \"name\" must be text"},
      {R"({"fonts":[{"number":3,"name":""}]})", "texts: font 3: \"name\" must not be empty"},
      {R"({"fonts":[{"number":3,"name":"A","charsetAndOS":70000}]})",
       "texts: font 3: \"charsetAndOS\" must be a number"},
      {R"({"fonts":[{"number":3,"name":"A","colour":1}]})", "unknown field \"colour\""},
      {R"({"fonts":[{"number":3,"name":"A"},{"number":3,"name":"B"}]})",
       "texts: font 3: number given twice"},
      {R"({"rawTexts":[{"tag":29555,"id":0,"text":"x"}]})", "texts: rawTexts, item 1: \"id\""},
      {R"({"rawTexts":[{"tag":29555,"id":1}]})", "texts: raw text 29555, 1: \"text\" must be"},
      {R"({"rawTexts":[{"tag":1,"id":1,"text":"a"},{"tag":1,"id":1,"text":"b"}]})",
       "texts: raw text 1, 1: given twice"},
  };
  for (const Case& c : cases) {
    nlohmann::json document = {{"format", "ostin-document"},
                               {"texts", nlohmann::json::parse(c.Json)}};
    try {
      sim::Document::FromJson(document);
      ADD_FAILURE() << c.Json;
    } catch (const sim::DocumentError& error) {
      EXPECT_NE(std::string(error.what()).find(c.Says), std::string::npos)
          << c.Json << " said: " << error.what();
    }
  }
}

} // namespace
} // namespace ostin
