// Staff setup on import: neutral records, staff counts, clefs, names, lines and flags.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/records.h"
#include "model/staff_setup.h"
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
    ComputeStaves(*part_);
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
    ClearStaffSpec(staff);
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
  EditStaffSpec(*part_, 1);
  EXPECT_EQ(Saved(1).Clefs, 3);

  Setup("", FirstMeasure("<clef><sign>F</sign><line>4</line></clef>"));
  EditStaffSpec(*part_, 1);
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
    EditStaffSpec(*part_, 1);
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
    EditStaffSpec(*part_, 1);
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
    EditStaffSpec(*part_, 1);
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
    EditStaffSpec(*part_, 1);
    EXPECT_EQ(Saved(1).MoreFlags, c.After) << c.Notes;
  }
}

TEST_F(StaffSetupTest, TimeAltFlagAndSecondStaffFlags) {
  Setup("<part-name>Piano</part-name>",
        FirstMeasure("<staves>2</staves><clef number='1'><sign>G</sign><line>2</line></clef>"
                     "<clef number='2'><sign>F</sign><line>4</line></clef>"));
  part_->NoTime = true;
  part_->StaffSpecs(1)->AltFlag = 0x0F;
  EditStaffSpec(*part_, 1);
  EditStaffSpec(*part_, 2);
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
    EditStaffSpec(*part_, 1);
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
    InitializeGroupSpec(*part_);
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
  InitializeGroupSpec(*part_);
  EXPECT_EQ(GroupCount(2004), before);
}

TEST_F(StaffSetupTest, TransposeWritesThePackedValue) {
  // A clarinet in B flat packs to 66.
  Setup("", FirstMeasure("<transpose><chromatic>-2</chromatic></transpose>"));
  part_->StaffSpecs(1)->Transposition = 0;
  TransposeStaffSpec(*part_, 1, part_->Part().selectSingleNode("measure[1]/attributes/transpose"));
  EXPECT_EQ(Saved(1).Transposition, 66);

  part_->StaffSpecs(1)->Transposition = 7;
  TransposeStaffSpec(*part_, 1, xml::XmlNode());
  EXPECT_EQ(part_->StaffSpecs(1)->Transposition, 7);
}

} // namespace
} // namespace ostin
