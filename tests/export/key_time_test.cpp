#include <gtest/gtest.h>

#include "export_test_support.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using testing::ElementTest;
using testing::Flat;

class KeyTimeTest : public ElementTest {};

TEST_F(KeyTimeTest, Keys) {
  struct Case {
    std::string Name;
    int16_t Key;
    std::optional<int16_t> OldKey;
    int16_t KeySig = 0;
    bool KeyOpt = false, IgnoreKey = false, CancelOutgoing = true, ModeChange = false;
    std::string Expected;
  } cases[] = {
      {"C major",
       0,
       {},
       0,
       false,
       false,
       true,
       false,
       "<key><fifths>0</fifths><mode>major</mode></key>"},
      {"A minor",
       0x100,
       {},
       0,
       false,
       false,
       true,
       false,
       "<key><fifths>0</fifths><mode>minor</mode></key>"},
      {"another mode", 0x203, {}, 0, false, false, true, false, "<key><fifths>3</fifths></key>"},
      {"3 flats in B flat",
       static_cast<int16_t>(0xFD),
       {},
       2,
       false,
       false,
       true,
       false,
       "<key><fifths>-1</fifths><mode>major</mode></key>"},
      {"9 sharps simplified",
       7,
       {},
       2,
       true,
       false,
       true,
       false,
       "<key><fifths>-3</fifths><mode>major</mode></key>"},
      {"9 flats simplified",
       static_cast<int16_t>(0xF9),
       {},
       -2,
       true,
       false,
       true,
       false,
       "<key><fifths>3</fifths><mode>major</mode></key>"},
      {"no simplifying without a transposition",
       7,
       {},
       0,
       true,
       false,
       true,
       false,
       "<key><fifths>7</fifths><mode>major</mode></key>"},
      {"9 sharps without the option",
       7,
       {},
       2,
       false,
       false,
       true,
       false,
       "<key><fifths>9</fifths><mode>major</mode></key>"},
      {"D to F", static_cast<int16_t>(0xFF), 2, 0, false, false, true, false,
       "<key><cancel>2</cancel><fifths>-1</fifths><mode>major</mode></key>"},
      {"A to D", 2, 3, 0, false, false, true, false,
       "<key><cancel>3</cancel><fifths>2</fifths><mode>major</mode></key>"},
      {"D to A", 3, 2, 0, false, false, true, false,
       "<key><fifths>3</fifths><mode>major</mode></key>"},
      {"B flat to F", static_cast<int16_t>(0xFF), -2, 0, false, false, true, false,
       "<key><cancel>-2</cancel><fifths>-1</fifths><mode>major</mode></key>"},
      {"F to B flat", static_cast<int16_t>(0xFE), -1, 0, false, false, true, false,
       "<key><fifths>-2</fifths><mode>major</mode></key>"},
      {"G to C", 0, 1, 0, false, false, true, false,
       "<key><cancel>1</cancel><fifths>0</fifths><mode>major</mode></key>"},
      {"C to G", 1, 0, 0, false, false, true, false,
       "<key><fifths>1</fifths><mode>major</mode></key>"},
      {"D to F without the option", static_cast<int16_t>(0xFF), 2, 0, false, false, false, false,
       "<key><fifths>-1</fifths><mode>major</mode></key>"},
      {"mode only", 0x102, 2, 0, false, false, true, false,
       "<key><fifths>2</fifths><mode>minor</mode></key>"},
      {"mode only with the mode option", 0x102, 2, 0, false, false, true, true,
       "<key><cancel>2</cancel><fifths>2</fifths><mode>minor</mode></key>"},
      {"ignored key", 3, 0, 0, false, true, true, true,
       "<key><fifths>0</fifths><mode>major</mode></key>"},
      {"ignored minor key",
       0x103,
       {},
       2,
       false,
       true,
       true,
       false,
       "<key><fifths>0</fifths><mode>major</mode></key>"},
      {"old key not linear", 0, 0x4000, 0, false, false, true, false,
       "<key><fifths>0</fifths><mode>major</mode></key>"},
      {"old key transposed too", static_cast<int16_t>(0xFD), 0, 2, false, false, true, false,
       "<key><cancel>2</cancel><fifths>-1</fifths><mode>major</mode></key>"},
  };
  for (const Case& c : cases) {
    XmlPart part;
    part.TransposeKeySig = c.KeySig;
    part.TransposeKeyOpt = c.KeyOpt;
    part.IgnoreKey = c.IgnoreKey;
    Access.KeyCancelOutgoing() = c.CancelOutgoing;
    Access.KeyModeChange() = c.ModeChange;
    EXPECT_EQ(Flat(Access.CreateKey(c.Key, part, c.OldKey)), c.Expected) << c.Name;
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
    EXPECT_EQ(beats, c.OutBeats) << c.Beats << "x" << c.DivBeat;
    EXPECT_EQ(beatType, c.OutBeatType) << c.Beats << "x" << c.DivBeat;
  }
}

