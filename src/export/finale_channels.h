#pragma once
// The host's MIDI channel map: 64 channels over up to eight output devices, read from the
// host's MIDI settings file.
#include <array>
#include <cstdint>
#include <string>

namespace ostin {

class FinaleChannels {
public:
  static constexpr int16_t MaxChannel = 64;

  struct Channel_ {
    bool Assigned = false;
    std::string DeviceName;
    int16_t Port = 0;
    int16_t Channel = 0;
    int16_t Bank = 0;
    int16_t Program = 0;
  };

  bool MultiDevice = false;
  int16_t LastChannelProgrammed = 0;

  // Reads the devices of section "MMEDRVR" of "FinMidi.ini" beside the host's ini file.
  void Initialize();
  // Assigns every channel not yet assigned to an unnamed device by its index.
  void InitializeDefault(bool all);
  // The first channel index of a device: by name when given and found, else by port, else 1.
  int16_t First(const std::string& thisDevice, int16_t thisPort) const;

  bool Assigned(int16_t index) const { return At("Assigned", index).Assigned; }
  const std::string& DeviceName(int16_t index) const { return At("DeviceName", index).DeviceName; }
  int16_t Port(int16_t index) const { return At("Port", index).Port; }
  int16_t Channel(int16_t index) const { return At("Channel", index).Channel; }
  int16_t Bank(int16_t index) const { return At("Bank", index).Bank; }
  int16_t Program(int16_t index) const { return At("Program", index).Program; }

private:
  const Channel_& At(const char* property, int16_t index) const;
  std::array<Channel_, MaxChannel + 1> channels_{}; // index 0 unused
};

} // namespace ostin
