// Entries into notes: chords, ties and their starts, cue and hidden notes, stems, dots,
// accidentals, pitches and the grace note's time taken from the note after it.
#include "export_test_support.h"

namespace ostin {
namespace {

using testing::ContentTest;
using testing::Flat;
using ::testing::HasSubstr;
using testing::Joined;
using testing::kNote;
using testing::kRest;
using ::testing::Not;
using testing::Raised;
using testing::Texts;

class EntriesTest : public ContentTest {
protected:
  // A record of an entry, made with the fields that `set` gives it.
  template <class Record> static void Saved(int32_t entnum, std::function<void(Record&)> set) {
    Record record;
    record.Create(entnum, 0);
    set(record);
    record.Save();
  }
  // Measures 2 to 4 of a one-staff part, each from one whole note with that Note.Flag.
  XmlPart& TiedWholeNotes(std::vector<std::pair<int16_t, int32_t>> notes) {
    for (size_t i = 0; i < notes.size(); ++i)
      Fill(static_cast<int16_t>(2 + i), {Made(4096, kNote, {notes[i].first}, notes[i].second)});
    XmlPart& part = Access.AddPart(1, 1, 4);
    Access.LoadMeasures(part, 2, static_cast<int16_t>(1 + notes.size()));
    return part;
  }
  // The types of the ties, then of the tieds, of the first note of the measure.
  static std::string Ties(const XmlPart& part, int16_t measure) {
    const xml::XmlNode note = MeasureOf(part, measure).selectSingleNode("note");
    return Joined(note, "tie/@type") + " | " + Joined(note, "notations/tied/@type");
  }
};

TEST_F(EntriesTest, TiesFindTheirStartInThisOrTheLastMeasureOnly) {
  // C4 tied into measure 3; E4 in measure 4 ends a tie that never started.
  XmlPart& part =
      TiedWholeNotes({{0, kNoteTieStart}, {0, kNoteTieEnd | kNoteTieStart}, {2, kNoteTieEnd}});
  EXPECT_EQ(Ties(part, 2), "start | start");
  EXPECT_EQ(Ties(part, 3), "stop, start | stop, start");
  EXPECT_EQ(Ties(part, 4), "(none) | (none)") << "a tie end without a start is an ordinary note";

  // Two measures away is too far.
  Fill(2, {Made(4096, kNote, {0}, kNoteTieStart)});
  Fill(3, {Made(4096, kNote, {4})});
  Fill(4, {Made(4096, kNote, {0}, kNoteTieEnd)});
  XmlPart& far = Loaded(2, 4);
  EXPECT_EQ(Ties(far, 4), "(none) | (none)");
}

TEST_F(EntriesTest, CueNotesAndHiddenTiesKeepWhatTheyShow) {
  // A cue note has no tie but still a tied.
  XmlPart& cue = TiedWholeNotes({{0, kNoteTieStart}, {0, kNoteTieEnd | kNoteCue}});
  EXPECT_EQ(Ties(cue, 3), "(none) | stop");
  EXPECT_TRUE(MeasureOf(cue, 3).selectSingleNode("note/cue"));
  EXPECT_EQ(Texts(MeasureOf(cue, 3), "note/type/@size"), std::vector<std::string>{"full"});

  // A staff that hides ties: the note behind the tie is not printed.
  Fill(2, {Made(4096, kNote, {0}, kNoteTieStart)});
  Fill(3, {Made(4096, kNote, {0}, kNoteTieEnd)});
  XmlPart& hidden = Access.AddPart(1, 1, 4);
  Access.SetShowTies(1, false);
  Access.LoadMeasures(hidden, 2, 3);
  const xml::XmlNode behind = MeasureOf(hidden, 3).selectSingleNode("note");
  EXPECT_EQ(Ties(hidden, 3), "stop | (none)");
  EXPECT_EQ(behind.getAttribute("print-object"), "no");
  EXPECT_FALSE(behind.selectSingleNode("notations"));
}

TEST_F(EntriesTest, ChordNotesShareVoiceStemAndStaff) {
  Fill(2, {Made(2048, kNote, {0, 4}), Made(2048, kRest | kEfFloatingRest, {6})});
  XmlPart& part = Loaded(2, 2, 2);
  const xml::XmlNode measure = MeasureOf(part, 2);
  EXPECT_EQ(Shape(measure), "note note note backup:4096") << "staff 2 has an empty frame";
  EXPECT_EQ(Shape(measure.selectSingleNode("note[1]")), "pitch duration voice type stem staff");
  EXPECT_EQ(Shape(measure.selectSingleNode("note[2]")),
            "chord pitch duration voice type stem staff");
  EXPECT_EQ(Joined(measure, "note[position() < 3]/*[self::voice or self::staff or self::pitch]"),
            "C4, 1, 1, G4, 1, 1");
  EXPECT_EQ(Texts(measure, "note[2]/stem"), Texts(measure, "note[1]/stem"));
  const xml::XmlNode rest = measure.selectSingleNode("note[3]");
  EXPECT_EQ(rest.xml(), "<note><rest/><duration>2048</duration><voice>1</voice>"
                        "<type>half</type><staff>1</staff></note>");
}

TEST_F(EntriesTest, HiddenNotesAndRestsByHostYear) {
  for (int32_t version : {2004, 2001}) {
    Access.Start(version);
    Fill(2, {Made(1024, kNote | kEfHidden, {0}), Made(1024, kRest | kEfHidden),
             Made(2048, kNote, {2})});
    XmlPart& part = Loaded(2, 2);
    const xml::XmlNode measure = MeasureOf(part, 2);
    EXPECT_EQ(Shape(measure), "note forward:1024 note") << version;
    const xml::XmlNode hidden = measure.selectSingleNode("note[1]");
    EXPECT_EQ(hidden.getAttribute("print-object"), "no") << version;
    EXPECT_EQ(static_cast<bool>(hidden.selectSingleNode("cue")), version < 2002) << version;
    EXPECT_EQ(measure.selectSingleNode("forward").xml(),
              "<forward><duration>1024</duration><voice>1</voice></forward>");
  }
}

TEST_F(EntriesTest, StemsDotsAndAccidentals) {
  Fill(2, {Made(1024, kNote | kEfSplitStem, {0}), Made(1024, kNote | kEfSplitStem, {0, 4}),
           Made(4096, kNote, {2}), Made(1536, kNote, {4}, kNoteAccidentalShown),
           Made(768, kRest, {6})});
  SetBeats(2, 9); // room for all five entries
  HostSim().Doc().Frames.Frames[2][1].Notes[1].Flag |= kNoteSplitStemUp;
  HostSim().Doc().Frames.Frames[2][3].Notes[0].Alteration = 1;
  HostSim().Doc().Frames.Frames[2][3].Notes[0].Flag |= kNoteAccidentalParentheses;
  XmlPart& part = Access.AddPart(1, 1, 4);
  Access.SetShowDots(1, false);
  Access.LoadMeasures(part, 2, 2);
  const xml::XmlNode measure = MeasureOf(part, 2);
  // A split stem, a chord of a split stem up, and a whole note without stem.
  EXPECT_EQ(Joined(measure, "note[position() < 5]/stem"), "double, down, up");
  // The children of a note in the order of the document type.
  const xml::XmlNode dotted = measure.selectSingleNode("note[5]");
  EXPECT_EQ(Shape(dotted), "pitch duration voice type dot accidental stem");
  EXPECT_EQ(Joined(dotted, "@print-dot|pitch/alter|accidental|accidental/@*"), "no, 1, sharp, yes");
  EXPECT_EQ(Joined(measure, "note[6]/@print-dot|note[6]/type"), "no, eighth");
}

TEST_F(EntriesTest, PitchesFollowKeyAndAlteration) {
  XmlPart& part = Access.AddPart(1, 1, 1);
  // Fifths of the key, Tcd and alteration; step, alter and octave.
  const std::tuple<int16_t, int16_t, int16_t, std::string> cases[] = {
      {0, 0, 0, "C, 4"},    {0, 7, 0, "C, 5"},  {0, -1, 0, "B, 3"},     {0, 3, 1, "F, 1, 4"},
      {1, 3, 0, "F, 1, 4"}, {1, 3, -1, "F, 4"}, {-2, 6, 0, "B, -1, 4"}, {-2, 6, -1, "B, -2, 4"}};
  for (const auto& [fifths, tcd, alteration, expected] : cases) {
    xml::XmlNode key = Access.Element("key");
    key.appendChild(Access.Element("fifths", std::to_string(fifths)));
    part.SetKey(key);
    part.Tonic = "C";
    EXPECT_EQ(Joined(Access.CreatePitch(tcd, alteration, part), "*"), expected)
        << fifths << " " << tcd << " " << alteration;
  }
}

TEST_F(EntriesTest, PrintObjectByAlternateNotationAndLayerVisibility) {
  XmlPart& part = Access.AddPart(1, 1, 1);
  const std::tuple<int16_t, bool, std::string> cases[] = {// notation, visible, print-object
                                                          {0, true, ""},    {0, false, "no"},
                                                          {6, false, "no"}, {2, true, "yes"},
                                                          {2, false, ""},   {5, true, "yes"}};
  for (const auto& [notation, visible, printObject] : cases) {
    part.AlternateNotation.at(1) = notation;
    part.LayerVisible.at(1).at(0) = visible;
    EXPECT_EQ(Access.FindPrintObject(0, 1, part), printObject) << notation << visible;
  }
}

TEST_F(EntriesTest, StartOfTieSearchesBackwardsAndStopsAtATieEnd) {
  const xml::XmlNode part = Access.Parse(
      "<part><measure><note><pitch><step>C</step><octave>4</octave></pitch>"
      "<tie type='start'/></note></measure>"
      "<measure><note><pitch><step>C</step><octave>4</octave></pitch><tie type='stop'/></note>"
      "<note><pitch><step>D</step><octave>4</octave></pitch><tie type='start'/><staff>2</staff>"
      "</note><note><pitch><step>D</step><octave>4</octave></pitch><staff>1</staff></note>"
      "<note><pitch><step>C</step><alter>2</alter><octave>4</octave></pitch></note>"
      "<note><pitch><step>B</step><alter>1</alter><octave>3</octave></pitch></note>"
      "<note><pitch><step>E</step><octave>4</octave></pitch><tie type='start'/></note>"
      "</measure><measure><note><pitch><step>E</step><octave>4</octave></pitch></note>"
      "</measure></part>");
  const xml::XmlNode second = part.selectSingleNode("measure[2]");
  EXPECT_FALSE(Access.StartOfTie(second.selectSingleNode("note[5]")))
      << "B#3 sounds as C4, whose last note has only a tie end";
  EXPECT_EQ(Access.StartOfTie(second.selectSingleNode("note[4]")),
            second.selectSingleNode("note[2]"))
      << "C##4 sounds as D4 and finds the D4 with a tie start";
  EXPECT_FALSE(Access.StartOfTie(second.selectSingleNode("note[3]")))
      << "the tie start of D4 stands on staff 2";
  EXPECT_EQ(Access.StartOfTie(part.selectSingleNode("measure[3]/note")),
            second.selectSingleNode("note[6]"))
      << "the measure before";
}

TEST_F(EntriesTest, GraceNoteStealsTimeFromTheNoteAfterIt) {
  // Start and end changes of the grace note and of the next; the time stolen.
  const std::tuple<int16_t, int16_t, int16_t, int16_t, std::string> cases[] = {
      {0, 10, 20, 0, "2"}, {0, 100, 100, 0, "10"}, {17, 10, 20, 0, ""},
      {0, 10, 20, 17, ""}, {0, 0, 17, 0, ""},      {-1, 10, 20, 0, ""}};
  for (const auto& [graceStadd, graceEnadd, nextStadd, nextEnadd, steal] : cases) {
    Store() = sim::FrameStore{};
    auto& records = HostSim().Doc().Records;
    if (auto table = records.find("PerformanceData"); table != records.end())
      table->second.Rows.clear();
    constexpr int32_t playable = kNote | kEfPerformanceData;
    Fill(2,
         {Made(256, playable | kEfGrace, {1}), Made(1024, playable, {2}), Made(3072, kNote, {4})});
    for (auto [entnum, stadd, enadd] :
         {std::tuple{1, graceStadd, graceEnadd}, std::tuple{2, nextStadd, nextEnadd}}) {
      Saved<PerformanceData>(entnum, [&](PerformanceData& data) {
        data.NoteID = 1, data.Stadd = stadd, data.Enadd = enadd;
      });
    }
    Access.Start(2004);
    XmlPart& part = Loaded(2, 2);
    const xml::XmlNode grace = MeasureOf(part, 2).selectSingleNode("note/grace");
    ASSERT_TRUE(grace);
    EXPECT_EQ(grace.getAttribute("steal-time-following"), steal)
        << graceStadd << " " << graceEnadd << " " << nextStadd << " " << nextEnadd;
  }
}

TEST_F(EntriesTest, LayerOptionsMakeCueAndUnspacedNotes) {
  Fill(2, {Made(4096, kNote, {0})});
  Fill(3, {Made(4096, kNote, {0}, kNoteNoSpacing)});
  XmlPart& part = Access.AddPart(1, 1, 4);
  Access.LayerCue(0) = true;
  Access.LoadMeasures(part, 2, 3);
  EXPECT_TRUE(MeasureOf(part, 2).selectSingleNode("note/cue"));
  EXPECT_EQ(MeasureOf(part, 2).selectSingleNode("note").getAttribute("print-spacing"), "");
  EXPECT_EQ(MeasureOf(part, 3).selectSingleNode("note").getAttribute("print-spacing"), "no");
}

TEST_F(EntriesTest, ForeignFailureOfAnEntryNamesInstrumentMeasureAndEntry) {
  Fill(2, {Made(1024, kNote, {0}), Made(3072, kNote, {2})});
  XmlPart& part = Access.AddPart(1, 1, 4);
  part.PercussionStaff = true;
  HostSim().Faults["FxNoteToMidi"] = sim::Host::Fault::Throw;
  EXPECT_EQ(Raised([&] { Access.LoadMeasures(part, 2, 2); }),
            testing::Said(Code(0x80040353), kInternalError))
      << "it passes LoadMeasure unchanged";
  EXPECT_THAT(Log(), HasSubstr("ToXml LoadEntry error "));
  EXPECT_THAT(Log(), HasSubstr(" in instrument 1, measure 2, entry 1:  / FxNoteToMidi"));
  EXPECT_THAT(Log(), Not(HasSubstr("ToXml LoadMeasure error")));
}

TEST_F(EntriesTest, QuarterToneAccidentalsOfTheAccidentalRecord) {
  struct Case {
    int32_t Version;
    int16_t Alter, NoteID, Altacc;
    std::string Text;
    bool QuarterTone;
  } cases[] = {// clang-format off
      {2004, 0, 1, 66, "quarter-flat", true}, {2004, 1, 1, 66, "sharp", true}, {2004, -1, 1, 181, "flat", true},
      {2004, 0, 1, 181, "quarter-sharp", true}, {2004, -1, 1, 73, "three-quarters-flat", true},
      {2004, 0, 2, 66, "natural", false}, {2004, 2, 1, 65, "double-sharp", false},
      {2000, 0, 1, 66, "natural", false}, {2004, 3, 1, 66, "", false}};
  // clang-format on
  const auto acci = [](int32_t entnum, int16_t noteID, int16_t altacc) {
    Saved<AcciAlterations>(entnum,
                           [&](AcciAlterations& r) { r.NoteID = noteID, r.Altacc = altacc; });
  };
  for (const Case& c : cases) {
    auto& records = HostSim().Doc().Records;
    if (auto table = records.find("AcciAlterations"); table != records.end())
      table->second.Rows.clear();
    acci(7, c.NoteID, c.Altacc);
    Access.SetFinaleVersion(c.Version);
    bool quarterTone = !c.QuarterTone;
    const xml::XmlNode accidental = Access.CreateAccidental(c.Alter, 7, 1, "Tamburo", quarterTone);
    EXPECT_EQ(accidental ? accidental.text() : std::string(), c.Text) << c.Alter << c.Altacc;
    EXPECT_EQ(quarterTone, c.QuarterTone) << c.Alter << c.Altacc;
  }

  // On a note: the alter of a flat pitch is rewritten, a natural pitch keeps none.
  Access.SetFinaleVersion(2004);
  Fill(2, {Made(2048, kNote, {6}, kNoteAccidentalShown),
           Made(2048, kNote, {2}, kNoteAccidentalShown)});
  Store().Frames[2][0].Notes[0].Alteration = -1;
  for (int32_t entnum : {Store().Frames[2][0].Entnum, Store().Frames[2][1].Entnum})
    acci(entnum, 1, 66);
  XmlPart& part = Access.AddPart(1, 1, 4);
  part.AccidentalFont.at(1) = "Tamburo";
  Access.LoadMeasures(part, 2, 2);
  EXPECT_EQ(Joined(MeasureOf(part, 2), "note/pitch/alter|note/accidental"),
            "-0.5, quarter-flat, quarter-flat");
}

TEST_F(EntriesTest, PercussionNotesStandWhereTheirInstrumentSays) {
  Fill(2, {Made(1024, kNote, {0}), Made(2048, kNote, {2})});
  XmlPart& part = Access.AddPart(1, 1, 4);
  part.PercussionStaff = true;
  part.NoteheadFont.at(1) = "Tamburo";
  // C4 plays key 60: its instrument stands on the fourth step from the bottom line.
  part.PercussionMap.Add({61, "P1-I61", "Snare", 61, 4, 33, 33, true}, "61");
  part.Instruments = 2;
  part.LayerInstruments.at(1).at(0) = "P1-I2";
  Access.LoadMeasures(part, 2, 2);
  // E4 plays key 64, which the map lacks: the note's own place, the layer's instrument.
  EXPECT_EQ(Joined(MeasureOf(part, 2), "note/unpitched/*|note/instrument/@id|note/notehead|"
                                       "note/notehead/@*|note/unpitched/@*"),
            "G, 4, P1-I61, triangle, no, E, 4, P1-I2");
}

TEST_F(EntriesTest, NoteDetailsTransposedPitchesAndWhatShapesLeaveOpen) {
  constexpr int32_t detailed = kNote | kEfNoteDetails | kEfTieAlterations;
  Fill(2,
       {Made(1024, detailed, {0}, kNoteTieStart), Made(1024, kNote, {0}), Made(2048, kNote, {1})});
  const int32_t entnum = Store().Frames[2][0].Entnum;
  Saved<NoteMods>(entnum, [](NoteMods& mods) { mods.Percent = 60; });
  Saved<NoteAlterations>(entnum, [](NoteAlterations& head) {
    head.NoteID = 1, head.Percent = 100, head.Altnhead = 33;
  });
  Saved<TieAlteration>(entnum, [](TieAlteration& tie) { tie.NoteID = 1, tie.Flag = 0x0801; });
  XmlPart& part = Access.AddPart(1, 1, 4);
  part.NoteheadFont.at(1) = "Tamburo";
  // Up a minor second: a step up, one semitone.
  part.TransposeChromatic = true;
  part.TransposeChromaticInterval = 1;
  part.TransposeChromaticSteps = 1;
  Access.SetOctaveShift(1, 1);
  Access.SetWavyLineOpen(1, true);
  Access.LoadMeasures(part, 2, 2);
  const xml::XmlNode first = MeasureOf(part, 2).selectSingleNode("note[1]");
  EXPECT_EQ(first.selectSingleNode("pitch").xml(),
            "<pitch><step>D</step><alter>-1</alter><octave>5</octave></pitch>");
  EXPECT_EQ(first.selectSingleNode("type").xml(), "<type size=\"cue\">quarter</type>");
  EXPECT_EQ(first.selectSingleNode("notehead").xml(),
            "<notehead filled=\"no\">triangle</notehead>");
  EXPECT_EQ(first.selectSingleNode("notations").xml(),
            "<notations><tied type=\"start\" orientation=\"under\"/><ornaments>"
            "<wavy-line type=\"continue\"/></ornaments></notations>");
  EXPECT_EQ(Flat(MeasureOf(part, 2).selectSingleNode("note[3]/pitch")),
            "<pitch><step>E</step><alter>-1</alter><octave>5</octave></pitch>")
      << "D up a minor second is E flat";
}

TEST_F(EntriesTest, CrossStaffNotesNameTheStaffTheyAreDrawnOn) {
  Fill(2, {Made(1024, kNote | kEfCrossStaff, {0, 4}, 0), Made(3072, kNote, {2})});
  Store().Frames[2][0].Notes[1].Flag |= kNoteCrossStaff;
  Saved<CrossStaff>(Store().Frames[2][0].Entnum,
                    [](CrossStaff& record) { record.NoteID = 2, record.Instrument = 2; });
  XmlPart& part = Loaded(2, 2, 2);
  EXPECT_EQ(Joined(MeasureOf(part, 2), "note/staff"), "1, 2, 1");
}

} // namespace
} // namespace ostin
