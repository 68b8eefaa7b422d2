// Staff setup on import: neutral records, staff counts, clefs, names, lines, flags, groups,
// and whole parts set up one after the other from inline scores and suite files.

#include "host/bridge.h"
#include "host/handmade_records.h"
#include "host/records.h"
#include "model/xml_part.h"
#include "model_test.h"

namespace ostin {
namespace {

using namespace model_test;

// Staff-tuning elements as line, step and octave, three characters each: "1E2".
std::string Tuning(const std::string& strings) {
  std::string xml;
  for (std::size_t i = 0; i + 2 < strings.size(); i += 3)
    xml += "<staff-tuning line='" + strings.substr(i, 1) + "'><tuning-step>" + strings[i + 1] +
           "</tuning-step><tuning-octave>" + strings[i + 2] + "</tuning-octave></staff-tuning>";
  return xml;
}
const std::string kTuning = Tuning("1E22A23D34G3");

std::string FirstMeasure(const std::string& attributes, const std::string& notes = "") {
  return "<measure number='1'><attributes>" + attributes + "</attributes>" + notes + "</measure>";
}

// Group inci as "start end bracket position flag 2048-bit full-x abbreviated-x full|abbreviated";
// empty when there is none.
std::string Group(int16_t inci, int32_t version = 2004) {
  GroupSpec g;
  g.FinaleVersion = version;
  if (!g.Load(0, inci)) return "";
  std::string text;
  for (int v : V(g.StartInst, g.EndInst, g.BracketID, g.BracketBracpos, g.Flag, g.Auxflag & 2048,
                 g.FullNameXadj, g.AbrvNameXadj))
    text += std::to_string(v) + " ";
  return text + g.FullNameText() + "|" + g.AbrvNameText();
}
// How many groups the score has; they are numbered from 0.
int16_t GroupCount(int32_t version) {
  int16_t count = 0;
  while (!Group(count, version).empty())
    ++count;
  return count;
}

// The staff record as stored.
StaffSpec Stored(int16_t cmper, int32_t version = 2004) {
  StaffSpec record;
  record.FinaleVersion = version;
  EXPECT_TRUE(record.Load(cmper, 0)) << cmper;
  return record;
}

// One staff of a part, edited on its own: each staff gets a new, cleared staff record.
class StaffSetupTest : public ModelTest {
protected:
  StaffSetupTest() : ModelTest("sample.json") {}

  void Setup(const std::string& scorePart, const std::string& measures, int32_t version = 2004) {
    doc_ = OnePart(scorePart, measures);
    part_ = std::make_unique<XmlPart>();
    part_->FinaleVersion = version;
    part_->SetScorePart(doc_->documentElement().selectSingleNode("part-list/score-part"));
    part_->ComputeStaves();
    for (int16_t i = 1; i <= part_->Staves(); ++i) {
      auto staff = std::make_shared<StaffSpec>();
      staff->FinaleVersion = version;
      staff->Create(0, 0);
      staff->Clefs = staff->MoreFlags = staff->Instflag = staff->Flag = 0;
      staff->TopLines = staff->BotLines = 0;
      part_->SetStaffSpecs(i, staff);
      part_->StaffStepPitch.at(i) = "E";
      part_->StaffStepOctave.at(i) = 4;
    }
  }
  StaffSpec Saved(int16_t index) const {
    return Stored(part_->StaffSpecs(index)->Cmper(), part_->FinaleVersion);
  }

