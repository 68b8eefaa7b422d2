#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include <nlohmann/json.hpp>

#include "../support/host_test.h"
#include "host/bridge.h"
#include "host/frames/metrics.h"
#include "host/frames/tgf.h"
#include "host/gfhold.h"

namespace ostin {
namespace {

using testing::HostTest;
using Fault = sim::Host::Fault;

sim::StoredEntry Quarter(int32_t entnum, std::vector<int16_t> tcds) {
  sim::StoredEntry entry{entnum, 1024, 0, kEfValid | kEfNote, kXefImported, {}};
  for (size_t i = 0; i < tcds.size(); ++i)
    entry.Notes.push_back({tcds[i], 0, static_cast<int16_t>(i + 1), kNoteValid});
  return entry;
}

// The sample: staves 1 and 2 in slots 1 and 2, four measures, layer 0 of staff 1 in frames
// 1 to 4. Frame 1 gets a chord and a note here.
class FramesTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    // The sample's holders, with frames that these tests fill themselves.
    OpenData("sample.json").Frames = sim::FrameStore{};
    Store().Frames[1] = {Quarter(1, {0, 2, 4}), Quarter(2, {7})};
    Store().NextEntnum = 3;
  }
  static sim::FrameStore& Store() { return HostSim().Doc().Frames; }

  // Runs an action that must raise the program's own failure with that number.
  static void ExpectFailure(const std::function<void()>& act, int32_t number,
                            const std::string& what) {
    try {
      act();
      ADD_FAILURE() << what << ": no failure";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, number) << what;
      EXPECT_TRUE(failure.IsOwn()) << what;
    }
  }
  void StartNewLog() {
    ResetLogForTests();
    std::filesystem::remove(Path("error.log"));
    SetLogPath(Path("error.log"));
  }
  bool Logged(const std::string& text) const { return Log().find(text) != std::string::npos; }
};

TEST_F(FramesTest, LoadReadsHeadEntriesAndNotes) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  EXPECT_TRUE(frame.Loaded() && !frame.Freed());
  EXPECT_EQ(frame.Inst, 1);
  EXPECT_EQ(frame.Frame, 1);
  ASSERT_EQ(frame.NumEntries, 2);
  Entry& chord = *frame.Entries(1);
  EXPECT_EQ(chord.NumNotes, 3);
  EXPECT_EQ(chord.Notes(3)->Tcd, 4);
  EXPECT_EQ(frame.Entries(2)->Elldur, 1024);
  EXPECT_FALSE(chord.Changed());
  frame.Free();
  EXPECT_TRUE(frame.Freed() && !frame.Loaded());
  EXPECT_EQ(int32_t{frame.Tgf}, 0);
  EXPECT_EQ(frame.Entries(1), nullptr);
}

TEST_F(FramesTest, FrameWithoutEntriesLoadsEmpty) {
  Tgf frame;
  frame.Load(0, 1, 2, 0, true); // frame 2 is named by its holder but holds nothing
  EXPECT_EQ(frame.Frame, 2);
  EXPECT_EQ(frame.NumEntries, 0);
  EXPECT_EQ(frame.Entries(1), nullptr);
  frame.Free();
}

TEST_F(FramesTest, LoadWithoutFreeAndSecondFreeAreErrors) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  ExpectFailure([&] { frame.Load(0, 2, 3, 0, true); }, Code(0x800404B0), "load without free");
  EXPECT_TRUE(Logged("Trying to load a new TGF before the old one is freed / "
                     "Old TGF: iu = 0, slot = 1, meas = 1, layer = 0 / "
                     "New TGF: iu = 0, slot = 2, meas = 3, layer = 0"))
      << Log();
  EXPECT_EQ(frame.Meas, 1) << "the old frame stays loaded";
  frame.Free();
  ExpectFailure([&] { frame.Free(); }, Code(0x800404B1), "second free");
  EXPECT_TRUE(Logged("TGF being freed twice before being loaded")) << Log();
  Tgf fresh;
  ExpectFailure([&] { fresh.Free(); }, Code(0x800404B1), "free of a new object");
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