TEST_F(KeyTimeTest, Times) {
  struct Case {
    int16_t Beats, DivBeat;
    bool Symbol;
    std::string Expected;
  } cases[] = {
      {4, 1024, true, "<time symbol=\"common\"><beats>4</beats><beat-type>4</beat-type></time>"},
      {4, 1024, false, "<time><beats>4</beats><beat-type>4</beat-type></time>"},
      {2, 2048, true, "<time symbol=\"cut\"><beats>2</beats><beat-type>2</beat-type></time>"},
      {2, 1024, true, "<time><beats>2</beats><beat-type>4</beat-type></time>"},
      {2, 1536, false, "<time><beats>6</beats><beat-type>8</beat-type></time>"},
      {1, 4096, false, "<time><beats>1</beats><beat-type>1</beat-type></time>"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Flat(Access.CreateTime(c.Beats, c.DivBeat, false, false, c.Symbol)), c.Expected);
  try {
    Access.CreateTime(4, 1000, false, false, false);
    ADD_FAILURE() << "a beat of 1000 EDU";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, Code(0x80040342));
    EXPECT_EQ(failure.Source, "FinalePlugIn");
    EXPECT_EQ(failure.Description, "Unknown time signature beat division 1000");
  }
}

class CompositeTimeTest : public testing::ExportTest {};

TEST_F(CompositeTimeTest, CompositeTimes) {
  Builder.Set("TimeUpper", {1, 0, 0}, {{"Main_1", 3}, {"Flag_1", 1}, {"Main_2", 2}, {"Flag_2", 0}});
  Builder.Set("TimeUpper", {2, 0, 0}, {{"Main_1", 3}, {"Flag_1", 1}, {"Main_2", 2}, {"Flag_2", 1}});
  Builder.Set("TimeLower", {1, 0, 0}, {{"Main_1", 1024}});
  Builder.Set("TimeLower", {2, 0, 0}, {{"Main_1", 1024}, {"Main_2", 512}});
  Builder.Set("TimeLower", {3, 0, 0}, {{"Main_1", 1024}});
  Builder.Set("TimeLower", {3, 1, 0}, {{"Main_1", 2048}});
  Builder.Set("TimeLower", {4, 0, 0}, {{"Main_1", 1000}});
  HostSim().Open(Builder.Build());
  ToXml engine;
  ToXmlTestAccess access{engine};
  access.StartDocument();
  struct Case {
    std::string Name;
    int16_t Beats, DivBeat;
    bool CompositeBeats, CompositeDiv;
    std::string Expected;
  } cases[] = {
      {"3 + 2 over 4", 1, 1, true, true,
       "<time><beats>3 + 2</beats><beat-type>4</beat-type></time>"},
      {"3/4 + 2/8", 2, 2, true, true,
       "<time><beats>3</beats><beat-type>4</beat-type><beats>2</beats><beat-type>8</beat-type>"
       "</time>"},
      {"3 + 2 over a plain eighth", 1, 512, true, false,
       "<time><beats>3 + 2</beats><beat-type>8</beat-type></time>"},
      {"5 over two records of beats", 5, 3, false, true,
       "<time><beats>5</beats><beat-type>4</beat-type></time>"},
      {"more denominators than numerators", 2, 3, true, true,
       "<time><beats>3</beats><beat-type>4</beat-type><beats>2</beats><beat-type>2</beat-type>"
       "</time>"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Flat(access.CreateTime(c.Beats, c.DivBeat, c.CompositeBeats, c.CompositeDiv, true)),
              c.Expected)
        << c.Name;
  const std::pair<int16_t, int32_t> failures[] = {{4, Code(0x80040490)}, {9, Code(0x80040494)}};
  for (const auto& [lower, number] : failures) {
    try {
      access.CreateTime(9, lower, true, true, false);
      ADD_FAILURE() << lower;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, number) << lower;
      EXPECT_EQ(failure.Description, "MusicXML internal error");
    }
  }
}

