#include <gtest/gtest.h>

#include "export_test_support.h"

namespace ostin {
namespace {

using testing::ExportTest;
using namespace tools;

class MeasureSkeletonTest : public ExportTest {
protected:
  // The barlines and print of measure m of part p in short.
  std::string Barline(int part, int measure, const char* location) const {
    return FlatNode("part[" + std::to_string(part) + "]/measure[" + std::to_string(measure) +
                    "]/barline[@location='" + location + "']");
  }
  std::string Measure(int part, int measure) const {
    return "part[" + std::to_string(part) + "]/measure[" + std::to_string(measure) + "]";
  }
  void SetMeflag(int16_t measure, int16_t meflag) {
    SetRecord("MeasureSpec", measure, 0, {{"Meflag", meflag}});
  }
  void SetKey(int16_t measure, int16_t key) {
    SetRecord("MeasureSpec", measure, 0, {{"Key", key}});
  }
  void SetTime(int16_t measure, int16_t beats, int16_t divBeat, int16_t auxflag = 0) {
    SetRecord("MeasureSpec", measure, 0,
              {{"Beats", beats}, {"DivBeat", divBeat}, {"Auxflag", auxflag}});
  }
  void AssignStyle(int16_t staff, int16_t inci, int16_t style, int16_t from, int16_t to) {
    SetRecord("StaffStyleAssign", staff, inci,
              {{"Style", style},
               {"StartMeas", from},
               {"StartEdu", 0},
               {"EndMeas", to},
               {"EndEdu", 0x7FFFFFFF}});
  }
};

TEST_F(MeasureSkeletonTest, OneMeasureScore) {
  struct Case {
    int16_t FinalBarline;
    int Barlines;
  } cases[] = {{1, 1}, {0, 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.FinalBarline);
    StartScore();
    Builder.AddStaff({});
    AddMeasures(1);
    SetRecord("Settings09", -2, 0, {{"FinalBarline", c.FinalBarline}});
    ExportOk();
    EXPECT_EQ(Count("part/measure"), 1);
    EXPECT_EQ(Text("part/measure/@number"), "1");
    EXPECT_EQ(Count("part/measure/print"), 0);
    EXPECT_EQ(Count("part/measure/attributes"), 1);
    // The measure holds one whole rest: a division of one quarter is enough.
    EXPECT_EQ(FlatNode("part/measure/attributes"),
              "<attributes><divisions>1</divisions><key><fifths>0</fifths><mode>major</mode>"
              "</key><time><beats>4</beats><beat-type>4</beat-type></time><clef><sign>G</sign>"
              "<line>2</line></clef></attributes>");
    EXPECT_EQ(Count("part/measure/barline"), c.Barlines);
    if (c.Barlines) {
      EXPECT_EQ(Barline(1, 1, "right"),
                "<barline location=\"right\"><bar-style>light-heavy</bar-style></barline>");
    }
  }
}

TEST_F(MeasureSkeletonTest, BarStylesAndRepeats) {
  struct Case {
    int16_t Meflag;
    std::string Left, Right;
  } cases[] = {
      {kNormalBarline, "(none)", "(none)"},
      {0x00, "(none)", "<barline location=\"right\"><bar-style>none</bar-style></barline>"},
      {kDoubleBarline, "(none)",
       "<barline location=\"right\"><bar-style>light-light</bar-style></barline>"},
      {0x30, "(none)", "<barline location=\"right\"><bar-style>dotted</bar-style></barline>"},
      {0x40, "(none)", "<barline location=\"right\"><bar-style>heavy</bar-style></barline>"},
      {0x50, "(none)", "<barline location=\"right\"><bar-style>light-heavy</bar-style></barline>"},
      {0x60, "(none)", "<barline location=\"right\"><bar-style>dotted</bar-style></barline>"},
      {0x70, "(none)", "(none)"},
      {kDoubleBarline | kForwardRepeat,
       "<barline location=\"left\"><repeat direction=\"forward\"/></barline>",
       "<barline location=\"right\"><bar-style>light-light</bar-style></barline>"},
      {kNormalBarline | kForwardRepeat,
       "<barline location=\"left\"><bar-style>heavy-light</bar-style>"
       "<repeat direction=\"forward\"/></barline>",
       "(none)"},
      {kNormalBarline | kBackwardRepeat, "(none)",
       "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
       "<repeat direction=\"backward\"/></barline>"},
      {kDoubleBarline | kBackwardRepeat, "(none)",
       "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
       "<repeat direction=\"backward\"/></barline>"},
      {kNormalBarline | kForwardRepeat | kBackwardRepeat,
       "<barline location=\"left\"><bar-style>heavy-light</bar-style>"
       "<repeat direction=\"forward\"/></barline>",
       "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
       "<repeat direction=\"backward\"/></barline>"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Meflag);
    StartScore();
    Builder.AddStaff({});
    AddMeasures(3);
    SetMeflag(2, c.Meflag);
    ExportOk();
    EXPECT_EQ(Barline(1, 2, "left"), c.Left);
    EXPECT_EQ(Barline(1, 2, "right"), c.Right);
    // The left barline stands before, the right one after everything else of the measure.
    std::vector<std::string> children = Children(Measure(1, 2));
    if (c.Left != "(none)") {
      EXPECT_EQ(children.front(), "barline");
    }
  }
}

TEST_F(MeasureSkeletonTest, Endings) {
  struct Case {
    std::string Name;
    int16_t Meflag;
    std::optional<std::string> Text;
    std::vector<int32_t> Passes; // empty: no EndingRepeat
    int16_t Nextend;
    bool Backward; // a BackwardRepeat record
    std::string Left, Right;
  } cases[] = {
      {"first ending with its repeat back",
       kNormalBarline | kEndingAttached | kBackwardRepeat,
       "1.",
       {1},
       3,
       true,
       "<barline location=\"left\"><ending number=\"1\" type=\"start\"/></barline>",
       "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
       "<ending number=\"1\" type=\"stop\"/><repeat direction=\"backward\"/></barline>"},
      {"a dot alone stays",
       kNormalBarline | kEndingAttached,
       ".",
       {1},
       3,
       false,
       "<barline location=\"left\"><ending number=\".\" type=\"start\"/></barline>",
       "(none)"},
      {"blanks are trimmed before the dot goes",
       kNormalBarline | kEndingAttached,
       " 2. ",
       {2},
       3,
       false,
       "<barline location=\"left\"><ending number=\"2\" type=\"start\"/></barline>",
       "(none)"},
      {"only one final dot goes",
       kNormalBarline | kEndingAttached,
       "1..",
       {1},
       3,
       false,
       "<barline location=\"left\"><ending number=\"1.\" type=\"start\"/></barline>",
       "(none)"},
      {"the passes without a text",
       kNormalBarline | kEndingAttached,
       std::nullopt,
       {1, 2},
       3,
       false,
       "<barline location=\"left\"><ending number=\"1, 2\" type=\"start\"/></barline>",
       "(none)"},
      {"a last ending discontinues",
       kNormalBarline | kEndingAttached,
       "3",
       {3},
       0,
       false,
       "<barline location=\"left\"><ending number=\"3\" type=\"start\"/></barline>",
       "<barline location=\"right\"><ending number=\"3\" type=\"discontinue\"/></barline>"},
      {"an ending bit without records",
       kNormalBarline | kEndingAttached,
       std::nullopt,
       {},
       0,
       false,
       "(none)",
       "(none)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    Builder.AddStaff({});
    AddMeasures(3);
    SetMeflag(2, c.Meflag);
    if (!c.Passes.empty()) {
      SetRecord(
          "EndingRepeat", 2, 0,
          {{"Nextend", c.Nextend}, {"NumTotalPasses", static_cast<int32_t>(c.Passes.size())}});
      Builder.SetBlock("EndingRepeat", {2, 0, 0}, "Passes", c.Passes);
    }
    if (c.Text) Builder.SetText("EndingRepeatText", {2, 0, 0}, "Text", *c.Text);
    if (c.Backward) SetRecord("BackwardRepeat", 2, 0, {{"Flag", 0x800}, {"Actuate", 3}});
    ExportOk();
    EXPECT_EQ(Barline(1, 2, "left"), c.Left);
    EXPECT_EQ(Barline(1, 2, "right"), c.Right);
  }
}

TEST_F(MeasureSkeletonTest, RepeatTimes) {
  struct Case {
    int16_t Meflag;
    int16_t Flag, Actuate;
    std::string Times;
  } cases[] = {
      {kNormalBarline | kBackwardRepeat, 0x800, 3, "3"},
      {kNormalBarline | kBackwardRepeat, 0x800, 2, ""},
      {kNormalBarline | kBackwardRepeat, 0, 4, ""},
      {kNormalBarline | kBackwardRepeat | kEndingAttached, 0x800, 4, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.Meflag) + " " + std::to_string(c.Actuate));
    StartScore();
    Builder.AddStaff({});
    AddMeasures(3);
    SetMeflag(2, c.Meflag);
    SetRecord("BackwardRepeat", 2, 0, {{"Flag", c.Flag}, {"Actuate", c.Actuate}});
    ExportOk();
    EXPECT_EQ(Text(Measure(1, 2) + "/barline[@location='right']/repeat/@times"),
              c.Times.empty() ? "(none)" : c.Times);
  }
}

TEST_F(MeasureSkeletonTest, SystemAndPageBreaks) {
  Builder.AddStaff({});
  AddMeasures(6);
  SetMeflag(3, static_cast<int16_t>(kNormalBarline | 0x8000));
  SetRecord("MeasureSpec", 6, 0, {{"Newflag", 0x800}});
  SetRecord("FreezeMusic", 1, 0, {{"NextMeas", 2}});
  SetRecord("FreezeMusic", 4, 0, {{"NextMeas", 5}});
  ExportOk();
  std::vector<std::string> prints;
  for (int m = 1; m <= 6; ++m)
    prints.push_back(FlatNode(Measure(1, m) + "/print"));
  EXPECT_EQ(prints,
            (std::vector<std::string>{"(none)", "<print new-system=\"yes\"/>",
                                      "<print new-system=\"yes\"/>", "<print new-system=\"yes\"/>",
                                      "<print new-system=\"yes\"/>", "<print new-page=\"yes\"/>"}));
  EXPECT_EQ(Children(Measure(1, 3)).front(), "print");
}

// Frozen systems of any incidence are read once each.
TEST_F(MeasureSkeletonTest, FrozenSystemsOfAnyIncidence) {
  Builder.AddStaff({});
  AddMeasures(5);
  SetRecord("FreezeMusic", 2, 0, {{"NextMeas", 3}});
  SetRecord("FreezeMusic", 2, 1, {{"NextMeas", 4}});
  SetRecord("FreezeMusic", 9, 0, {{"NextMeas", 5}});
  ExportOk();
  EXPECT_EQ(Count("part/measure/print"), 3);
  EXPECT_EQ(Count(Measure(1, 5) + "/print"), 0) << "a frozen system past the end";
}

TEST_F(MeasureSkeletonTest, KeyChangesWithCancels) {
  Builder.AddStaff({});
  AddMeasures(5, testing::InKey(2));
  SetKey(2, 0xFF); // D to F
  SetKey(3, 0xFF);
  SetKey(4, 3);     // F to A
  SetKey(5, 0x103); // A major to F sharp minor
  ExportOk();
  std::vector<std::string> keys;
  for (int m = 1; m <= 5; ++m)
    keys.push_back(FlatNode(Measure(1, m) + "/attributes/key"));
  EXPECT_EQ(keys,
            (std::vector<std::string>{
                "<key><fifths>2</fifths><mode>major</mode></key>",
                "<key><cancel>2</cancel><fifths>-1</fifths><mode>major</mode></key>", "(none)",
                "<key><cancel>-1</cancel><fifths>3</fifths><mode>major</mode></key>",
                "<key><fifths>3</fifths><mode>minor</mode></key>"}));
}

TEST_F(MeasureSkeletonTest, FloatingKeysPerPart) {
  Builder.AddStaff(testing::Staff("A"));
  Builder.AddStaff(testing::Staff("B"));
  AddMeasures(3);
  for (int16_t staff : {1, 2})
    SetRecord("StaffSpec", staff, 0, {{"Instflag", static_cast<int16_t>(0x8000)}});
  SetRecord("MeasureFloat", 1, 1, {{"Flag", 0x800}, {"Key", 2}});
  SetRecord("MeasureFloat", 2, 1, {{"Flag", 0x800}, {"Key", -3}});
  SetRecord("MeasureFloat", 1, 2, {{"Flag", 0x800}, {"Key", 2}});
  SetRecord("MeasureFloat", 2, 2, {{"Flag", 0x800}, {"Key", 1}});
  // No float of its own in measure 3: the score's key.
  ExportOk();
  EXPECT_EQ(Text(Measure(1, 1) + "/attributes/key/fifths"), "2");
  EXPECT_EQ(Text(Measure(2, 1) + "/attributes/key/fifths"), "-3");
  EXPECT_EQ(Count(Measure(1, 2) + "/attributes/key"), 0);
  EXPECT_EQ(FlatNode(Measure(2, 2) + "/attributes/key"),
            "<key><cancel>-3</cancel><fifths>1</fifths><mode>major</mode></key>");
  EXPECT_EQ(FlatNode(Measure(1, 3) + "/attributes/key"),
            "<key><cancel>2</cancel><fifths>0</fifths><mode>major</mode></key>");
  EXPECT_EQ(FlatNode(Measure(2, 3) + "/attributes/key"),
            "<key><cancel>1</cancel><fifths>0</fifths><mode>major</mode></key>");
}

TEST_F(MeasureSkeletonTest, IgnoredKeyIsWrittenAsC) {
  Builder.AddStaff({});
  AddMeasures(2, testing::InKey(3));
  SetKey(2, -2);
  SetRecord("StaffSpec", 1, 0, {{"Instflag", 0x1}});
  ExportOk();
  EXPECT_EQ(FlatNode(Measure(1, 1) + "/attributes/key"),
            "<key><fifths>0</fifths><mode>major</mode></key>");
  EXPECT_EQ(FlatNode(Measure(1, 2) + "/attributes/key"),
            "<key><fifths>0</fifths><mode>major</mode></key>");
}

TEST_F(MeasureSkeletonTest, TimeChanges) {
  Builder.AddStaff({});
  AddMeasures(6);
  SetTime(1, 2, 1536);
  SetTime(2, 3, 1024);
  SetTime(3, 2, 1024, 0x10); // shown nowhere
  SetTime(4, 2, 1024);
  SetTime(5, 1, 4096);
  SetTime(6, 1, 4096);
  ExportOk();
  std::vector<std::string> times;
  for (int m = 1; m <= 6; ++m)
    times.push_back(FlatNode(Measure(1, m) + "/attributes/time"));
  EXPECT_EQ(times, (std::vector<std::string>{
                       "<time><beats>6</beats><beat-type>8</beat-type></time>",
                       "<time><beats>3</beats><beat-type>4</beat-type></time>", "(none)", "(none)",
                       "<time><beats>1</beats><beat-type>1</beat-type></time>", "(none)"}));
}

TEST_F(MeasureSkeletonTest, FloatingTimePerPart) {
  Builder.AddStaff(testing::Staff("A"));
  Builder.AddStaff(testing::Staff("B"));
  AddMeasures(4);
  SetRecord("StaffSpec", 1, 0, {{"Instflag", 0x4000}});
  SetRecord("MeasureFloat", 1, 2, {{"Flag", 0x400}, {"Bts", 3}, {"Div", 1024}});
  SetRecord("MeasureFloat", 1, 3, {{"Flag", 0x400}, {"Bts", 3}, {"Div", 1024}});
  SetTime(1, 4, 1024, 0x10); // the score's time is hidden in measure 1
  SetTime(3, 2, 1024);
  ExportOk();
  std::vector<std::string> a, b;
  for (int m = 1; m <= 4; ++m) {
    a.push_back(Text(Measure(1, m) + "/attributes/time/beats"));
    b.push_back(Text(Measure(2, m) + "/attributes/time/beats"));
  }
  EXPECT_EQ(a, (std::vector<std::string>{"(none)", "3", "(none)", "4"}));
  EXPECT_EQ(b, (std::vector<std::string>{"(none)", "(none)", "2", "4"}));
}

TEST_F(MeasureSkeletonTest, TimeSymbolsByTheDocumentsOptions) {
  struct Case {
    int16_t Common, Cut;
    std::string First, Second;
  } cases[] = {{1, 0, "common", "(none)"}, {0, 1, "(none)", "cut"}, {0, 0, "(none)", "(none)"}};
  for (const Case& c : cases) {
    StartScore();
    Builder.AddStaff({});
    AddMeasures(2);
    SetTime(2, 2, 2048);
    SetRecord("Settings19", -2, 0, {{"AbbrCommon", c.Common}, {"AbbrCut", c.Cut}});
    ExportOk();
    EXPECT_EQ(Text(Measure(1, 1) + "/attributes/time/@symbol"), c.First);
    EXPECT_EQ(Text(Measure(1, 2) + "/attributes/time/@symbol"), c.Second);
  }
}

TEST_F(MeasureSkeletonTest, UnknownBeatFails) {
  Builder.AddStaff({});
  AddMeasures(2);
  SetTime(2, 4, 1000);
  std::optional<Failure> failure = Export();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number, Code(0x80040342));
  EXPECT_EQ(failure->Description, "Unknown time signature beat division 1000");
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
}

TEST_F(MeasureSkeletonTest, MultipleRestsOnlyInTheFirstPart) {
  for (int staff = 0; staff < 3; ++staff)
    Builder.AddStaff({});
  AddMeasures(8);
  SetRecord("MultimeasureRest", 2, 0, {{"StopBefore", 5}, {"Flag", 1}, {"SymbolMeasures", 4}});
  SetRecord("MultimeasureRest", 6, 0, {{"StopBefore", 8}, {"Flag", 1}, {"SymbolMeasures", 2}});
  ExportOk();
  EXPECT_EQ(FlatNode(Measure(1, 2) + "/attributes"),
            "<attributes><measure-style><multiple-rest use-symbols=\"yes\">3</multiple-rest>"
            "</measure-style></attributes>");
  EXPECT_EQ(FlatNode(Measure(1, 6) + "/attributes"),
            "<attributes><measure-style><multiple-rest>2</multiple-rest></measure-style>"
            "</attributes>");
  EXPECT_EQ(Count("part[1]//measure-style"), 2);
  EXPECT_EQ(Count("part[2]//measure-style"), 0);
  EXPECT_EQ(Count("part[3]//measure-style"), 0);
}

TEST_F(MeasureSkeletonTest, TranspositionsByStaffAndStyle) {
  Builder.AddStaff(testing::Staff("Flute"));
  Builder.AddStaff(testing::Staff("Clarinet", "", kTrebleClef, kTransposeBFlat));
  AddMeasures(6);
  // The flute plays in B flat from measure 3 to the end of measure 4.
  SetRecord("StaffStyle", 1, 0, {{"Mask1", 0x100}, {"Transposition", kTransposeBFlat}});
  AssignStyle(1, 0, 1, 3, 4);
  ExportOk();
  EXPECT_EQ(Count(Measure(1, 1) + "/attributes/transpose"), 0);
  EXPECT_EQ(FlatNode(Measure(2, 1) + "/attributes/transpose"),
            "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>");
  EXPECT_EQ(FlatNode(Measure(2, 1) + "/attributes/key"),
            "<key><fifths>2</fifths><mode>major</mode></key>");
  std::vector<std::string> flute;
  for (int m = 2; m <= 6; ++m)
    flute.push_back(FlatNode(Measure(1, m) + "/attributes"));
  EXPECT_EQ(flute,
            (std::vector<std::string>{
                "(none)",
                "<attributes><key><fifths>2</fifths><mode>major</mode></key><transpose>"
                "<diatonic>-1</diatonic><chromatic>-2</chromatic></transpose></attributes>",
                "(none)",
                "<attributes><key><fifths>0</fifths><mode>major</mode></key><transpose>"
                "<diatonic>0</diatonic><chromatic>0</chromatic><octave-change>0</octave-change>"
                "</transpose></attributes>",
                "(none)"}));
  EXPECT_EQ(Count("part[2]/measure/attributes/transpose"), 1);
}

} // namespace
} // namespace ostin
