// Items kept in measure order and sorted by position in the last measure, and the number
// texts of measures by the document's numbering regions.

#include "../shell/temp_registry.h"
#include "host/records.h"
#include "model/measure_items.h"
#include "model/measure_numbering.h"
#include "model_test.h"
#include "shell/failure.h"

namespace ostin {
namespace {

using Fault = sim::Host::Fault;

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
    const Failure failure = model_test::Raised([&] { insert(4, 512); });
    EXPECT_EQ(failure.Number, sorted ? Code(0x800404A4) : kAddFailure);
    EXPECT_EQ(failure.Description, kInternalError);
    EXPECT_EQ(items.Count(), 2);
  }
  for (const char* head : {"MeasureItems AddSorted error ", "MeasureItems Add error "})
    EXPECT_NE(Log().find(std::string(head) + "-2147467259 for MeasureItem DY,9,1,4 in measure 4: "),
              std::string::npos)
        << Log();
}

class NumberingTest : public model_test::ModelTest {
protected:
  // Fresh document with regions {StartMeas, EndMeas, Offset, Base}; numbers of the first
  // measures, an implicit one marked "*".
  std::vector<std::string> Numbers(const std::vector<std::vector<int16_t>>& regions, int count,
                                   XmlMeasNumbering& numbering) {
    Reopen();
    int16_t cmper = 0;
    for (const std::vector<int16_t>& r : regions)
      model_test::Make<MeasNumberRegion>(++cmper, 0, [&](auto& m) {
        m.StartMeas = r[0], m.EndMeas = r[1], m.Offset = r[2], m.Base = r[3];
      });
    numbering.Initialize();
    std::vector<std::string> numbers;
    for (int i = 0; i < count; ++i) {
      std::string number;
      bool implicit = false;
      numbering.NextMeasure(number, implicit);
      numbers.push_back(implicit ? number + "*" : number);
    }
    return numbers;
  }
};

TEST_F(NumberingTest, RegionsGiveEachMeasureItsNumberText) {
  const struct {
    std::vector<std::vector<int16_t>> Regions;
    bool OneToOne;
    std::vector<std::string> Numbers;
  } cases[] = {
      {{}, true, {"1", "2"}},
      {{{1, 100, 0, 10}}, true, {"1", "2"}},
      {{{5, 100, 4, 10}}, true, {"1", "2"}},
      {{{3, 100, 20, 16}}, true, {"1", "2"}},
      {{{2, 10, 0, 10}, {10, 20, 40, 16}}, true, {"1", "2"}},
      {{{2, 100, 0, 10}}, false, {"0*", "1", "2"}},
      {{{3, 100, 0, 10}}, false, {"0*", "X1*", "1", "2"}},
      {{{1, 100, 10, 10}}, false, {"11", "12"}},
      {{{1, 3, 10, 10}, {5, 100, 20, 10}}, false, {"11", "12", "X1*", "X2*", "21", "22"}},
      {{{1, 3, 0, 10}, {3, 100, 10, 10}}, false, {"1", "2", "11", "12"}},
      {{{1, 3, 0, 10}, {3, 100, 1, 10}}, false, {"1", "2", "X1*", "3"}},
      {{{1, 4, 10, 10}, {4, 100, 0, 10}}, false, {"11", "12", "13", "X1*", "14"}},
      {{{3, 5, 0, 10}, {7, 100, 10, 10}}, false, {"0*", "X1*", "1", "2", "X2*", "X3*", "11"}},
      {{{2, 3, 0, 10}, {3, 4, 5, 10}}, false, {"0*", "1", "6", "7", "8"}},
  };
  for (const auto& c : cases) {
    XmlMeasNumbering numbering;
    EXPECT_EQ(Numbers(c.Regions, static_cast<int>(c.Numbers.size()), numbering), c.Numbers);
    EXPECT_EQ(numbering.OneToOne(), c.OneToOne);
    EXPECT_EQ(numbering.Regions(), static_cast<int16_t>(c.Regions.size()));
    EXPECT_EQ(numbering.EndMeas(numbering.Regions()), c.Regions.empty() ? 0 : c.Regions.back()[1]);
  }
}

TEST_F(NumberingTest, HostFailuresPassUpAndAnEmptyWalkIsNoError) {
  XmlMeasNumbering numbering;
  Numbers({{2, 100, 0, 10}}, 0, numbering);
  HostSim().Faults = {{"NextMeasNumberRegion", Fault::Throw}};
  EXPECT_EQ(model_test::Raised([&] { numbering.Initialize(); }).Number,
            kMeasNumberRegionPlaces.NextHandler);
  EXPECT_EQ(Log().find("XmlMeasNumbering"), std::string::npos) << "logged once, by the record";
  HostSim().Faults = {{"NextMeasNumberRegion", Fault::Refuse}};
  numbering.Initialize();
  EXPECT_TRUE(numbering.OneToOne() && numbering.Regions() == 0);
}

} // namespace
} // namespace ostin
