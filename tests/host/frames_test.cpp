#include <gtest/gtest.h>

#include "host/bridge.h"
#include "host/frames/metrics.h"
#include "host/frames/tgf.h"
#include "host/gfhold.h"
#include "host/records.h"
#include "host_fixture.h"

namespace ostin {
namespace {

using testing::FailureOf;
using Fault = sim::Host::Fault;

sim::StoredEntry Quarter(int32_t entnum, std::vector<int16_t> tcds) {
  sim::StoredEntry entry{entnum, 1024, 0, kEfValid | kEfNote, kXefImported, {}};
  for (size_t i = 0; i < tcds.size(); ++i)
    entry.Notes.push_back({tcds[i], 0, static_cast<int16_t>(i + 1), kNoteValid});
  return entry;
}

// Layer 0 of staff 1 is in frames 1 to 4; frame 1 gets a chord and a note here.
class FramesTest : public testing::SampleTest {
protected:
  void SetUp() override {
    testing::SampleTest::SetUp();
    // The sample's holders, with frames that these tests fill themselves.
    HostSim().Doc().Frames = sim::FrameStore{};
    Store().Frames[1] = {Quarter(1, {0, 2, 4}), Quarter(2, {7})};
    Store().NextEntnum = 3;
  }
  static sim::FrameStore& Store() { return HostSim().Doc().Frames; }
};

TEST_F(FramesTest, LoadReadsHeadEntriesAndNotes) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  EXPECT_TRUE(frame.Loaded() && !frame.Freed());
  ASSERT_EQ((std::tuple<int, int, int>(frame.Inst, frame.Frame, frame.NumEntries)),
            std::tuple(1, 1, 2));
  Entry& chord = *frame.Entries(1);
  EXPECT_EQ(
      (std::tuple<int, int, int>(chord.NumNotes, chord.Notes(3)->Tcd, frame.Entries(2)->Elldur)),
      std::tuple(3, 4, 1024));
  EXPECT_FALSE(chord.Changed());
  // Notes count from 1; an entry holds at most twelve.
  EXPECT_TRUE(!chord.Notes(0) && chord.Notes(12) && !chord.Notes(13));
  chord.NumNotes = 13;
  EXPECT_EQ(FailureOf([&] { chord.Save(); }), Code(0x80040743)) << "thirteen notes";
  frame.Free();
  EXPECT_TRUE(frame.Freed() && !frame.Loaded() && frame.Tgf == 0 && !frame.Entries(1));
  frame.Load(0, 1, 2, 0, true); // frame 2 is named by its holder but holds nothing
  EXPECT_EQ((std::tuple<int, int, Entry*>(frame.Frame, frame.NumEntries, frame.Entries(1))),
            std::tuple(2, 0, nullptr));
  frame.Free();
}

TEST_F(FramesTest, LoadWithoutFreeSecondFreeAndUseOfAnUnloadedFrameAreErrors) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  ExpectRaised([&] { frame.Load(0, 2, 3, 0, true); }, Code(0x800404B0),
               "Trying to load a new TGF before the old one is freed / "
               "Old TGF: iu = 0, slot = 1, meas = 1, layer = 0 / "
               "New TGF: iu = 0, slot = 2, meas = 3, layer = 0");
  EXPECT_EQ(frame.Meas, 1) << "the old frame stays loaded";
  frame.Free();
  ExpectRaised([&] { frame.Free(); }, Code(0x800404B1),
               "TGF being freed twice before being loaded");
  Tgf fresh;
  EXPECT_EQ(FailureOf([&] { fresh.Free(); }), Code(0x800404B1)) << "free of a new object";
  EXPECT_EQ(FailureOf([&] { fresh.Save(); }), Code(0x80040732)) << "save";
  EXPECT_EQ(FailureOf([&] { fresh.InsertEntry(0, 1); }), Code(0x8004073B)) << "insert";
}

TEST_F(FramesTest, FrameLeftOpenIsLoggedAndFreedWhenItsObjectDies) {
  int32_t handle = 0;
  {
    Tgf frame;
    frame.Load(0, 1, 1, 0, true);
    handle = frame.Tgf;
  }
  EXPECT_TRUE(Logged("TGF being deleted before being freed:  / "
                     "iu = 0, slot = 1, inst = 1, meas = 1, layer = 0"))
      << Log();
  EXPECT_EQ(FxFreeTgf(handle), 0) << "the host holds the frame no longer";
}

