// The elements of a measure's attributes: key, time, transpose, clef, staff details and
// measure styles, where the time of a measure comes from, and staff styles met on the way.
#include <gtest/gtest.h>

#include "export_test_support.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using testing::ElementTest;
using testing::ExportTest;
using testing::Flat;
using namespace tools;

class KeyTimeTest : public ElementTest {};

// Expected: cancel, fifths and mode, "-" where the element is left out.
TEST_F(KeyTimeTest, Keys) {
  const std::optional<int16_t> none;
  struct Case {
    std::string Name;
    int16_t Key;
    std::optional<int16_t> OldKey;
    int16_t KeySig;
    bool KeyOpt, IgnoreKey, CancelOutgoing, ModeChange;
    std::string Expected;
  } cases[] = {
      {"C major", 0, none, 0, false, false, true, false, "- 0 major"},
      {"A minor", 0x100, none, 0, false, false, true, false, "- 0 minor"},
      {"another mode", 0x203, none, 0, false, false, true, false, "- 3 -"},
      {"3 flats in B flat", 0xFD, none, 2, false, false, true, false, "- -1 major"},
      {"9 sharps simplified", 7, none, 2, true, false, true, false, "- -3 major"},
      {"9 flats simplified", 0xF9, none, -2, true, false, true, false, "- 3 major"},
      {"no simplifying without a transposition", 7, none, 0, true, false, true, false, "- 7 major"},
      {"9 sharps without the option", 7, none, 2, false, false, true, false, "- 9 major"},
      {"D to F", 0xFF, 2, 0, false, false, true, false, "2 -1 major"},
      {"A to D", 2, 3, 0, false, false, true, false, "3 2 major"},
      {"D to A", 3, 2, 0, false, false, true, false, "- 3 major"},
      {"B flat to F", 0xFF, -2, 0, false, false, true, false, "-2 -1 major"},
      {"F to B flat", 0xFE, -1, 0, false, false, true, false, "- -2 major"},
      {"G to C", 0, 1, 0, false, false, true, false, "1 0 major"},
      {"C to G", 1, 0, 0, false, false, true, false, "- 1 major"},
      {"D to F without the option", 0xFF, 2, 0, false, false, false, false, "- -1 major"},
      {"mode only", 0x102, 2, 0, false, false, true, false, "- 2 minor"},
      {"mode only with the mode option", 0x102, 2, 0, false, false, true, true, "2 2 minor"},
      {"ignored key", 3, 0, 0, false, true, true, true, "- 0 major"},
      {"ignored minor key", 0x103, none, 2, false, true, true, false, "- 0 major"},
      {"old key not linear", 0, 0x4000, 0, false, false, true, false, "- 0 major"},
      {"old key transposed too", 0xFD, 0, 2, false, false, true, false, "2 -1 major"}};
  for (const Case& c : cases) {
    XmlPart part;
    part.TransposeKeySig = c.KeySig;
    part.TransposeKeyOpt = c.KeyOpt;
    part.IgnoreKey = c.IgnoreKey;
    Access.KeyOptions(c.CancelOutgoing, c.ModeChange);
    EXPECT_EQ(Flat(Access.CreateKey(c.Key, part, c.OldKey)),
              testing::Compose("key", {"cancel", "fifths", "mode"}, c.Expected))
        << c.Name;
  }
}

TEST_F(KeyTimeTest, ConvertTime) {
  struct Case {
    int16_t Beats, DivBeat, OutBeats, OutBeatType;
  } cases[] = {{4, 1024, 4, 4},  {2, 1536, 6, 8}, {3, 1024, 3, 4}, {1, 4096, 1, 1},
               {2, 2048, 2, 2},  {3, 512, 3, 8},  {1, 16, 1, 256}, {1, 48, 3, 256},
               {1, 12288, 3, 1}, {4, 256, 4, 16}, {1, 3072, 3, 4}, {3, 768, 9, 16},
               {5, 1000, 5, 0},  {2, 0, 2, 0},    {2, 8192, 2, 0}};
  for (const Case& c : cases) {
    int16_t beats = -1, beatType = 0;
    ToXmlTestAccess::ConvertTime(c.Beats, c.DivBeat, beats, beatType);
    EXPECT_EQ(std::pair(beats, beatType), std::pair(c.OutBeats, c.OutBeatType))
        << c.Beats << "x" << c.DivBeat;
  }
}