TEST_F(FramesTest, RefusedBridgeCallsLogAndRaiseTheirPlacesNumbers) {
  struct Case {
    std::string Call;
    std::function<void(Tgf&)> Act;
    int32_t Number;
    std::string Logged;
  };
  auto changeEntry = [](Tgf& f) {
    f.Entries(1)->Dura = 512;
    f.Entries(1)->Save();
  };
  auto changeNote = [](Tgf& f) {
    f.Entries(1)->Notes(1)->Tcd = 1;
    f.Entries(1)->Save();
  };
  const Case cases[] = {
      {"FxLoadTgf", [](Tgf& f) { f.Load(0, 1, 1, 0, true); }, Code(0x800402F6),
       "COM FxLoadTgf call failed for iuList = 0, slot = 1, meas = 1, layer = 0, "
       "mirror OK = True"},
      {"GetTgf", [](Tgf& f) { f.Load(0, 1, 1, 0, false); }, Code(0x80040731),
       "COM GetTgf call failed"},
      {"GetEntry", [](Tgf& f) { f.Load(0, 1, 1, 0, true); }, Code(0x8004073F),
       "COM GetEntry call failed"},
      {"GetNote", [](Tgf& f) { f.Load(0, 1, 1, 0, true); }, Code(0x80040746),
       "COM GetNote call failed"},
      {"FxSaveTgf", [](Tgf& f) { f.Save(); }, Code(0x80040735), "COM SaveTgf call failed"},
      {"SetEntry", changeEntry, Code(0x80040743), "COM SetEntry call failed"},
      {"SetNote", changeNote, Code(0x80040748), "COM SetNote call failed"},
      {"FxInsertExentry", [](Tgf& f) { f.InsertEntry(2, 1); }, Code(0x80040318),
       "COM InsertExentry call failed for offset = 2, number = 1"},
      {"GetExentry", [](Tgf& f) { f.InsertEntry(2, 1); }, Code(0x80040741),
       "COM GetExentry call failed"},
      {"FxFreeTgf", [](Tgf& f) { f.Free(); }, Code(0x8004073A), "COM FxFreeTgf call failed"},
  };
  for (const Case& c : cases) {
    StartNewLog();
    Tgf frame;
    bool loads =
        c.Call == "FxLoadTgf" || c.Call == "GetTgf" || c.Call == "GetEntry" || c.Call == "GetNote";
    if (!loads) frame.Load(0, 1, 1, 0, false);
    HostSim().Faults = {{c.Call, Fault::Refuse}};
    ExpectFailure([&] { c.Act(frame); }, c.Number, c.Call);
    EXPECT_TRUE(Logged(c.Logged)) << c.Call << ": " << Log();
    HostSim().Faults.clear();
    if (!frame.Freed()) frame.Free(); // a frame opened before the failure can still be closed
  }
}

TEST_F(FramesTest, ForeignFailureBecomesTheOperationsNumberWithItsText) {
  HostSim().Faults = {{"FxLoadTgf", Fault::Throw}};
  Tgf frame;
  ExpectFailure([&] { frame.Load(0, 1, 1, 0, true); }, Code(0x80040730), "TGF Load");
  EXPECT_TRUE(Logged("TGF Load error -2147467259: FxLoadTgf broke down")) << Log();
}

TEST_F(FramesTest, SaveAndInsertEntryNeedALoadedFrame) {
  Tgf frame;
  ExpectFailure([&] { frame.Save(); }, Code(0x80040732), "save");
  ExpectFailure([&] { frame.InsertEntry(0, 1); }, Code(0x8004073B), "insert");
}

TEST_F(FramesTest, EntrySaveSkipsSetEntryWhenUnchangedButSavesChangedNotes) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
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
  EXPECT_EQ(frame.Entries(1)->Notes(2)->Alteration, -1);
  EXPECT_EQ(frame.Entries(1)->Ef, kEfValid | kEfNote | kEfHidden);
  frame.Free();
}

TEST_F(FramesTest, ChangesLiveInTheOpenFrameUntilItIsSaved) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  frame.Entries(2)->Dura = 2048;
  frame.Entries(2)->Save();
  frame.Free();
  frame.Load(0, 1, 1, 0, true);
  EXPECT_EQ(frame.Entries(2)->Dura, 1024) << "freed without Save";
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
  EXPECT_EQ(frame.Entries(1)->Entnum, 1);
  EXPECT_EQ(frame.Entries(2)->Entnum, 3);
  EXPECT_EQ(frame.Entries(3)->Entnum, 4);
  EXPECT_EQ(frame.Entries(4)->Entnum, 2);
  EXPECT_EQ(frame.Entries(4)->Dura, 512);
  frame.Free();
}

TEST_F(FramesTest, LayerWithoutFrameGetsOneOnlyForAWritingCaller) {
  Tgf frame;
  ExpectFailure([&] { frame.Load(0, 2, 1, 1, true); }, Code(0x800402F6), "reading");
  frame.Load(0, 2, 1, 1, false);
  int16_t number = frame.Frame;
  EXPECT_GT(number, 8) << "above every frame the holders name";
  EXPECT_EQ(frame.NumEntries, 0);
  frame.Free();
  Gfhold holder;
  holder.SetFinaleVersion(2004);
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ(holder.FrameOf(1), number);
  EXPECT_EQ(holder.FrameOf(0), 5) << "the other layers stay";

  HostSim().Doc().Records["Gfhold"].Rows.clear();
  frame.Load(0, 1, 3, 0, false);
  EXPECT_EQ(frame.Frame, number + 1);
  frame.Free();
  ASSERT_TRUE(holder.Load(1, 3)) << "a missing holder is made";
  EXPECT_EQ(holder.FrameOf(0), number + 1);
}

