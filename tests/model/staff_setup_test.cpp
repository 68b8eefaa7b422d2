// Staff setup on import: neutral records, staff counts, clefs, names, lines and flags.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/bridge.h"
#include "host/handmade_records.h"
#include "host/records.h"
#include "model/xml_part.h"

namespace ostin {
namespace {

using testing::HostTest;
using xml::test_support::Loaded;

class StaffSetupTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json");
  }

  // A score of one part with that score-part content and those measures; the part is set
  // up with a new staff record for each of its staves.
  void Setup(const std::string& scorePart, const std::string& measures, int32_t version = 2004) {
    doc_ =
        Loaded("<score-partwise><part-list><score-part id='P1'>" + scorePart +
               "</score-part></part-list><part id='P1'>" + measures + "</part></score-partwise>");
    part_ = std::make_unique<XmlPart>();
    part_->FinaleVersion = version;
    part_->SetScorePart(doc_->documentElement().selectSingleNode("part-list/score-part"));
    part_->ComputeStaves();
    for (int16_t i = 1; i <= part_->Staves(); ++i) {
      auto staff = std::make_shared<StaffSpec>();
      staff->FinaleVersion = version;
      staff->Create(0, 0);
      staff->Clefs = 0;
      staff->MoreFlags = 0;
      staff->Instflag = 0;
      staff->Flag = 0;
      staff->TopLines = 0;
      staff->BotLines = 0;
      part_->SetStaffSpecs(i, staff);
      part_->StaffStepPitch.at(i) = "E";
      part_->StaffStepOctave.at(i) = 4;
    }
  }
  // The staff record as saved.
  StaffSpec Saved(int16_t index) const {
    StaffSpec record;
    record.FinaleVersion = part_->FinaleVersion;
    EXPECT_TRUE(record.Load(part_->StaffSpecs(index)->Cmper(), 0));
    return record;
  }
  static std::string FirstMeasure(const std::string& attributes, const std::string& notes = "") {
    return "<measure number='1'><attributes>" + attributes + "</attributes>" + notes + "</measure>";
  }

  std::shared_ptr<xml::XmlDocument> doc_;
  std::unique_ptr<XmlPart> part_;
};

TEST_F(StaffSetupTest, ClearStaffSpecKeepsOnlyUnrelatedBits) {
  struct Case {
    int16_t AltFlag, Flag, Instflag;
    int16_t WantAltFlag, WantFlag, WantInstflag;
  } cases[] = {
      {0x0F0F, 0x7FFF, 0x7FFF, 0x0F00, 0x5D5F, 0x3FC7},
      {0x0007, 0x22A0, 0x0038, 0x0000, 0x0000, 0x0000},
      {static_cast<int16_t>(0x8010), 0x0001, static_cast<int16_t>(0xC001),
       static_cast<int16_t>(0x8010), 0x0001, 0x0001},
  };
  for (const Case& c : cases) {
    StaffSpec staff;
    staff.AltFlag = c.AltFlag;
    staff.Flag = c.Flag;
    staff.Instflag = c.Instflag;
    staff.Mfont = 3;
    staff.Clefs = 4;
    staff.Transposition = 66;
    XmlPart().ClearStaffSpec(staff);
    EXPECT_EQ(staff.AltFlag, c.WantAltFlag) << c.AltFlag;
    EXPECT_EQ(staff.Flag, c.WantFlag) << c.Flag;
    EXPECT_EQ(staff.Instflag, c.WantInstflag) << c.Instflag;
    EXPECT_EQ(staff.Mfont, 0);
    EXPECT_EQ(staff.Clefs, 0);
    EXPECT_EQ(staff.Transposition, 0);
  }
}