class CompositeTimeTest : public testing::ExportTest {
protected:
  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

TEST_F(CompositeTimeTest, CompositeTimes) {
  Builder.Set("TimeUpper", {1, 0, 0}, {{"Main_1", 3}, {"Flag_1", 1}, {"Main_2", 2}, {"Flag_2", 0}});
  Builder.Set("TimeUpper", {2, 0, 0}, {{"Main_1", 3}, {"Flag_1", 1}, {"Main_2", 2}, {"Flag_2", 1}});
  Builder.Set("TimeLower", {1, 0, 0}, {{"Main_1", 1024}});
  Builder.Set("TimeLower", {2, 0, 0}, {{"Main_1", 1024}, {"Main_2", 512}});
  Builder.Set("TimeLower", {3, 0, 0}, {{"Main_1", 1024}});
  Builder.Set("TimeLower", {3, 1, 0}, {{"Main_1", 2048}});
  Builder.Set("TimeLower", {4, 0, 0}, {{"Main_1", 1000}});
  HostSim().Open(Builder.Build());
  Access.StartDocument();
  // clang-format off
  struct Case {
    std::string Name;
    int16_t Beats, DivBeat;
    bool CompositeBeats, CompositeDiv;
    std::string Expected;
  } cases[] = {
      {"3 + 2 over 4", 1, 1, true, true, "<time><beats>3 + 2</beats><beat-type>4</beat-type></time>"},
      {"3/4 + 2/8", 2, 2, true, true,
       "<time><beats>3</beats><beat-type>4</beat-type><beats>2</beats><beat-type>8</beat-type></time>"},
      {"3 + 2 over a plain eighth", 1, 512, true, false, "<time><beats>3 + 2</beats><beat-type>8</beat-type></time>"},
      {"5 over two records of beats", 5, 3, false, true, "<time><beats>5</beats><beat-type>4</beat-type></time>"},
      {"more denominators than numerators", 2, 3, true, true,
       "<time><beats>3</beats><beat-type>4</beat-type><beats>2</beats><beat-type>2</beat-type></time>"}};
  // clang-format on
  for (const Case& c : cases)
    EXPECT_EQ(Flat(Access.CreateTime(c.Beats, c.DivBeat, c.CompositeBeats, c.CompositeDiv, true)),
              c.Expected)
        << c.Name;
  const std::pair<int16_t, int32_t> failures[] = {{4, Code(0x80040490)}, {9, Code(0x80040494)}};
  for (const auto& [lower, number] : failures)
    EXPECT_EQ(testing::Raised([&] { Access.CreateTime(9, lower, true, true, false); }),
              testing::Said(number, "MusicXML internal error"))
        << lower;
}

// The played time, the one shown, composite records and floating times of a staff.
TEST_F(CompositeTimeTest, TimeSources) {
  StartScore(1, 8);
  SetRecord("MeasureSpec", 2, 0, {{"Beats", 2}, {"DivBeat", 2048}});
  SetRecord("MeasureSpec", 3, 0, {{"Newflag", 0x4 | 0x2}, {"DispBeats", 3}, {"DispDivbeat", 1024}});
  SetRecord("MeasureSpec", 4, 0, {{"Newflag", 0x4}, {"DispBeats", 4}, {"DispDivbeat", 1024}});
  SetRecord("MeasureSpec", 5, 0, {{"Auxflag", 0x80 | 0x40}, {"Beats", 1}, {"DivBeat", 1}});
  Builder.Set("MeasureFloat", {1, 6, 0}, {{"Flag", 0x400}, {"Bts", 5}, {"Div", 512}});
  Builder.Set("MeasureFloat", {1, 7, 0},
              {{"Flag", 0x400 | 0x200 | 0x4},
               {"DispBeats", 4},
               {"DispDivbeat", 1024},
               {"Bts", 3},
               {"Div", 1024}});
  Builder.Set("MeasureFloat", {1, 8, 0}, {{"Flag", 0x200}, {"DispBeats", 7}, {"DispDivbeat", 512}});
  HostSim().Open(Builder.Build());
  Access.StartDocument();
  Access.Abbreviate(true, true);
  struct Case {
    int16_t Measure, Staff, Beats, DivBeat;
    bool CompositeBeats, CompositeDiv, Symbol;
  } cases[] = {{1, 0, 4, 1024, false, false, true}, {2, 0, 2, 2048, false, false, true},
               {3, 0, 3, 1024, false, false, true}, {4, 0, 4, 1024, false, false, false},
               {5, 0, 1, 1, true, true, false},     {6, 0, 4, 1024, false, false, true},
               {6, 1, 5, 512, false, false, false}, {7, 1, 4, 1024, false, false, true},
               {8, 1, 4, 1024, false, false, true}};
  for (const Case& c : cases) {
    MeasureSpec spec;
    ASSERT_TRUE(spec.Load(c.Measure, 0));
    int16_t beats = 0, divBeat = 0;
    bool compositeBeats = true, compositeDiv = true, symbol = !c.Symbol;
    Access.ParseTimeSignature(spec, beats, divBeat, compositeBeats, compositeDiv, symbol, c.Staff);
    EXPECT_EQ(std::tuple(beats, divBeat, compositeBeats, compositeDiv, symbol),
              std::tuple(c.Beats, c.DivBeat, c.CompositeBeats, c.CompositeDiv, c.Symbol))
        << "measure " << c.Measure << ", staff " << c.Staff;
  }
}

// Transpositions by interval and key, or chromatically by interval and alteration. Expected:
// diatonic, chromatic and the octave change when there is one; "" for no element.
TEST_F(KeyTimeTest, Transpositions) {
  // clang-format off
  struct Case {
    bool Chromatic;
    int16_t Interval, KeyOrAlteration;
    bool SuppressZero;
    std::string Expected;
  } cases[] = {
      {false, 0, 0, true, ""},      {false, 0, 0, false, "0 0 0"}, {false, 1, 2, true, "-1 -2"},  {false, 8, 2, true, "-1 -2 -1"},
      {false, -14, 0, true, "0 0 2"}, {false, -6, 2, true, "6 10"}, {false, 0, -7, true, "0 1"},  {false, 7, -7, true, "0 -11"},
      {false, -7, 7, true, "0 11"}, {false, 0, 5, true, "0 1"},    {false, 2, -3, true, "-2 -3"}, {false, 4, 1, true, "-4 -7"},
      {false, 5, 3, true, "-5 -9"}, {false, 7, 0, true, "0 0 -1"}, {false, 0, 7, true, "0 -1"},   {true, -2, 0, true, "2 4"},
      {true, 0, 1, true, "0 -1"},   {true, 0, 0, true, ""},        {true, 0, 0, false, "0 0 0"},  {true, 1, 0, true, "-1 -2"},
      {true, 1, 1, true, "-1 -3"},  {true, -1, -1, true, "1 3"},   {true, 6, 0, true, "-6 -11"},  {true, 7, 0, true, "0 0 -1"}};
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.Chromatic ? "chromatic " : "by key ") + std::to_string(c.Interval) +
                 " " + std::to_string(c.KeyOrAlteration));
    const std::string expected =
        testing::Compose("transpose", {"diatonic", "chromatic", "octave-change"}, c.Expected);
    XmlPart part;
    part.TransposeChromatic = c.Chromatic;
    (c.Chromatic ? part.TransposeChromaticInterval : part.TransposeKeyOptInterval) = c.Interval;
    (c.Chromatic ? part.TransposeChromaticAlter : part.TransposeKeySig) = c.KeyOrAlteration;
    EXPECT_EQ(Flat(Access.CreateTranspose(part, c.SuppressZero)), expected);
    if (c.Chromatic) {
      EXPECT_EQ(
          Flat(Access.CreateTransposeChromatic(c.Interval, c.KeyOrAlteration, c.SuppressZero)),
          expected);
    }
  }
  EXPECT_TRUE(User.Messages.empty());
}

