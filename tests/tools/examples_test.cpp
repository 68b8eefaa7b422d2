#include <gtest/gtest.h>

#include "../support/host_test.h"
#include "host/handmade_records.h"
#include "score_check.h"
#include "tools/examples.h"

namespace ostin {
namespace {

using testing::HostTest;

class ExamplesTest : public HostTest {
protected:
  // MIDI keys of the notes of a layer, entry by entry, as the host plays them.
  static std::vector<int> Midi(int16_t slot, int16_t measure, int16_t layer) {
    std::vector<int> keys;
    Tgf frame;
    frame.Load(0, slot, measure, layer, true);
    for (int16_t i = 1; i <= frame.NumEntries; ++i)
      for (int16_t n = 1; n <= frame.Entries(i)->NumNotes; ++n)
        keys.push_back(FxNoteToMidi(frame.Entries(i)->Notes(n)->Exnote, 0));
    frame.Free();
    return keys;
  }

  static int32_t Field(const std::string& className, sim::RecordKey key, const char* field,
                       size_t index = 0) {
    const sim::RecordTable* table = HostSim().Doc().FindTable(className);
    if (!table || !table->Rows.count(key)) return -99999;
    return table->Rows.at(key)[table->Shape->FieldIndex(field)].Numbers.at(index);
  }
};

// The shipped files are what the builder makes today, and each adds up through the bridge.
TEST_F(ExamplesTest, ShippedExamplesAreCurrentAndConsistent) {
  for (const tools::Example& example : tools::Examples()) {
    sim::Document& shipped = OpenData(std::string("examples/") + example.FileName);
    EXPECT_EQ(shipped.ToJson(), example.Make().ToJson())
        << example.FileName << " is stale: run ostin-make-examples";
    testing::ScoreShape shape = testing::CheckOpenScore();
    EXPECT_TRUE(shape.Problems.empty()) << example.FileName << ": " << shape.Problems.front();
    EXPECT_GT(shape.Frames, 0) << example.FileName;
  }
  // The sample of the data folder holds up to the same reading.
  OpenData("sample.json");
  EXPECT_TRUE(testing::CheckOpenScore().Problems.empty());
}

TEST_F(ExamplesTest, NotesSoundWhereTheyAreWritten) {
  const std::tuple<const char*, int16_t, int16_t, int16_t, std::vector<int>> cases[] = {
      // clang-format off
      {"piano.json", 1, 1, 0, {76, 74, 72, 76}}, {"piano.json", 1, 1, 1, {67, 69}},
      {"piano.json", 1, 5, 0, {71, 69, 67, 66}},         // G major: F sharp from the key
      {"piano.json", 2, 3, 0, {48, 52, 64, 67, 65, 69}}, // clef changes move nothing
      {"transposing.json", 2, 2, 0, {70, 67}},           // concert pitch in F major
      {"transposing.json", 1, 3, 0, {74, 75, 77, 82}}, {"percussion.json", 1, 4, 0, {49}},
      {"percussion.json", 1, 1, 0, {42, 42, 42, 42, 42, 42, 42, 42}}, {"repeats.json", 1, 1, 0, {74, 78, 81, 78}},
      {"percussion.json", 1, 1, 1, {36, 38, 36, 38}}, {"pickup.json", 1, 4, 0, {68, 64}}, // A minor, raised 7th
      // clang-format on
  };
  for (const auto& [file, slot, measure, layer, keys] : cases) {
    OpenData(std::string("examples/") + file);
    EXPECT_EQ(Midi(slot, measure, layer), keys) << file << " " << slot << " " << measure << layer;
  }
}

TEST_F(ExamplesTest, EachExampleHoldsWhatItShows) {
  // File, record class and key, field and index, value.
  using Case = std::tuple<const char*, const char*, sim::RecordKey, const char*, size_t, int32_t>;
  const Case cases[] = {
      {"piano.json", "GroupSpec", {0, 1, 0}, "BracketID", 0, 3},
      {"piano.json", "Gfhold", {1, 1, 0}, "Frame", 1, 2},    // a second layer
      {"piano.json", "Gfhold", {2, 3, 0}, "Flag", 0, 0x400}, // clefs inside the measure
      {"piano.json", "Gfhold", {2, 5, 0}, "Clef", 0, 3},     // the last of them goes on
      {"piano.json", "MeasureSpec", {4, 0, 0}, "Meflag", 0, 0x20},
      {"piano.json", "MeasureSpec", {5, 0, 0}, "Key", 0, 1},
      {"piano.json", "MeasureSpec", {6, 0, 0}, "Beats", 0, 3},
      {"transposing.json", "StaffSpec", {2, 0, 0}, "Transposition", 0, 66},
      {"transposing.json", "GroupSpec", {0, 1, 0}, "BracketID", 0, 2},
      {"transposing.json", "MeasureSpec", {3, 0, 0}, "Key", 0, 254},
      {"percussion.json", "StaffSpec", {1, 0, 0}, "Flag", 0, 0x2020},
      {"percussion.json", "StaffSpec", {1, 0, 0}, "Clefs", 0, 4},
      {"percussion.json", "StaffSpec", {1, 0, 0}, "DrumStaffCmper", 0, 1},
      {"percussion.json", "DrumStaff", {1, 0, 0}, "PlayMap", 2, 0x0450}, // keys 36, 38, 42
      {"percussion.json", "DrumStaff", {1, 0, 0}, "PlayMap", 3, 0x0002}, // key 49
      {"percussion.json", "PercussionNoteDef", {1, 38, 0}, "StaffPos", 0, 7},
      {"percussion.json", "Orchestra", {1, 0, 0}, "PatchInfo", 0, 9}, // channel 10
      {"repeats.json", "MeasureSpec", {1, 0, 0}, "Meflag", 0, 0x18},
      {"repeats.json", "MeasureSpec", {3, 0, 0}, "Meflag", 0, 0x16},
      {"repeats.json", "EndingRepeat", {3, 0, 0}, "Passes", 0, 1},
      {"repeats.json", "EndingRepeat", {4, 0, 0}, "Passes", 0, 2},
      {"repeats.json", "EndingRepeat", {4, 0, 0}, "Nextend", 0, 0},
      {"repeats.json", "MultimeasureRest", {5, 0, 0}, "StopBefore", 0, 8},
      {"repeats.json", "BackwardRepeat", {9, 0, 0}, "Actuate", 0, 3},
      {"pickup.json", "MeasureSpec", {1, 0, 0}, "Beats", 0, 1},
      {"pickup.json", "MeasureSpec", {1, 0, 0}, "DispBeats", 0, 3},
      {"pickup.json", "MeasNumberRegion", {1, 0, 0}, "StartMeas", 0, 2},
  };
  for (const auto& [file, record, key, field, index, value] : cases) {
    OpenData(std::string("examples/") + file);
    EXPECT_EQ(Field(record, key, field, index), value) << file << " " << record << " " << field;
  }
  OpenData("examples/pickup.json");
  EXPECT_EQ(std::make_pair(FxGetMeasureDuration(1, 1), FxGetMeasureDuration(1, 5)),
            std::make_pair(1024, 2048));
  OpenData("examples/repeats.json");
  EXPECT_FALSE(Gfhold().Load(1, 6)) << "the rest measures hold no music";
}

TEST_F(ExamplesTest, OstinExportsEachExample) {
  for (const tools::Example& example : tools::Examples()) {
    std::filesystem::remove(Path("out.xml")); // no question about replacing it
    const std::string file = DataFile(std::string("examples/") + example.FileName);
    EXPECT_EQ(testing::RunTool(Root.string(), "ostin export '" + file + "' -o out.xml --yes"), 0)
        << example.FileName << ": " << Read(Path("err.txt"));
    const std::string xml = Read(Path("out.xml"));
    auto has = [&](const std::string& text) { return xml.find(text) != std::string::npos; };
    // Each example is a saved document: its header goes out and no question is asked.
    HostSim().Open(example.Make());
    Header header;
    ASSERT_TRUE(header.Load()) << example.FileName;
    EXPECT_TRUE(has("<score-partwise") && !has("<encoding-date>0000-00-00") &&
                has("<movement-title>" + header.Title + "</movement-title>") &&
                has("<creator type=\"composer\">" + header.Composer + "</creator>") &&
                (header.UserCopyright.empty()
                     ? !has("<rights>")
                     : has("<rights>" + header.UserCopyright + "</rights>")))
        << example.FileName << ":\n"
        << xml;
    EXPECT_EQ(Read(Path("err.txt")), "") << example.FileName;
  }
  // The shipped files keep the copyright sign, and a traditional piece has no copyright.
  OpenData("examples/piano.json");
  Header piano;
  ASSERT_TRUE(piano.Load());
  EXPECT_EQ(std::tie(piano.UserCopyright, piano.ModifiedMonth, piano.ModifiedDay),
            std::make_tuple("© 2026 Ostin Light", 3, 7));
  OpenData("examples/percussion.json");
  Header percussion;
  ASSERT_TRUE(percussion.Load());
  EXPECT_EQ(std::tie(percussion.Composer, percussion.UserCopyright),
            std::make_tuple("Traditional", ""));
}

} // namespace
} // namespace ostin
