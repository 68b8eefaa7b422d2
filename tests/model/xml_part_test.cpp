// The part model: keys and tonics, transpositions, clefs and staff lines, style ranges and
// the time signature of a measure that is shorter or longer than the one stated.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/records.h"
#include "host/text/fonts.h"
#include "model/xml_part.h"

namespace ostin {
namespace {

using testing::HostTest;
using xml::test_support::Loaded;
using xml::test_support::Raised;

class XmlPartTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json");
  }

  // A key element built from its children's text.
  static xml::XmlNode KeyElement(const std::string& children) {
    return Loaded("<key>" + children + "</key>")->documentElement();
  }
};

TEST_F(XmlPartTest, PartAndScorePartFindEachOtherById) {
  auto doc = Loaded("<score-partwise><part-list><score-part id='P1'/><score-part id='P2'/>"
                    "</part-list><part id='P1'/><part id='P2'/></score-partwise>");
  const auto root = doc->documentElement();
  XmlPart fromPart;
  fromPart.SetPart(root.selectSingleNode("part[@id='P2']"));
  EXPECT_EQ(fromPart.ScorePart(), root.selectSingleNode("part-list/score-part[@id='P2']"));
  EXPECT_EQ(fromPart.Id(), "P2");
  XmlPart fromScorePart;
  fromScorePart.SetScorePart(root.selectSingleNode("part-list/score-part[@id='P1']"));
  EXPECT_EQ(fromScorePart.Part(), root.selectSingleNode("part[@id='P1']"));
}

TEST_F(XmlPartTest, TonicLettersByFifthsAndMode) {
  struct Case {
    int16_t Fifths;
    bool Minor;
    std::string Tonic;
  } cases[] = {{0, false, "C"}, {0, true, "A"},  {-3, false, "E"},  {-3, true, "C"},
               {7, false, "C"}, {14, true, "A"}, {-14, false, "C"}, {6, false, "F"},
               {15, false, ""}, {-15, true, ""}};
  for (const Case& c : cases)
    EXPECT_EQ(XmlPart::GetTonic(c.Fifths, c.Minor), c.Tonic) << c.Fifths << " " << c.Minor;
}

TEST_F(XmlPartTest, AlterationOfStepsInTraditionalKeys) {
  struct Case {
    int16_t Fifths;
    std::string Step;
    int16_t Alter;
  } cases[] = {{8, "F", 2},  {8, "C", 1},   {1, "F", 1},   {1, "C", 0},
               {0, "F", 0},  {-8, "B", -2}, {-8, "E", -1}, {-1, "B", -1},
               {-1, "E", 0}, {7, "B", 1},   {-7, "F", -1}, {14, "B", 2}};
  for (const Case& c : cases) {
    XmlPart part;
    part.SetKey(KeyElement("<fifths>" + std::to_string(c.Fifths) + "</fifths>"));
    EXPECT_EQ(part.KeySignatureAlter(c.Step), c.Alter) << c.Fifths << " " << c.Step;
  }
}

TEST_F(XmlPartTest, NonTraditionalKeyReadsItsOwnSteps) {
  XmlPart part;
  part.Measure = 1;
  part.SetKey(KeyElement("<key-step>D</key-step><key-alter>-1</key-alter>"
                         "<key-step>G</key-step><key-alter>1</key-alter>"));
  EXPECT_TRUE(part.NonLinear);
  EXPECT_EQ(part.Tonic, "C") << "the measure has no tone center";
  EXPECT_EQ(part.KeySignatureAlter("D"), -1);
  EXPECT_EQ(part.KeySignatureAlter("G"), 1);
  EXPECT_EQ(part.KeySignatureAlter("A"), 0);
}

// Key-based packing: alteration in bits 0-5, interval in bits 6-11, 0x4000 simplifies.
int16_t KeyBased(int interval, int alter, bool simplify) {
  return static_cast<int16_t>((alter & 63) | ((interval & 63) << 6) | (simplify ? 0x4000 : 0));
}

