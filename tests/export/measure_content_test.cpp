// One measure of a part: staves and layers one after another, voices two, beams across
// rests and grace notes, measure rests, clefs in the opening attributes and items by time;
// then note types of lengths, a part's durations in its own unit, and the finishing passes.
#include "export_test_support.h"

namespace ostin {
namespace {

using testing::ContentTest;
using testing::Flat;
using ::testing::HasSubstr;
using testing::Joined;
using testing::kNote;
using testing::kRest;
using testing::Raised;
using testing::Said;
using testing::Texts;

TEST_F(ContentTest, MeasureRestsFillTheMeasureWhateverTheirWrittenLength) {
  SetBeats(2, 3);
  Fill(2, {Made(4096, kRest, {6})});
  // Staff 1 in measure 3 has a holder that names no frame, in measure 4 none at all.
  Gfhold holder;
  ASSERT_TRUE(holder.Load(1, 3));
  holder.Frame = {0, 0, 0, 0};
  holder.Save();
  HostSim().Doc().Records.at("Gfhold").Rows.erase({1, 4, 0});
  XmlPart& part = Loaded(2, 4);

  EXPECT_EQ(Joined(MeasureOf(part, 2), "note/rest/display-step|note/duration|note/type"),
            "B, 3072, whole");
  for (int16_t m : {3, 4})
    EXPECT_EQ(MeasureOf(part, m).xml(), "<measure number=\"" + std::to_string(m) +
                                            "\"><note><rest/><duration>4096</duration><voice>1"
                                            "</voice></note></measure>");
}

TEST_F(ContentTest, VoiceTwoBacksUpToItsLaunchAndForwardsThroughTheGap) {
  Fill(2, {Made(2048, kNote | kEfLaunchesVoiceTwo, {0}), Made(512, kNote | kEfVoiceTwo, {7}),
           Made(512, kNote | kEfVoiceTwo | kEfHidden, {8}), Made(2048, kNote, {2})});
  XmlPart& part = Loaded(2, 2);
  const xml::XmlNode measure = MeasureOf(part, 2);
  EXPECT_EQ(Shape(measure), "note backup:2048 note note forward:1024 note");
  EXPECT_EQ(measure.selectSingleNode("forward").xml(),
            "<forward><duration>1024</duration><voice>5</voice></forward>")
      << "no staff on the forward that makes up voice two";
  EXPECT_EQ(Joined(measure, "note/voice|note/@print-object"), "1, 5, no, 5, 1");
  EXPECT_EQ(part.Voices, 2);

  // Voice two that fills more than the launching entry: a backup of the excess.
  Fill(3, {Made(1024, kNote | kEfLaunchesVoiceTwo, {0}), Made(2048, kNote | kEfVoiceTwo, {7}),
           Made(1024, kNote, {2})});
  Access.LoadMeasures(part, 3, 3);
  EXPECT_EQ(Shape(MeasureOf(part, 3)), "note backup:1024 note backup:1024 note");
}

TEST_F(ContentTest, EveryLayerStartsFromTheMeasuresStart) {
  Fill(2, {Made(1024, kNote, {0}), Made(1024, kNote, {2})});
  Fill(9, {Made(4096, kNote, {9})});
  Gfhold holder;
  ASSERT_TRUE(holder.Load(1, 2));
  holder.Frame = {2, 0, 9, 0};
  holder.Save();
  XmlPart& part = Loaded(2, 2);
  const xml::XmlNode measure = MeasureOf(part, 2);
  EXPECT_EQ(Shape(measure), "note note backup:2048 note") << "the measure ends short";
  EXPECT_EQ(Joined(measure, "note/voice"), "1, 1, 3");
  EXPECT_EQ(part.Layers.at(1), 2);
}

TEST_F(ContentTest, BeamsRunAcrossHiddenRestsAndAroundGraceNotes) {
  Fill(2, {Made(256, kNote | kEfNewBeam, {0}), Made(256, kRest | kEfHidden), Made(256, kNote, {2}),
           Made(3328, kNote, {4})});
  Fill(3, {Made(512, kNote | kEfNewBeam, {0}), Made(256, kNote | kEfGrace, {1}),
           Made(512, kNote, {2}), Made(3072, kNote, {4})});
  XmlPart& part = Loaded(2, 3);

  const xml::XmlNode sixteenths = MeasureOf(part, 2);
  EXPECT_EQ(Shape(sixteenths), "note forward:256 note note");
  // Beams of the notes with their numbers: only the primary beam runs across the rest.
  EXPECT_EQ(Joined(sixteenths, "note/beam|note/beam/@number"),
            "begin, 1, forward hook, 2, end, 1, backward hook, 2");
  // The grace note, second of four, has neither duration nor beam.
  const xml::XmlNode eighths = MeasureOf(part, 3);
  EXPECT_EQ(Joined(eighths, "note/beam|note/duration"), "512, begin, 512, end, 3072");
  EXPECT_TRUE(eighths.selectSingleNode("note[2]/grace"));
}

TEST_F(ContentTest, UnbeamedGraceNotesTakeTheSlashTheDocumentAsksFor) {
  Fill(2, {Made(256, kNote | kEfGrace, {1}), Made(4096, kNote, {2})});
  XmlPart& part = Access.AddPart(1, 1, 4);
  Access.GraceAlwaysSlash() = true;
  Access.LoadMeasures(part, 2, 2);
  EXPECT_EQ(MeasureOf(part, 2).selectSingleNode("note[1]/grace").getAttribute("slash"), "yes");

  // No beams on a staff that hides them.
  Fill(3, {Made(512, kNote | kEfNewBeam, {0}), Made(512, kNote, {2}), Made(3072, kNote, {4})});
  Access.GraceAlwaysSlash() = false;
  Access.SetShowBeams(1, false);
  Access.LoadMeasures(part, 3, 3);
  EXPECT_EQ(MeasureOf(part, 3).selectNodes(".//beam").length(), 0);
}

TEST_F(ContentTest, MissingMeasureElementIsLoggedAndRaised) {
  XmlPart& part = Access.AddPart(1, 1, 2);
  EXPECT_EQ(Raised([&] { Access.LoadMeasures(part, 3, 3); }),
            Said(Code(0x80040495), kInternalError));
  EXPECT_THAT(Log(), HasSubstr("Cannot find XML measure 3 in staff 1"));
}

TEST_F(ContentTest, DisplayFlagsComeFromTheStaffFromHost2003) {
  struct Case {
    int32_t Version;
    int16_t MoreFlags;
    int16_t Flag;
    std::string Expected; // stems, beams, tuplets, dots, rests, ties, up, down
  } cases[] = {{2004, 0x241E, 0, "11111100"},
               {2004, 0x0400, 0, "00100000"},
               {2004, 0x0060, 0x200, "00000011"},
               {2003, 0x2000, 0x200, "00100000"},
               {2002, 0x0000, 0x200, "11111100"}};
  for (const Case& c : cases) {
    Access.Start(c.Version);
    XmlPart& part = Access.AddPart(1, 1, 1);
    auto spec = std::make_shared<StaffSpec>();
    spec->MoreFlags = c.MoreFlags;
    spec->Flag = c.Flag;
    part.SetStaffSpecs(1, spec);
    Access.InitializePartTables(part);
    std::string flags;
    for (bool flag : Access.DisplayFlags(1))
      flags += flag ? '1' : '0';
    EXPECT_EQ(flags, c.Expected) << c.Version << " " << c.MoreFlags;
  }
}

TEST_F(ContentTest, AddClefPutsTheClefIntoTheOpeningAttributes) {
  struct Case {
    std::string Name;
    std::string Measure;
    int16_t Number;
    std::string Expected;
  } cases[] = {
      // clang-format off
      {"none yet", "<measure><print/><barline location='left'/><note/></measure>", 0,
       "<measure><print/><barline location=\"left\"/><attributes><clef/></attributes><note/></measure>"},
      {"none at all", "<measure><note/></measure>", 0, "<measure><attributes><clef/></attributes><note/></measure>"},
      {"replaced", "<measure><attributes><key/><clef number='2'><sign>F</sign></clef></attributes></measure>", 2,
       "<measure><attributes><key/><clef/></attributes></measure>"},
      {"before staff details", "<measure><attributes><clef number='1'/><staff-details/></attributes></measure>", 2,
       "<measure><attributes><clef number=\"1\"/><clef/><staff-details/></attributes></measure>"},
      {"late attributes are not opening", "<measure><note/><attributes><time/></attributes></measure>", 0,
       "<measure><attributes><clef/></attributes><note/><attributes><time/></attributes></measure>"}};
  // clang-format on
  for (const Case& c : cases) {
    const xml::XmlNode measure = Access.Parse(c.Measure);
    Access.AddClef(measure, Access.Element("clef"), c.Number);
    EXPECT_EQ(measure.xml(), c.Expected) << c.Name;
  }
}

TEST_F(ContentTest, BeamTextsByLevelAndNeighbours) {
  // clang-format off
  struct Case {
    int16_t Previous, This, Next;
    std::vector<std::string> Beams;
  } cases[] = {{0, 1, 1, {"begin"}}, {1, 1, 1, {"continue"}}, {1, 1, 0, {"end"}},
               {0, 2, 1, {"begin", "forward hook"}}, {1, 2, 0, {"end", "backward hook"}},
               {2, 3, 2, {"continue", "continue", "backward hook"}},
               {1, 3, 2, {"continue", "begin", "forward hook"}}, {0, 0, 1, {}}, {0, 2, 0, {}}};
  // clang-format on
  for (const Case& c : cases) {
    const xml::XmlNode note = Access.Parse("<note><type>16th</type><notations/><lyric/></note>");
    Access.AddBeams(note, c.Previous, c.This, c.Next);
    EXPECT_EQ(Texts(note, "beam"), c.Beams) << c.Previous << c.This << c.Next;
    if (!c.Beams.empty()) {
      EXPECT_EQ(note.selectSingleNode("beam[last()]").nextSibling().nodeName(), "notations");
    }
  }
  for (const char* untouched :
       {"<note><rest/></note>", "<note><beam number='1'>end</beam></note>", "<forward/>"}) {
    const xml::XmlNode element = Access.Parse(untouched);
    const std::string before = element.xml();
    Access.AddBeams(element, 1, 1, 1);
    EXPECT_EQ(element.xml(), before);
  }
}

TEST_F(ContentTest, ItemsAreDueWithin48EduAndGetAnOffsetBeyond47) {
  // The item's EDU, the entry's position, whether the item is placed first; due and offset.
  const std::tuple<int32_t, int32_t, bool, bool, int32_t> cases[] = {
      {1024, 1071, false, true, 0}, {1072, 1024, false, true, 48}, {1073, 1024, false, false, 49},
      {0, 2048, false, true, 0},    {300, 1024, true, true, 300},  {40, 1024, true, true, 0},
      {1024, 1024, false, true, 0}, {976, 1024, false, true, -48}};
  for (const auto& [edu, position, placeFirst, due, offset] : cases)
    EXPECT_EQ(std::pair(ToXmlTestAccess::ItemDue(edu, position),
                        ToXmlTestAccess::ItemOffset(placeFirst, edu, position)),
              std::pair(due, offset))
        << edu << " " << position;
}

// Clef and EDU position pairs into the holder of a staff in a measure.
void ClefList(int16_t measure, int16_t list, const std::vector<std::pair<int16_t, int16_t>>& clefs,
              int16_t staff = 1) {
  ClefElement element;
  for (size_t i = 0; i < clefs.size(); ++i) {
    element.Create(list, static_cast<int16_t>(i));
    element.Clef = clefs[i].first;
    element.ClefEdu = clefs[i].second;
    element.Save();
  }
  Gfhold holder;
  ASSERT_TRUE(holder.Load(staff, measure));
  holder.Clef = list;
  holder.Flag = Gfhold::kClefListBit;
  holder.Save();
}

TEST_F(ContentTest, ClefChangesGoOutWhereTheirVoiceReachesThem) {
  ClefList(2, 20, {{0, 0}, {3, 2048}});
  Fill(2, {Made(1024, kNote, {0}), Made(1024, kNote, {1}), Made(1024, kNote, {2}),
           Made(1024, kNote, {3})});
  // Back to treble at the start, bass again on the last beat behind the last entry.
  ClefList(3, 21, {{0, 0}, {3, 3072}});
  Fill(3, {Made(1024, kNote, {0}), Made(1024, kNote, {1})});
  XmlPart& part = Loaded(2, 3);
  EXPECT_EQ(Shape(MeasureOf(part, 2)), "note note attributes note note");
  EXPECT_EQ(Shape(MeasureOf(part, 3)), "attributes note note forward:1024 attributes");
  EXPECT_EQ(MeasureOf(part, 3).selectSingleNode("forward").xml(),
            "<forward><duration>1024</duration></forward>");
  EXPECT_EQ(part.Clefs(1), 3);
  for (int16_t m : {2, 3})
    EXPECT_EQ(MeasureOf(part, m).selectNodes("attributes/clef[@number]").length(), 0)
        << "a part of one staff numbers no clef";
}

// The second staff starts with a backup of what the first wrote, numbers its voices from 9
// and its clefs by its staff.
TEST_F(ContentTest, SecondStaffBacksUpAndNumbersItsVoicesAndClefs) {
  Fill(2, {Made(4096, kNote, {0})});
  Fill(6, {Made(2048, kNote, {0}), Made(2048, kNote, {2})});
  ClefList(2, 22, {{0, 0}, {3, 2048}}, 2);
  XmlPart& part = Loaded(2, 2, 2);
  const xml::XmlNode measure = MeasureOf(part, 2);
  EXPECT_EQ(Shape(measure), "attributes note backup:4096 note attributes note");
  EXPECT_EQ(Joined(measure, "attributes/clef/@number"), "2, 2")
      << "treble at the start of staff 2, which was bass";
  EXPECT_EQ(part.Clefs(2), 3);
  EXPECT_EQ(Joined(measure, "note/voice|note/staff"), "1, 1, 9, 2, 9, 2");
  EXPECT_EQ(part.Voices, 2);
  EXPECT_EQ(part.Layers.at(2), 0);
}

TEST_F(ContentTest, MeasureItemsAreWalkedMeasureByMeasure) {
  Fill(2, {Made(4096, kNote, {0})});
  MeasureItems items;
  items.Add(MeasureItem("DY", 1, 0, 2, 0));
  items.Add(MeasureItem("DY", 2, 0, 2, 3000));
  items.Add(MeasureItem("DY", 3, 0, 3, 0));
  Access.SetItems(1, items);
  XmlPart& part = Loaded(2, 2);
  EXPECT_EQ(Access.ItemCursor(1), 3) << "the items of measure 2 are taken, measure 3 waits";
  Access.LoadMeasures(part, 3, 3);
  EXPECT_EQ(Access.ItemCursor(1), 0) << "past the last item";
}

TEST_F(ContentTest, ForeignFailureIsLoggedWithItsPlaceAndFreesTheFrame) {
  Fill(2, {Made(4096, kRest)});
  XmlPart& part = Access.AddPart(1, 1, 4);
  HostSim().Faults["FxGetMeasureDuration"] = sim::Host::Fault::Throw;
  EXPECT_EQ(Raised([&] { Access.LoadMeasures(part, 2, 2); }),
            Said(Code(0x80040345), kInternalError));
  EXPECT_THAT(Log(), HasSubstr("ToXml LoadMeasure error "));
  EXPECT_THAT(Log(), HasSubstr(" in staff 1, measure 2:  / FxGetMeasureDuration"));
  EXPECT_EQ(Log().find("TGF being deleted"), std::string::npos) << "the frame was freed";
}

TEST_F(ContentTest, ExportedMeasuresFollowTheDocumentType) {
  Fill(1, {Made(512, kNote | kEfNewBeam, {0}, kNoteTieStart), Made(256, kNote | kEfGrace, {1}),
           Made(512, kNote, {2, 4}), Made(256, kRest | kEfHidden), Made(256, kNote, {3}),
           Made(2048, kNote | kEfLaunchesVoiceTwo, {5}), Made(512, kNote | kEfVoiceTwo, {9})});
  Fill(2, {Made(1536, kNote, {0}, kNoteTieEnd | kNoteAccidentalShown), Made(512, kRest, {6}),
           Made(2048, kNote | kEfSplitStem, {0, 1})});
  Fill(5, {Made(4096, kRest)});
  ClefList(3, 20, {{0, 0}, {3, 3072}});
  Fill(3, {Made(1024, kNote, {0})});
  // Layer 0 writes ordinary notes: neither cue nor unspaced.
  HostSim().Doc().Records.at("LayerPrefs").Rows.at({0, 0, 0})[1].Numbers.at(0) |= 0x3000;
  Engine.FileName = Path("out.xml");
  EXPECT_FALSE(Engine.Invoke(0, 0));
  const std::string written = Read(Path("out.xml"));
  EXPECT_TRUE(xml::test_support::ValidScore(written));
  auto doc = xml::XmlDocument::Create();
  doc->validateOnParse = doc->resolveExternals = false;
  ASSERT_TRUE(doc->loadXML(written));
  // Seven notes and one forward: voice two ends the layer, nothing makes up its gap.
  const xml::XmlNode root = doc->documentElement();
  EXPECT_EQ(root.selectNodes("part[1]/measure[1]/note").length(), 7);
  EXPECT_EQ(root.selectNodes("part[1]/measure[1]/forward").length(), 1);
  EXPECT_EQ(root.selectNodes(".//tie").length(), 2);
}

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

// A fifth dot, a tuplet length, nothing and a negative length are no note type.
TEST(ParseDuration, BaseLengthsWithUpToFourDots) {
  const std::pair<int32_t, std::string> cases[] = {
      {16, "256th 0"},        {31, "256th 4"},       {1024, "quarter 0"}, {1536, "quarter 1"},
      {1792, "quarter 2"},    {1984, "quarter 4"},   {768, "eighth 1"},   {3072, "half 1"},
      {4096, "whole 0"},      {8192, "breve 0"},     {16384, "long 0"},   {31744, "long 4"},
      {2032, "untouched -1"}, {341, "untouched -1"}, {0, "untouched -1"}, {-1024, "untouched -1"},
      {1000, "untouched -1"}, {8, "untouched -1"}};
  for (const auto& [duration, expected] : cases) {
    std::string type = "untouched";
    int16_t dots = -1;
    ToXmlTestAccess::ParseDuration(duration, type, dots);
    EXPECT_EQ(type + " " + std::to_string(dots), expected) << duration;
  }
}

TEST_F(DurationsTest, UnitChosenFromSmallestNoteAndTupletFactor) {
  struct Case {
    std::string Name;
    std::string Notes;
    std::string Divisions;
    std::vector<std::string> Durations;
  } cases[] = {
      // clang-format off
      {"quarters only", Note(1024, "quarter") + Note(1024, "quarter"), "1", {"1", "1"}},
      {"eighth triplet", Note(512, "eighth") + Triplet(341, "eighth"), "6", {"3", "2"}},
      {"4 in the time of 2", Tuplet(256, "eighth", 4, 2), "8", {"2"}},
      {"4 in the time of 6", Tuplet(768, "eighth", 4, 6), "24", {"18"}},
      {"a multiple of 5", Note(1000, "quarter") + Note(1024, "quarter"), "1024", {"1000", "1024"}},
      {"an odd length", Note(341, "eighth") + Note(1024, "quarter"), "1024", {"341", "1024"}},
      {"dotted sixteenth", Note(384, "16th", "<dot/>") + Note(128, "32nd"), "8", {"3", "1"}},
      {"forwards and backups follow",
       Note(2048, "half") + "<backup><duration>2048</duration></backup><forward><duration>1024</duration></forward>",
       "1", {"2", "2", "1"}}};
  // clang-format on
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
  // 300 EDU is 2.34 32nd notes; 60 EDU rounds to nothing and goes.
  EXPECT_EQ(Flat(part.Part().selectSingleNode("measure")),
            "<measure><attributes><divisions>8</divisions></attributes>" + Note(16, "half") +
                "<direction><direction-type><words>a</words></direction-type><offset>2</offset>"
                "<staff>1</staff></direction><direction><direction-type><words>b</words>"
                "</direction-type></direction><sound divisions=\"8\"/></measure>");

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
  EXPECT_EQ(Joined(part.Part(), ".//duration"), "2, 2, 2");

  const std::string quintuplet =
      Note(204, "16th",
           "<time-modification><actual-notes>5</actual-notes><normal-notes>4</normal-notes>"
           "</time-modification>");
  XmlPart& mixed = PartOf(Triplet(341, "eighth") + quintuplet);
  Access.ConvertDurations(mixed);
  EXPECT_EQ(Joined(mixed.Part(), "measure/attributes/divisions|.//duration"), "60, 20, 12");
}

TEST_F(DurationsTest, RemoveDuplicateWavyLineKeepsOneAndDropsEmptiedParents) {
  const std::string continues = "<ornaments><wavy-line type='continue'/></ornaments>";
  struct Case {
    std::string Note, Expected;
  } cases[] = {
      // clang-format off
      {"<note><notations>" + continues + "</notations><notations><ornaments><trill-mark/><wavy-line type='start'/></ornaments></notations></note>",
       "<note><notations><ornaments><trill-mark/><wavy-line type=\"start\"/></ornaments></notations></note>"},
      // One always stays.
      {"<note><notations><ornaments><wavy-line type='continue'/><wavy-line type='continue'/></ornaments></notations></note>",
       "<note><notations><ornaments><wavy-line type=\"continue\"/></ornaments></notations></note>"},
      {"<note><notations>" + continues + "</notations></note>",
       "<note><notations><ornaments><wavy-line type=\"continue\"/></ornaments></notations></note>"}};
  // clang-format on
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
