#pragma once
// The number text of each measure, from the document's measure number regions.
#include <cstdint>
#include <string>
#include <vector>

#include "shell/failure.h"

namespace ostin {

inline constexpr int32_t kNumberingInitializeFailure = Code(0x80040666);
inline constexpr int32_t kNumberingNextMeasureFailure = Code(0x80040667);

// Walks the measures from 1 and gives each its number text. A measure that no region
// numbers, before the first region or in a gap, gets a generated number and is implicit.
class XmlMeasNumbering {
public:
  // Reads the regions and starts again before measure 1.
  void Initialize();
  // The next measure's number text, and whether it is implicit.
  void NextMeasure(std::string& thisNumber, bool& implicit);

  // Measure n has number n: no region logic is needed.
  bool OneToOne() const { return oneToOne_; }
  int16_t Regions() const { return static_cast<int16_t>(regions_.size()); }
  // Fields of region i, from 1 to Regions(); 0 outside that range.
  int16_t StartMeas(int16_t i) const { return Region(i).StartMeas; }
  int16_t EndMeas(int16_t i) const { return Region(i).EndMeas; }
  int16_t Offset(int16_t i) const { return Region(i).Offset; }
  int16_t Base(int16_t i) const { return Region(i).Base; }

private:
  struct RegionFields {
    int16_t StartMeas = 0;
    int16_t EndMeas = 0;
    int16_t Offset = 0;
    int16_t Base = 0;
  };
  RegionFields Region(int16_t i) const;
  // A number that no region gives: the next of the running count.
  std::string Generated();

  std::vector<RegionFields> regions_;
  bool oneToOne_ = false;
  int16_t currentMeasure_ = 0;
  int16_t currentRegion_ = 0;
  int16_t lastNumber_ = 0;
  int16_t implicitCount_ = 0;
};

} // namespace ostin
