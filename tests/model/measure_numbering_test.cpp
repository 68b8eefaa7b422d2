#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/host_test.h"
#include "host/records.h"
#include "model/measure_numbering.h"

namespace ostin {
namespace {

using Fault = sim::Host::Fault;

class NumberingTest : public testing::HostTest {
protected:
  // Fresh document with regions {StartMeas, EndMeas, Offset, Base}; numbers of the first
  // measures, an implicit one marked "*".
  std::vector<std::string> Numbers(const std::vector<std::vector<int16_t>>& regions, int count,
                                   XmlMeasNumbering& numbering) {
    HostSim().Reset();
    OpenData("default-document.json");
    for (size_t i = 0; i < regions.size(); ++i) {
      MeasNumberRegion region;
      region.Create(static_cast<int16_t>(i + 1), 0);
      region.StartMeas = regions[i][0];
      region.EndMeas = regions[i][1];
      region.Offset = regions[i][2];
      region.Base = regions[i][3];
      region.Save();
    }
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
  try {
    numbering.Initialize();
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, kMeasNumberRegionPlaces.NextHandler);
  }
  EXPECT_EQ(Log().find("XmlMeasNumbering"), std::string::npos) << "logged once, by the record";
  HostSim().Faults = {{"NextMeasNumberRegion", Fault::Refuse}};
  numbering.Initialize();
  EXPECT_TRUE(numbering.OneToOne() && numbering.Regions() == 0);
}

} // namespace
} // namespace ostin