TEST_F(StaffSetupTest, StavesAreTheHighestCountAtLeastOne) {
  struct Case {
    std::string Measures;
    int16_t Staves;
  } cases[] = {
      {"", 1},
      {FirstMeasure("<divisions>1</divisions>"), 1},
      {FirstMeasure("<staves>2</staves>"), 2},
      {FirstMeasure("<staves>2</staves>") + "<measure number='2'><attributes><staves>3</staves>"
                                            "</attributes></measure>",
       3},
      {FirstMeasure("<staves>0</staves>"), 1},
      {FirstMeasure("<staves>x</staves>"), 1},
  };
  for (const Case& c : cases) {
    Setup("", c.Measures);
    EXPECT_EQ(part_->Staves(), c.Staves) << c.Measures;
    EXPECT_EQ(part_->MaxVoices, 8 * c.Staves) << c.Measures;
    EXPECT_EQ(part_->StyleChangeMeasure.at(1), 1);
    EXPECT_EQ(part_->StyleChangeEdu.at(1), 0);
  }
}

TEST_F(StaffSetupTest, ClefIsTakenOnlyWhenTheFirstMeasureHasOne) {
  Setup("", FirstMeasure("<divisions>1</divisions>"));
  part_->StaffSpecs(1)->Clefs = 3;
  part_->EditStaffSpec(1);
  EXPECT_EQ(Saved(1).Clefs, 3);

  Setup("", FirstMeasure("<clef><sign>F</sign><line>4</line></clef>"));
  part_->EditStaffSpec(1);
  EXPECT_EQ(Saved(1).Clefs, 3);
  EXPECT_EQ(part_->Clefs(1), 3);
}

TEST_F(StaffSetupTest, NamesOfAPartOfOneStaff) {
  struct Case {
    std::string ScorePart, Full, Abbrv;
  } cases[] = {
      {"<part-name>Flute</part-name><part-abbreviation>Fl.</part-abbreviation>", "Flute", "Fl."},
      {"<part-name>MusicXML Part</part-name>", "", ""},
      {"<part-name>Oboe</part-name>", "Oboe", ""},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    Setup(c.ScorePart, FirstMeasure(""));
    part_->EditStaffSpec(1);
    StaffSpec saved = Saved(1);
    EXPECT_EQ(saved.FullNameText(), c.Full) << c.ScorePart;
    EXPECT_EQ(saved.AbbrvNameText(), c.Abbrv) << c.ScorePart;
  }
}

TEST_F(StaffSetupTest, StaffLinesSetLinesAndLineOffset) {
  struct Case {
    int16_t Lines, TopLines, BotLines, Offset;
    std::string Pitch;
    int16_t Octave;
  } cases[] = {
      {1, 1, 4, -4, "A", 3}, {2, 1, 10, -6, "F", 3}, {3, 1, 14, -4, "A", 3},
      {4, 0, 4, -2, "C", 4}, {7, 0, 7, 4, "B", 4},   {5, 0, 0, 9, "X", 9},
  };
  for (const Case& c : cases) {
    Setup("", FirstMeasure("<staff-details><staff-lines>" + std::to_string(c.Lines) +
                               "</staff-lines></staff-details>",
                           "<note><pitch><step>C</step><octave>4</octave></pitch></note>"));
    // Marks that five lines leave the line reference alone.
    part_->LineOffset.at(1) = 9;
    part_->StaffLinePitch.at(1) = "X";
    part_->StaffLineOctave.at(1) = 9;
    part_->EditStaffSpec(1);
    StaffSpec saved = Saved(1);
    EXPECT_EQ(saved.TopLines, c.TopLines) << c.Lines;
    EXPECT_EQ(saved.BotLines, c.BotLines) << c.Lines;
    EXPECT_EQ(part_->LineOffset.at(1), c.Offset) << c.Lines;
    EXPECT_EQ(part_->StaffLinePitch.at(1), c.Pitch) << c.Lines;
    EXPECT_EQ(part_->StaffLineOctave.at(1), c.Octave) << c.Lines;
    EXPECT_EQ(saved.TopBarlineOffset == 48 && saved.BotBarlineOffset == -48 &&
                  saved.Dw_wRest == -1285,
              c.Lines == 1)
        << c.Lines;
    EXPECT_EQ(part_->TabStaff, 0);
  }
}

