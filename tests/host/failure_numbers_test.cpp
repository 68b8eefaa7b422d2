// Every raising place of the record classes has a number of its own, and the numbers that
// callers test for a record's absence are the host's.
#include <gtest/gtest.h>

#include <map>

#include "host/handmade_records.h"

namespace ostin {
namespace {

#define OSTIN_PLACES_PLAIN(C, B, K, S, ops) {#C, &k##C##Places},
#define OSTIN_PLACES_VARIANT(C, B, K, S, P, Y, ops) {#C, &k##C##Places},
const std::map<std::string, const RecordPlaces*> kAllPlaces = {
    OSTIN_PLAIN_RECORDS(OSTIN_PLACES_PLAIN)
        OSTIN_VARIANT_RECORDS(OSTIN_PLACES_VARIANT){"Header", &kHeaderPlaces},
    {"EndingRepeat", &kEndingRepeatPlaces},
    {"TextRepeatStyle", &kTextRepeatStylePlaces},
    {"TextExpression", &kTextExpressionPlaces},
    {"DrumStaff", &kDrumStaffPlaces},
    {"FretInstrument", &kFretInstrumentPlaces},
    {"VerseLyric", &kVerseLyricPlaces},
    {"ChorusLyric", &kChorusLyricPlaces},
    {"SectionLyric", &kSectionLyricPlaces},
    {"VerseBaseline", &kVerseBaselinePlaces},
    {"ChorusBaseline", &kChorusBaselinePlaces},
    {"SectionBaseline", &kSectionBaselinePlaces}};

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
    uint32_t Load, Next;
  } cases[] = {
      {"MeasureSpec", 0x80040300, 0},
      {"StaffSpec", 0x80040304, 0},
      {"Gfhold", 0x80040348, 0x8004045C},
      {"InstrumentUsed", 0x80040374, 0},
      {"Settings13", 0x8004050C, 0},
      {"FieldInfo", 0x800405C8, 0},
      {"TextExpression", 0x8004039C, 0x8004044B},
      {"GroupSpec", 0, 0x80040781},
      {"FreezeMusic", 0, 0x8004059C},
      {"MultimeasureRest", 0, 0x80040708},
      {"ArticulationDefinition", 0x80040368, 0x800403FC},
      {"StaffStyle", 0, 0x80040749},
      {"CustomLineDefinition", 0x8004067F, 0x8004074B},
      {"EndingRepeat", 0x80040331, 0},
      {"VerseLyric", 0x80040388, 0},
      {"DrumStaff", 0x800406BE, 0},
      {"SectionBaseline", 0x80040779, 0},
  };
  for (const Case& c : cases) {
    const RecordPlaces& places = *kAllPlaces.at(c.Class);
    if (c.Load) {
      EXPECT_EQ(static_cast<uint32_t>(places.Load), c.Load) << c.Class;
    }
    if (c.Next) {
      EXPECT_EQ(static_cast<uint32_t>(places.Next), c.Next) << c.Class;
    }
  }
  EXPECT_EQ(static_cast<uint32_t>(kStaffSpecPlaces.LoadVariant), 0x80040673u);
  EXPECT_EQ(static_cast<uint32_t>(kTextExpressionPlaces.NextVariant), 0x800407ACu);
}

} // namespace
} // namespace ostin
