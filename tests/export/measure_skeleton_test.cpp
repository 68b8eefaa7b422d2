// The measures the skeleton makes of each part: barlines, repeats and endings, prints, keys,
// times, multiple rests and transpositions.
#include <gtest/gtest.h>

#include "export_test_support.h"

namespace ostin {
namespace {

using testing::ExportTest;
using namespace tools;

class MeasureSkeletonTest : public ExportTest {
protected:
  std::string Barline(int measure, const char* location) const {
    return FlatNode(Measure(1, measure) + "/barline[@location='" + location + "']");
  }
  // The element at the path below each of the first measures of a part, on one line.
  std::vector<std::string> PerMeasure(int part, int measures, const std::string& path) const {
    std::vector<std::string> found;
    for (int m = 1; m <= measures; ++m)
      found.push_back(FlatNode(Measure(part, m) + path));
    return found;
  }
  static std::string Key(const std::string& values) {
    return testing::Compose("key", {"cancel", "fifths", "mode"}, values);
  }
  void SetMeflag(int16_t measure, int32_t meflag) {
    SetRecord("MeasureSpec", measure, 0, {{"Meflag", static_cast<int16_t>(meflag)}});
  }
  void SetKey(int16_t measure, int16_t key) {
    SetRecord("MeasureSpec", measure, 0, {{"Key", key}});
  }
  void SetTime(int16_t measure, int16_t beats, int16_t divBeat, int16_t auxflag = 0) {
    SetRecord("MeasureSpec", measure, 0,
              {{"Beats", beats}, {"DivBeat", divBeat}, {"Auxflag", auxflag}});
  }
};

TEST_F(MeasureSkeletonTest, OneMeasureScore) {
  for (int16_t finalBarline : {1, 0}) {
    SCOPED_TRACE(finalBarline);
    StartScore(1, 1);
    SetRecord("Settings09", -2, 0, {{"FinalBarline", finalBarline}});
    ExportOk();
    EXPECT_EQ(Text("part/measure/@number"), "1");
    EXPECT_EQ(Children("part"), std::vector<std::string>{"measure"});
    std::vector<std::string> children = {"attributes", "note"};
    if (finalBarline) children.push_back("barline");
    EXPECT_EQ(Children("part/measure"), children);
    // The measure holds one whole rest: a division of one quarter is enough.
    EXPECT_EQ(FlatNode("part/measure/attributes"),
              "<attributes><divisions>1</divisions><key><fifths>0</fifths><mode>major</mode>"
              "</key><time><beats>4</beats><beat-type>4</beat-type></time><clef><sign>G</sign>"
              "<line>2</line></clef></attributes>");
    EXPECT_EQ(Barline(1, "right"),
              finalBarline ? "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
                             "</barline>"
                           : "(none)");
  }
}

TEST_F(MeasureSkeletonTest, BarStylesAndRepeats) {
  const std::string forward = "<barline location=\"left\"><bar-style>heavy-light</bar-style>"
                              "<repeat direction=\"forward\"/></barline>";
  const std::string backward = "<barline location=\"right\"><bar-style>light-heavy</bar-style>"
                               "<repeat direction=\"backward\"/></barline>";
  auto right = [](const std::string& style) {
    return "<barline location=\"right\"><bar-style>" + style + "</bar-style></barline>";
  };
  // clang-format off
  struct Case {
    int32_t Meflag;
    std::string Left, Right;
  } cases[] = {{kNormalBarline, "(none)", "(none)"}, {0x00, "(none)", right("none")},
               {kDoubleBarline, "(none)", right("light-light")}, {0x30, "(none)", right("dotted")},
               {0x40, "(none)", right("heavy")}, {0x50, "(none)", right("light-heavy")},
               {0x60, "(none)", right("dotted")}, {0x70, "(none)", "(none)"},
               {kDoubleBarline | kForwardRepeat, "<barline location=\"left\"><repeat direction=\"forward\"/></barline>", right("light-light")},
               {kNormalBarline | kForwardRepeat, forward, "(none)"},
               {kNormalBarline | kBackwardRepeat, "(none)", backward},
               {kDoubleBarline | kBackwardRepeat, "(none)", backward},
               {kNormalBarline | kForwardRepeat | kBackwardRepeat, forward, backward}};
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Meflag);
    StartScore(1, 3);
    SetMeflag(2, c.Meflag);
    ExportOk();
    EXPECT_EQ(Barline(2, "left"), c.Left);
    EXPECT_EQ(Barline(2, "right"), c.Right);
    // The left barline stands before, the right one after everything else of the measure.
    std::vector<std::string> children = Children(Measure(1, 2));
    EXPECT_EQ(children.front() == "barline", c.Left != "(none)");
    EXPECT_EQ(children.back() == "barline", c.Right != "(none)");
  }
}