TEST_F(XmlPartTest, TranspositionSetsTheOctaveOfTheTonic) {
  struct Case {
    int16_t Value;
    int16_t FinaleKey;
    std::string Tonic;
    int16_t OptInterval, Octave;
  } cases[] = {
      {KeyBased(1, 2, false), 0, "C", 1, 5},     // B flat instrument
      {KeyBased(1, 2, true), 6, "C", 2, 5},      // six sharps plus two wraps
      {KeyBased(1, 2, true), 0, "D", 1, 4},      // D less one step stays in the octave
      {KeyBased(-5, -1, false), 0, "C", -5, 4},  // F instrument sounds lower
      {KeyBased(-9, -1, false), 0, "C", -9, 3},  // an octave further
      {KeyBased(1, 2, true), 0x4001, "C", 1, 5}, // a non-linear key is not simplified
      {static_cast<int16_t>(0x2000 | 0x0102), 0, "C", 0, 4},
  };
  for (const Case& c : cases) {
    XmlPart part;
    part.SetFinaleKey(c.FinaleKey);
    part.Tonic = c.Tonic;
    part.InitializeTransposition(c.Value);
    EXPECT_EQ(part.TransposeKeyOptInterval, c.OptInterval) << c.Value;
    EXPECT_EQ(part.Octave, c.Octave) << c.Value;
    EXPECT_EQ(part.TransposeKeyOptKeySig, part.TransposeKeySig) << c.Value;
  }
}

TEST_F(XmlPartTest, TransposeElementPacksAndMovesTheOctave) {
  XmlPart part;
  part.Tonic = "C";
  auto doc = Loaded("<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>");
  const int16_t value = part.SetTransposeStaffStyle(doc->documentElement());
  EXPECT_EQ(value, static_cast<int16_t>((part.TransposeKeySig & 63) |
                                        ((part.TransposeInterval * 64) & 0xFC0)));
  EXPECT_EQ(part.TransposeKeyOptInterval, 1);
  EXPECT_EQ(part.Octave, 5);
  auto octave = Loaded("<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic>"
                       "<octave-change>-1</octave-change></transpose>");
  part.SetTranspose(octave->documentElement());
  EXPECT_EQ(part.TransposeKeyOptInterval, 8);
  EXPECT_EQ(part.Octave, 6);
}

TEST_F(XmlPartTest, StaffSpecTakesTheClefOfItsForm) {
  struct Case {
    int16_t Transposition, Clefs, Instflag;
    int16_t Clef;
    bool ClefChange, FloatKeys, FloatTime;
  } cases[] = {
      {0, 0x0301, 0, 1, true, false, false},
      {static_cast<int16_t>(0x8000), 0x0301, static_cast<int16_t>(0x8000), 3, false, true, false},
      {0, 0x0203, 0x4000, 3, true, false, true}};
  for (const Case& c : cases) {
    XmlPart part;
    auto spec = std::make_shared<StaffSpec>();
    spec->Transposition = c.Transposition;
    spec->Clefs = c.Clefs;
    spec->Instflag = c.Instflag;
    part.Layers[1] = 2;
    part.SetStaffSpecs(1, spec);
    EXPECT_EQ(part.Clefs(1), c.Clef) << c.Clefs;
    EXPECT_EQ(part.Layers[1], 0);
    EXPECT_EQ(part.ClefChange, c.ClefChange) << c.Clefs;
    EXPECT_EQ(part.FloatKeys, c.FloatKeys) << c.Clefs;
    EXPECT_EQ(part.FloatTime, c.FloatTime) << c.Clefs;
  }
}

TEST_F(XmlPartTest, LineSettingsGiveTopAndCount) {
  struct Case {
    int16_t TopLines, BotLines, Top, Count;
  } cases[] = {
      {0, 5, -3, 5},
      {0, 1, 1, 1},
      {4, 3, -3, 5},
      {1, 0b0000000000000100, -1, 1},                                     // one line at -2
      {1, 0b0000000000010101, -2, 3},                                     // lines at -4, -2, 0
      {static_cast<int16_t>(0x8001), static_cast<int16_t>(0x8001), 0, 3}, // -15, 0 and 1
  };
  for (const Case& c : cases) {
    int16_t top = 99, count = 99;
    XmlPart::CountLines(c.TopLines, c.BotLines, top, count);
    EXPECT_EQ(top, c.Top) << c.TopLines << " " << c.BotLines;
    EXPECT_EQ(count, c.Count) << c.TopLines << " " << c.BotLines;
  }
}

TEST_F(XmlPartTest, ActualTimeSignatureOfMeasuresThatDiffer) {
  struct Case {
    int16_t Beats, BeatType, Divbeat;
    int32_t Divisions, Duration;
    bool Found;
    int16_t ResultBeats, ResultDivBeat;
  } cases[] = {
      {6, 8, 1536, 2, 6, false, 0, 0},   // the stated length
      {6, 8, 1536, 2, 4, true, 4, 512},  // two quarters stay in eighths
      {6, 8, 1536, 2, 9, true, 3, 1536}, // nine eighths are three dotted quarters
      {4, 4, 1024, 1, 3, true, 3, 1024}, // three quarters in 4/4
      {4, 4, 1024, 2, 3, true, 3, 512},  // an eighth more: the beat halves
      {4, 4, 1024, 1, 0, true, 0, 1024},
      {2, 2, 2048, 3, 1, false, 0, 0}, // no beat type of these divisions fits
  };
  for (const Case& c : cases) {
    XmlPart part;
    part.SetDivisions(c.Divisions);
    part.SetXmlBeats(c.Beats);
    part.SetXmlBeatType(c.BeatType);
    part.FinaleDivbeat = c.Divbeat;
    int16_t beats = 0, divBeat = 0;
    bool found = !c.Found;
    part.ActualTimeSignature(c.Duration, beats, divBeat, found);
    EXPECT_EQ(found, c.Found) << c.Duration;
    EXPECT_EQ(beats, c.ResultBeats) << c.Duration;
    EXPECT_EQ(divBeat, c.ResultDivBeat) << c.Duration;
  }
}