  std::shared_ptr<xml::XmlDocument> doc_;
  std::unique_ptr<XmlPart> part_;
};

TEST_F(StaffSetupTest, EditStaffSpecReadsStavesLinesAndNotationFlags) {
  // Staves (the highest count, at least one), TopLines, BotLines, LineOffset, one-line
  // barline and rests, MoreFlags saved; and the line pitch. The line reference starts at 9
  // and "X9": five lines and other content leave it alone.
  const auto edit = [&](const std::string& measures, int16_t moreFlagsBefore) {
    Setup("", measures);
    part_->LineOffset.at(1) = 9;
    part_->StaffLinePitch.at(1) = "X";
    part_->StaffLineOctave.at(1) = 9;
    part_->StaffSpecs(1)->MoreFlags = moreFlagsBefore;
    part_->EditStaffSpec(1);
    EXPECT_EQ(V(part_->MaxVoices, part_->TabStaff, part_->StyleChangeMeasure.at(1),
                part_->StyleChangeEdu.at(1)),
              V(8 * part_->Staves(), 0, 1, 0))
        << measures;
    const StaffSpec s = Saved(1);
    return std::make_pair(
        V(part_->Staves(), s.TopLines, s.BotLines, part_->LineOffset.at(1),
          s.TopBarlineOffset == 48 && s.BotBarlineOffset == -48 && s.Dw_wRest == -1285,
          s.MoreFlags),
        part_->StaffLinePitch.at(1) + std::to_string(part_->StaffLineOctave.at(1)));
  };
  const auto plain = [](int staves, int moreFlags) {
    return std::make_pair(V(staves, 0, 0, 9, 0, moreFlags), std::string("X9"));
  };
  const std::string two = FirstMeasure("<staves>2</staves>");
  // clang-format off
  const std::vector<std::pair<std::string, int>> staves = {
      {"", 1}, {FirstMeasure("<divisions>1</divisions>"), 1}, {two, 2},
      {two + "<measure number='2'><attributes><staves>3</staves></attributes></measure>", 3},
      {FirstMeasure("<staves>0</staves>"), 1}, {FirstMeasure("<staves>x</staves>"), 1}};
  // clang-format on
  for (const auto& [measures, count] : staves)
    EXPECT_EQ(edit(measures, 0), plain(count, 0)) << measures;
  // Staff lines; then TopLines, BotLines, LineOffset, one-line look, and the line pitch.
  // clang-format off
  const std::vector<std::tuple<int, std::vector<int>, std::string>> lines = {
      {1, {1, 4, -4, 1}, "A3"}, {2, {1, 10, -6, 0}, "F3"}, {3, {1, 14, -4, 0}, "A3"},
      {4, {0, 4, -2, 0}, "C4"}, {7, {0, 7, 4, 0}, "B4"}, {5, {0, 0, 9, 0}, "X9"}};
  // clang-format on
  for (const auto& [count, l, pitch] : lines)
    EXPECT_EQ(edit(FirstMeasure("<staff-details><staff-lines>" + std::to_string(count) +
                                    "</staff-lines></staff-details>",
                                "<note><pitch><step>C</step><octave>4</octave></pitch></note>"),
                   0),
              std::make_pair(V(1, l[0], l[1], l[2], l[3], 0), pitch))
        << count;
  // Notes, MoreFlags before and after: flags the content does not use are cleared.
  const std::string up = "<note><stem>up</stem>", tuplet = "<note><notations><tuplet type='start'";
  // clang-format off
  const std::vector<std::tuple<std::string, int16_t, int>> flags = {
      {"<note/>", 0, 0}, {up + "<beam>begin</beam></note>", 0, 0x0418 | 64},
      {"<note><stem>down</stem></note>", 0, 24 | 32}, {up + "</note><note><stem>down</stem></note>", 0, 24},
      {"<note><stem>none</stem></note>", 0, 24}, {"<note><tie/><notations><tied/></notations></note>", 0, 4},
      {"<note><tie/></note>", 0, 0}, {tuplet + "/></notations></note>", 0, 0x2000},
      {tuplet + " bracket='no'/></notations></note>", 0, 0},
      {tuplet + " show-number='none'/></notations></note>", 0, 0},
      {"<note/>", 0x0418 | 4 | 0x2000, 4 | 0x2000}, {up + "<tie/></note>", 4, 24 | 64},
      {up + "<notations><tuplet type='start' bracket='no'/></notations></note>", 0x2000, 24 | 64}};
  // clang-format on
  for (const auto& [notes, before, after] : flags)
    EXPECT_EQ(edit(FirstMeasure("", notes), before), plain(1, after)) << notes << " " << before;
}

// Tablature, and the group's names and flags, as whole parts of a 2004 host get them, are
// checked below; a 2002 host gets no tablature nor the group flag, one staff no group.
TEST_F(StaffSetupTest, OlderHostsMakeNoTablatureAndPlainGroups) {
  Setup("",
        FirstMeasure("<clef><sign>TAB</sign><line>5</line></clef><staff-details>"
                     "<staff-lines>4</staff-lines>" +
                     kTuning + "<capo>2</capo></staff-details>"),
        2002);
  part_->StaffSpecs(1)->MoreFlags = 6;
  part_->StaffSpecs(1)->CapoLowFret = 0;
  part_->EditStaffSpec(1);
  const StaffSpec saved = Saved(1);
  EXPECT_EQ(V(part_->TabStaff, saved.Flag & 0x0200, saved.TopLines, saved.BotLines, saved.MoreFlags,
              saved.Instflag, saved.CapoLowFret),
            V(0, 0, 0, 0, 0, 0, 0));
  for (const auto& [staves, version] : std::vector<std::pair<int, int32_t>>{{3, 2002}, {1, 2004}}) {
    Setup("<part-name>MusicXML Part</part-name>",
          FirstMeasure("<staves>" + std::to_string(staves) + "</staves>"), version);
    part_->StartStaff = 5;
    const int16_t before = GroupCount(version);
    part_->InitializeGroupSpec();
    ASSERT_EQ(GroupCount(version), before + (staves > 1)) << staves;
    EXPECT_EQ(Group(before, version), staves > 1 ? "5 7 3 -12 1024 0 0 0 |" : "") << staves;
  }
}

// Parts of whole scores set up one after the other, as the import does: each takes the
// slots after those of the parts before it, starting in a new document of one staff.
class InitializeStaffSpecsTest : public ModelTest {
protected:
  void Open(std::shared_ptr<xml::XmlDocument> doc) {
    doc_ = std::move(doc);
    parts_.clear();
    nextSlot_ = 1;
  }
  XmlPart& Next() {
    auto part = std::make_unique<XmlPart>();
    part->FinaleVersion = 2004;
    part->SetPart(doc_->documentElement().selectSingleNode(
        "part[" + std::to_string(parts_.size() + 1) + "]"));
    part->StartSlot = nextSlot_;
    part->InitializeStaffSpecs();
    nextSlot_ = static_cast<int16_t>(nextSlot_ + part->Staves());
    parts_.push_back(std::move(part));
    return *parts_.back();
  }
  static int16_t FretInstruments() {
    FretInstrument instrument;
    int16_t count = 0;
    while (instrument.Load(static_cast<int16_t>(count + 1), 0))
      ++count;
    return count;
  }

