#include <gtest/gtest.h>

#include "../support/host_test.h"
#include "host/bridge.h"
#include "host/gfhold.h"
#include "host/layer_prefs.h"
#include "host/mass_edit.h"
#include "host/records.h"

namespace ostin {
namespace {

using testing::HostTest;
using Fault = sim::Host::Fault;

class RecordTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json");
  }
};

TEST_F(RecordTest, CreateTakesTheNextFreeNumberAndReadsTheDefaultsBack) {
  FreezeMusic frozen;
  frozen.Create(-1, 0);
  EXPECT_EQ(frozen.Cmper(), 1);
  frozen.NextMeas = 3;
  frozen.Save();
  FreezeMusic second;
  second.Create(-1, 0);
  EXPECT_EQ(second.Cmper(), 2);
  EXPECT_EQ(second.NextMeas, 0);

  InstrumentUsed staff;
  staff.Create(0, -1);
  EXPECT_EQ(staff.Inci(), 2) << "two staves stand in the sample's list";
  FreezeMusic again;
  ASSERT_TRUE(again.Load(1, 0));
  EXPECT_EQ(again.NextMeas, 3);
}

TEST_F(RecordTest, WalkGoesInKeyOrderAndEndsAsAResult) {
  Gfhold holder;
  holder.SetFinaleVersion(2004);
  std::vector<std::pair<int, int>> keys;
  int16_t staff = 0, measure = 0;
  while (holder.GetNext(staff, measure)) {
    keys.emplace_back(holder.Cmper(), holder.Inci());
    staff = holder.Cmper();
    measure = holder.Inci();
  }
  ASSERT_EQ(keys.size(), 8u);
  EXPECT_EQ(keys.front(), std::make_pair(1, 1));
  EXPECT_EQ(keys.back(), std::make_pair(2, 4));
  // The failed call leaves the key as it set it.
  EXPECT_EQ(holder.Cmper(), 2);
  EXPECT_EQ(holder.Inci(), 4);

  FreezeMusic none;
  EXPECT_FALSE(none.GetNext(0, 0)) << "an empty type ends the walk at the first call";
}

TEST_F(RecordTest, AbsenceIsAResultAndMustLoadRaisesTheTypesNumber) {
  Settings13 metronome;
  ASSERT_TRUE(metronome.Load(-2, 0));
  EXPECT_EQ(metronome.MetronomeBeat, 1024);
  EXPECT_FALSE(metronome.Load(5, 0));
  EXPECT_EQ(metronome.Cmper(), 5);
  EXPECT_EQ(metronome.MetronomeBeat, 1024) << "a failed load leaves the fields";
  try {
    metronome.MustLoad(5, 0);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, Code(0x8004050C));
    EXPECT_EQ(failure.Description, kInternalError);
  }
  EXPECT_EQ(Log(), "") << "absence is no error and is not logged";
}

TEST_F(RecordTest, RefusedCallsLogTheirTextAndRaiseTheirPlacesNumber) {
  struct Case {
    std::string Call;
    std::function<void()> Act;
    int32_t Number;
    std::string Logged;
  };
  Settings12 display;
  ASSERT_TRUE(display.Load(-2, 0));
  const Case cases[] = {
      {"SaveSettings12", [&] { display.Save(); }, kSettings12Places.Save,
       "Finale save of Settings12 -2 failed"},
      {"CreateFreezeMeasures", [] { FreezeMusic().Create(-1, 0); }, kFreezeMusicPlaces.Create,
       "Finale create of FreezeMusic -1 failed"},
      {"LoadFreezeMeasures", [] { FreezeMusic().Create(4, 0); }, kFreezeMusicPlaces.CreateLoad,
       "Finale load of new FreezeMusic 4 failed"},
      {"DeleteGfhold2004",
       [] {
         Gfhold holder;
         holder.SetFinaleVersion(2004);
         ASSERT_TRUE(holder.Load(1, 2));
         holder.Delete();
       },
       kGfholdPlaces.Delete, "Finale deletion of Gfhold2004 1, 2 failed"},
  };
  for (const Case& c : cases) {
    HostSim().Faults = {{c.Call, Fault::Refuse}};
    ResetLogForTests();
    SetLogPath(Path("error.log"));
    std::filesystem::remove(Path("error.log"));
    try {
      c.Act();
      ADD_FAILURE() << c.Call;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, c.Number) << c.Call;
      EXPECT_TRUE(failure.IsOwn());
    }
    EXPECT_NE(Log().find(c.Logged), std::string::npos) << Log();
  }
}