TEST_F(KeyTimeTest, TranspositionsOutsideTheTableShowAMessage) {
  const std::pair<int16_t, int16_t> cases[] = {{3, 2}, {1, 8}, {0, -8}, {2, 1}};
  for (const auto& [interval, keySig] : cases) {
    User.Messages.clear();
    XmlPart part;
    part.TransposeKeyOptInterval = interval;
    part.TransposeKeySig = keySig;
    EXPECT_FALSE(Access.CreateTranspose(part, false)) << interval << " " << keySig;
    ASSERT_EQ(User.Messages.size(), 1u);
    EXPECT_EQ(User.Messages[0].Text,
              FormatResString(210, {std::to_string(interval), std::to_string(keySig)}));
    EXPECT_EQ(User.Messages[0].Style, platform::kMbOk);
  }
}

constexpr int16_t kSlash = 1;
constexpr int16_t kRhythmic = 2;
constexpr int16_t kOneBarRepeat = 3;
constexpr int16_t kTwoBarRepeat = 4;
constexpr int16_t kUseDots = 0x1000;

class StaffDetailsTest : public ElementTest {
protected:
  // A part of the given staves with plain staff records.
  static XmlPart PartOf(int16_t staves) {
    XmlPart part;
    part.SetStaves(staves);
    for (int16_t staff = 1; staff <= staves; ++staff)
      part.SetStaffSpecs(staff, std::make_shared<StaffSpec>());
    return part;
  }
};

