#include "model/arithmetic_defaults.h"

#include <array>
#include <string>

#include "host/records.h"
#include "model/arithmetic_numbers.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kDefaultTempoHandler = Code(0x800406F5);
constexpr int32_t kDefaultWedgeSpreadHandler = Code(0x800406F6);
constexpr int32_t kDefaultEnclosureLineWidthHandler = Code(0x800406F7);
constexpr int32_t kDefaultClefChangeHandler = Code(0x800406F9);
constexpr int32_t kDefaultEndingTextOffsetsHandler = Code(0x800406FA);
constexpr int32_t kTimeSignatureAbbreviationsHandler = Code(0x800406FB);
constexpr int32_t kDefaultYPositionHandler = Code(0x800406FC);

constexpr int16_t kPreferences = -2;
constexpr int16_t kWedgeSpreadRow = 11;

// Default Y positions by direction type: the placement tested, the value for it and the
// value for every other placement. An empty name stands for no element; Type, when given,
// must equal the element's type attribute.
struct YPositionRow {
  std::string_view Name;
  std::string_view Type;
  std::string_view Placement;
  int16_t Then;
  int16_t Otherwise;
};

constexpr std::array<YPositionRow, 15> kYPositions{{
    {"", "", "below", -180, 36},
    {"words", "", "above", 36, -180},
    {"rehearsal", "", "above", 36, -180},
    {"dynamics", "", "above", 36, -180},
    {"metronome", "", "above", 36, -180},
    {"pedal", "", "above", 36, -180},
    {"directive", "", "below", -150, 60},
    {"coda", "", "below", -150, 60},
    {"segno", "", "below", -150, 60},
    {"eyeglasses", "", "below", -150, 60},
    {"wedge", "", "above", 36, -180},
    {"dashes", "", "above", 36, -180},
    {"wavy-line", "", "below", -180, 36},
    {"trill-mark", "", "below", -180, 36},
    {"octave-shift", "up", "above", 36, -180},
}};

// Octave shifts of any other type, and every other element.
constexpr YPositionRow kOctaveShiftDown{"octave-shift", "", "below", -180, 36};
constexpr YPositionRow kOtherDirection{"", "", "above", 36, -180};

const YPositionRow& YPositionRowOf(const xml::XmlNode& element) {
  const std::string name = element ? element.nodeName() : std::string();
  const std::string type = element ? element.getAttribute("type") : std::string();
  for (const YPositionRow& row : kYPositions)
    if (row.Name == name && (row.Type.empty() || row.Type == type)) return row;
  return name == kOctaveShiftDown.Name ? kOctaveShiftDown : kOtherDirection;
}

} // namespace

int16_t DefaultTempo() {
  return Guarded("DefaultTempo error ", kDefaultTempoHandler, [] {
    Settings13 metronome;
    if (!metronome.Load(kPreferences, 0)) return int16_t{0};
    Settings39 speed;
    if (!speed.Load(kPreferences, 0)) return int16_t{0};
    return static_cast<int16_t>(
        RoundHalfEven(metronome.MetronomeBeat / 1024.0 * speed.MetronomeSpeed));
  });
}

int16_t DefaultWedgeSpread() {
  return Guarded("DefaultWedgeSpread error ", kDefaultWedgeSpreadHandler, [] {
    FieldInfo info;
    return info.Load(kWedgeSpreadRow, 0) ? info.Field1 : int16_t{0};
  });
}

// The document's single preference record of a type; its absence raises the type's number.
template <class Record> Record DocumentPreferences() {
  Record record;
  record.MustLoad(kPreferences, 0);
  return record;
}

int16_t DefaultEnclosureLineWidth() {
  return Guarded("DefaultEnclosureLineWidth error ", kDefaultEnclosureLineWidthHandler, [] {
    const Settings27 enclosure = DocumentPreferences<Settings27>();
    return enclosure.EnclosureWidth;
  });
}

void DefaultClefChange(int16_t& percent, int16_t& offset) {
  Guarded("DefaultClefChange error ", kDefaultClefChangeHandler, [&] {
    const Settings13 clefs = DocumentPreferences<Settings13>();
    percent = clefs.ClefPercent;
    offset = clefs.ClefOffset;
  });
}

void DefaultEndingTextOffsets(int16_t& x, int16_t& y) {
  Guarded("DefaultEndingTextOffsets error ", kDefaultEndingTextOffsetsHandler, [&] {
    const Settings72 endings = DocumentPreferences<Settings72>();
    x = endings.Textpos;
    y = endings.Textline;
  });
}

void TimeSignatureAbbreviations(bool& common, bool& cut) {
  Guarded("TimeSignatureAbbreviations error ", kTimeSignatureAbbreviationsHandler, [&] {
    const Settings19 times = DocumentPreferences<Settings19>();
    common = times.AbbrCommon == 1;
    cut = times.AbbrCut == 1;
  });
}

int16_t DefaultYPosition(const xml::XmlNode& element, std::string_view placement) {
  return Guarded("DefaultYPosition error ", kDefaultYPositionHandler, [&] {
    const YPositionRow& row = YPositionRowOf(element);
    return placement == row.Placement ? row.Then : row.Otherwise;
  });
}

} // namespace ostin
