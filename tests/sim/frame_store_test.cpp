#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <tuple>

#include <nlohmann/json.hpp>

#include "../host/host_fixture.h"
#include "host/bridge.h"
#include "host/frames/frame_bits.h"

namespace ostin::sim {
namespace {

using testing::Put;

constexpr int32_t kValidNote = kEfValid | kEfNote;

// Layer 0 of staff 1 is in frames 1 to 4 and of staff 2 in frames 5 to 8.
class FrameStoreTest : public testing::SampleTest {
protected:
  void SetUp() override {
    testing::SampleTest::SetUp();
    // The sample's holders, with frames that these tests fill themselves.
    Doc().Frames = sim::FrameStore{};
  }
  static Document& Doc() { return HostSim().Doc(); }

  // Opens frame 1 (staff 1, measure 1, layer 0) holding these entries.
  static int32_t OpenWith(StoredFrame entries) {
    Doc().Frames.Frames[1] = std::move(entries);
    return FxLoadTgf(0, 1, 1, 0, -1);
  }

  // Position, sounding duration and clef of entry i of an open frame.
  static std::tuple<int32_t, int32_t, int16_t> Timing(int32_t tgf, int16_t i) {
    int32_t exentry, entnum, ef, elldur = -1, actdur = -1;
    int16_t dura, orgposi, xef, numNotes, clef = -1;
    EXPECT_EQ(GetEntry(tgf, i, &exentry, &entnum, &dura, &orgposi, &ef, &xef, &numNotes, &elldur,
                       &actdur, &clef),
              1);
    return {elldur, actdur, clef};
  }

  static std::string DocumentText(const Document& doc) {
    nlohmann::json json = doc.ToJson();
    json["frames"] = doc.Frames.ToJson(); // the frames section of the document file
    return json.dump(1);
  }
};

StoredEntry Rest(int32_t entnum, int16_t dura, int32_t ef = kEfValid) {
  return StoredEntry{entnum, dura, 0, ef, kXefImported, {}};
}

TEST_F(FrameStoreTest, DocumentWithFramesRoundTripsByteForByte) {
  StoredEntry chord{1, 1024, 3, kValidNote | kEfTupletStart, 0x0088, {}};
  chord.Notes = {{0, 0, 1, kValidNote}, {4, -1, 2, kValidNote}};
  Doc().Frames.Frames[1] = {chord, Rest(2, 3072)};
  Doc().Frames.Frames[6] = {};
  Doc().Frames.NextEntnum = 9;
  std::string text = DocumentText(Doc());
  Document read = Document::FromJson(nlohmann::json::parse(text));
  EXPECT_TRUE(read.Frames == Doc().Frames);
  EXPECT_EQ(DocumentText(read), text);
  EXPECT_NE(text.find("\"nextEntnum\": 9"), std::string::npos) << text;
}

TEST_F(FrameStoreTest, BrokenFramesAreRefusedNamingFrameEntryAndField) {
  const std::string entry = R"({"Entnum":5,"Dura":1024)";
  auto notes = [](int count) {
    std::string list = "[";
    for (int i = 0; i < count; ++i)
      list += std::string(i ? "," : "") + R"({"Tcd":0})";
    return list + "]";
  };
  const std::pair<std::string, std::string> cases[] = {
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(,"Colour":1}]}]})",
       "frame 3, entry 1 (Entnum 5): unknown field \"Colour\""},
      {R"({"list":[{"frame":3,"entries":[{"Entnum":5,"Dura":40000}]}]})",
       "frame 3, entry 1 (Entnum 5), field Dura: not a 16-bit number"},
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(,"Ef":4294967296}]}]})",
       "frame 3, entry 1 (Entnum 5), field Ef: not a 32-bit number"},
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(,"notes":)" + notes(13) + "}]}]}",
       "frame 3, entry 1 (Entnum 5), field notes: 13 notes, at most 12"},
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(,"notes":[{},{"Tcd":"x"}]}]}]})",
       "frame 3, entry 1 (Entnum 5), note 2, field Tcd: not a 16-bit number"},
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(}]},{"frame":4,"entries":[{},)" + entry +
           "}]}]}",
       "frame 4, entry 1, field Entnum: a number from 1 expected"},
      {R"({"list":[{"frame":3,"entries":[)" + entry + R"(}]},{"frame":4,"entries":[)" + entry +
           "}]}]}",
       "frame 4, entry 1 (Entnum 5), field Entnum: already used in frame 3"},
      {R"({"list":[{"frame":3,"entries":[]},{"frame":3,"entries":[]}]})",
       "frame 3: frame number given twice"},
      {R"({"list":[{"frame":0,"entries":[]}]})", "list element 1, field frame"},
      {R"({"list":[{"frame":3,"entries":{}}]})", "frame 3, field entries: a list expected"},
      {R"({"nextEntnum":5,"list":[{"frame":3,"entries":[)" + entry + "}]}]}",
       "field nextEntnum: a 32-bit number above entry number 5"},
      {R"({"open":[]})", "frames: unknown field \"open\""},
  };
  for (const auto& [frames, says] : cases)
    EXPECT_THAT(testing::RefusalOf("frames", frames), ::testing::HasSubstr(says)) << frames;
}

