// Music font characters read as marks, dynamics, metronome marks, accidentals and noteheads.
#include <gtest/gtest.h>

#include <vector>

#include "host/text/music_font.h"
#include "host/text/noteheads.h"
#include "text_fixture.h"
#include "xml/xml_document.h"

namespace ostin {
namespace {

using testing::TextTest;

struct MusicCase {
  std::string Text;
  std::string Font;
  std::string Kind;
  std::vector<std::string> List;
};

TEST_F(TextTest, MusicFontCharactersReadAsMarksDynamicsAndMetronomeMarks) {
  const MusicCase cases[] = {
      {FromCodes({35}), "Maestro", "accidental-mark", {"sharp"}},
      {FromCodes({233}), "Petrucci", "accidental-mark", {"natural"}},
      {FromCodes({161}), "Maestro", "pedal", {"pedal-start"}},
      {FromCodes({84}), "Maestro", "ornaments", {"delayed-turn"}},
      {FromCodes({84}), "Jazz", "", {""}},
      {FromCodes({174}), "Jazz", "eyeglasses", {"eyeglasses"}},
      {FromCodes({174}), "Maestro", "", {""}},
      {FromCodes({117}), "Jazz", "fermata", {"fermata-inverted"}},
      {FromCodes({130}), "Maestro", "dynamics", {"sfp"}},
      {FromCodes({236}), "Maestro", "dynamics", {"fff"}},
      {FromCodes({83, 185}), "Maestro", "dynamics", {"sfpp"}},
      {FromCodes({184, 184}), "Maestro", "dynamics", {"pppppp"}},
      {FromCodes({142, 90}), "Maestro", "dynamics", {"rfz"}},
      {FromCodes({185, 184}), "Maestro", "", {}},
      {FromCodes({113, 200, 193, 170, 188}), "Maestro", "metronome", {"quarter", "0", "120"}},
      {FromCodes({101, '.', '.', 200, 165}), "Jazz", "metronome", {"eighth", "2", "8"}},
      {FromCodes({104, 'k', 200, 176}), "Petrucci", "metronome", {"half", "1", "5"}},
      {FromCodes({104, 'k', 200, 176}), "Jazz", "", {}},
      {FromCodes({120, 200, 193, '1'}), "Maestro", "", {}},
      {FromCodes({113, 200}) + "x", "Maestro", "", {}},
      {FromCodes({'a', 200, 193}), "Maestro", "", {}},
      {"", "Maestro", "", {}},
  };
  for (const MusicCase& c : cases) {
    MusicText music = ParseMusicFont(c.Text, c.Font, "");
    EXPECT_EQ(music.Kind, c.Kind) << c.Text << " in " << c.Font;
    EXPECT_EQ(music.List, c.List) << c.Text << " in " << c.Font;
    EXPECT_EQ(music.Count(), static_cast<int16_t>(c.List.size()));
  }
}

TEST_F(TextTest, MusicTextFontReadsMetronomeMarks) {
  struct Case {
    std::string Text;
    std::string Value;
    std::vector<std::string> List;
  };
  const Case cases[] = {
      {"q = 120", "", {"quarter", "0", "120"}},
      {"(q = 120)", "", {"quarter", "0", "120", "paren"}},
      {"(q = 120", "", {"quarter", "0", "120"}},
      {"{h.= 60}", "", {"half", "1", "60", "paren"}},
      {"qd =100-108", "", {"quarter", "1", "100-108"}},
      {"e=" + FromCodes({130}) + " 90", "", {"eighth", "0", "ca. 90"}},
      {"q = #", "132", {"quarter", "0", "132"}},
      {"q = #", "", {"quarter", "0", "#"}},
      {"q. = h", "", {"quarter", "1", "half"}},
      {"x = w", "", {"16th", "0", "whole"}},
      {"(x = w)", "", {}},
      {"q : 120", "", {}},
      {"z = 120", "", {}},
      {"q = ", "", {}},
      {"q=", "", {}},
  };
  for (const Case& c : cases) {
    MusicText music = ParseMusicTextFont(c.Text, "EngraverTextT", c.Value);
    EXPECT_EQ(music.Kind, c.List.empty() ? "" : "metronome") << c.Text;
    EXPECT_EQ(music.List, c.List) << c.Text;
  }
}

TEST_F(TextTest, QuarterToneAccidentalsComeFromPercussionNoteFontsOnly) {
  struct Case {
    int Character;
    std::string Font;
    std::string Text;
  };
  const Case cases[] = {
      {66, "Tamburo", "quarter-flat"},
      {73, "EngraverFontExtras", "three-quarters-flat"},
      {181, "Maestro Percussion", "quarter-sharp"},
      {229, "EngraverFontExtras", "three-quarters-sharp"},
      {229, "Tamburo", ""},
      {247, "JazzPerc", "three-quarters-sharp"},
      {247, "EngraverFontExtras", ""},
      {66, "Maestro", ""},
      {67, "Tamburo", ""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ParseAccidental(c.Character, c.Font), c.Text) << c.Character << " " << c.Font;
}

TEST_F(TextTest, NoteheadCharactersReadByTheirFont) {
  struct Case {
    int Character;
    std::string Font;
    int32_t Dura;
    bool Option;
    std::string Text, Filled;
    bool Parentheses;
  };
  const Case cases[] = {
      {207, "Maestro", 1024, false, "", "", false},
      {207, "Maestro", 2048, false, "normal", "yes", false},
      {207, "Maestro", 1024, true, "normal", "yes", false},
      {250, "Maestro", 2048, false, "", "", false},
      {250, "Maestro", 2048, true, "normal", "no", false},
      {250, "Maestro", 1024, false, "normal", "no", false},
      {88, "EngraverFontSet", 1024, false, "circle-x", "", false},
      {88, "Maestro", 1024, false, "", "", false},
      {121, "EngraverFontSet", 1024, false, "normal", "yes", true},
      {121, "Petrucci", 1024, false, "triangle", "no", false},
      {121, "Jazz", 1024, false, "triangle", "no", false},
      {121, "Tamburo", 1024, false, "x", "", false},
      {121, "EngraverFontExtras", 1024, false, "", "", false},
      {173, "Maestro Wide", 1024, false, "square", "no", false},
      {173, "Petrucci", 1024, false, "", "", false},
      {208, "Jazz", 1024, false, "slash", "", false},
      {208, "EngraverFontSet", 1024, false, "square", "yes", false},
      {253, "Jazz", 1024, false, "diamond", "no", false},
      {69, "JazzPerc", 1024, false, "normal", "no", true},
      {90, "Maestro Percussion", 1024, false, "circle-x", "", false},
      {32, "Times New Roman", 1024, false, "", "", false},
      {0, "Maestro", 1024, false, "", "", false},
  };
  for (const Case& c : cases) {
    NoteheadText head = ParseNotehead(c.Character, c.Font, c.Dura, c.Option);
    std::string at = std::to_string(c.Character) + " in " + c.Font;
    EXPECT_EQ(head.Text, c.Text) << at;
    EXPECT_EQ(head.Filled, c.Filled) << at;
    EXPECT_EQ(head.Parentheses, c.Parentheses) << at;
  }
}

TEST_F(TextTest, NoteheadElementsGiveTheCharacterOfTheirFont) {
  auto document = xml::XmlDocument::Create();
  struct Case {
    std::string Xml; // empty: no element
    std::string Font;
    bool Filled;
    int16_t Character;
  };
  const Case cases[] = {
      {"", "Maestro", true, 207},
      {"", "Times New Roman", false, 250},
      {"<notehead>normal</notehead>", "Tamburo", false, 250},
      {"<notehead>triangle</notehead>", "Jazz", true, 0},
      {"<notehead>triangle</notehead>", "Jazz", false, 177},
      {R"(<notehead filled="no">diamond</notehead>)", "Maestro", true, 225},
      {R"(<notehead filled="yes">diamond</notehead>)", "JazzPerc", false, 51},
      {R"(<notehead parentheses="yes">normal</notehead>)", "EngraverFontSet", true, 108},
      {R"(<notehead parentheses="yes">normal</notehead>)", "Tamburo", false, 207},
      {R"(<notehead parentheses="yes">normal</notehead>)", "Maestro", true, 0},
      {R"(<notehead parentheses="yes">slash</notehead>)", "Maestro", true, 243},
      {"<notehead>square</notehead>", "Petrucci", false, 0},
      {"<notehead>square</notehead>", "Maestro Wide", false, 173},
      {"<notehead>x</notehead>", "EngraverFontExtras", true, 120},
      {"<notehead>circle-x</notehead>", "Maestro", true, 0},
      {"<notehead>circle-x</notehead>", "Jazz", true, 205},
      {"<notehead>slash</notehead>", "Times New Roman", true, 0},
      {"<notehead>bogus</notehead>", "Maestro", true, 0},
  };
  for (const Case& c : cases) {
    xml::XmlNode element;
    if (!c.Xml.empty()) {
      ASSERT_TRUE(document->loadXML(c.Xml));
      element = document->documentElement();
    }
    EXPECT_EQ(GetNotehead(element, c.Font, c.Filled), c.Character) << c.Xml << " " << c.Font;
  }
}

} // namespace
} // namespace ostin