TEST_F(RecordTest, ForeignFailureInACallIsLoggedOnceAndBecomesTheHandlersNumber) {
  HostSim().Faults = {{"LoadSettings12", Fault::Throw}};
  Settings12 display;
  try {
    (void)display.Load(-2, 0);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, kSettings12Places.LoadHandler);
    EXPECT_EQ(failure.Description, kInternalError);
  }
  EXPECT_NE(Log().find("Finale LoadSettings12 error -2147467259: LoadSettings12 broke down"),
            std::string::npos)
      << Log();
}

TEST_F(RecordTest, GfholdCallsTheVariantOfItsHostYear) {
  // Write through the 2004 call: ClefPercent exists only there.
  Gfhold writer;
  writer.SetFinaleVersion(2004);
  ASSERT_TRUE(writer.Load(1, 1));
  writer.ClefPercent = 80;
  writer.Save();

  for (int32_t year : {2002, 2003}) {
    Gfhold reader;
    reader.SetFinaleVersion(year);
    reader.ClefPercent = 7;
    ASSERT_TRUE(reader.Load(1, 1));
    EXPECT_EQ(reader.ClefPercent, 7) << year << ": the plain call leaves later fields alone";
    EXPECT_EQ(reader.FrameOf(0), 1);
  }
  Gfhold reader;
  reader.SetFinaleVersion(2004);
  ASSERT_TRUE(reader.Load(1, 1));
  EXPECT_EQ(reader.ClefPercent, 80);
}

TEST_F(RecordTest, GfholdOfAHostWithMoreLayersKeepsThemAll) {
  HostSim().Doc().MaxLayers = 6;
  HostSim().Doc().Records.erase("Gfhold");
  Gfhold holder;
  holder.SetFinaleVersion(2004);
  holder.Create(2, 3);
  holder.Frame = {1, 2, 3, 4, 5, 6};
  holder.Save();
  Gfhold reader;
  reader.SetFinaleVersion(2004);
  ASSERT_TRUE(reader.Load(2, 3));
  EXPECT_EQ(reader.Frame, (std::vector<int16_t>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(reader.FrameOf(6), 0);
}

TEST_F(RecordTest, GfholdClefListComesFromClefElements) {
  ClefElement element;
  for (int16_t i = 0; i < 2; ++i) {
    element.Create(9, i);
    element.Clef = static_cast<int16_t>(i == 0 ? 0 : 3);
    element.ClefEdu = static_cast<int16_t>(i == 0 ? 0 : 2048);
    element.Save();
  }
  Gfhold holder;
  holder.SetFinaleVersion(2004);
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ(holder.ClefMax(), 1);
  EXPECT_EQ(holder.Clefs(1), 3);
  holder.Clef = 9;
  holder.Flag = Gfhold::kClefListBit;
  holder.Save();
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ(holder.ClefMax(), 2);
  EXPECT_EQ(holder.Clefs(2), 3);
  EXPECT_EQ(holder.ClefEdus(2), 2048u);
  EXPECT_EQ(holder.Clefs(3), 0);
}

TEST_F(RecordTest, StaffListDeleteMovesTheFollowingEntriesUp) {
  InstrumentUsed staff;
  staff.Create(0, -1);
  staff.Inst = 7;
  staff.Save();
  EXPECT_EQ(FtxCountInstruments(0, -1), 3);
  EXPECT_EQ(FxSlotToInst(3, 0), 7);
  EXPECT_EQ(FxInstToSlot(7, 0), 3);
  ASSERT_TRUE(staff.Load(0, 1));
  staff.Delete();
  EXPECT_EQ(FtxCountInstruments(0, -1), 2);
  EXPECT_EQ(FxSlotToInst(2, 0), 7);
  EXPECT_EQ(FxSlotToInst(3, 0), 0);
}

TEST_F(RecordTest, CancelledEditRollsTheDocumentBack) {
  nlohmann::json before = HostSim().Doc().ToJson();
  ASSERT_TRUE(FxStartFinaleEdit("Update Layout"));
  EXPECT_FALSE(FxStartFinaleEdit("again")) << "one edit at a time";
  Settings12 display;
  ASSERT_TRUE(display.Load(-2, 0));
  display.Symbol8va = 5;
  display.Save();
  FreezeMusic().Create(-1, 0);
  ASSERT_TRUE(FxCancelFinaleEdit());
  EXPECT_EQ(HostSim().Doc().ToJson(), before);
  EXPECT_FALSE(FxCancelFinaleEdit());
}

TEST_F(RecordTest, MassEditAnswersCancelAtTheUsersRequest) {
  HostSim().CancelAtProgressCall = 3;
  MassEdit edit;
  edit.StartEdit(0, 10);
  EXPECT_TRUE(edit.Progress(2, 0, 0, -1));
  EXPECT_TRUE(edit.Progress(0, 0, 0, -1));
  EXPECT_FALSE(edit.Progress(0, 0, 0, -1)) << "an increment of 0 still sees the cancel";
  EXPECT_EQ(edit.CurrentSize, 2);
  edit.EndEdit(true);
  EXPECT_TRUE(edit.Stopped);
  EXPECT_FALSE(edit.Started);
}

TEST_F(RecordTest, LayerDefaultStemFollowsItsFlags) {
  struct Case {
    int16_t Flag;
    int Layers, Visible;
    std::string Stem;
  } cases[] = {
      {0x0000, 2, 2, ""},   {0x0800, 1, 1, "down"}, {0x0C00, 1, 1, "up"},   {0x0D00, 1, 1, ""},
      {0x0D00, 2, 2, "up"}, {0x4D00, 2, 1, ""},     {0x4900, 3, 2, "down"},
  };
  for (const Case& c : cases) {
    LayerPrefs prefs;
    prefs.Flag = c.Flag;
    EXPECT_EQ(prefs.DefaultStem(c.Layers, c.Visible), c.Stem) << std::hex << c.Flag;
  }
  LayerPrefs loaded;
  ASSERT_TRUE(loaded.Load(1));
  EXPECT_EQ(loaded.Restoffset, -4);
  EXPECT_FALSE(loaded.Load(9));
}

} // namespace
} // namespace ostin

