// The record layer through the bridge: every record class made from a shape goes there and
// back; keys, walks, absence, refused calls and failure numbers; holders and the staff list.
#include <gtest/gtest.h>

#include <map>
#include <string_view>

#include "host/bridge.h"
#include "host/gfhold.h"
#include "host/handmade_records.h"
#include "host/layer_prefs.h"
#include "host/records.h"
#include "host/text/fonts.h"
#include "host/text/text_block.h"
#include "host_fixture.h"

namespace ostin {
namespace {

using testing::FailureOf;
using testing::HostTest;
using Fault = sim::Host::Fault;
using RecordTest = testing::SampleTest;

TEST_F(RecordTest, WalkGoesInKeyOrderAndEndsAsAResult) {
  auto holder = testing::OfYear<Gfhold>(2004);
  std::vector<std::pair<int, int>> keys;
  for (int16_t staff = 0, measure = 0; holder.GetNext(staff, measure);) {
    keys.emplace_back(holder.Cmper(), holder.Inci());
    staff = holder.Cmper();
    measure = holder.Inci();
  }
  ASSERT_EQ(keys.size(), 8u);
  EXPECT_EQ(keys.front(), std::make_pair(1, 1));
  EXPECT_EQ(keys.back(), std::make_pair(2, 4));
  EXPECT_EQ((std::pair<int, int>(holder.Cmper(), holder.Inci())), keys.back())
      << "the failed call leaves the key as it set it";
  EXPECT_FALSE(FreezeMusic().GetNext(0, 0)) << "an empty type ends the walk at the first call";
}

TEST_F(RecordTest, AbsenceIsAResultAndMustLoadRaisesTheTypesNumber) {
  Settings13 metronome;
  ASSERT_TRUE(metronome.Load(-2, 0));
  EXPECT_FALSE(metronome.Load(5, 0));
  EXPECT_EQ((std::pair<int, int>(metronome.Cmper(), metronome.MetronomeBeat)), std::pair(5, 1024))
      << "a failed load sets the key and leaves the fields";
  EXPECT_EQ(FailureOf([&] { metronome.MustLoad(5, 0); }), Code(0x8004050C));
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
  // A text block takes the places of the call of its year.
  auto textBlock = [](int32_t version, bool save) {
    return [=] {
      auto block = testing::OfYear<TextBlock>(version);
      block.Create(-1, 0);
      if (save) block.Save();
    };
  };
  const Case cases[] = {
      {"SaveSettings12", [&] { display.Save(); }, kSettings12Places.Save,
       "Finale save of Settings12 -2 failed"},
      {"CreateFreezeMeasures", [] { FreezeMusic().Create(-1, 0); }, kFreezeMusicPlaces.Create,
       "Finale create of FreezeMusic -1 failed"},
      {"LoadFreezeMeasures", [] { FreezeMusic().Create(4, 0); }, kFreezeMusicPlaces.CreateLoad,
       "Finale load of new FreezeMusic 4 failed"},
      {"DeleteGfhold2004",
       [] {
         auto holder = testing::OfYear<Gfhold>(2004);
         ASSERT_TRUE(holder.Load(1, 2));
         holder.Delete();
       },
       kGfholdPlaces.Delete, "Finale deletion of Gfhold2004 1, 2 failed"},
      {"CreateStaffSpec2003", [] { testing::OfYear<StaffSpec>(2003).Create(5, 0); },
       kStaffSpecPlaces.Create, "Finale create of StaffSpec2003 5 failed"},
      {"CreateTextBlock", textBlock(2003, false), Code(0x80040306),
       "Finale create of TextBlock -1 failed"},
      {"CreateTextBlock2004", textBlock(2004, false), Code(0x8004079D),
       "Finale create of TextBlock2004 -1 failed"},
      {"LoadTextBlock", textBlock(2003, false), Code(0x80040307),
       "Finale load of new TextBlock 1 failed"},
      {"LoadTextBlock2004", textBlock(2004, false), Code(0x8004079E),
       "Finale load of new TextBlock2004 1 failed"},
      {"SaveTextBlock", textBlock(2003, true), Code(0x80040309),
       "Finale save of TextBlock 1 failed"},
      {"SaveTextBlock2004", textBlock(2004, true), Code(0x800407A0),
       "Finale save of TextBlock2004 1 failed"},
  };
  for (const Case& c : cases) {
    OpenData("sample.json"); // each case makes its records in the same document
    HostSim().Faults = {{c.Call, Fault::Refuse}};
    ExpectRaised(c.Act, c.Number, c.Logged);
  }
}

TEST_F(RecordTest, ForeignFailureInACallIsLoggedOnceAndBecomesTheHandlersNumber) {
  HostSim().Faults = {{"LoadSettings12", Fault::Throw}};
  ExpectRaised([] { (void)Settings12().Load(-2, 0); }, kSettings12Places.LoadHandler,
               "Finale LoadSettings12 error -2147467259: LoadSettings12 broke down");
}

// A variant record takes the newer call from its year on; the plain call leaves the newer
// fields as they were and passes the others.
TEST_F(RecordTest, VariantCallFollowsTheHostYear) {
  auto holder = testing::OfYear<Gfhold>(2004);
  ASSERT_TRUE(holder.Load(1, 1));
  holder.ClefPercent = 80; // only the 2004 call passes it
  holder.Save();
  auto staff = testing::OfYear<StaffSpec>(2003);
  ASSERT_TRUE(staff.Load(1, 0));
  staff.MoreFlags = 0x10; // only the 2003 call passes it
  staff.StaffID = 4;
  staff.Save();
  struct Case {
    int32_t Year;
    int16_t ClefPercent, MoreFlags;
  } cases[] = {{2000, 7, -1}, {2002, 7, -1}, {2003, 7, 0x10}, {2004, 80, 0x10}};
  for (const Case& c : cases) {
    auto reader = testing::OfYear<Gfhold>(c.Year);
    reader.ClefPercent = 7;
    auto spec = testing::OfYear<StaffSpec>(c.Year);
    spec.MoreFlags = -1;
    ASSERT_TRUE(reader.Load(1, 1) && spec.Load(1, 0));
    EXPECT_EQ(std::tuple(reader.ClefPercent, reader.FrameOf(0), spec.MoreFlags, spec.StaffID),
              std::tuple(c.ClefPercent, int16_t{1}, c.MoreFlags, int16_t{4}))
        << c.Year;
  }
}

TEST_F(RecordTest, GfholdOfAHostWithMoreLayersKeepsThemAll) {
  HostSim().Doc().MaxLayers = 6;
  HostSim().Doc().Records.erase("Gfhold");
  auto holder = testing::OfYear<Gfhold>(2004);
  holder.Create(2, 3);
  holder.Frame = {1, 2, 3, 4, 5, 6};
  holder.Save();
  auto reader = testing::OfYear<Gfhold>(2004);
  ASSERT_TRUE(reader.Load(2, 3));
  EXPECT_EQ(reader.Frame, (std::vector<int16_t>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(reader.FrameOf(6), 0);
}

TEST_F(RecordTest, GfholdClefListComesFromClefElements) {
  testing::Put("ClefElement", {9, 0}, {{"Clef", 0, 0}, {"ClefEdu", 0, 0}});
  testing::Put("ClefElement", {9, 1}, {{"Clef", 0, 3}, {"ClefEdu", 0, 2048}});
  auto holder = testing::OfYear<Gfhold>(2004);
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ((std::pair<int, int>(holder.ClefMax(), holder.Clefs(1))), std::pair(1, 3));
  holder.Clef = 9;
  holder.Flag = Gfhold::kClefListBit;
  holder.Save();
  ASSERT_TRUE(holder.Load(2, 1));
  EXPECT_EQ(std::tuple(holder.ClefMax(), holder.Clefs(2), holder.ClefEdus(2), holder.Clefs(3)),
            std::tuple(2, 3, 2048u, 0));
}

// New entries and new staves without a number join the end of the score's staff list; a
// deleted entry moves the following ones up.
TEST_F(RecordTest, StaffListGrowsAtItsEndAndClosesUpOnDelete) {
  auto staff = testing::OfYear<StaffSpec>(2004);
  staff.Create(0, 0);
  EXPECT_EQ(staff.Cmper(), 3) << "the sample has staves 1 and 2";
  EXPECT_EQ(FxSlotToInst(3, 0), 3);
  StaffSpec numbered;
  numbered.Create(7, 0);
  EXPECT_EQ(FtxCountInstruments(0, -1), 3) << "a staff of a given number joins no list";
  InstrumentUsed entry;
  entry.Create(0, -1);
  EXPECT_EQ(entry.Inci(), 3);
  entry.Inst = 7;
  entry.Save();
  EXPECT_EQ(std::tuple(FtxCountInstruments(0, -1), FxSlotToInst(4, 0), FxInstToSlot(7, 0)),
            std::tuple(4, 7, 4));
  ASSERT_TRUE(entry.Load(0, 1));
  entry.Delete();
  EXPECT_EQ(std::tuple(FtxCountInstruments(0, -1), FxSlotToInst(3, 0), FxSlotToInst(4, 0)),
            std::tuple(3, 7, 0));
}

TEST_F(RecordTest, LayerDefaultStemFollowsItsFlags) {
  // Flag, layers, visible layers, stem.
  const std::tuple<int16_t, int, int, std::string> cases[] = {
      {0x0000, 2, 2, ""},   {0x0800, 1, 1, "down"}, {0x0C00, 1, 1, "up"},   {0x0D00, 1, 1, ""},
      {0x0D00, 2, 2, "up"}, {0x4D00, 2, 1, ""},     {0x4900, 3, 2, "down"},
  };
  for (const auto& [flag, layers, visible, stem] : cases) {
    LayerPrefs prefs;
    prefs.Flag = flag;
    EXPECT_EQ(prefs.DefaultStem(layers, visible), stem) << std::hex << flag;
  }
  LayerPrefs loaded;
  ASSERT_TRUE(loaded.Load(1));
  EXPECT_EQ(loaded.Restoffset, -4);
  EXPECT_FALSE(loaded.Load(9));
}

// Each record class made from a shape: create with the next free key, fill every field, save,
// load, walk and delete where the host offers it.
#define OSTIN_FILL(kind, name, n) OSTIN_FILL_##kind(name)
#define OSTIN_FILL_I16(name) r.name = static_cast<int16_t>(seed++);
#define OSTIN_FILL_I32(name) r.name = 70000 + seed++;
#define OSTIN_FILL_TXT(name) r.name = "Été " + std::to_string(seed++);
#define OSTIN_FILL_BLOCK(name)                                                                     \
  for (auto& element : r.name)                                                                     \
    element = static_cast<std::decay_t<decltype(element)>>(seed++);
#define OSTIN_FILL_B16(name) OSTIN_FILL_BLOCK(name)
#define OSTIN_FILL_B32(name) OSTIN_FILL_BLOCK(name)
#define OSTIN_FILL_P16(name) OSTIN_FILL_BLOCK(name)
#define OSTIN_SAME(kind, name, n) &&a.name == b.name

// The ops name the host's calls: N a walk, D a deletion; K3 keys have three parts.
#define OSTIN_CASE(C, K, S, ops)                                                                   \
  struct C##Case {                                                                                 \
    using Type = C;                                                                                \
    static constexpr bool HasNext = std::string_view(#ops).find('N') != std::string_view::npos;    \
    static constexpr bool HasDelete = std::string_view(#ops).find('D') != std::string_view::npos;  \
    static constexpr int KeyParts = std::string_view(#K) == "K3" ? 3 : 2;                          \
    static void Fill(C& r, int seed) { S(OSTIN_FILL) }                                             \
    static bool Same(const C& a, const C& b) { return true S(OSTIN_SAME); }                        \
  };
#define OSTIN_PLAIN_CASE(C, B, K, S, ops) OSTIN_CASE(C, K, S, ops)
#define OSTIN_VARIANT_CASE(C, B, K, S, P, Y, ops) OSTIN_CASE(C, K, S, ops)
OSTIN_PLAIN_RECORDS(OSTIN_PLAIN_CASE)
OSTIN_FAMILY_VARIANTS(OSTIN_VARIANT_CASE)

#define OSTIN_LIST_PLAIN(C, B, K, S, ops) C##Case,
#define OSTIN_LIST_VARIANT(C, B, K, S, P, Y, ops) C##Case,
template <class... Cases> struct CaseList { using Types = ::testing::Types<Cases...>; };
// The list ends in a repeat of the first case, which takes the last comma.
using AllCases = CaseList<OSTIN_PLAIN_RECORDS(OSTIN_LIST_PLAIN)
                              OSTIN_FAMILY_VARIANTS(OSTIN_LIST_VARIANT) MeasureSpecCase>::Types;

template <class Case> class RecordFamilyTest : public HostTest {
protected:
  using Type = typename Case::Type;
  static Type Made() { return testing::OfYear<Type>(2004); }
  // A key of this record's form in a part of the key space the documents leave empty.
  static void CreateFresh(Type& record) {
    if constexpr (Case::KeyParts == 3)
      record.Create(300, 2, -1);
    else
      record.Create(-1, 0);
  }
};
TYPED_TEST_SUITE(RecordFamilyTest, AllCases);
TYPED_TEST(RecordFamilyTest, GoesThroughTheBridgeAndBack) {
  using Case = TypeParam;
  auto record = this->Made();
  this->CreateFresh(record);
  auto empty = this->Made();
  ASSERT_TRUE(empty.Load(record.Cmper(), record.Inci(), record.Third()));
  auto defaults = this->Made();
  // A new staff is a plain staff of five lines with its layers shown.
  if constexpr (std::is_same_v<decltype(defaults), StaffSpec>) {
    defaults.BotLines = 5;
    defaults.AltFlag = 0x0700;
  }
  EXPECT_TRUE(Case::Same(empty, defaults)) << "a new record holds the host's defaults";
  Case::Fill(record, 11);
  record.Save();
  auto back = this->Made();
  ASSERT_TRUE(back.Load(record.Cmper(), record.Inci(), record.Third()));
  EXPECT_TRUE(Case::Same(back, record));
  auto other = this->Made();
  EXPECT_FALSE(other.Load(record.Cmper(), static_cast<int16_t>(record.Inci() + 5)));
  auto second = this->Made();
  this->CreateFresh(second);
  EXPECT_NE(std::make_tuple(second.Cmper(), second.Inci(), second.Third()),
            std::make_tuple(record.Cmper(), record.Inci(), record.Third()))
      << "-1 takes a free number";
  if constexpr (Case::HasNext) {
    auto walker = this->Made();
    int found = 0;
    typename Case::Type::KeyType cmper = 0;
    int16_t inci = 0;
    while (walker.GetNext(cmper, inci)) {
      found += walker.Cmper() == record.Cmper() && walker.Inci() == record.Inci();
      cmper = walker.Cmper();
      inci = walker.Inci();
    }
    EXPECT_EQ(found, 1);
  }
  if constexpr (Case::HasDelete) {
    record.Delete();
    EXPECT_FALSE(back.Load(record.Cmper(), record.Inci(), record.Third()));
  }
}

// Every raising place of the record classes has a number of its own, and the numbers that
// callers test for a record's absence are the host's.
#define OSTIN_PLACES(C) {#C, &k##C##Places},
#define OSTIN_PLACES_PLAIN(C, B, K, S, ops) OSTIN_PLACES(C)
#define OSTIN_PLACES_VARIANT(C, B, K, S, P, Y, ops) OSTIN_PLACES(C)
// Every record class that raises: those made from shapes, the handmade ones and the font table.
// clang-format off
const std::map<std::string, const RecordPlaces*> kAllPlaces = {
    OSTIN_PLAIN_RECORDS(OSTIN_PLACES_PLAIN) OSTIN_VARIANT_RECORDS(OSTIN_PLACES_VARIANT)
    OSTIN_PLACES(Header) OSTIN_PLACES(EndingRepeat) OSTIN_PLACES(TextRepeatStyle)
    OSTIN_PLACES(TextExpression) OSTIN_PLACES(DrumStaff) OSTIN_PLACES(FretInstrument)
    OSTIN_PLACES(VerseLyric) OSTIN_PLACES(ChorusLyric) OSTIN_PLACES(SectionLyric)
    OSTIN_PLACES(VerseBaseline) OSTIN_PLACES(ChorusBaseline) OSTIN_PLACES(SectionBaseline)
    OSTIN_PLACES(FontName)};
// clang-format on

std::vector<int32_t> Numbers(const RecordPlaces& p) {
  return {p.Create,        p.CreateLoad,  p.CreateHandler, p.Load,        p.LoadHandler,
          p.Save,          p.SaveHandler, p.Next,          p.NextHandler, p.Delete,
          p.DeleteHandler, p.LoadVariant, p.NextVariant};
}

TEST(FailureNumbers, EachRaisingPlaceHasItsOwn) {
  std::map<int32_t, std::string> seen;
  for (const auto& [name, places] : kAllPlaces) {
    std::vector<int32_t> numbers = Numbers(*places);
    for (size_t i = 0; i < numbers.size(); ++i) {
      int32_t number = numbers[i];
      if (number == 0 || (i >= 11 && (number == places->Load || number == places->Next))) continue;
      EXPECT_GE(static_cast<uint32_t>(number), 0x8004025Fu) << name;
      EXPECT_LE(static_cast<uint32_t>(number), 0x800407CCu) << name;
      auto [it, added] = seen.emplace(number, name);
      EXPECT_TRUE(added) << std::hex << number << " of " << name << " is also " << it->second;
    }
  }
}

TEST(FailureNumbers, AbsenceNumbersAreTheHosts) {
  struct Case {
    std::string Class;
    uint32_t Load, Next; // 0: not checked
  };
  // clang-format off
  const Case cases[] = {
      {"MeasureSpec", 0x80040300, 0},          {"StaffSpec", 0x80040304, 0},
      {"Gfhold", 0x80040348, 0x8004045C},      {"InstrumentUsed", 0x80040374, 0},
      {"Settings13", 0x8004050C, 0},           {"FieldInfo", 0x800405C8, 0},
      {"TextExpression", 0x8004039C, 0x8004044B}, {"GroupSpec", 0, 0x80040781},
      {"FreezeMusic", 0, 0x8004059C},          {"MultimeasureRest", 0, 0x80040708},
      {"ArticulationDefinition", 0x80040368, 0x800403FC}, {"StaffStyle", 0, 0x80040749},
      {"CustomLineDefinition", 0x8004067F, 0x8004074B}, {"EndingRepeat", 0x80040331, 0},
      {"VerseLyric", 0x80040388, 0},           {"DrumStaff", 0x800406BE, 0},
      {"SectionBaseline", 0x80040779, 0},      {"FontName", 0, 0x800406AB},
  };
  // clang-format on
  for (const Case& c : cases) {
    const RecordPlaces& places = *kAllPlaces.at(c.Class);
    EXPECT_EQ(c.Load ? static_cast<uint32_t>(places.Load) : 0u, c.Load) << c.Class;
    EXPECT_EQ(c.Next ? static_cast<uint32_t>(places.Next) : 0u, c.Next) << c.Class;
  }
  EXPECT_EQ(static_cast<uint32_t>(kStaffSpecPlaces.LoadVariant), 0x80040673u);
  EXPECT_EQ(static_cast<uint32_t>(kTextExpressionPlaces.NextVariant), 0x800407ACu);
}

} // namespace
} // namespace ostin