TEST_F(XmlPartTest, NextStyleChangeFollowsAssignedStyles) {
  StaffStyle style;
  style.FinaleVersion = 2004;
  style.Create(5, 0);
  style.Mask1 = 0x0100;
  style.Transposition = -2;
  style.Save();
  struct Assignment {
    int16_t Start;
    int32_t StartEdu;
    int16_t End;
    int32_t EndEdu;
  } assignments[] = {{3, 0, 4, 0x7FFFFFFF}, {6, 1024, 6, 2047}};
  for (const Assignment& a : assignments) {
    StaffStyleAssign assign;
    assign.Create(1, -1);
    assign.Style = 5;
    assign.StartMeas = a.Start;
    assign.StartEdu = a.StartEdu;
    assign.EndMeas = a.End;
    assign.EndEdu = a.EndEdu;
    assign.Save();
  }
  XmlPart part;
  part.SetStaves(2);
  auto spec = std::make_shared<StaffSpec>();
  spec->FinaleVersion = 2004;
  ASSERT_TRUE(spec->Load(1, 0));
  part.SetStaffSpecs(1, spec);
  struct Case {
    int16_t Measure, ChangeMeasure;
    int32_t ChangeEdu;
  } cases[] = {{1, 3, 0}, {3, 5, 0}, {4, 5, 0}, {5, 6, 1024}, {6, 1, 0}, {7, 1, 0}};
  for (const Case& c : cases) {
    part.Measure = c.Measure;
    part.NextStyleChange(1);
    EXPECT_EQ(part.StyleChangeMeasure[1], c.ChangeMeasure) << c.Measure;
    EXPECT_EQ(part.StyleChangeEdu[1], c.ChangeEdu) << c.Measure;
  }
  part.NextStyleChange(2);
  EXPECT_EQ(part.StyleChangeMeasure[2], 1) << "no staff loaded";
  EXPECT_EQ(Raised([&] { part.NextStyleChange(3); }).Number, Code(0x8004078E));
}

TEST_F(XmlPartTest, StaffStyleSetsLayersFontsAndLines) {
  FontName ownFont;
  ASSERT_TRUE(ownFont.Load(5, 0));
  struct Case {
    int16_t Flag, AltFlag, TopLines, BotLines, Instflag;
    std::vector<bool> Visible;
    int16_t Lines, LineOffset;
    bool OwnFont, NoTime;
  } cases[] = {
      {0, 0, 0, 5, 0, {true, false, false, false}, 5, 0, false, false},
      {0x0020, 0x0215, 0, 1, 0x0010, {true, false, true, true}, 1, -8, true, true},
      {0, 0x0010, 0, 3, 0, {false, true, false, false}, 3, -4, false, true}, // default font back
  };
  XmlPart part;
  part.FinaleVersion = 2004;
  auto spec = std::make_shared<StaffSpec>();
  spec->Clefs = 0;
  part.SetStaffSpecs(1, spec);
  for (const Case& c : cases) {
    spec->Flag = c.Flag;
    spec->AltFlag = c.AltFlag;
    spec->TopLines = c.TopLines;
    spec->BotLines = c.BotLines;
    spec->Mfont = 5;
    if (c.Instflag) spec->Instflag = c.Instflag;
    part.InitializeFromStaffStyle(1);
    EXPECT_EQ(part.LayerVisible[1], c.Visible) << c.AltFlag;
    EXPECT_EQ(part.StaffLines[1], c.Lines) << c.BotLines;
    EXPECT_EQ(part.LineOffset[1], c.LineOffset) << c.BotLines;
    EXPECT_EQ(part.NoteheadFont[1] == ownFont.Text, c.OwnFont) << c.Flag;
    EXPECT_EQ(part.NoTime, c.NoTime) << c.Instflag;
  }
  EXPECT_EQ(Raised([&] { part.InitializeFromStaffStyle(2); }).Number, Code(0x8004078D));
}

} // namespace
} // namespace ostin