TEST_F(CompositeTimeTest, TimeSources) {
  Builder.AddStaff({});
  AddMeasures(8);
  auto measure = [&](int16_t m, std::initializer_list<std::pair<const char*, int32_t>> fields) {
    Builder.Set("MeasureSpec", {m, 0, 0}, fields);
  };
  measure(2, {{"Beats", 2}, {"DivBeat", 2048}});
  measure(3, {{"Newflag", 0x4 | 0x2}, {"DispBeats", 3}, {"DispDivbeat", 1024}});
  measure(4, {{"Newflag", 0x4}, {"DispBeats", 4}, {"DispDivbeat", 1024}});
  measure(5, {{"Auxflag", 0x80 | 0x40}, {"Beats", 1}, {"DivBeat", 1}});
  Builder.Set("MeasureFloat", {1, 6, 0}, {{"Flag", 0x400}, {"Bts", 5}, {"Div", 512}});
  Builder.Set("MeasureFloat", {1, 7, 0},
              {{"Flag", 0x400 | 0x200 | 0x4},
               {"DispBeats", 4},
               {"DispDivbeat", 1024},
               {"Bts", 3},
               {"Div", 1024}});
  Builder.Set("MeasureFloat", {1, 8, 0}, {{"Flag", 0x200}, {"DispBeats", 7}, {"DispDivbeat", 512}});
  HostSim().Open(Builder.Build());
  ToXml engine;
  ToXmlTestAccess access{engine};
  access.StartDocument();
  access.AbbreviateCommon() = true;
  access.AbbreviateCut() = true;
  struct Case {
    int16_t Measure, Staff;
    int16_t Beats, DivBeat;
    bool CompositeBeats, CompositeDiv, Symbol;
  } cases[] = {
      {1, 0, 4, 1024, false, false, true}, {2, 0, 2, 2048, false, false, true},
      {3, 0, 3, 1024, false, false, true}, {4, 0, 4, 1024, false, false, false},
      {5, 0, 1, 1, true, true, false},     {6, 0, 4, 1024, false, false, true},
      {6, 1, 5, 512, false, false, false}, {7, 1, 4, 1024, false, false, true},
      {8, 1, 4, 1024, false, false, true},
  };
  for (const Case& c : cases) {
    MeasureSpec spec;
    ASSERT_TRUE(spec.Load(c.Measure, 0));
    int16_t beats = 0, divBeat = 0;
    bool compositeBeats = true, compositeDiv = true, symbol = !c.Symbol;
    access.ParseTimeSignature(spec, beats, divBeat, compositeBeats, compositeDiv, symbol, c.Staff);
    std::string where =
        "measure " + std::to_string(c.Measure) + ", staff " + std::to_string(c.Staff);
    EXPECT_EQ(beats, c.Beats) << where;
    EXPECT_EQ(divBeat, c.DivBeat) << where;
    EXPECT_EQ(compositeBeats, c.CompositeBeats) << where;
    EXPECT_EQ(compositeDiv, c.CompositeDiv) << where;
    EXPECT_EQ(symbol, c.Symbol) << where;
  }
  // Without the abbreviation options a plain 4/4 and 2/2 have no symbol.
  access.AbbreviateCommon() = false;
  access.AbbreviateCut() = false;
  for (int16_t m : {1, 2}) {
    MeasureSpec spec;
    ASSERT_TRUE(spec.Load(m, 0));
    int16_t beats = 0, divBeat = 0;
    bool compositeBeats = false, compositeDiv = false, symbol = true;
    access.ParseTimeSignature(spec, beats, divBeat, compositeBeats, compositeDiv, symbol, 0);
    EXPECT_FALSE(symbol) << m;
  }
}

