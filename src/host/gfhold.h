#pragma once
// The frame holder of one staff in one measure: which layers hold a frame, and the clefs.
#include <vector>

#include "host/records.h"

namespace ostin {

class Gfhold : public Record<GfholdTraits> {
public:
  // Sets the host year; from 2004 on the block of frames takes as many layers as the host has.
  void SetFinaleVersion(int32_t version);

  [[nodiscard]] bool Load(int16_t staff, int16_t measure);
  [[nodiscard]] bool GetNext(int16_t staff, int16_t measure);

  // Frame of a layer from 0; 0 for an empty layer or one out of range.
  int16_t FrameOf(int layer) const;

  // Clefs of the measure, filled on first use: their count, and the number and EDU
  // position of the i-th from 1 (0 out of range).
  int16_t ClefMax();
  int16_t Clefs(int i);
  uint32_t ClefEdus(int i);

  static constexpr int16_t kClefListBit = 0x0400;

private:
  void LoadClefs();
  bool clefsLoaded_ = false;
  std::vector<int16_t> clefs_;
  std::vector<uint32_t> clefEdus_;
};

} // namespace ostin
