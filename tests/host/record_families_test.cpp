// Every record class made from a shape goes through the bridge and back: create with the
// next free key, fill every field, save, load, walk and delete where the host offers it.
#include <gtest/gtest.h>

#include "../support/host_test.h"
#include "host/records.h"

namespace ostin {
namespace {

using testing::HostTest;

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

#define OSTIN_HAS_NEXT_CLS false
#define OSTIN_HAS_NEXT_CLSD false
#define OSTIN_HAS_NEXT_CLSN true
#define OSTIN_HAS_NEXT_CLSND true
#define OSTIN_HAS_DELETE_CLS false
#define OSTIN_HAS_DELETE_CLSN false
#define OSTIN_HAS_DELETE_CLSD true
#define OSTIN_HAS_DELETE_CLSND true
#define OSTIN_KEY_PARTS_K2 2
#define OSTIN_KEY_PARTS_KE 2
#define OSTIN_KEY_PARTS_K3 3

#define OSTIN_CASE(C, K, S, ops)                                                                   \
  struct C##Case {                                                                                 \
    using Type = C;                                                                                \
    static constexpr bool HasNext = OSTIN_HAS_NEXT_##ops;                                          \
    static constexpr bool HasDelete = OSTIN_HAS_DELETE_##ops;                                      \
    static constexpr int KeyParts = OSTIN_KEY_PARTS_##K;                                           \
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
  static Type Made() {
    Type record;
    record.FinaleVersion = 2004;
    return record;
  }
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

} // namespace
} // namespace ostin
