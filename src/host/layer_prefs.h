#pragma once
// The preferences of one layer: rest offset and the stem flags.
#include <cstdint>
#include <string>

namespace ostin {

class LayerPrefs {
public:
  // False when the host has no preferences for that layer.
  [[nodiscard]] bool Load(int16_t prefNumber);
  // "up", "down" or empty: the fixed stem direction of the layer for a frame with that
  // many layers (all, and visible only).
  std::string DefaultStem(int frameLayers, int visibleFrameLayers) const;

  int16_t PrefNumber = 0;
  int16_t Restoffset = 0;
  int16_t Flag = 0;

  static constexpr int16_t kStemsFixed = 0x0800;
  static constexpr int16_t kFixedUp = 0x0400;
  static constexpr int16_t kOnlyWithOtherLayers = 0x0100;
  static constexpr int16_t kCountVisibleOnly = 0x4000;
  static constexpr int16_t kNoCue = 0x1000;
  static constexpr int16_t kKeepSpacing = 0x2000;
};

} // namespace ostin