TEST_F(FramesTest, EntryNumbersStayUniqueAndStableThroughInsertsAndTheDocumentFile) {
  std::vector<int32_t> made;
  Tgf frame;
  for (int16_t measure = 1; measure <= 4; ++measure) {
    frame.Load(0, 2, measure, 1, false);
    for (int16_t n = 0; n < 3; ++n) {
      frame.InsertEntry(n, 1);
      frame.Entries(n + 1)->Dura = 1024;
    }
    for (int i = 1; i <= frame.NumEntries; ++i) {
      frame.Entries(i)->Save();
      made.push_back(frame.Entries(i)->Entnum);
    }
    frame.Save();
    frame.Free();
  }
  EXPECT_EQ(std::set<int32_t>(made.begin(), made.end()).size(), made.size());

  nlohmann::json json = HostSim().Doc().ToJson();
  json["frames"] = HostSim().Doc().Frames.ToJson(); // the frames section of the file
  HostSim().Open(sim::Document::FromJson(nlohmann::json::parse(json.dump(1))));
  std::vector<int32_t> read;
  for (int16_t measure = 1; measure <= 4; ++measure) {
    frame.Load(0, 2, measure, 1, true);
    for (int i = 1; i <= frame.NumEntries; ++i)
      read.push_back(frame.Entries(i)->Entnum);
    frame.Free();
  }
  EXPECT_EQ(read, made);
  frame.Load(0, 1, 1, 0, false);
  frame.InsertEntry(2, 1);
  EXPECT_GT(frame.Entries(3)->Entnum, *std::max_element(made.begin(), made.end()))
      << "no number is given twice";
  frame.Free();
}

TEST_F(FramesTest, CancelledEditRollsFramesBack) {
  const sim::FrameStore before = Store();
  ASSERT_EQ(FxStartFinaleEdit("MusicXML Import"), 1);
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  frame.InsertEntry(2, 1);
  frame.Entries(3)->Dura = 2048;
  frame.Entries(3)->Save();
  frame.Save();
  frame.Free();
  frame.Load(0, 2, 2, 2, false); // a new frame in a new layer
  frame.Free();
  ASSERT_FALSE(Store() == before);
  ASSERT_EQ(FxCancelFinaleEdit(), 1);
  EXPECT_TRUE(Store() == before);
  Gfhold holder;
  holder.SetFinaleVersion(2004);
  ASSERT_TRUE(holder.Load(2, 2));
  EXPECT_EQ(holder.FrameOf(2), 0);
}

TEST_F(FramesTest, NotesOutOfRangeAreEmptyAndMoreThanTwelveCannotBeHeld) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, false);
  Entry& entry = *frame.Entries(2);
  EXPECT_EQ(entry.Notes(0), nullptr);
  EXPECT_NE(entry.Notes(12), nullptr);
  EXPECT_EQ(entry.Notes(13), nullptr);
  entry.NumNotes = 13;
  ExpectFailure([&] { entry.Save(); }, Code(0x80040743), "thirteen notes");
  frame.Free();
}

TEST_F(FramesTest, StemDirectionComesFromTheRectanglesOfHeadAndStem) {
  struct Case {
    int32_t HeadTop, HeadBottom, StemTop, StemBottom;
    std::string Expected;
  };
  // a = HeadTop - StemTop, b = StemBottom - HeadBottom.
  const Case cases[] = {
      {100, 90, 70, 90, "down"}, // a 30, b 0
      {100, 90, 100, 120, "up"}, // a 0, b 30
      {100, 90, 100, 91, "up"},  // a 0, b 1
      {100, 90, 90, 100, ""},    // a 10, b 10
      {100, 90, 105, 80, ""},    // a -5, b -10
      {100, 90, 103, 90, ""},    // a -3, b 0
  };
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
  HostSim().Faults = {{"GetEntryMetrics", Fault::Refuse}};
  ExpectFailure([&] { none.Load(1, 1, 7, 0); }, Code(0x8004046C), "metrics");
  EXPECT_TRUE(Logged("COM GetEntryMetrics call failed")) << Log();
}

TEST_F(FramesTest, FrameMetricsAreMissingInTheStandIn) {
  Tgf frame;
  frame.Load(0, 1, 1, 0, true);
  TgfEntryMetrics metrics;
  metrics.Load(frame.Tgf, frame.NumEntries);
  EXPECT_TRUE(metrics.Missing());
  ASSERT_NE(metrics.EntryMetrics(2), nullptr);
  EXPECT_TRUE(metrics.EntryMetrics(2)->Missing());
  EXPECT_EQ(metrics.EntryMetrics(3), nullptr);
  frame.Free();
}

} // namespace
} // namespace ostin