// Expected: sign, line and octave change, "-" where left out; numbers beyond the table are
// treble clefs.
TEST_F(StaffDetailsTest, Clefs) {
  const std::pair<int16_t, std::string> cases[] = {
      {0, "G 2 -"},           {1, "C 3 -"},    {2, "C 4 -"},   {3, "F 4 -"},
      {4, "Percussion - -"},  {5, "G 2 -1"},   {6, "F 4 -1"},  {7, "F 3 -"},
      {8, "G 1 -"},           {9, "C 5 -"},    {10, "C 2 -"},  {11, "C 1 -"},
      {12, "Percussion - -"}, {13, "G 2 +1"},  {14, "F 4 +1"}, {15, "none - -"},
      {16, "TAB 5 -"},        {17, "TAB 5 -"}, {18, "G 2 -"},  {-1, "G 2 -"},
      {255, "G 2 -"}};
  for (const auto& [number, clef] : cases)
    EXPECT_EQ(Flat(Access.CreateClef(number)),
              testing::Compose("clef", {"sign", "line", "clef-octave-change"}, clef))
        << number;
}

// MIDI keys 0 to 127 as strings of a tablature staff; black keys are sharps.
TEST_F(StaffDetailsTest, Tunings) {
  const std::pair<int16_t, std::string> cases[] = {
      {40, "E - 2"}, {61, "C 1 4"}, {70, "A 1 4"}, {0, "C - -1"}, {127, "G - 9"}};
  for (const auto& [pitch, tuning] : cases)
    EXPECT_EQ(
        Flat(Access.CreateStaffTuning(pitch)),
        testing::Compose("staff-tuning", {"tuning-step", "tuning-alter", "tuning-octave"}, tuning))
        << pitch;
}

// The staff of a part of one staff is not numbered: see StaffOfOneLine.
TEST_F(StaffDetailsTest, StaffLinesOfTheSecondStaff) {
  XmlPart two = PartOf(2);
  two.StaffLines.at(2) = 3;
  EXPECT_EQ(Flat(Access.CreateStaffDetails(two, 2)),
            "<staff-details number=\"2\"><staff-lines>3</staff-lines></staff-details>");
}

TEST_F(StaffDetailsTest, MeasureStyleElements) {
  struct Case {
    int16_t Notation, AltFlag;
    std::string Expected;
  } cases[] = {
      {kSlash, 0, "<slash use-stems=\"no\" type=\"start\"/>"},
      {kSlash, kUseDots, "<slash use-stems=\"no\" use-dots=\"yes\" type=\"start\"/>"},
      {kRhythmic, kUseDots, "<slash use-stems=\"yes\" type=\"start\"/>"},
      {kOneBarRepeat, 0, "<measure-repeat type=\"start\">1</measure-repeat>"},
      {kTwoBarRepeat, 0, "<measure-repeat slashes=\"2\" type=\"start\">2</measure-repeat>"},
      {0, 0, "(none)"},
      {5, 0, "(none)"},
      {6, 0, "(none)"}};
  for (const Case& c : cases) {
    XmlPart part = PartOf(1);
    part.AlternateNotation.at(1) = c.Notation;
    part.StaffSpecs(1)->AltFlag = static_cast<int16_t>(c.AltFlag | c.Notation);
    EXPECT_EQ(Flat(Access.CreateMeasureStyleElement(part, 1)), c.Expected) << c.Notation;
  }
}

