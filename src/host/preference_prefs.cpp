#include "host/preference_prefs.h"

#include "host/bridge.h"
#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kDefaultFontHandler = Code(0x8004065D);
constexpr int32_t kTupletHandler = Code(0x8004065E);
} // namespace

bool DefaultFontPrefs::Load(int16_t number) {
  return Guarded("DefaultFontPrefs Load error ", kDefaultFontHandler, [&] {
    PrefNumber = number;
    DefaultFontPrefs& f = *this;
    if (!LoadDefaultFontPrefs(number OSTIN_SHAPE_DefaultFontPrefs(OSTIN_PTR_ARG))) return false;
    std::string name;
    FontName = FxFontNumToName(Font, &name) ? HostToUtf8(name) : std::string();
    return true;
  });
}

std::string DefaultFontPrefs::CaretCommands() const {
  return "^font(" + FontName + ",8192)^size(" + std::to_string(Size) + ")^efx(" +
         std::to_string(Efx) + ")";
}

bool TupletPrefs::Load(int16_t number) {
  return Guarded("TupletPrefs Load error ", kTupletHandler, [&] {
    PrefNumber = number;
    TupletPrefs& f = *this;
    return LoadTupletPrefs(number OSTIN_SHAPE_TupletPrefs(OSTIN_PTR_ARG)) != 0;
  });
}

} // namespace ostin