TEST_F(FrameStoreTest, PositionsAndSoundingDurationsFollowDurationsAndTuplets) {
  struct Timed {
    int16_t Dura;
    int32_t Ef;
    std::optional<std::array<int32_t, 4>> Tuplet; // Tupnum, Tupsymdur, Refnum, Refdur
    int32_t Elldur, Actdur;
  };
  struct Case {
    std::string Name;
    std::vector<Timed> Entries;
  };
  const int32_t v = kValidNote;
  const std::array<int32_t, 4> triplet{3, 512, 2, 512};
  const Case cases[] = {
      {"dotted quarter, eighth, triplet of eighths, quarter",
       {{1536, v, {}, 0, 1536},
        {512, v, {}, 1536, 512},
        {512, v | kEfTupletStart, triplet, 2048, 341},
        {512, v, {}, 2389, 341},
        {512, v, {}, 2730, 342},
        {1024, v, {}, 3072, 1024}}},
      {"quintuplet of sixteenths in the time of four",
       {{256, v | kEfTupletStart, std::array<int32_t, 4>{5, 256, 4, 256}, 0, 204},
        {256, v, {}, 204, 205},
        {256, v, {}, 409, 205},
        {256, v, {}, 614, 205},
        {256, v, {}, 819, 205},
        {1024, v, {}, 1024, 1024}}},
      {"triplet of a quarter and an eighth",
       {{1024, v | kEfTupletStart, triplet, 0, 682},
        {512, v, {}, 682, 342},
        {512, v, {}, 1024, 512}}},
      {"grace note takes no time", {{256, v | kEfGrace, {}, 0, 0}, {1024, v, {}, 0, 1024}}},
      {"voice two starts with the entry that launches it",
       {{1024, v, {}, 0, 1024},
        {2048, v | kEfLaunchesVoiceTwo, {}, 1024, 2048},
        {1024, v | kEfVoiceTwo, {}, 1024, 1024},
        {1024, v | kEfVoiceTwo, {}, 2048, 1024},
        {1024, v, {}, 3072, 1024}}},
  };
  for (const Case& c : cases) {
    StoredFrame frame;
    for (size_t i = 0; i < c.Entries.size(); ++i) {
      const Timed& t = c.Entries[i];
      auto entnum = static_cast<int32_t>(100 + i);
      frame.push_back(Rest(entnum, t.Dura, t.Ef));
      if (t.Tuplet)
        Put("Tuplet", {entnum, 0},
            {{"Tupnum", 0, (*t.Tuplet)[0]},
             {"Tupsymdur", 0, (*t.Tuplet)[1]},
             {"Refnum", 0, (*t.Tuplet)[2]},
             {"Refdur", 0, (*t.Tuplet)[3]}});
    }
    int32_t tgf = OpenWith(frame);
    ASSERT_NE(tgf, 0);
    for (size_t i = 0; i < c.Entries.size(); ++i) {
      auto [elldur, actdur, clef] = Timing(tgf, static_cast<int16_t>(i + 1));
      EXPECT_EQ(std::pair(elldur, actdur), std::pair(c.Entries[i].Elldur, c.Entries[i].Actdur))
          << c.Name << ", entry " << i + 1;
    }
    FxFreeTgf(tgf);
    Doc().Records.erase("Tuplet");
  }
}