TEST_F(KeyTimeTest, KeyBasedTranspositions) {
  struct Case {
    std::string Name;
    int16_t Interval, KeySig;
    bool SuppressZero;
    std::string Expected;
  } cases[] = {
      {"none, suppressed", 0, 0, true, "(none)"},
      {"none, written", 0, 0, false,
       "<transpose><diatonic>0</diatonic><chromatic>0</chromatic>"
       "<octave-change>0</octave-change></transpose>"},
      {"B flat clarinet", 1, 2, true,
       "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>"},
      {"A clarinet", 2, -3, true,
       "<transpose><diatonic>-2</diatonic><chromatic>-3</chromatic></transpose>"},
      {"horn in F", 4, 1, true,
       "<transpose><diatonic>-4</diatonic><chromatic>-7</chromatic></transpose>"},
      {"alto saxophone", 5, 3, true,
       "<transpose><diatonic>-5</diatonic><chromatic>-9</chromatic></transpose>"},
      {"tenor saxophone", 8, 2, true,
       "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic>"
       "<octave-change>-1</octave-change></transpose>"},
      {"an octave down", 7, 0, true,
       "<transpose><diatonic>0</diatonic><chromatic>0</chromatic>"
       "<octave-change>-1</octave-change></transpose>"},
      {"two octaves up", -14, 0, true,
       "<transpose><diatonic>0</diatonic><chromatic>0</chromatic>"
       "<octave-change>2</octave-change></transpose>"},
      {"piccolo trumpet", -6, 2, true,
       "<transpose><diatonic>6</diatonic><chromatic>10</chromatic></transpose>"},
      {"seven flats in unison", 0, -7, true,
       "<transpose><diatonic>0</diatonic><chromatic>1</chromatic></transpose>"},
      {"seven flats an octave down", 7, -7, true,
       "<transpose><diatonic>0</diatonic><chromatic>-11</chromatic></transpose>"},
      {"seven sharps in unison", 0, 7, true,
       "<transpose><diatonic>0</diatonic><chromatic>-1</chromatic></transpose>"},
      {"seven sharps an octave up", -7, 7, true,
       "<transpose><diatonic>0</diatonic><chromatic>11</chromatic></transpose>"},
      {"key only", 0, 5, true,
       "<transpose><diatonic>0</diatonic><chromatic>1</chromatic></transpose>"},
  };
  for (const Case& c : cases) {
    XmlPart part;
    part.TransposeKeyOptInterval = c.Interval;
    part.TransposeKeySig = c.KeySig;
    EXPECT_EQ(Flat(Access.CreateTranspose(part, c.SuppressZero)), c.Expected) << c.Name;
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

TEST_F(KeyTimeTest, ChromaticTranspositions) {
  struct Case {
    int16_t Interval, Alteration;
    bool SuppressZero;
    std::string Expected;
  } cases[] = {
      {0, 0, true, "(none)"},
      {0, 0, false,
       "<transpose><diatonic>0</diatonic><chromatic>0</chromatic>"
       "<octave-change>0</octave-change></transpose>"},
      {1, 0, true, "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>"},
      {1, 1, true, "<transpose><diatonic>-1</diatonic><chromatic>-3</chromatic></transpose>"},
      {-2, 0, true, "<transpose><diatonic>2</diatonic><chromatic>4</chromatic></transpose>"},
      {-1, -1, true, "<transpose><diatonic>1</diatonic><chromatic>3</chromatic></transpose>"},
      {6, 0, true, "<transpose><diatonic>-6</diatonic><chromatic>-11</chromatic></transpose>"},
      {7, 0, true,
       "<transpose><diatonic>0</diatonic><chromatic>0</chromatic>"
       "<octave-change>-1</octave-change></transpose>"},
      {0, 1, true, "<transpose><diatonic>0</diatonic><chromatic>-1</chromatic></transpose>"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Flat(Access.CreateTransposeChromatic(c.Interval, c.Alteration, c.SuppressZero)),
              c.Expected)
        << c.Interval << " " << c.Alteration;
    // A part that transposes chromatically goes the same way.
    XmlPart part;
    part.TransposeChromatic = true;
    part.TransposeChromaticInterval = c.Interval;
    part.TransposeChromaticAlter = c.Alteration;
    EXPECT_EQ(Flat(Access.CreateTranspose(part, c.SuppressZero)), c.Expected);
  }
}

} // namespace
} // namespace ostin
