#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

#include "../support/host_test.h"
#include "host/handmade_records.h"
#include "score_check.h"
#include "tools/examples.h"

namespace ostin {
namespace {

using testing::HostTest;

class ExamplesTest : public HostTest {
protected:
  static std::string ExamplePath(const std::string& name) { return DataFile("examples/" + name); }

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
  struct Case {
    const char* File;
    int16_t Slot, Measure, Layer;
    std::vector<int> Keys;
  } cases[] = {
      {"piano.json", 1, 1, 0, {76, 74, 72, 76}},
      {"piano.json", 1, 1, 1, {67, 69}},
      {"piano.json", 1, 5, 0, {71, 69, 67, 66}},         // G major: F sharp from the key
      {"piano.json", 2, 3, 0, {48, 52, 64, 67, 65, 69}}, // clef changes move nothing
      {"transposing.json", 2, 2, 0, {70, 67}},           // concert pitch in F major
      {"transposing.json", 1, 3, 0, {74, 75, 77, 82}},
      {"percussion.json", 1, 1, 0, {42, 42, 42, 42, 42, 42, 42, 42}},
      {"percussion.json", 1, 1, 1, {36, 38, 36, 38}},
      {"percussion.json", 1, 4, 0, {49}},
      {"repeats.json", 1, 1, 0, {74, 78, 81, 78}},
      {"pickup.json", 1, 4, 0, {68, 64}}, // A minor with a raised seventh
  };
  for (const Case& c : cases) {
    OpenData(std::string("examples/") + c.File);
    EXPECT_EQ(Midi(c.Slot, c.Measure, c.Layer), c.Keys)
        << c.File << " slot " << c.Slot << " measure " << c.Measure << " layer " << c.Layer;
  }
}

TEST_F(ExamplesTest, EachExampleHoldsWhatItShows) {
  struct Case {
    const char* File;
    const char* Class;
    sim::RecordKey Key;
    const char* Field;
    size_t Index;
    int32_t Value;
  } cases[] = {
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
  for (const Case& c : cases) {
    OpenData(std::string("examples/") + c.File);
    EXPECT_EQ(Field(c.Class, c.Key, c.Field, c.Index), c.Value)
        << c.File << " " << c.Class << " " << c.Field;
  }
  OpenData("examples/pickup.json");
  EXPECT_EQ(FxGetMeasureDuration(1, 1), 1024);
  EXPECT_EQ(FxGetMeasureDuration(1, 5), 2048);
  OpenData("examples/repeats.json");
  EXPECT_FALSE(Gfhold().Load(1, 6)) << "the rest measures hold no music";
}

TEST_F(ExamplesTest, OstinExportsEachExample) {
  for (const tools::Example& example : tools::Examples()) {
    std::string command = "cd '" + Root.string() + "' && LANG=C '" + std::string(OSTIN_BIN_DIR) +
                          "/ostin' export '" + ExamplePath(example.FileName) +
                          "' -o out.xml --yes </dev/null >out.txt 2>err.txt";
    std::filesystem::remove(Path("out.xml")); // no question about replacing it
    int status = std::system(command.c_str());
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << example.FileName << ": " << Read(Path("err.txt"));
    std::string xml = Read(Path("out.xml"));
    EXPECT_NE(xml.find("<score-partwise"), std::string::npos) << example.FileName;
    // Each example is a saved document: its header goes out and no question is asked.
    HostSim().Open(example.Make());
    Header header;
    ASSERT_TRUE(header.Load()) << example.FileName;
    EXPECT_NE(xml.find("<movement-title>" + header.Title + "</movement-title>"), std::string::npos)
        << example.FileName;
    EXPECT_NE(xml.find("<creator type=\"composer\">" + header.Composer + "</creator>"),
              std::string::npos)
        << example.FileName;
    if (header.UserCopyright.empty())
      EXPECT_EQ(xml.find("<rights>"), std::string::npos) << example.FileName;
    else
      EXPECT_NE(xml.find("<rights>" + header.UserCopyright + "</rights>"), std::string::npos)
          << example.FileName;
    EXPECT_EQ(xml.find("<encoding-date>0000-00-00"), std::string::npos) << example.FileName;
    EXPECT_EQ(Read(Path("err.txt")), "") << example.FileName;
  }
  // The shipped files keep the copyright sign, and a traditional piece has no copyright.
  OpenData("examples/piano.json");
  Header piano;
  ASSERT_TRUE(piano.Load());
  EXPECT_EQ(piano.UserCopyright, "© 2026 Ostin Light");
  EXPECT_EQ(piano.ModifiedMonth * 100 + piano.ModifiedDay, 307);
  OpenData("examples/percussion.json");
  Header percussion;
  ASSERT_TRUE(percussion.Load());
  EXPECT_EQ(percussion.Composer, "Traditional");
  EXPECT_EQ(percussion.UserCopyright, "");
}

} // namespace
} // namespace ostin
