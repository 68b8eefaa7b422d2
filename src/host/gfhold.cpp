#include "host/gfhold.h"

#include <algorithm>

namespace ostin {

void Gfhold::SetFinaleVersion(int32_t version) {
  FinaleVersion = version;
  if (version >= 2004) Frame.resize(std::max<int>(FxGetMaxLayers(), 4), 0);
}

bool Gfhold::Load(int16_t staff, int16_t measure) {
  clefsLoaded_ = false;
  return Record::Load(staff, measure);
}

bool Gfhold::GetNext(int16_t staff, int16_t measure) {
  clefsLoaded_ = false;
  return Record::GetNext(staff, measure);
}

int16_t Gfhold::FrameOf(int layer) const {
  return layer >= 0 && layer < static_cast<int>(Frame.size()) ? Frame[layer] : 0;
}

void Gfhold::LoadClefs() {
  clefsLoaded_ = true;
  clefs_.clear();
  clefEdus_.clear();
  if (!(Flag & kClefListBit)) {
    clefs_.push_back(Clef);
    clefEdus_.push_back(0);
    return;
  }
  ClefElement element;
  for (int16_t inci = 0; element.Load(Clef, inci); ++inci) {
    clefs_.push_back(element.Clef);
    clefEdus_.push_back(static_cast<uint16_t>(element.ClefEdu));
  }
}

int16_t Gfhold::ClefMax() {
  if (!clefsLoaded_) LoadClefs();
  return static_cast<int16_t>(clefs_.size());
}

int16_t Gfhold::Clefs(int i) {
  if (!clefsLoaded_) LoadClefs();
  return i >= 1 && i <= static_cast<int>(clefs_.size()) ? clefs_[i - 1] : 0;
}

uint32_t Gfhold::ClefEdus(int i) {
  if (!clefsLoaded_) LoadClefs();
  return i >= 1 && i <= static_cast<int>(clefEdus_.size()) ? clefEdus_[i - 1] : 0;
}

} // namespace ostin