TEST_F(StaffSetupTest, NotesDecideTheNotationFlags) {
  struct Case {
    std::string Notes;
    int16_t MoreFlags;
  } cases[] = {
      {"<note/>", 0},
      {"<note><stem>up</stem><beam>begin</beam></note>", 0x0418 | 64},
      {"<note><stem>down</stem></note>", 24 | 32},
      {"<note><stem>up</stem></note><note><stem>down</stem></note>", 24},
      {"<note><stem>none</stem></note>", 24},
      {"<note><tie/><notations><tied/></notations></note>", 4},
      {"<note><tie/></note>", 0},
      {"<note><notations><tuplet type='start'/></notations></note>", 0x2000},
      {"<note><notations><tuplet type='start' bracket='no'/></notations></note>", 0},
      {"<note><notations><tuplet type='start' show-number='none'/></notations></note>", 0},
  };
  for (const Case& c : cases) {
    Setup("", FirstMeasure("", c.Notes));
    part_->EditStaffSpec(1);
    EXPECT_EQ(Saved(1).MoreFlags, c.MoreFlags) << c.Notes;
  }
}

TEST_F(StaffSetupTest, ContentClearsFlagsItDoesNotUse) {
  struct Case {
    std::string Notes;
    int16_t Before, After;
  } cases[] = {
      {"<note/>", 0x0418 | 4 | 0x2000, 4 | 0x2000},
      {"<note><stem>up</stem><tie/></note>", 4, 24 | 64},
      {"<note><stem>up</stem><notations><tuplet type='start' bracket='no'/></notations></note>",
       0x2000, 24 | 64},
  };
  for (const Case& c : cases) {
    Setup("", FirstMeasure("", c.Notes));
    part_->StaffSpecs(1)->MoreFlags = c.Before;
    part_->EditStaffSpec(1);
    EXPECT_EQ(Saved(1).MoreFlags, c.After) << c.Notes;
  }
}

TEST_F(StaffSetupTest, TimeAltFlagAndSecondStaffFlags) {
  Setup("<part-name>Piano</part-name>",
        FirstMeasure("<staves>2</staves><clef number='1'><sign>G</sign><line>2</line></clef>"
                     "<clef number='2'><sign>F</sign><line>4</line></clef>"));
  part_->NoTime = true;
  part_->StaffSpecs(1)->AltFlag = 0x0F;
  part_->EditStaffSpec(1);
  part_->EditStaffSpec(2);
  const StaffSpec first = Saved(1), second = Saved(2);
  EXPECT_EQ(first.AltFlag, 0x0700);
  EXPECT_EQ(first.Instflag, 16);
  EXPECT_EQ(second.Instflag, 0x0600 | 16);
  EXPECT_EQ(second.Clefs, 3);
  EXPECT_EQ(part_->Clefs(2), 3);
  StaffSpec named = Saved(1);
  EXPECT_EQ(named.FullNameText(), "");
}

const char kTuning[] = "<staff-tuning line='1'><tuning-step>E</tuning-step><tuning-octave>2"
                       "</tuning-octave></staff-tuning>"
                       "<staff-tuning line='2'><tuning-step>A</tuning-step><tuning-octave>2"
                       "</tuning-octave></staff-tuning>"
                       "<staff-tuning line='3'><tuning-step>D</tuning-step><tuning-octave>3"
                       "</tuning-octave></staff-tuning>"
                       "<staff-tuning line='4'><tuning-step>G</tuning-step><tuning-octave>3"
                       "</tuning-octave></staff-tuning>";

