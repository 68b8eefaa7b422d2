// Note types of lengths, the rewriting of a part's durations in its own unit, and the
// passes that finish the tree.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "export_test_support.h"

namespace ostin {
namespace {

using testing::Texts;

class DurationsTest : public testing::ContentTest {
protected:
  // A part of one measure holding the given notes, in EDU.
  XmlPart& PartOf(const std::string& notes, const std::string& more = {}) {
    return Access.AddPartFrom("<part id='P9'><measure><attributes><divisions>1024</divisions>"
                              "</attributes>" +
                              notes + "</measure>" + more + "</part>");
  }
  static std::string Note(int duration, const std::string& type, const std::string& more = {}) {
    return "<note><pitch><step>C</step><octave>4</octave></pitch><duration>" +
           std::to_string(duration) + "</duration><type>" + type + "</type>" + more + "</note>";
  }
  static std::string Tuplet(int duration, const std::string& type, int actual, int normal) {
    return Note(duration, type,
                "<time-modification><actual-notes>" + std::to_string(actual) +
                    "</actual-notes><normal-notes>" + std::to_string(normal) +
                    "</normal-notes></time-modification>");
  }
  static std::string Triplet(int duration, const std::string& type) {
    return Tuplet(duration, type, 3, 2);
  }
};

TEST(ParseDuration, BaseLengthsWithUpToFourDots) {
  struct Case {
    int32_t Duration;
    std::string Type;
    int16_t Dots;
  } cases[] = {{16, "256th", 0},     {31, "256th", 4},     {1024, "quarter", 0},
               {1536, "quarter", 1}, {1792, "quarter", 2}, {1984, "quarter", 4},
               {768, "eighth", 1},   {3072, "half", 1},    {4096, "whole", 0},
               {8192, "breve", 0},   {16384, "long", 0},   {31744, "long", 4}};
  for (const Case& c : cases) {
    std::string type = "untouched";
    int16_t dots = -1;
    ToXmlTestAccess::ParseDuration(c.Duration, type, dots);
    EXPECT_EQ(type, c.Type) << c.Duration;
    EXPECT_EQ(dots, c.Dots) << c.Duration;
  }
  // A fifth dot, a tuplet length, nothing and a negative length are no note type.
  for (int32_t unknown : {2032, 341, 0, -1024, 1000, 8}) {
    std::string type = "untouched";
    int16_t dots = -1;
    ToXmlTestAccess::ParseDuration(unknown, type, dots);
    EXPECT_EQ(type, "untouched") << unknown;
    EXPECT_EQ(dots, -1) << unknown;
  }
}

TEST_F(DurationsTest, UnitChosenFromSmallestNoteAndTupletFactor) {
  struct Case {
    std::string Name;
    std::string Notes;
    std::string Divisions;
    std::vector<std::string> Durations;
  } cases[] = {
      {"quarters only", Note(1024, "quarter") + Note(1024, "quarter"), "1", {"1", "1"}},
      {"eighth triplet", Note(512, "eighth") + Triplet(341, "eighth"), "6", {"3", "2"}},
      {"4 in the time of 2", Tuplet(256, "eighth", 4, 2), "8", {"2"}},
      {"4 in the time of 6", Tuplet(768, "eighth", 4, 6), "24", {"18"}},
      {"a multiple of 5", Note(1000, "quarter") + Note(1024, "quarter"), "1024", {"1000", "1024"}},
      {"an odd length", Note(341, "eighth") + Note(1024, "quarter"), "1024", {"341", "1024"}},
      {"dotted sixteenth", Note(384, "16th", "<dot/>") + Note(128, "32nd"), "8", {"3", "1"}},
      {"forwards and backups follow",
       Note(2048, "half") + "<backup><duration>2048</duration>"
                            "</backup><forward><duration>1024</duration></forward>",
       "1",
       {"2", "2", "1"}},
  };
  for (const Case& c : cases) {
    XmlPart& part = PartOf(c.Notes);
    Access.ConvertDurations(part);
    EXPECT_EQ(Texts(part.Part(), "measure/attributes/divisions"),
              std::vector<std::string>{c.Divisions})
        << c.Name;
    EXPECT_EQ(Texts(part.Part(), "measure//duration"), c.Durations) << c.Name;
  }
}

TEST_F(DurationsTest, DirectionOffsetsKeepAResolutionAndVanishAtZero) {
  const std::string directions =
      "<direction><direction-type><words>a</words></direction-type><offset>300</offset>"
      "<staff>1</staff></direction>"
      "<direction><direction-type><words>b</words></direction-type><offset>60</offset>"
      "</direction>";
  XmlPart& part = PartOf(Note(2048, "half") + directions + "<sound divisions='1024'/>");
  Access.ConvertDurations(part);
  EXPECT_EQ(Texts(part.Part(), "measure/attributes/divisions"), std::vector<std::string>{"8"});
  EXPECT_EQ(Texts(part.Part(), ".//duration"), std::vector<std::string>{"16"});
  EXPECT_EQ(Texts(part.Part(), ".//direction/offset"), std::vector<std::string>{"2"})
      << "300 EDU is 2.34 32nd notes; 60 EDU rounds to nothing and goes";
  EXPECT_EQ(part.Part().selectSingleNode(".//direction/offset").nextSibling().nodeName(), "staff");
  EXPECT_EQ(part.Part().selectSingleNode(".//sound").getAttribute("divisions"), "8");

  // Without offsets the half notes keep their own unit.
  XmlPart& plain = PartOf(Note(2048, "half"));
  Access.ConvertDurations(plain);
  EXPECT_EQ(Texts(plain.Part(), "measure/attributes/divisions"), std::vector<std::string>{"1"});
}

TEST_F(DurationsTest, TupletNoteLengthsComeFromTheirWrittenValue) {
  // Three triplet eighths of 341, 342 and 341 EDU come out as 2 each in divisions 6; a
  // quintuplet sixteenth (5 in the time of 4) in a part with a triplet: factor 15.
  XmlPart& part = PartOf(Triplet(341, "eighth") + Triplet(342, "eighth") + Triplet(341, "eighth"));
  Access.ConvertDurations(part);
  EXPECT_EQ(Texts(part.Part(), ".//duration"), (std::vector<std::string>{"2", "2", "2"}));

  const std::string quintuplet =
      Note(204, "16th",
           "<time-modification><actual-notes>5</actual-notes><normal-notes>4</normal-notes>"
           "</time-modification>");
  XmlPart& mixed = PartOf(Triplet(341, "eighth") + quintuplet);
  Access.ConvertDurations(mixed);
  EXPECT_EQ(Texts(mixed.Part(), "measure/attributes/divisions"), std::vector<std::string>{"60"});
  EXPECT_EQ(Texts(mixed.Part(), ".//duration"), (std::vector<std::string>{"20", "12"}));
}

TEST_F(DurationsTest, RemoveDuplicateWavyLineKeepsOneAndDropsEmptiedParents) {
  const std::string continues = "<ornaments><wavy-line type='continue'/></ornaments>";
  struct Case {
    std::string Note, Expected;
  } cases[] = {
      {"<note><notations>" + continues +
           "</notations><notations><ornaments><trill-mark/>"
           "<wavy-line type='start'/></ornaments></notations></note>",
       "<note><notations><ornaments><trill-mark/><wavy-line type=\"start\"/></ornaments>"
       "</notations></note>"},
      // One always stays.
      {"<note><notations><ornaments><wavy-line type='continue'/><wavy-line type='continue'/>"
       "</ornaments></notations></note>",
       "<note><notations><ornaments><wavy-line type=\"continue\"/></ornaments></notations>"
       "</note>"},
      {"<note><notations>" + continues + "</notations></note>",
       "<note><notations><ornaments><wavy-line type=\"continue\"/></ornaments></notations>"
       "</note>"},
  };
  for (const Case& c : cases) {
    xml::XmlNode note = Access.Parse(c.Note);
    Access.RemoveDuplicateWavyLine(note);
    EXPECT_EQ(note.xml(), c.Expected);
  }
}

TEST_F(DurationsTest, InitialTempoStandsOnlyWithoutATempoMark) {
  const std::string measures = "<measure><sound xtempo='96'/><note/></measure><measure/>";
  XmlPart& first = Access.AddPartFrom("<part id='P1'>" + measures + "</part>");
  XmlPart& second = Access.AddPartFrom("<part id='P2'>" + measures + "</part>");
  Access.CleanupInitialTempo();
  for (XmlPart* part : {&first, &second}) {
    EXPECT_EQ(part->Part().selectNodes(".//sound[@xtempo]").length(), 0);
    EXPECT_EQ(part->Part().selectSingleNode("measure[1]/*").xml(), "<sound tempo=\"96\"/>");
  }

  Access.Start(2004);
  XmlPart& marked = Access.AddPartFrom("<part id='P1'>" + measures + "</part>");
  Access.TempoWritten() = true;
  Access.CleanupInitialTempo();
  EXPECT_EQ(marked.Part().selectNodes(".//sound").length(), 0);
  EXPECT_EQ(marked.Part().selectSingleNode("measure[1]/*").nodeName(), "note");
}

} // namespace
} // namespace ostin