TEST_F(FrameStoreTest, PositionsFollowAChangedDurationAndClefsFollowThePosition) {
  Put("ClefElement", {9, 0}, {{"Clef", 0, 0}, {"ClefEdu", 0, 0}});
  Put("ClefElement", {9, 1}, {{"Clef", 0, 3}, {"ClefEdu", 0, 2048}});
  Put("Gfhold", {1, 1}, {{"Clef", 0, 9}, {"Flag", 0, 0x0400}});
  int32_t tgf = OpenWith({Rest(1, 2048), Rest(2, 2048)});
  EXPECT_EQ(std::get<2>(Timing(tgf, 2)), 3);
  int32_t first = 0;
  ASSERT_EQ(GetExentry(tgf, 1, &first), 1);
  ASSERT_EQ(SetEntry(first, 1024, 0, kEfValid, kXefImported, 0), 1);
  auto [elldur, actdur, clef] = Timing(tgf, 2);
  EXPECT_EQ(std::pair(elldur, clef), std::pair(1024, int16_t{0}))
      << "before the clef change at 2048";
  FxFreeTgf(tgf);
}

TEST_F(FrameStoreTest, MeasureDurationFollowsTheTimeInForce) {
  struct Case {
    std::string Name;
    std::function<void()> Setup;
    int16_t Inst, Meas;
    int32_t Expected;
  };
  // clang-format off
  const Case cases[] = {
      {"4/4", [] {}, 1, 1, 4096},
      {"6/8: two dotted quarters", [] {
         Put("MeasureSpec", {2, 0}, {{"Beats", 0, 2}, {"DivBeat", 0, 1536}}); }, 1, 2, 3072},
      {"3+2/8: one group of 3 + 2 eighths", [] {
         Put("TimeUpper", {7, 0}, {{"Main_1", 0, 3}, {"Flag_1", 0, 1}, {"Main_2", 0, 2}});
         Put("MeasureSpec", {3, 0}, {{"Beats", 0, 7}, {"DivBeat", 0, 512}, {"Auxflag", 0, 0x80}});
       }, 1, 3, 2560},
      {"3/8+2/4: two groups over two beat lengths", [] {
         Put("TimeUpper", {8, 0},
             {{"Main_1", 0, 3}, {"Flag_1", 0, 1}, {"Main_2", 0, 2}, {"Flag_2", 0, 1}});
         Put("TimeLower", {8, 0}, {{"Main_1", 0, 512}, {"Main_2", 0, 1024}});
         Put("MeasureSpec", {3, 0}, {{"Beats", 0, 8}, {"DivBeat", 0, 8}, {"Auxflag", 0, 0xC0}});
       }, 1, 3, 3584},
      {"(2+1)/4 + 3/8: groups over a list that goes on in a second record", [] {
         Put("TimeUpper", {9, 0}, {{"Main_1", 0, 2}, {"Flag_1", 0, 1}, {"Main_2", 0, 1}});
         Put("TimeUpper", {9, 1}, {{"Main_1", 0, 3}, {"Flag_1", 0, 1}});
         Put("TimeLower", {9, 0}, {{"Main_1", 0, 1024}, {"Main_2", 0, 512}});
         Put("MeasureSpec", {3, 0}, {{"Beats", 0, 9}, {"DivBeat", 0, 9}, {"Auxflag", 0, 0xC0}});
       }, 1, 3, 4608},
      {"a staff with its own 3/4", [] {
         Put("MeasureFloat", {2, 4}, {{"Bts", 0, 3}, {"Div", 0, 1024}, {"Flag", 0, 0x400}});
       }, 2, 4, 3072},
      {"the other staff keeps the measure's time", [] {}, 1, 4, 4096},
      {"a float without its own time", [] {
         Put("MeasureFloat", {1, 4}, {{"Bts", 0, 3}, {"Div", 0, 1024}, {"Flag", 0, 0x800}});
       }, 1, 4, 4096},
      {"no such measure", [] {}, 1, 9, 0},
  };
  // clang-format on
  for (const Case& c : cases) {
    c.Setup();
    EXPECT_EQ(FxGetMeasureDuration(c.Inst, c.Meas), c.Expected) << c.Name;
  }
}