TEST_F(FramesTest, RefusedOrFailingBridgeCallsLogAndRaiseTheirPlacesNumbers) {
  auto read = [](Tgf& f) { f.Load(0, 1, 1, 0, true); };
  auto write = [](Tgf& f) { f.Load(0, 1, 1, 0, false); };
  auto changeEntry = [](Tgf& f) {
    f.Entries(1)->Dura = 512;
    f.Entries(1)->Save();
  };
  auto changeNote = [](Tgf& f) {
    f.Entries(1)->Notes(1)->Tcd = 1;
    f.Entries(1)->Save();
  };
  auto insert = [](Tgf& f) { f.InsertEntry(2, 1); };
  struct Case {
    std::string Call;
    std::function<void(Tgf&)> Act;
    int32_t Number;
    std::string Logged;
  } cases[] = {
      {"FxLoadTgf", read, Code(0x800402F6),
       "COM FxLoadTgf call failed for iuList = 0, slot = 1, meas = 1, layer = 0, "
       "mirror OK = True"},
      {"GetTgf", write, Code(0x80040731), "COM GetTgf call failed"},
      {"GetEntry", read, Code(0x8004073F), "COM GetEntry call failed"},
      {"GetNote", read, Code(0x80040746), "COM GetNote call failed"},
      {"FxSaveTgf", [](Tgf& f) { f.Save(); }, Code(0x80040735), "COM SaveTgf call failed"},
      {"SetEntry", changeEntry, Code(0x80040743), "COM SetEntry call failed"},
      {"SetNote", changeNote, Code(0x80040748), "COM SetNote call failed"},
      {"FxInsertExentry", insert, Code(0x80040318),
       "COM InsertExentry call failed for offset = 2, number = 1"},
      {"GetExentry", insert, Code(0x80040741), "COM GetExentry call failed"},
      {"FxFreeTgf", [](Tgf& f) { f.Free(); }, Code(0x8004073A), "COM FxFreeTgf call failed"},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    Tgf frame;
    if (i >= 4) write(frame); // the first four fail in the load itself
    HostSim().Faults = {{c.Call, Fault::Refuse}};
    ExpectRaised([&] { c.Act(frame); }, c.Number, c.Logged);
    HostSim().Faults.clear();
    if (!frame.Freed()) frame.Free(); // a frame opened before the failure can still be closed
  }
  HostSim().Faults = {{"FxLoadTgf", Fault::Throw}};
  Tgf frame;
  ExpectRaised([&] { read(frame); }, Code(0x80040730),
               "TGF Load error -2147467259: FxLoadTgf broke down");
}

TEST_F(FramesTest, EntrySaveSkipsSetEntryWhenUnchangedButSavesChangedNotes) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  frame.Entries(2)->Dura = 2048;
  frame.Entries(2)->Save();
  frame.Free();
  frame.Load(0, 1, 1, 0, false);
  EXPECT_EQ(frame.Entries(2)->Dura, 1024) << "changes live in the open frame until it is saved";
  Entry& chord = *frame.Entries(1);
  HostSim().Faults = {{"SetEntry", Fault::Refuse}, {"SetNote", Fault::Refuse}};
  chord.Save(); // nothing written: neither call is made
  chord.Notes(2)->Alteration = -1;
  EXPECT_TRUE(chord.Notes(2)->Changed());
  EXPECT_FALSE(chord.Changed());
  HostSim().Faults = {{"SetEntry", Fault::Refuse}};
  chord.Save(); // the note only
  HostSim().Faults.clear();
  EXPECT_FALSE(chord.Notes(2)->Changed());
  chord.Ef |= kEfHidden;
  EXPECT_TRUE(chord.Changed()) << "every write marks the entry";
  chord.Save();
  frame.Save();
  frame.Free();
  frame.Load(0, 1, 1, 0, true);
  EXPECT_EQ((std::pair<int, int>(frame.Entries(1)->Notes(2)->Alteration, frame.Entries(1)->Ef)),
            std::pair(-1, kEfValid | kEfNote | kEfHidden));
  frame.Free();
}

TEST_F(FramesTest, InsertEntryKeepsChangedEntriesAndReloadsPointers) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  Entry* first = frame.Entries(1);
  frame.Entries(2)->Dura = 512; // not saved: the insert must save it
  frame.InsertEntry(1, 2);      // two entries between the chord and the note
  ASSERT_EQ(frame.NumEntries, 4);
  EXPECT_EQ(frame.Entries(1), first) << "objects are kept";
  for (int16_t i = 1; i <= 4; ++i) {
    int32_t pointer = 0;
    ASSERT_EQ(GetExentry(frame.Tgf, i, &pointer), 1);
    EXPECT_EQ(frame.Entries(i)->Exentry, pointer) << "entry " << i;
  }
  // The host moved the note behind the new entries; the new places got new entries.
  frame.Save();
  frame.Free();
  frame.Load(0, 1, 1, 0, true);
  std::vector<int32_t> entnums;
  for (int16_t i = 1; i <= frame.NumEntries; ++i)
    entnums.push_back(frame.Entries(i)->Entnum);
  EXPECT_EQ(entnums, (std::vector<int32_t>{1, 3, 4, 2}));
  EXPECT_EQ(frame.Entries(4)->Dura, 512);
  frame.Free();
}

