#include <gtest/gtest.h>

#include "../support/host_test.h"
#include "host/bridge.h"
#include "host/frames/entry.h"
#include "host/frames/tgf.h"

namespace ostin {
namespace {

using testing::HostTest;

class SampleFramesTest : public HostTest {};

// The shipped sample reads as the score it stands for: positions and notes by frame.
TEST_F(SampleFramesTest, SampleScoreReadsThroughItsFrames) {
  OpenData("sample.json");
  struct Case {
    int16_t Slot, Measure;
    std::vector<int32_t> Elldur;
    std::vector<int16_t> Notes;
  } cases[] = {
      {1, 1, {0, 1024, 2048, 3072}, {1, 1, 1, 1}},
      {1, 4, {0, 2048}, {1, 1}},
      {2, 1, {0}, {2}},
      {2, 2, {0}, {0}},
  };
  for (const Case& c : cases) {
    Tgf frame;
    frame.Load(0, c.Slot, c.Measure, 0, true);
    ASSERT_EQ(frame.NumEntries, static_cast<int16_t>(c.Elldur.size()));
    for (int16_t i = 1; i <= frame.NumEntries; ++i) {
      EXPECT_EQ(frame.Entries(i)->Elldur, c.Elldur[i - 1]) << c.Slot << "/" << c.Measure;
      EXPECT_EQ(frame.Entries(i)->NumNotes, c.Notes[i - 1]);
    }
    EXPECT_EQ(FxGetMeasureDuration(frame.Inst, c.Measure), 4096);
    frame.Free();
  }
}

} // namespace
} // namespace ostin
