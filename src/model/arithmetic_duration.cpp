#include "model/arithmetic_duration.h"

#include <array>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

#include "model/arithmetic_numbers.h"

namespace ostin {

namespace {

constexpr int32_t kGetActualDurationHandler = Code(0x800406EC);
constexpr int32_t kEdusPerBeatTypeHandler = Code(0x800406ED);

struct NoteType {
  std::string_view Name;
  int32_t Edus;
};

constexpr std::array<NoteType, 12> kNoteTypes{{{"long", 16384},
                                               {"breve", 8192},
                                               {"whole", 4096},
                                               {"half", 2048},
                                               {"quarter", 1024},
                                               {"eighth", 512},
                                               {"16th", 256},
                                               {"sixteenth", 256},
                                               {"32nd", 128},
                                               {"64th", 64},
                                               {"128th", 32},
                                               {"256th", 16}}};

constexpr int32_t kLargestBeatType = 4096;

// A product that must stay a 32-bit value, as the host's arithmetic does.
int32_t Checked32(int64_t value) {
  if (value < std::numeric_limits<int32_t>::min() || value > std::numeric_limits<int32_t>::max())
    throw std::overflow_error("Overflow");
  return static_cast<int32_t>(value);
}

// A count of a time-modification element, when the child is there and numeric.
std::optional<int32_t> TupletCount(const xml::XmlNode& timeModification, const std::string& name) {
  std::optional<std::string> text = ChildText(timeModification, name);
  if (!text) return std::nullopt;
  std::optional<double> value = NumericValue(*text);
  if (!value) return std::nullopt;
  return Checked32(RoundHalfEven(*value));
}

} // namespace

int32_t GetSymbolicDuration(std::string_view type, int dots) {
  int32_t added = 0;
  for (const NoteType& noteType : kNoteTypes)
    if (noteType.Name == type) added = noteType.Edus;
  int32_t total = added;
  for (int dot = 0; dot < dots; ++dot) {
    added /= 2;
    total += added;
  }
  return total;
}

int32_t GetActualDuration(int32_t duration, int32_t divisions,
                          const xml::XmlNode& timeModification) {
  return Guarded("GetActualDuration error ", kGetActualDurationHandler, [&] {
    if (divisions == 0)
      RaiseLogged("MusicXML divisions value not passed to GetActualDuration", kDivisionsMissing);
    if (timeModification) {
      std::optional<int32_t> actual = TupletCount(timeModification, "actual-notes");
      std::optional<int32_t> normal = TupletCount(timeModification, "normal-notes");
      if (actual && normal && *actual >= 1 && *normal >= 1)
        duration = Checked32(int64_t{*actual} * duration) / *normal;
    }
    return Checked32(int64_t{duration} * kEdusPerQuarter) / divisions;
  });
}

int32_t EdusPerBeatType(int32_t beatType) {
  return Guarded("EdusPerBeatType error ", kEdusPerBeatTypeHandler, [&] {
    for (int32_t power = 1; power <= kLargestBeatType; power *= 2)
      if (beatType == power) return kLargestBeatType / beatType;
    throw Failure(kUnknownBeatType, std::string(kPlugInSource),
                  "Unknown time signature beat type " + std::to_string(beatType));
  });
}

} // namespace ostin