TEST_F(FramesTest, LayerWithoutFrameGetsOneOnlyForAWritingCaller) {
  Tgf frame;
  EXPECT_EQ(FailureOf([&] { frame.Load(0, 2, 1, 1, true); }), Code(0x800402F6)) << "reading";
  frame.Load(0, 2, 1, 1, false);
  int16_t number = frame.Frame;
  EXPECT_GT(number, 8) << "above every frame the holders name";
  EXPECT_EQ(frame.NumEntries, 0);
  frame.Free();
  auto holder = testing::OfYear<Gfhold>(2004);
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ((std::pair<int, int>(holder.FrameOf(1), holder.FrameOf(0))), std::pair(int{number}, 5))
      << "the other layers stay";
  HostSim().Doc().Records["Gfhold"].Rows.clear();
  frame.Load(0, 1, 3, 0, false);
  EXPECT_EQ(frame.Frame, number + 1);
  frame.Free();
  ASSERT_TRUE(holder.Load(1, 3)) << "a missing holder is made";
  EXPECT_EQ(holder.FrameOf(0), number + 1);
}

TEST_F(FramesTest, CancelledEditRollsRecordsAndFramesBack) {
  const sim::FrameStore before = Store();
  const nlohmann::json records = HostSim().Doc().ToJson();
  ASSERT_EQ(FxStartFinaleEdit("MusicXML Import"), 1);
  EXPECT_EQ(FxStartFinaleEdit("again"), 0) << "one edit at a time";
  Settings12 display;
  ASSERT_TRUE(display.Load(-2, 0));
  display.Symbol8va = 5;
  display.Save();
  FreezeMusic().Create(-1, 0);
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  frame.InsertEntry(2, 1);
  frame.Save();
  frame.Free();
  frame.Load(0, 2, 2, 2, false); // a new frame in a new layer, named by its holder
  frame.Free();
  ASSERT_FALSE(Store() == before);
  ASSERT_EQ(FxCancelFinaleEdit(), 1);
  EXPECT_TRUE(Store() == before);
  EXPECT_EQ(HostSim().Doc().ToJson(), records);
  EXPECT_EQ(FxCancelFinaleEdit(), 0);
}

TEST_F(FramesTest, StemDirectionComesFromTheRectanglesOfHeadAndStem) {
  struct Case {
    int32_t HeadTop, HeadBottom, StemTop, StemBottom;
    std::string Expected;
  };
  // a = HeadTop - StemTop, b = StemBottom - HeadBottom.
  // clang-format off
  const Case cases[] = {
      {100, 90, 70, 90, "down"}, /* a 30, b 0 */  {100, 90, 100, 120, "up"}, /* a 0, b 30 */
      {100, 90, 100, 91, "up"},  /* a 0, b 1 */   {100, 90, 90, 100, ""},    /* a 10, b 10 */
      {100, 90, 105, 80, ""},    /* a -5, b -10 */ {100, 90, 103, 90, ""},   /* a -3, b 0 */
  };
  // clang-format on
  for (const Case& c : cases) {
    Store().Layouts[7] = {{0, c.HeadTop, 10, c.HeadBottom}, {5, c.StemTop, 6, c.StemBottom}};
    EntryMetrics metrics;
    metrics.Load(1, 1, 7, 0);
    EXPECT_FALSE(metrics.Missing());
    EXPECT_EQ(metrics.StemDirection(), c.Expected)
        << c.HeadTop << " " << c.HeadBottom << " " << c.StemTop << " " << c.StemBottom;
  }
  EntryMetrics none;
  none.Load(1, 1, 8, 0);
  EXPECT_TRUE(none.Missing());
  EXPECT_EQ(none.StemDirection(), "");
  // The stand-in lays out no frame: the metrics of a frame are missing, entry by entry.
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  TgfEntryMetrics metrics;
  metrics.Load(frame.Tgf, frame.NumEntries);
  EXPECT_TRUE(metrics.Missing());
  ASSERT_NE(metrics.EntryMetrics(2), nullptr);
  EXPECT_TRUE(metrics.EntryMetrics(2)->Missing());
  EXPECT_EQ(metrics.EntryMetrics(3), nullptr);
  frame.Free();
  HostSim().Faults = {{"GetEntryMetrics", Fault::Refuse}};
  ExpectRaised([&] { none.Load(1, 1, 7, 0); }, Code(0x8004046C), "COM GetEntryMetrics call failed");
}

} // namespace
} // namespace ostin
