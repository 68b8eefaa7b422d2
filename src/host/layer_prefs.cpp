#include "host/layer_prefs.h"

#include "host/bridge.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kLoadHandler = Code(0x800402D2);
}

bool LayerPrefs::Load(int16_t prefNumber) {
  return Guarded("LayerPrefs Load error ", kLoadHandler, [&] {
    PrefNumber = prefNumber;
    return LoadLayerPrefs(prefNumber, &Restoffset, &Flag) != 0;
  });
}

std::string LayerPrefs::DefaultStem(int frameLayers, int visibleFrameLayers) const {
  if (!(Flag & kStemsFixed)) return {};
  if (Flag & kOnlyWithOtherLayers) {
    int layers = (Flag & kCountVisibleOnly) ? visibleFrameLayers : frameLayers;
    if (layers <= 1) return {};
  }
  return (Flag & kFixedUp) ? "up" : "down";
}

} // namespace ostin
