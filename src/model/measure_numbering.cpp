#include "model/measure_numbering.h"

#include "host/records.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int16_t kDecimalBase = 10;
} // namespace

XmlMeasNumbering::RegionFields XmlMeasNumbering::Region(int16_t i) const {
  if (i < 1 || i > Regions()) return {};
  return regions_[i - 1];
}

void XmlMeasNumbering::Initialize() {
  Guarded("XmlMeasNumbering Initialize error ", kNumberingInitializeFailure, [&] {
    regions_.clear();
    currentMeasure_ = 0;
    currentRegion_ = 0;
    bool otherBase = false;
    MeasNumberRegion region;
    int16_t cmper = 0, inci = 0;
    // The walk ends when no record follows; that is no error.
    while (region.GetNext(cmper, inci)) {
      regions_.push_back({region.StartMeas, region.EndMeas, region.Offset, region.Base});
      if (region.Base != kDecimalBase) otherBase = true;
      cmper = region.Cmper();
      inci = region.Inci();
    }
    oneToOne_ = regions_.empty() || otherBase || (Regions() == 1 && StartMeas(1) == Offset(1) + 1);
  });
}

std::string XmlMeasNumbering::Generated() {
  ++implicitCount_;
  // Appended, not "X" + number: GCC 12 at -O3 flags that form with a false -Wrestrict.
  std::string number = "X";
  number += std::to_string(implicitCount_);
  return number;
}

void XmlMeasNumbering::NextMeasure(std::string& thisNumber, bool& implicit) {
  Guarded("XmlMeasNumbering NextMeasure error ", kNumberingNextMeasureFailure, [&] {
    const bool first = currentMeasure_ == 0;
    const int16_t m = ++currentMeasure_;
    const int16_t r = currentRegion_;
    if (oneToOne_) {
      lastNumber_ = m;
    } else if (r == 0) {
      if (m < StartMeas(1)) {
        thisNumber = first ? "0" : Generated();
        implicit = true;
        return;
      }
      currentRegion_ = 1;
      lastNumber_ = static_cast<int16_t>(Offset(1) + 1 + m - StartMeas(1));
    } else if (m >= EndMeas(r) && r != Regions()) {
      // Past the end of a region: a gap until the next one starts.
      if (m < StartMeas(r + 1)) {
        thisNumber = Generated();
        implicit = true;
        return;
      }
      currentRegion_ = static_cast<int16_t>(r + 1);
      const int16_t number = static_cast<int16_t>(Offset(r + 1) + 1 + m - StartMeas(r + 1));
      // A region that would count back gives no printed number.
      if (number <= lastNumber_) {
        thisNumber = Generated();
        implicit = true;
        return;
      }
      lastNumber_ = number;
    } else {
      ++lastNumber_;
    }
    thisNumber = std::to_string(lastNumber_);
    implicit = false;
  });
}

} // namespace ostin