// Staff styles met by the measure loop, as the measure content calls them.
class StaffStyleSwitchTest : public ExportTest {
protected:
  void NotationStyle(int16_t style, int16_t altFlag) {
    SetRecord("StaffStyle", style, 0, {{"Mask2", 0x1000}, {"AltFlag", altFlag}});
  }
  // Opens the score and reads its part list.
  void Open() {
    HostSim().Open(Builder.Build());
    Access.ReadPartList();
    Access.OpenMeasureStyle().assign(Access.Part(1).Staves() + 1, std::string());
  }
  // The attributes of a new measure after switching at its start; measure 1 starts with
  // the attributes of the skeleton.
  std::string Switch(int16_t measureNumber, int16_t staff, int32_t edu = 0) {
    XmlPart& part = Access.Part(1);
    part.Measure = measureNumber;
    xml::XmlNode measure = Access.Element("measure");
    bool atStart = measureNumber == 1 && edu == 0;
    if (atStart) {
      xml::XmlNode attributes = measure.appendChild(Access.Element("attributes"));
      for (const char* name : {"divisions", "clef", "transpose"})
        attributes.appendChild(Access.Element(name));
    }
    Access.SwitchStaffStyle(measure, part, staff, edu, atStart);
    return Flat(measure.selectSingleNode("attributes"));
  }

  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

TEST_F(StaffStyleSwitchTest, SlashesOnThenRepeatsThenOff) {
  StartScore(1, 6);
  NotationStyle(1, kSlash);
  NotationStyle(2, kOneBarRepeat);
  AssignStyle(1, 0, 1, 2, 3);
  AssignStyle(1, 1, 2, 4, 4);
  Open();
  const std::string plainStart = "<attributes><divisions/><clef/><transpose/></attributes>";
  EXPECT_EQ(Switch(1, 1), plainStart) << "a five-line staff without a style adds nothing";
  EXPECT_EQ(Switch(2, 1), "<attributes><measure-style><slash use-stems=\"no\" type=\"start\"/>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Switch(3, 1), "(none)");
  EXPECT_EQ(Switch(4, 1), "<attributes><measure-style><slash type=\"stop\"/></measure-style>"
                          "<measure-style><measure-repeat type=\"start\">1</measure-repeat>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Switch(5, 1), "<attributes><measure-style><measure-repeat type=\"stop\"/>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Access.OpenMeasureStyle().at(1), "");
}

TEST_F(StaffStyleSwitchTest, StylesOfAPartOfTwoStavesAreNumbered) {
  StartScore(2, 3);
  Builder.AddGroup(testing::Group(1, 2, 3, "Piano"));
  NotationStyle(1, kRhythmic);
  AssignStyle(2, 0, 1, 1, 2);
  Open();
  ASSERT_EQ(Access.Part(1).Staves(), 2);
  EXPECT_EQ(Switch(1, 2), "<attributes><divisions/><clef/><transpose/><measure-style number=\"2\">"
                          "<slash use-stems=\"yes\" type=\"start\"/></measure-style></attributes>");
  EXPECT_EQ(Switch(3, 2), "<attributes><measure-style number=\"2\"><slash type=\"stop\"/>"
                          "</measure-style></attributes>");
}

TEST_F(StaffStyleSwitchTest, StaffOfOneLine) {
  StartScore(1, 1);
  SetRecord("StaffSpec", 1, 0, {{"TopLines", 0}, {"BotLines", 1}});
  Open();
  EXPECT_EQ(Switch(1, 1), "<attributes><divisions/><clef/><staff-details><staff-lines>1"
                          "</staff-lines></staff-details><transpose/></attributes>");
}

TEST_F(StaffStyleSwitchTest, TablatureStaffWithItsTuning) {
  Builder.AddStaff(testing::Staff("Guitar"));
  AddMeasures(1);
  SetRecord("StaffSpec", 1, 0, {{"Flag", 0x200}, {"FretInstID", 1}, {"CapoLowFret", 2}});
  SetRecord("FretInstrument", 1, 0, {{"NoOfStrings", 6}, {"NoOfFrets", 24}});
  // String 1 is the highest.
  Builder.SetBlock("FretInstrument", {1, 0, 0}, "StringTuning", {64, 59, 55, 50, 45, 40});
  Open();
  ASSERT_EQ(Access.Part(1).TabStaff, 1);
  std::string tunings; // line, step and octave of each string
  for (std::string name : {"1E2", "2A2", "3D3", "4G3", "5B3", "6E4"})
    tunings += "<staff-tuning line=\"" + name.substr(0, 1) + "\"><tuning-step>" + name[1] +
               "</tuning-step><tuning-octave>" + name[2] + "</tuning-octave></staff-tuning>";
  EXPECT_EQ(Switch(1, 1), "<attributes><divisions/><clef/><staff-details><staff-lines>6"
                          "</staff-lines>" +
                              tunings + "<capo>2</capo></staff-details><transpose/></attributes>");
}

} // namespace
} // namespace ostin
