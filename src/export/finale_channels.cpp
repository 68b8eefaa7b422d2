#include "export/finale_channels.h"

#include <filesystem>

#include "host/bridge.h"
#include "model/arithmetic_numbers.h"
#include "shell/failure.h"
#include "shell/music_directory.h"

namespace ostin {

namespace {
constexpr int32_t kSubscript = Code(0x80040617);
constexpr int32_t kInitializeHandler = Code(0x80040287);
constexpr int32_t kInitializeDefaultHandler = Code(0x80040288);
constexpr int32_t kFirstHandler = Code(0x80040289);
constexpr const char* kMissing = "CannotFindTheData";
constexpr int kMaxDevices = 8;

} // namespace

const FinaleChannels::Channel_& FinaleChannels::At(const char* property, int16_t index) const {
  if (index < 1 || index > MaxChannel)
    RaiseLogged(std::string("FinaleChannels Get ") + property +
                    " subscript must be between 1 and " + std::to_string(MaxChannel) + ", not " +
                    std::to_string(index),
                kSubscript);
  return channels_[index];
}

void FinaleChannels::Initialize() {
  Guarded("FinaleChannels Initialize error ", kInitializeHandler, [&] {
    std::string ini;
    FtxGetIniFileName(&ini);
    std::string file = (std::filesystem::path(ini).parent_path() / "FinMidi.ini").string();
    int16_t devices = 0;
    for (int n = 1; n <= kMaxDevices; ++n) {
      std::string name =
          GetPrivateProfileString("MMEDRVR", "OutName" + std::to_string(n), kMissing, file)
              .substr(0, 255);
      if (name == kMissing) break;
      if (name == "(none)" || name.size() <= 1) continue;
      // The base is read into a buffer of eight characters.
      std::string base =
          GetPrivateProfileString("MMEDRVR", "OutBase" + std::to_string(n), "", file).substr(0, 7);
      std::optional<double> value = NumericValue(base);
      if (!value || *value < 1 || *value > MaxChannel) continue;
      int first = RoundHalfEven(*value);
      ++devices;
      for (int k = 1; k <= 16 && first + k - 1 <= MaxChannel; ++k) {
        Channel_& channel = channels_[first + k - 1];
        if (channel.Assigned) continue;
        channel = {true, name, devices, static_cast<int16_t>(k), 0, 0};
      }
    }
    InitializeDefault(false);
    MultiDevice = devices >= 2;
  });
}

void FinaleChannels::InitializeDefault(bool all) {
  Guarded("FinaleChannels InitializeDefault error ", kInitializeDefaultHandler, [&] {
    for (int16_t index = 1; index <= MaxChannel; ++index) {
      Channel_& channel = channels_[index];
      if (channel.Assigned && !all) continue;
      int16_t number = index % 16;
      channel = {true,
                 "",
                 static_cast<int16_t>((index - 1) / 16),
                 static_cast<int16_t>(number == 0 ? 16 : number),
                 0,
                 0};
    }
  });
}

int16_t FinaleChannels::First(const std::string& thisDevice, int16_t thisPort) const {
  return Guarded("FinaleChannels First error ", kFirstHandler, [&]() -> int16_t {
    if (!thisDevice.empty())
      for (int16_t index = 1; index <= MaxChannel; ++index)
        if (channels_[index].DeviceName == thisDevice) return index;
    for (int16_t index = 1; index <= MaxChannel; ++index)
      if (channels_[index].Port == thisPort) return index;
    return 1;
  });
}

} // namespace ostin
