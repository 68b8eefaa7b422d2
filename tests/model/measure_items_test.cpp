#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../shell/temp_registry.h"
#include "model/measure_items.h"
#include "shell/failure.h"

namespace ostin {
namespace {

// Arrivals as {Cmper, Measure, Edu}, through AddSorted unless Cmper is negative (Add).
struct Arrival {
  int16_t Cmper, Measure;
  int32_t Edu;
};

std::vector<int16_t> Fill(MeasureItems& items, const std::vector<Arrival>& arrivals) {
  for (const Arrival& a : arrivals) {
    MeasureItem item("Sx", a.Cmper, 0, a.Measure, a.Edu);
    a.Cmper < 0 ? items.Add(item) : items.AddSorted(item);
  }
  std::vector<int16_t> order;
  for (const MeasureItem& item : items)
    order.push_back(item.Cmper());
  return order;
}

TEST(MeasureItemTest, ListKeepsMeasureOrderAndSortsTheLastMeasureByPosition) {
  const struct {
    std::vector<Arrival> Arrivals;
    std::vector<int16_t> Expected;
  } cases[] = {
      {{{1, 4, 0}, {2, 4, 512}, {3, 4, 256}}, {1, 3, 2}},
      {{{1, 4, 0}, {2, 4, 512}, {3, 4, 0}, {4, 4, 512}}, {1, 3, 2, 4}},
      {{{1, 4, 0}, {2, 4, 256}, {3, 4, 512}, {4, 4, 256}}, {1, 2, 4, 3}},
      {{{1, 4, 256}, {2, 4, 512}, {3, 4, 0}, {4, 4, 128}}, {3, 4, 1, 2}},
      {{{1, 1, 0}, {2, 4, 0}, {3, 4, 512}, {4, 2, 700}}, {1, 4, 2, 3}},
      {{{1, 4, 0}, {2, 3, 900}, {3, 2, 100}, {4, 3, 0}}, {2, 3, 4, 1}},
      {{{1, 4, 0}, {2, 2, 0}, {3, 6, 300}, {4, 6, 100}, {5, 3, 0}}, {2, 1, 5, 4, 3}},
      // Add appends anywhere and makes its measure the last one.
      {{{-1, 3, 0}, {-2, 5, 300}, {-3, 2, 0}, {4, 2, 50}, {5, 1, 0}}, {-1, -2, 5, -3, 4}},
      {{{-1, 3, 0}, {-2, 5, 300}, {3, 5, 100}, {4, 4, 0}}, {-1, 4, 3, -2}},
  };
  for (const auto& c : cases) {
    MeasureItems items;
    EXPECT_EQ(Fill(items, c.Arrivals), c.Expected);
  }
}

TEST(MeasureItemTest, IdIsRebuiltAndRemoveKeepsTheTailInPlace) {
  MeasureItem item("DY", 7, 2, 12, 256);
  item.SetCmper(-3);
  item.SetMeasure(40);
  EXPECT_EQ(item.ID(), "DY,-3,2,40");

  MeasureItems items;
  Fill(items, {{1, 2, 0}, {2, 4, 0}, {3, 4, 100}});
  EXPECT_THROW(items.Item(4), std::exception);
  items.Remove(1);
  EXPECT_EQ(Fill(items, {{4, 3, 0}, {1, 2, 0}}), (std::vector<int16_t>{4, 1, 2, 3}));
  EXPECT_EQ(items.Item(1).Cmper(), 4);
}

class MeasureItemFailureTest : public testing::TempRegistryTest {};

TEST_F(MeasureItemFailureTest, SameKeyTwiceIsLoggedAndRefused) {
  for (bool sorted : {true, false}) {
    MeasureItems items;
    auto insert = [&](int16_t measure, int32_t edu) {
      MeasureItem item("DY", 9, 1, measure, edu);
      sorted ? items.AddSorted(item) : items.Add(item);
    };
    insert(4, 0);
    insert(5, 0);
    try {
      insert(4, 512);
      ADD_FAILURE();
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, sorted ? Code(0x800404A4) : kAddFailure);
      EXPECT_EQ(failure.Description, kInternalError);
    }
    EXPECT_EQ(items.Count(), 2);
  }
  for (const char* head : {"MeasureItems AddSorted error ", "MeasureItems Add error "})
    EXPECT_NE(Log().find(std::string(head) + "-2147467259 for MeasureItem DY,9,1,4 in measure 4: "),
              std::string::npos)
        << Log();
}

} // namespace
} // namespace ostin