TEST_F(StaffSetupTest, TablatureNeedsItsClef) {
  struct Case {
    std::string Clef;
    int32_t Version;
    int16_t TabStaff, Flag, TopLines, BotLines, MoreFlags, Instflag, Capo;
    int32_t LineSpace;
  } cases[] = {
      {"TAB", 2004, 1, 0x0200, 0, 4, 0x1181, 48, 2, 2304},
      {"G", 2004, 0, 0, 0, 4, 0, 0, 0, 0},
      {"TAB", 2002, 0, 0, 0, 0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) {
    Setup("",
          FirstMeasure("<clef><sign>" + c.Clef +
                       "</sign><line>5</line></clef>"
                       "<staff-details><staff-lines>4</staff-lines>" +
                       kTuning + "<capo>2</capo></staff-details>"),
          c.Version);
    part_->StaffSpecs(1)->MoreFlags = 6;
    part_->StaffSpecs(1)->LineSpace = 0;
    part_->StaffSpecs(1)->CapoLowFret = 0;
    part_->EditStaffSpec(1);
    const StaffSpec saved = Saved(1);
    EXPECT_EQ(part_->TabStaff, c.TabStaff) << c.Clef << c.Version;
    EXPECT_EQ(saved.Flag & 0x0200, c.Flag) << c.Clef << c.Version;
    EXPECT_EQ(saved.TopLines, c.TopLines) << c.Clef << c.Version;
    EXPECT_EQ(saved.BotLines, c.BotLines) << c.Clef << c.Version;
    EXPECT_EQ(saved.MoreFlags & ~6, c.MoreFlags) << c.Clef << c.Version;
    EXPECT_EQ(saved.Instflag, c.Instflag) << c.Clef << c.Version;
    EXPECT_EQ(saved.CapoLowFret, c.Capo) << c.Clef << c.Version;
    if (c.Version >= 2003) {
      EXPECT_EQ(saved.LineSpace, c.LineSpace) << c.Clef;
    }
  }
}

// How many groups the score has; they are numbered from 0.
int16_t GroupCount(int32_t version) {
  GroupSpec group;
  group.FinaleVersion = version;
  int16_t count = 0;
  while (group.Load(0, count))
    ++count;
  return count;
}

TEST_F(StaffSetupTest, GroupOfSeveralStavesTakesThePartNames) {
  struct Case {
    std::string ScorePart;
    int32_t Version;
    std::string Full, Abbrv;
    int16_t FullXadj, AbrvXadj, Auxflag;
  } cases[] = {
      {"<part-name>Piano</part-name><part-abbreviation>Pno.</part-abbreviation>", 2004, "Piano",
       "Pno.", -48, -48, 2048},
      {"<part-name>MusicXML Part</part-name>", 2002, "", "", 0, 0, 0},
  };
  for (const Case& c : cases) {
    Setup(c.ScorePart, FirstMeasure("<staves>3</staves>"), c.Version);
    part_->StartStaff = 5;
    const int16_t before = GroupCount(c.Version);
    part_->InitializeGroupSpec();
    ASSERT_EQ(GroupCount(c.Version), before + 1) << c.ScorePart;
    GroupSpec group;
    group.FinaleVersion = c.Version;
    ASSERT_TRUE(group.Load(0, before));
    EXPECT_EQ(group.StartInst, 5);
    EXPECT_EQ(group.EndInst, 7);
    EXPECT_EQ(group.BracketID, 3);
    EXPECT_EQ(group.BracketBracpos, -12);
    EXPECT_EQ(group.Flag, 1024);
    EXPECT_EQ(group.Auxflag & 2048, c.Auxflag) << c.Version;
    EXPECT_EQ(group.FullNameText(), c.Full) << c.ScorePart;
    EXPECT_EQ(group.AbrvNameText(), c.Abbrv) << c.ScorePart;
    EXPECT_EQ(group.FullNameXadj, c.FullXadj) << c.ScorePart;
    EXPECT_EQ(group.AbrvNameXadj, c.AbrvXadj) << c.ScorePart;
  }
}

TEST_F(StaffSetupTest, OneStaffMakesNoGroup) {
  Setup("<part-name>Flute</part-name>", FirstMeasure(""));
  const int16_t before = GroupCount(2004);
  part_->InitializeGroupSpec();
  EXPECT_EQ(GroupCount(2004), before);
}

TEST_F(StaffSetupTest, TransposeWritesThePackedValue) {
  // A clarinet in B flat packs to 66.
  Setup("", FirstMeasure("<transpose><chromatic>-2</chromatic></transpose>"));
  part_->StaffSpecs(1)->Transposition = 0;
  part_->TransposeStaffSpec(1, part_->Part().selectSingleNode("measure[1]/attributes/transpose"));
  EXPECT_EQ(Saved(1).Transposition, 66);

  part_->StaffSpecs(1)->Transposition = 7;
  part_->TransposeStaffSpec(1, xml::XmlNode());
  EXPECT_EQ(part_->StaffSpecs(1)->Transposition, 7);
}

// Parts of whole scores set up one after the other, as the import does: each takes the
// slots after those of the parts before it, starting in a new document of one staff.
class InitializeStaffSpecsTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("default-document.json");
  }

  // The score of a corpus file; false, with a message, when the corpus is missing.
  bool OpenCorpus(const std::string& name) {
    const std::filesystem::path file = std::filesystem::path(OSTIN_CORPUS_DIR) / name;
    if (!std::filesystem::exists(file)) return false;
    Open(xml::test_support::TempFolder::Read(file.string()));
    return true;
  }
  void Open(const std::string& text) {
    doc_ = Loaded(text);
    parts_.clear();
    nextSlot_ = 1;
  }
  // Sets up the next part of the score.
  XmlPart& Next(int32_t version = 2004) {
    auto part = std::make_unique<XmlPart>();
    part->FinaleVersion = version;
    const int32_t index = static_cast<int32_t>(parts_.size()) + 1;
    part->SetPart(doc_->documentElement().selectSingleNode("part[" + std::to_string(index) + "]"));
    part->StartSlot = nextSlot_;
    part->InitializeStaffSpecs();
    nextSlot_ = static_cast<int16_t>(nextSlot_ + part->Staves());
    parts_.push_back(std::move(part));
    return *parts_.back();
  }
  static StaffSpec Stored(int16_t cmper, int32_t version = 2004) {
    StaffSpec record;
    record.FinaleVersion = version;
    EXPECT_TRUE(record.Load(cmper, 0)) << cmper;
    return record;
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

#define OSTIN_NEED_CORPUS(name)                                                                    \
  if (!OpenCorpus(name)) GTEST_SKIP() << "corpus file " << name << " not found in " OSTIN_CORPUS_DIR

TEST_F(InitializeStaffSpecsTest, PianoStaffGetsTwoStavesAndAGroup) {
  OSTIN_NEED_CORPUS("43a-PianoStaff.xml");
  XmlPart& part = Next();
  ASSERT_EQ(part.Staves(), 2);
  EXPECT_EQ(part.StartStaff, 1) << "slot 1 is the document's staff";
  EXPECT_EQ(FxSlotToInst(2, 0), 2) << "slot 2 was made for the second staff";
  const StaffSpec treble = Stored(1), bass = Stored(2);
  EXPECT_EQ(treble.Clefs, 0);
  EXPECT_EQ(bass.Clefs, 3);
  EXPECT_EQ(part.Clefs(2), 3);
  EXPECT_EQ(treble.AltFlag, 0x0700);
  EXPECT_EQ(treble.Instflag & 0x0600, 0);
  EXPECT_EQ(bass.Instflag & 0x0600, 0x0600);
  EXPECT_EQ(treble.Mfont, 1);
  EXPECT_EQ(treble.Sizeefx, 24 * 256);
  EXPECT_FALSE(part.NoTime);
  EXPECT_EQ(part.NoteheadFont.at(2), "Maestro");
  EXPECT_EQ(part.AccidentalFont.at(1), "Maestro");
  EXPECT_FALSE(part.PercussionStaff);
  GroupSpec group;
  group.FinaleVersion = 2004;
  ASSERT_TRUE(group.Load(0, 0));
  EXPECT_EQ(group.StartInst, 1);
  EXPECT_EQ(group.EndInst, 2);
  EXPECT_EQ(group.Auxflag & 2048, 2048);
  EXPECT_EQ(group.FullNameText(), "") << "the part is named MusicXML Part";
}

TEST_F(InitializeStaffSpecsTest, TabStavesShareFretInstrumentsByTuning) {
  OSTIN_NEED_CORPUS("71e-TabStaves.xml");
  // Guitar, guitar again, two other guitar tunings, bass, banjo, lute, ukulele.
  const std::vector<int16_t> ids = {1, 1, 2, 3, 4, 5, 6, 7};
  const std::vector<int16_t> strings = {6, 6, 6, 6, 4, 5, 6, 4};
  for (std::size_t k = 0; k < ids.size(); ++k) {
    XmlPart& part = Next();
    const StaffSpec staff = Stored(part.StartStaff);
    EXPECT_EQ(part.TabStaff, 1) << k;
    EXPECT_EQ(staff.Clefs, 16) << k;
    EXPECT_EQ(staff.Flag & 0x0200, 0x0200) << k;
    EXPECT_EQ(staff.FretInstID, ids[k]) << k;
    EXPECT_EQ(staff.TopLines, 0) << k;
    EXPECT_EQ(staff.BotLines, strings[k]) << k;
    EXPECT_EQ(staff.Instflag & 48, 48) << k;
    EXPECT_EQ(staff.Instflag & 16, 16) << "no time signature in the file";
    EXPECT_EQ(staff.Mfont, 3) << "the tablature font";
    EXPECT_EQ(staff.LineSpace, 2304) << k;
    EXPECT_TRUE(part.NoTime);
    EXPECT_EQ(part.XmlBeats(), 4);
    EXPECT_EQ(part.FinaleDivbeat, 1024);
  }
  EXPECT_EQ(FretInstruments(), 7);
  struct Made {
    int16_t Id;
    std::string Name;
    std::vector<int16_t> Tuning; // highest string first
  } made[] = {
      {1, "MusicXML P1", {64, 59, 55, 50, 45, 40}},
      {2, "MusicXML P3", {64, 57, 54, 50, 45, 38}},
      {5, "MusicXML P6", {62, 60, 55, 50, 67}},
  };
  for (const Made& m : made) {
    FretInstrument instrument;
    ASSERT_TRUE(instrument.Load(m.Id, 0));
    EXPECT_EQ(instrument.Name, m.Name);
    EXPECT_EQ(instrument.NoOfStrings, static_cast<int16_t>(m.Tuning.size()));
    EXPECT_EQ(instrument.NoOfFrets, 30);
    EXPECT_EQ(instrument.SpeedyClef, 5);
    for (std::size_t j = 0; j < m.Tuning.size(); ++j)
      EXPECT_EQ(instrument.Tuning(static_cast<int>(j + 1)), m.Tuning[j]) << m.Name << " " << j;
  }
}

TEST_F(InitializeStaffSpecsTest, TransposingPartsWriteTheirTransposition) {
  OSTIN_NEED_CORPUS("72a-TransposingInstruments.xml");
  // Trumpet in B flat (written a second up, two sharps), horn in E flat (a sixth up, three
  // sharps), and a part in C.
  const int16_t expected[] = {66, 323, 0};
  for (int16_t value : expected) {
    XmlPart& part = Next();
    EXPECT_EQ(Stored(part.StartStaff).Transposition, value);
  }
}

TEST_F(InitializeStaffSpecsTest, PercussionPartsWithoutPitchesGetAMap) {
  OSTIN_NEED_CORPUS("73a-Percussion.xml");
  struct Case {
    bool Map;
    int16_t Clef;
    bool OneLine;
  } cases[] = {
      {false, 3, false}, // timpani in the bass clef
      {true, 12, false}, // percussion clef
      {true, 12, true},  // percussion clef on one line
  };
  for (const Case& c : cases) {
    XmlPart& part = Next();
    const StaffSpec staff = Stored(part.StartStaff);
    EXPECT_EQ(part.PercussionStaff, c.Map) << part.Id();
    EXPECT_EQ(staff.Clefs, c.Clef) << part.Id();
    EXPECT_EQ(staff.TopLines == 1 && staff.BotLines == 4, c.OneLine) << part.Id();
    EXPECT_EQ(staff.Flag & 0x2000, c.Map ? 0x2000 : 0) << part.Id();
    DrumStaff drums;
    EXPECT_EQ(drums.Load(part.StartStaff, 0, kDrumStaffTag), c.Map) << part.Id();
    EXPECT_EQ(staff.DrumStaffCmper, c.Map ? part.StartStaff : 0) << part.Id();
  }
}

// A score of one part from its score-part content and the content of its first measure.
std::string OnePart(const std::string& scorePart, const std::string& measure) {
  return "<score-partwise><part-list><score-part id='P1'>" + scorePart +
         "</score-part></part-list><part id='P1'><measure number='1'>" + measure +
         "</measure></part></score-partwise>";
}

TEST_F(InitializeStaffSpecsTest, EdgesOfOnePart) {
  const std::string note = "<note><pitch><step>C</step><octave>4</octave></pitch></note>";
  const std::string beats = "<time><beats>3</beats><beat-type>4</beat-type></time>";
  struct Case {
    std::string Name, ScorePart, Measure;
    int16_t Clef, TopLines, BotLines, BarlineOffset, TabStaff;
    bool Map;
    std::string FullName;
  } cases[] = {
      {"no clef keeps the loaded clef", "<part-name>Viola</part-name>",
       "<attributes>" + beats + "</attributes>" + note, 5, 0, 5, 0, 0, false, "Viola"},
      {"one line with pitches", "",
       "<attributes><staff-details><staff-lines>1</staff-lines>"
       "</staff-details></attributes>" +
           note,
       5, 1, 4, 48, 0, false, ""},
      {"five lines change nothing", "",
       "<attributes><staff-details><staff-lines>5</staff-lines>"
       "</staff-details></attributes>" +
           note,
       5, 0, 5, 0, 0, false, ""},
      {"no pitch and no sign", "", "<note><unpitched/></note>", 5, 0, 5, 0, 0, true, ""},
      {"unpitched instrument",
       "<midi-instrument id='I1'><midi-unpitched>39</midi-unpitched>"
       "</midi-instrument>",
       note, 5, 0, 5, 0, 0, true, ""},
      {"a G clef is no drum", "",
       "<attributes><clef><sign>G</sign><line>2</line></clef>"
       "</attributes><note><unpitched/></note>",
       0, 0, 5, 0, 0, false, ""},
      {"MusicXML Part", "<part-name>MusicXML Part</part-name>", note, 5, 0, 5, 0, 0, false, ""},
      {"tablature details without the tablature clef", "",
       "<attributes><clef><sign>G</sign><line>2</line></clef><staff-details><staff-lines>4"
       "</staff-lines>" +
           std::string(kTuning) + "</staff-details></attributes>" + note,
       0, 0, 4, 0, 0, false, ""},
  };
  for (const Case& c : cases) {
    HostSim().Reset();
    OpenData("default-document.json");
    StaffSpec loaded;
    loaded.FinaleVersion = 2004;
    ASSERT_TRUE(loaded.Load(1, 0));
    loaded.Clefs = 5;
    loaded.Save();
    Open(OnePart(c.ScorePart, c.Measure));
    XmlPart& part = Next();
    StaffSpec staff = Stored(1);
    EXPECT_EQ(part.StartStaff, 1) << c.Name;
    EXPECT_EQ(staff.Clefs, c.Clef) << c.Name;
    EXPECT_EQ(staff.TopLines, c.TopLines) << c.Name;
    EXPECT_EQ(staff.BotLines, c.BotLines) << c.Name;
    EXPECT_EQ(staff.TopBarlineOffset, c.BarlineOffset) << c.Name;
    EXPECT_EQ(part.TabStaff, c.TabStaff) << c.Name;
    EXPECT_EQ(part.PercussionStaff, c.Map) << c.Name;
    EXPECT_EQ(staff.FullNameText(), c.FullName) << c.Name;
    EXPECT_EQ(FretInstruments(), 0) << c.Name;
    EXPECT_EQ(part.NoTime, c.Measure.find("<beats>") == std::string::npos) << c.Name;
  }
}

TEST_F(InitializeStaffSpecsTest, TablatureOfTwoStavesNeedsTheStaffNumber) {
  const std::string clefs = "<staves>2</staves><clef number='1'><sign>G</sign><line>2</line>"
                            "</clef><clef number='2'><sign>TAB</sign><line>5</line></clef>";
  struct Case {
    std::string Number;
    int16_t TabStaff, Flag, FretInstID, BotLines;
  } cases[] = {
      {" number='2'", 2, 0x0200, 1, 4},
      {"", 0, 0, 0, 0}, // without a number the details are no staff's
  };
  for (const Case& c : cases) {
    HostSim().Reset();
    OpenData("default-document.json");
    Open(OnePart("<part-name>Guitar</part-name>", "<attributes>" + clefs + "<staff-details" +
                                                      c.Number + "><staff-lines>4</staff-lines>" +
                                                      kTuning + "</staff-details></attributes>"));
    XmlPart& part = Next();
    StaffSpec notation = Stored(1), tablature = Stored(2);
    EXPECT_EQ(part.TabStaff, c.TabStaff) << c.Number;
    EXPECT_EQ(notation.Flag & 0x0200, 0) << c.Number;
    EXPECT_EQ(tablature.Flag & 0x0200, c.Flag) << c.Number;
    EXPECT_EQ(tablature.FretInstID, c.FretInstID) << c.Number;
    EXPECT_EQ(tablature.Clefs, 16) << c.Number;
    EXPECT_EQ(tablature.FullNameText(), "") << "the group carries the name";
    GroupSpec group;
    group.FinaleVersion = 2004;
    ASSERT_TRUE(group.Load(0, 0));
    EXPECT_EQ(group.FullNameText(), "Guitar");
    EXPECT_EQ(group.FullNameXadj, -48);
  }
}

TEST_F(InitializeStaffSpecsTest, SlotsWithoutStaffGetNewStaves) {
  Open(OnePart("<part-name>Oboe</part-name>", ""));
  nextSlot_ = 4;
  XmlPart& part = Next();
  EXPECT_EQ(part.StartStaff, 2) << "the next free staff number";
  EXPECT_EQ(FxInstToSlot(2, 0), 2) << "appended to the score's staff list";
  EXPECT_EQ(Stored(2).FullNameText(), "Oboe");
  EXPECT_EQ(Stored(2).AltFlag, 0x0700);
}

TEST_F(InitializeStaffSpecsTest, FindFretInstSkipsOtherInstrumentsAndBadLines) {
  Open(OnePart("", "<attributes><staff-details><staff-lines>3</staff-lines>"
                   "<staff-tuning line='1'><tuning-step>E</tuning-step><tuning-octave>2"
                   "</tuning-octave></staff-tuning>"
                   "<staff-tuning line='x'><tuning-step>A</tuning-step><tuning-octave>2"
                   "</tuning-octave></staff-tuning>"
                   "<staff-tuning line='3'><tuning-step>D</tuning-step><tuning-octave>3"
                   "</tuning-octave></staff-tuning></staff-details></attributes>"));
  // The same tuning on diatonic frets, and one string too many: neither matches.
  FretInstrument other;
  other.Create(-1, 0);
  other.NoOfStrings = 3;
  other.DiatonicStepsLo = 1;
  other.StringTuning[0] = 50;
  other.StringTuning[2] = 40;
  other.Save();
  other.Create(-1, 0);
  other.NoOfStrings = 4;
  other.StringTuning[0] = 50;
  other.StringTuning[2] = 40;
  other.Save();
  XmlPart part;
  part.SetPart(doc_->documentElement().selectSingleNode("part"));
  const xml::XmlNodeList tuning = part.Part().selectNodes(".//staff-tuning");
  int16_t id = 0;
  part.FindFretInst(tuning, id);
  EXPECT_EQ(id, 3);
  FretInstrument made;
  ASSERT_TRUE(made.Load(3, 0));
  EXPECT_EQ((std::vector<int16_t>{made.Tuning(1), made.Tuning(2), made.Tuning(3)}),
            (std::vector<int16_t>{50, 0, 40}))
      << "a line that is not a number leaves its string 0";
  int16_t again = 0;
  part.FindFretInst(tuning, again);
  EXPECT_EQ(again, 3);
  EXPECT_EQ(FretInstruments(), 3);
}

} // namespace
} // namespace ostin