  std::shared_ptr<xml::XmlDocument> doc_;
  std::vector<std::unique_ptr<XmlPart>> parts_;
  int16_t nextSlot_ = 1;
};

TEST_F(InitializeStaffSpecsTest, SuitePartsSetUpTheirStaves) {
  // A row for each staff: TabStaff, PercussionStaff, NoTime, beats and Divbeat of its part;
  // then Clefs, AltFlag, Instflag & 0x0630, Flag & 0x2200, Mfont, Sizeefx, TopLines, BotLines,
  // LineSpace, FretInstID, Transposition, DrumStaffCmper of its staff, and a drum staff made.
  const auto tab = [](int strings, int fret) {
    return "1 0 1 4 1024 16 1792 48 512 3 2560 0 " + std::to_string(strings) + " 2304 " +
           std::to_string(fret) + " 0 0 0";
  };
  // clang-format off
  const std::vector<std::pair<std::string, std::vector<std::string>>> files = {
      // Piano: two staves from slot 1, the document's staff, on.
      {"43a-PianoStaff.xml", {"0 0 0 0 0 0 1792 0 0 1 6144 0 5 0 0 0 0 0",
                              "0 0 0 0 0 3 1792 1536 0 1 6144 0 5 0 0 0 0 0"}},
      // Guitar, guitar again, two other guitar tunings, bass, banjo, lute, ukulele.
      {"71e-TabStaves.xml", {tab(6, 1), tab(6, 1), tab(6, 2), tab(6, 3), tab(4, 4), tab(5, 5),
                             tab(6, 6), tab(4, 7)}},
      // Trumpet in B flat (a second up, two sharps), horn in E flat (a sixth up, three sharps), C.
      {"72a-TransposingInstruments.xml", {"0 0 0 0 0 0 1792 0 0 1 6144 0 5 0 0 66 0 0",
                                          "0 0 0 0 0 0 1792 0 0 1 6144 0 5 0 0 323 0 0",
                                          "0 0 0 0 0 0 1792 0 0 1 6144 0 5 0 0 0 0 0"}},
      // Timpani in the bass clef; percussion clef; percussion clef on one line.
      {"73a-Percussion.xml", {"0 0 0 0 0 3 1792 0 0 1 6144 0 5 0 0 0 0 0",
                              "0 1 0 0 0 12 1792 0 8192 5 6144 0 5 0 0 0 2 1",
                              "0 1 0 0 0 12 1792 0 8192 5 6144 1 4 0 0 0 3 1"}}};
  // clang-format on
  for (const auto& [file, expected] : files) {
    OSTIN_NEED_CORPUS(doc, file);
    Reopen();
    Open(doc);
    std::vector<std::string> rows;
    while (rows.size() < expected.size()) {
      const XmlPart& p = Next();
      for (int16_t staff = p.StartStaff; staff < p.StartStaff + p.Staves(); ++staff) {
        const StaffSpec s = Stored(staff);
        DrumStaff drums;
        rows.push_back(
            Joined(V(p.TabStaff, p.PercussionStaff, p.NoTime, p.XmlBeats(), p.FinaleDivbeat,
                     s.Clefs, s.AltFlag, s.Instflag & 0x0630, s.Flag & 0x2200, s.Mfont, s.Sizeefx,
                     s.TopLines, s.BotLines, s.LineSpace, s.FretInstID, s.Transposition,
                     s.DrumStaffCmper, drums.Load(staff, 0, kDrumStaffTag))));
      }
    }
    EXPECT_EQ(rows, expected) << file;
  }
}

TEST_F(InitializeStaffSpecsTest, PianoStaffGetsTwoStavesAndAGroup) {
  OSTIN_NEED_CORPUS(doc, "43a-PianoStaff.xml");
  Open(doc);
  const XmlPart& part = Next();
  EXPECT_EQ(V(part.Staves(), part.StartStaff, FxSlotToInst(2, 0), part.Clefs(2)), V(2, 1, 2, 3))
      << "slot 2 was made for the second staff";
  EXPECT_EQ(part.NoteheadFont.at(2) + "|" + part.AccidentalFont.at(1), "Maestro|Maestro");
  // The part is named MusicXML Part: the group takes no name.
  EXPECT_EQ(Group(0), "1 2 3 -12 1024 2048 0 0 |");
}

TEST_F(InitializeStaffSpecsTest, TabStavesShareFretInstrumentsByTuning) {
  OSTIN_NEED_CORPUS(doc, "71e-TabStaves.xml");
  Open(doc);
  for (int k = 0; k < 8; ++k)
    Next();
  EXPECT_EQ(FretInstruments(), 7);
  // Id, name; then the tuning, highest string first.
  const std::vector<std::tuple<int16_t, std::string, std::vector<int16_t>>> made = {
      {1, "MusicXML P1", {64, 59, 55, 50, 45, 40}},
      {2, "MusicXML P3", {64, 57, 54, 50, 45, 38}},
      {5, "MusicXML P6", {62, 60, 55, 50, 67}}};
  for (const auto& [id, name, tuning] : made) {
    FretInstrument instrument;
    ASSERT_TRUE(instrument.Load(id, 0));
    EXPECT_EQ(instrument.Name, name);
    EXPECT_EQ(V(instrument.NoOfStrings, instrument.NoOfFrets, instrument.SpeedyClef),
              V(static_cast<int>(tuning.size()), 30, 5));
    for (std::size_t j = 0; j < tuning.size(); ++j)
      EXPECT_EQ(instrument.Tuning(static_cast<int>(j + 1)), tuning[j]) << name << " " << j;
  }
}

TEST_F(InitializeStaffSpecsTest, EdgesOfOnePart) {
  const std::string note = "<note><pitch><step>C</step><octave>4</octave></pitch></note>";
  const std::string gClef = "<clef><sign>G</sign><line>2</line></clef>";
  struct Case {
    std::string Name, ScorePart, Measure;
    int16_t Clef, BotLines;
    bool Map;
    std::string FullName;
  } cases[] = {
      {"no clef keeps the loaded clef", "<part-name>Viola</part-name>",
       "<attributes><time><beats>3</beats><beat-type>4</beat-type></time></attributes>" + note, 5,
       5, false, "Viola"},
      {"no pitch and no sign", "", "<note><unpitched/></note>", 5, 5, true, ""},
      {"unpitched instrument",
       "<midi-instrument id='I1'><midi-unpitched>39</midi-unpitched></midi-instrument>", note, 5, 5,
       true, ""},
      {"a G clef is no drum", "", "<attributes>" + gClef + "</attributes><note><unpitched/></note>",
       0, 5, false, ""},
      {"MusicXML Part", "<part-name>MusicXML Part</part-name>", note, 5, 5, false, ""},
      {"tablature details without the tablature clef", "",
       "<attributes>" + gClef + "<staff-details><staff-lines>4</staff-lines>" + kTuning +
           "</staff-details></attributes>" + note,
       0, 4, false, ""}};
  for (const Case& c : cases) {
    Reopen();
    StaffSpec loaded = Stored(1);
    loaded.Clefs = 5;
    loaded.Save();
    Open(OnePart(c.ScorePart, "<measure number='1'>" + c.Measure + "</measure>"));
    XmlPart& part = Next();
    StaffSpec staff = Stored(1);
    EXPECT_EQ(
        V(part.StartStaff, staff.Clefs, staff.TopLines, staff.BotLines, staff.TopBarlineOffset,
          part.TabStaff, part.PercussionStaff, FretInstruments(), part.NoTime),
        V(1, c.Clef, 0, c.BotLines, 0, 0, c.Map, 0, c.Measure.find("<beats>") == std::string::npos))
        << c.Name;
    EXPECT_EQ(staff.FullNameText(), c.FullName) << c.Name;
  }
}

TEST_F(InitializeStaffSpecsTest, TablatureOfTwoStavesNeedsTheStaffNumber) {
  const std::string clefs = "<staves>2</staves><clef number='1'><sign>G</sign><line>2</line>"
                            "</clef><clef number='2'><sign>TAB</sign><line>5</line></clef>";
  // Without a number the details are no staff's. TabStaff, Flag 0x0200, FretInstID, capo,
  // TopLines, BotLines, MoreFlags, Instflag and LineSpace of the second staff.
  for (const auto& [number, expected] : std::vector<std::pair<std::string, std::vector<int>>>{
           {" number='2'", {2, 0x0200, 1, 2, 0, 4, 0x1181, 0x0600 | 48, 2304}},
           {"", {0, 0, 0, 0, 0, 5, 0, 0x0600 | 16, 0}}}) {
    Reopen();
    Open(OnePart("<part-name>Guitar</part-name><part-abbreviation>Gtr.</part-abbreviation>",
                 FirstMeasure(clefs + "<staff-details" + number + "><staff-lines>4</staff-lines>" +
                              kTuning + "<capo>2</capo></staff-details>")));
    XmlPart& part = Next();
    StaffSpec notation = Stored(1), tablature = Stored(2);
    EXPECT_EQ(notation.Flag & 0x0200, 0) << number;
    EXPECT_EQ(V(part.TabStaff, tablature.Flag & 0x0200, tablature.FretInstID, tablature.CapoLowFret,
                tablature.TopLines, tablature.BotLines, tablature.MoreFlags, tablature.Instflag,
                tablature.LineSpace),
              expected)
        << number;
    EXPECT_EQ(tablature.Clefs, 16) << number;
    EXPECT_EQ(tablature.FullNameText(), "") << "the group carries the name";
    EXPECT_EQ(Group(0), "1 2 3 -12 1024 2048 -48 -48 Guitar|Gtr.") << number;
  }
}

TEST_F(InitializeStaffSpecsTest, SlotsWithoutStaffGetNewStaves) {
  Open(OnePart("<part-name>Oboe</part-name><part-abbreviation>Ob.</part-abbreviation>", ""));
  nextSlot_ = 4;
  XmlPart& part = Next();
  EXPECT_EQ(part.StartStaff, 2) << "the next free staff number";
  EXPECT_EQ(FxInstToSlot(2, 0), 2) << "appended to the score's staff list";
  EXPECT_EQ(Stored(2).FullNameText() + "|" + Stored(2).AbbrvNameText(), "Oboe|Ob.");
  EXPECT_EQ(Stored(2).AltFlag, 0x0700);
}

TEST_F(InitializeStaffSpecsTest, FindFretInstSkipsOtherInstrumentsAndBadLines) {
  Open(OnePart("", FirstMeasure("<staff-details><staff-lines>3</staff-lines>" +
                                Tuning("1E2xA23D3") + "</staff-details>")));
  // The same tuning on diatonic frets, and one string too many: neither matches.
  FretInstrument other;
  for (int16_t strings : {3, 4}) {
    other.Create(-1, 0);
    other.NoOfStrings = strings;
    if (strings == 3) other.DiatonicStepsLo = 1;
    other.StringTuning[0] = 50;
    other.StringTuning[2] = 40;
    other.Save();
  }
  XmlPart part;
  part.SetPart(doc_->documentElement().selectSingleNode("part"));
  const xml::XmlNodeList tuning = part.Part().selectNodes(".//staff-tuning");
  int16_t id = 0;
  part.FindFretInst(tuning, id);
  EXPECT_EQ(id, 3);
  FretInstrument made;
  ASSERT_TRUE(made.Load(3, 0));
  EXPECT_EQ(V(made.Tuning(1), made.Tuning(2), made.Tuning(3)), V(50, 0, 40))
      << "a line that is not a number leaves its string 0";
  int16_t again = 0;
  part.FindFretInst(tuning, again);
  EXPECT_EQ(again, 3);
  EXPECT_EQ(FretInstruments(), 3);
}

} // namespace
} // namespace ostin
