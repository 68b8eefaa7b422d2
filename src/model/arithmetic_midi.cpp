#include "model/arithmetic_midi.h"

#include "model/arithmetic_numbers.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kCreateExpressionPlaybackHandler = Code(0x800406F4);

constexpr int16_t kNoPlayback = 0x2000;
constexpr int16_t kTempoScaled = 0x1000;
constexpr int kByte = 0xFF;
constexpr int kByteSize = 256;
constexpr int kBankHalf = 128;

// The playback kinds, by the low byte of the expression's flag.
enum Playback : int { kTempo = 1, kDynamics = 2, kChannel = 5, kPatchChange = 192 };

// The host's 0 to 90 dynamics against MusicXML's percentage of forte.
constexpr double kDynamicsScale = 100.0 / 90.0;

xml::XmlNode SoundWithAttribute(const xml::XmlDocument& document, const std::string& name,
                                int32_t value) {
  xml::XmlNode sound = document.createElement("sound");
  sound.setAttribute(name, std::to_string(value));
  return sound;
}

} // namespace

void ConvertMidiPatchBank(int16_t patchAndPatchType, int16_t bankData, int32_t& program,
                          int32_t& bank) {
  const int patch = static_cast<uint16_t>(patchAndPatchType);
  const int data = static_cast<uint16_t>(bankData);
  program = (patch & kByte) + 1;
  bank = patch / kByteSize == 0 ? 0 : (data / kByteSize) * kBankHalf + (data & kByte) + 1;
}

xml::XmlNode CreateExpressionPlayback(int16_t flag, int16_t data1, int16_t data2,
                                      const xml::XmlDocument& document, std::string& id) {
  id.clear();
  return Guarded("CreateExpressionPlayback error ", kCreateExpressionPlaybackHandler, [&] {
    if (flag & kNoPlayback) return xml::XmlNode();
    switch (flag & kByte) {
    case kTempo: {
      const int32_t tempo =
          flag & kTempoScaled ? RoundHalfEven(data2 / 1024.0 * data1) : int32_t{data1};
      id = "tempo-" + std::to_string(tempo);
      return SoundWithAttribute(document, "tempo", tempo);
    }
    case kDynamics: {
      const int32_t dynamics = RoundHalfEven(data1 * kDynamicsScale);
      id = "dynamics-" + std::to_string(dynamics);
      return SoundWithAttribute(document, "dynamics", dynamics);
    }
    case kChannel: {
      const int32_t channel = data1 + 1;
      xml::XmlNode sound = document.createElement("sound");
      sound.appendChild(document.createElement("midi-instrument"))
          .appendChild(document.createElement("midi-channel"))
          .text(std::to_string(channel));
      id = "channel-" + std::to_string(channel);
      return sound;
    }
    case kPatchChange: {
      int32_t program = 0;
      int32_t bank = 0;
      ConvertMidiPatchBank(data1, data2, program, bank);
      if (program < 1 && bank < 1) return xml::XmlNode();
      xml::XmlNode sound = document.createElement("sound");
      xml::XmlNode instrument = sound.appendChild(document.createElement("midi-instrument"));
      if (bank > 0) {
        instrument.appendChild(document.createElement("midi-bank")).text(std::to_string(bank));
        id = "bank-" + std::to_string(bank);
      }
      if (program > 0) {
        instrument.appendChild(document.createElement("midi-program"))
            .text(std::to_string(program));
        id += "-patch-" + std::to_string(program);
      }
      return sound;
    }
    default:
      return xml::XmlNode();
    }
  });
}

} // namespace ostin