TEST_F(MeasureSkeletonTest, Endings) {
  // An ending on measure 2 of 3: its text, passes and next ending; the barlines it makes.
  auto check = [&](const std::string& name, int32_t meflag, std::optional<std::string> text,
                   std::vector<int32_t> passes, int16_t nextend, bool backward,
                   const std::string& left, const std::string& right) {
    SCOPED_TRACE(name);
    StartScore(1, 3);
    SetMeflag(2, meflag);
    if (!passes.empty()) {
      SetRecord("EndingRepeat", 2, 0,
                {{"Nextend", nextend}, {"NumTotalPasses", static_cast<int32_t>(passes.size())}});
      Builder.SetBlock("EndingRepeat", {2, 0, 0}, "Passes", passes);
    }
    if (text) Builder.SetText("EndingRepeatText", {2, 0, 0}, "Text", *text);
    if (backward) SetRecord("BackwardRepeat", 2, 0, {{"Flag", 0x800}, {"Actuate", 3}});
    ExportOk();
    EXPECT_EQ(Barline(2, "left"), left);
    EXPECT_EQ(Barline(2, "right"), right);
  };
  auto start = [](const std::string& number) {
    return "<barline location=\"left\"><ending number=\"" + number +
           "\" type=\"start\"/></barline>";
  };
  const int32_t ending = kNormalBarline | kEndingAttached;
  const std::optional<std::string> none;
  // clang-format off
  check("first ending with its repeat back", ending | kBackwardRepeat, "1.", {1}, 3, true, start("1"),
        "<barline location=\"right\"><bar-style>light-heavy</bar-style><ending number=\"1\" type=\"stop\"/>"
        "<repeat direction=\"backward\"/></barline>");
  check("a dot alone stays", ending, ".", {1}, 3, false, start("."), "(none)");
  check("blanks are trimmed before the dot goes", ending, " 2. ", {2}, 3, false, start("2"), "(none)");
  check("only one final dot goes", ending, "1..", {1}, 3, false, start("1."), "(none)");
  check("the passes without a text", ending, none, {1, 2}, 3, false, start("1, 2"), "(none)");
  check("a last ending discontinues", ending, "3", {3}, 0, false, start("3"),
        "<barline location=\"right\"><ending number=\"3\" type=\"discontinue\"/></barline>");
  check("an ending bit without records", ending, none, {}, 0, false, "(none)", "(none)");
  // clang-format on
}

TEST_F(MeasureSkeletonTest, RepeatTimes) {
  struct Case {
    int32_t Meflag;
    int16_t Flag, Actuate;
    std::string Times;
  } cases[] = {{kNormalBarline | kBackwardRepeat, 0x800, 3, "3"},
               {kNormalBarline | kBackwardRepeat, 0x800, 2, "(none)"},
               {kNormalBarline | kBackwardRepeat, 0, 4, "(none)"},
               {kNormalBarline | kBackwardRepeat | kEndingAttached, 0x800, 4, "(none)"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.Meflag) + " " + std::to_string(c.Actuate));
    StartScore(1, 3);
    SetMeflag(2, c.Meflag);
    SetRecord("BackwardRepeat", 2, 0, {{"Flag", c.Flag}, {"Actuate", c.Actuate}});
    ExportOk();
    EXPECT_EQ(Text(Measure(1, 2) + "/barline[@location='right']/repeat/@times"), c.Times);
  }
}

// Breaks by the measure's flags and by frozen systems of any incidence, each read once; the
// print stands first in its measure.
TEST_F(MeasureSkeletonTest, SystemAndPageBreaks) {
  StartScore(1, 8);
  SetMeflag(3, kNormalBarline | 0x8000);
  SetRecord("MeasureSpec", 6, 0, {{"Newflag", 0x800}});
  SetRecord("FreezeMusic", 1, 0, {{"NextMeas", 2}});
  SetRecord("FreezeMusic", 1, 1, {{"NextMeas", 5}});
  SetRecord("FreezeMusic", 7, 0, {{"NextMeas", 8}});
  SetRecord("FreezeMusic", 9, 0, {{"NextMeas", 4}}); // past the end
  ExportOk();
  const std::string system = "<print new-system=\"yes\"/>";
  EXPECT_EQ(PerMeasure(1, 8, "/print"),
            (std::vector<std::string>{"(none)", system, system, "(none)", system,
                                      "<print new-page=\"yes\"/>", system, system}));
  EXPECT_EQ(Children(Measure(1, 3)).front(), "print");
}

TEST_F(MeasureSkeletonTest, KeyChangesWithCancels) {
  StartScore();
  Builder.AddStaff({});
  AddMeasures(5, testing::InKey(2));
  SetKey(2, 0xFF); // D to F
  SetKey(3, 0xFF);
  SetKey(4, 3);     // F to A
  SetKey(5, 0x103); // A major to F sharp minor
  ExportOk();
  EXPECT_EQ(PerMeasure(1, 5, "/attributes/key"),
            (std::vector<std::string>{Key("- 2 major"), Key("2 -1 major"), "(none)",
                                      Key("-1 3 major"), Key("- 3 minor")}));
}