namespace ostin {
namespace {

TEST_F(RecordTest, StaffSpecCallsItsVariantFrom2003) {
  StaffSpec writer;
  writer.FinaleVersion = 2003;
  ASSERT_TRUE(writer.Load(1, 0));
  writer.MoreFlags = 0x10;
  writer.LineSpace = 100000;
  writer.StaffID = 4;
  writer.Save();
  struct Case {
    int32_t Year;
    int16_t MoreFlags; // only the 2003 call passes it
  } cases[] = {{2000, -1}, {2002, -1}, {2003, 0x10}, {2004, 0x10}};
  for (const Case& c : cases) {
    StaffSpec reader;
    reader.FinaleVersion = c.Year;
    reader.MoreFlags = -1;
    ASSERT_TRUE(reader.Load(1, 0));
    EXPECT_EQ(reader.MoreFlags, c.MoreFlags) << c.Year;
    EXPECT_EQ(reader.StaffID, 4) << c.Year << ": both calls pass the fields after";
  }
  HostSim().Faults = {{"CreateStaffSpec2003", sim::Host::Fault::Refuse}};
  StaffSpec made;
  made.FinaleVersion = 2003;
  EXPECT_THROW(made.Create(5, 0), Failure);
  EXPECT_NE(Log().find("Finale create of StaffSpec2003 5 failed"), std::string::npos) << Log();
}

} // namespace
} // namespace ostin

namespace ostin {
namespace {

TEST_F(RecordTest, NewStaffJoinsTheEndOfTheScoresStaffList) {
  StaffSpec staff;
  staff.FinaleVersion = 2004;
  staff.Create(0, 0);
  EXPECT_EQ(staff.Cmper(), 3) << "the sample has staves 1 and 2";
  EXPECT_EQ(FtxCountInstruments(0, -1), 3);
  EXPECT_EQ(FxSlotToInst(3, 0), 3);
  StaffSpec numbered;
  numbered.Create(7, 0);
  EXPECT_EQ(FtxCountInstruments(0, -1), 3) << "a staff of a given number joins no list";
}

} // namespace
} // namespace ostin
