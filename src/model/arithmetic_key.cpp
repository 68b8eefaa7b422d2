#include "model/arithmetic_key.h"

#include <array>
#include <optional>
#include <string>

#include "host/record_places.h"
#include "host/records.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kTranspositionValueHandler = Code(0x800406F1);
constexpr int32_t kKeyMatchHandler = Code(0x800406F2);
constexpr int32_t kCreateKeyNonLinearHandler = Code(0x800406F3);

constexpr int16_t kLargestChromatic = 11;

// Diatonic steps of the chromatic transpositions -11 to 11.
constexpr std::array<int16_t, 23> kDefaultDiatonic{-6, -6, -5, -5, -4, -4, -3, -2, -2, -1, -1, 0,
                                                   1,  1,  2,  2,  3,  3,  4,  4,  5,  6,  6};

// One row of the key's needs, for a chromatic value and the one twelve away from it. The
// key alteration turns to the exception value for the listed diatonic values; the steps move
// by the correction, and the adjusted alteration by a twelve, for the listed step values.
struct KeySigRow {
  int16_t KeyAlter;
  bool HasException;
  int16_t ExceptionAlter;
  std::array<int16_t, 2> ExceptionDiatonic;
  bool HasCorrection;
  std::array<int16_t, 2> CorrectedSteps;
  int16_t StepsCorrection;
  int16_t AlterAdjustment;
};

// Indexed by the chromatic value modulo 12: 0, then -11 and 1, -10 and 2, ... -1 and 11.
constexpr std::array<KeySigRow, 12> kKeySigRows{{
    {0, false, 0, {0, 0}, false, {0, 0}, 0, 0},
    {5, true, -7, {0, 0}, false, {0, 0}, 0, 0},
    {-2, false, 0, {0, 0}, true, {-2, 5}, 1, 12},
    {3, false, 0, {0, 0}, true, {-1, 6}, -1, -12},
    {-4, false, 0, {0, 0}, true, {-3, 4}, 1, 12},
    {1, false, 0, {0, 0}, true, {-2, 5}, -1, -12},
    {-6, true, 6, {-3, 4}, false, {0, 0}, 0, 0},
    {-1, false, 0, {0, 0}, true, {-5, 2}, 1, 12},
    {4, false, 0, {0, 0}, true, {-4, 3}, -1, -12},
    {-3, false, 0, {0, 0}, true, {-6, 1}, 1, 12},
    {2, false, 0, {0, 0}, true, {-5, 2}, -1, -12},
    {-5, true, 7, {0, 0}, false, {0, 0}, 0, 0},
}};

constexpr int16_t kSixBits = 63;
constexpr int16_t kStepsBits = 0xFC0;
constexpr int16_t kStepsShift = 64;

// Only a scale of twelve chromatic and seven diatonic steps has a MusicXML form.
constexpr int16_t kTwelveToneChromatic = 12;
constexpr int16_t kTwelveToneDiatonic = 7;
constexpr int kAccidentalSlots = 7;

bool Contains(const std::array<int16_t, 2>& values, int16_t value) {
  return values[0] == value || values[1] == value;
}

} // namespace

int16_t TransposeDefaultDiatonic(int16_t chromatic) {
  if (chromatic < -kLargestChromatic || chromatic > kLargestChromatic) return 0;
  return kDefaultDiatonic[static_cast<size_t>(chromatic + kLargestChromatic)];
}

void TransposeKeySig(int16_t chromatic, int16_t diatonic, int16_t octaveChange, int16_t& keyAlter,
                     int16_t& adjustedAlter, int16_t& steps) {
  steps = static_cast<int16_t>(-diatonic - 7 * octaveChange);
  if (chromatic < -kLargestChromatic || chromatic > kLargestChromatic) return;
  const KeySigRow& row = kKeySigRows[static_cast<size_t>((chromatic + 12) % 12)];
  keyAlter = row.HasException && Contains(row.ExceptionDiatonic, diatonic) ? row.ExceptionAlter
                                                                           : row.KeyAlter;
  adjustedAlter = keyAlter;
  if (row.HasCorrection && Contains(row.CorrectedSteps, steps)) {
    steps = static_cast<int16_t>(steps + row.StepsCorrection);
    adjustedAlter = static_cast<int16_t>(keyAlter + row.AlterAdjustment);
  }
}

int16_t TranspositionValue(const xml::XmlNode& transposeElement) {
  return Guarded("TranspositionValue error ", kTranspositionValueHandler, [&] {
    const int16_t chromatic = Integer16(transposeElement.selectSingleNode("chromatic").text());
    std::optional<std::string> diatonicText = ChildText(transposeElement, "diatonic");
    const int16_t diatonic =
        diatonicText ? Integer16(*diatonicText) : TransposeDefaultDiatonic(chromatic);
    std::optional<std::string> octaveText = ChildText(transposeElement, "octave-change");
    const int16_t octaveChange = octaveText ? Integer16(*octaveText) : int16_t{0};
    int16_t keyAlter = 0;
    int16_t adjustedAlter = 0;
    int16_t steps = 0;
    TransposeKeySig(chromatic, diatonic, octaveChange, keyAlter, adjustedAlter, steps);
    return static_cast<int16_t>((keyAlter & kSixBits) | ((steps * kStepsShift) & kStepsBits));
  });
}

bool KeyMatch(const xml::XmlNode& key1, const xml::XmlNode& key2) {
  return Guarded("KeyMatch error ", kKeyMatchHandler, [&] {
    if (!key1 || !key2) return false;
    if (key1.nodeName() != "key" || key2.nodeName() != "key") return false;
    xml::XmlNodeList children1 = key1.childNodes();
    xml::XmlNodeList children2 = key2.childNodes();
    if (children1.length() != children2.length()) return false;
    for (int32_t i = 0; i < children1.length(); ++i) {
      const xml::XmlNode child1 = children1.item(i);
      const xml::XmlNode child2 = children2.item(i);
      if (child1.nodeName() != child2.nodeName() || child1.text() != child2.text()) return false;
    }
    return true;
  });
}

xml::XmlNode CreateKeyNonLinear(int16_t keyNumber, const xml::XmlDocument& document) {
  return Guarded("CreateKeyNonLinear error ", kCreateKeyNonLinearHandler, [&] {
    KeyFormat format;
    if (format.Load(keyNumber, 0) &&
        (format.Chromatic != kTwelveToneChromatic || format.Diatonic != kTwelveToneDiatonic))
      return xml::XmlNode();
    // A key number without its accidentals names no key at all.
    AccidentalAmount amounts;
    if (!amounts.Load(keyNumber, 0))
      RaiseLogged("CreateKeyNonLinear: key " + std::to_string(keyNumber) + " has no accidentals",
                  kAccidentalAmountPlaces.Load);
    AccidentalOrder order;
    if (!order.Load(keyNumber, 0))
      RaiseLogged("CreateKeyNonLinear: key " + std::to_string(keyNumber) +
                      " has no order of accidentals",
                  kAccidentalOrderPlaces.Load);
    xml::XmlNode key = document.createElement("key");
    bool paired = false;
    for (int i = 1; i <= kAccidentalSlots; ++i) {
      const int16_t amount = amounts.Units(i);
      if (amount == 0) break;
      key.appendChild(document.createElement("key-step")).text(StepFinaleToXml(order.Units(i)));
      key.appendChild(document.createElement("key-alter")).text(std::to_string(amount));
      paired = true;
    }
    return paired ? key : xml::XmlNode();
  });
}

} // namespace ostin