// Staves with floating keys take the key of their own float, else the score's.
TEST_F(MeasureSkeletonTest, FloatingKeysPerPart) {
  Builder.AddStaff(testing::Staff("A"));
  Builder.AddStaff(testing::Staff("B"));
  AddMeasures(3);
  for (int16_t staff : {1, 2})
    SetRecord("StaffSpec", staff, 0, {{"Instflag", static_cast<int16_t>(0x8000)}});
  SetRecord("MeasureFloat", 1, 1, {{"Flag", 0x800}, {"Key", 2}});
  SetRecord("MeasureFloat", 2, 1, {{"Flag", 0x800}, {"Key", 0xFD}});
  SetRecord("MeasureFloat", 1, 2, {{"Flag", 0x800}, {"Key", 2}});
  SetRecord("MeasureFloat", 2, 2, {{"Flag", 0x800}, {"Key", 1}});
  ExportOk();
  EXPECT_EQ(PerMeasure(1, 3, "/attributes/key"),
            (std::vector<std::string>{Key("- 2 major"), "(none)", Key("2 0 major")}));
  EXPECT_EQ(PerMeasure(2, 3, "/attributes/key"),
            (std::vector<std::string>{Key("- -3 major"), Key("-3 1 major"), Key("1 0 major")}));
}

TEST_F(MeasureSkeletonTest, IgnoredKeyIsWrittenAsC) {
  StartScore();
  Builder.AddStaff({});
  AddMeasures(2, testing::InKey(3));
  SetKey(2, -2);
  SetRecord("StaffSpec", 1, 0, {{"Instflag", 0x1}});
  ExportOk();
  EXPECT_EQ(PerMeasure(1, 2, "/attributes/key"), std::vector<std::string>(2, Key("- 0 major")));
}

TEST_F(MeasureSkeletonTest, TimeChanges) {
  StartScore(1, 6);
  SetTime(1, 2, 1536);
  SetTime(2, 3, 1024);
  SetTime(3, 2, 1024, 0x10); // shown nowhere
  SetTime(4, 2, 1024);
  SetTime(5, 1, 4096);
  SetTime(6, 1, 4096);
  ExportOk();
  EXPECT_EQ(PerMeasure(1, 6, "/attributes/time"),
            (std::vector<std::string>{
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

// The symbols of 4/4, 2/2 and 2/4 as asked for: only 4/4 and 2/2 have one.
TEST_F(MeasureSkeletonTest, TimeSymbolsByTheDocumentsOptions) {
  const std::tuple<int16_t, int16_t, std::string> cases[] = {
      {1, 0, "common"}, {0, 1, "cut"}, {0, 0, "(none)"}, {1, 1, "common, cut"}};
  for (const auto& [common, cut, symbols] : cases) {
    StartScore(1, 3);
    SetTime(2, 2, 2048);
    SetTime(3, 2, 1024);
    SetRecord("Settings19", -2, 0, {{"AbbrCommon", common}, {"AbbrCut", cut}});
    ExportOk();
    EXPECT_EQ(testing::Joined(Score->documentElement(), "part/measure/attributes/time/@symbol"),
              symbols)
        << common << cut;
  }
}

TEST_F(MeasureSkeletonTest, UnknownBeatFails) {
  StartScore(1, 2);
  SetTime(2, 4, 1000);
  std::optional<Failure> failure = Export();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number, Code(0x80040342));
  EXPECT_EQ(failure->Source, "FinalePlugIn");
  EXPECT_EQ(failure->Description, "Unknown time signature beat division 1000");
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
}

TEST_F(MeasureSkeletonTest, MultipleRestsOnlyInTheFirstPart) {
  StartScore(3, 8);
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
  EXPECT_EQ(Count("part[position() > 1]//measure-style"), 0);
}

TEST_F(MeasureSkeletonTest, TranspositionsByStaffAndStyle) {
  Builder.AddStaff(testing::Staff("Flute"));
  Builder.AddStaff(testing::Staff("Clarinet", "", kTrebleClef, kTransposeBFlat));
  AddMeasures(6);
  // The flute plays in B flat from measure 3 to the end of measure 4.
  BFlatStyle();
  AssignStyle(1, 0, 1, 3, 4);
  ExportOk();
  EXPECT_EQ(FlatNode(Measure(2, 1) + "/attributes/transpose"),
            "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>");
  EXPECT_EQ(FlatNode(Measure(2, 1) + "/attributes/key"), Key("- 2 major"));
  EXPECT_EQ(Count("part[2]/measure/attributes/transpose"), 1);
  EXPECT_EQ(Count(Measure(1, 1) + "/attributes/transpose"), 0);
  EXPECT_EQ(PerMeasure(1, 6, "/attributes"),
            (std::vector<std::string>{
                FlatNode(Measure(1, 1) + "/attributes"), "(none)",
                "<attributes><key><fifths>2</fifths><mode>major</mode></key><transpose>"
                "<diatonic>-1</diatonic><chromatic>-2</chromatic></transpose></attributes>",
                "(none)",
                "<attributes><key><fifths>0</fifths><mode>major</mode></key><transpose>"
                "<diatonic>0</diatonic><chromatic>0</chromatic><octave-change>0</octave-change>"
                "</transpose></attributes>",
                "(none)"}));
}

} // namespace
} // namespace ostin