TEST_F(FrameStoreTest, MidiKeyOfANoteFollowsTheKeyInForce) {
  struct Case {
    std::string Name;
    int16_t Key, Tcd, Alteration, Midi;
  };
  // clang-format off
  const Case cases[] = {
      {"C major tonic", 0, 0, 0, 60},             {"C major octave up", 0, 7, 0, 72},
      {"C major step down", 0, -1, 0, 59},        {"G major tonic", 1, 0, 0, 67},
      {"G major leading note", 1, 6, 0, 78},      {"F major fourth", 0x00FF, 3, 0, 70},
      {"E flat major tonic", 0x00FD, 0, 0, 63},   {"A minor tonic", 0x0100, 0, 0, 69},
      {"D major, F sharp lowered", 2, 2, -1, 65}, {"C major, C sharp", 0, 0, 1, 61},
      {"C sharp major, B sharp", 7, 6, 0, 72},    {"non-linear, B flat", 0x4000, 6, 0, 70},
      {"non-linear, E flat raised", 0x4000, 2, 1, 64},
      {"non-linear, C flat below its letter's octave", 0x4000, 0, 0, 59},
  };
  // clang-format on
  // A non-linear key as the import makes it: B flat, E flat and C flat.
  const int steps[7] = {11, 2, 3, 5, 7, 9, 10};
  for (int i = 0; i < 7; ++i)
    Put("KeyMap", {0x4000, 0}, {{"Steps", steps[i], static_cast<int32_t>(0x80000000u) | i}});
  for (const Case& c : cases) {
    Put("MeasureSpec", {1, 0}, {{"Key", 0, c.Key}});
    int32_t tgf =
        OpenWith({StoredEntry{1, 1024, 0, kValidNote, 0, {{c.Tcd, c.Alteration, 1, kValidNote}}}});
    EXPECT_EQ(TgfNoteToMidi(tgf, 1, 1, 0), c.Midi) << c.Name;
    int32_t exentry, exnote, flag;
    int16_t tcd, alteration, noteID;
    GetExentry(tgf, 1, &exentry);
    ASSERT_EQ(GetNote(exentry, 1, &exnote, &tcd, &alteration, &noteID, &flag), 1);
    EXPECT_EQ(FxNoteToMidi(exnote, 0), c.Midi) << c.Name;
    FxFreeTgf(tgf);
  }
  Put("MeasureSpec", {1, 0}, {{"Key", 0, 0}});
  Put("MeasureFloat", {1, 1}, {{"Key", 0, 1}, {"Flag", 0, 0x800}});
  int32_t tgf = OpenWith({StoredEntry{1, 1024, 0, kValidNote, 0, {{0, 0, 1, kValidNote}}}});
  EXPECT_EQ(TgfNoteToMidi(tgf, 1, 1, 0), 67) << "a staff with its own key";
  EXPECT_EQ(TgfNoteToMidi(tgf, 1, 2, 0), -1) << "no such note";
  FxFreeTgf(tgf);
}

TEST_F(FrameStoreTest, PointersDieWithTheirFrame) {
  int32_t tgf = OpenWith({StoredEntry{1, 1024, 0, kValidNote, 0, {{0, 0, 1, kValidNote}}}});
  int32_t exentry = 0;
  ASSERT_EQ(GetExentry(tgf, 1, &exentry), 1);
  EXPECT_EQ(SetNote(exentry, 2, 0, 0, 2, 0), 0) << "a note beyond NumNotes";
  EXPECT_EQ(FxFreeTgf(tgf), 1);
  EXPECT_EQ(FxFreeTgf(tgf), 0);
  EXPECT_EQ(SetEntry(exentry, 1024, 0, 0, 0, 0), 0);
  EXPECT_EQ(FxSaveTgf(tgf), 0);
}

} // namespace
} // namespace ostin::sim
