#include "model/arithmetic_pitch.h"

#include <array>
#include <cctype>
#include <limits>
#include <optional>
#include <stdexcept>

#include "model/arithmetic_numbers.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kMidiNoteHandler = Code(0x800406EE);
constexpr int32_t kClefValueHandler = Code(0x800406FD);

constexpr std::string_view kStepLetters = "CDEFGAB";
constexpr int16_t kStepsPerOctave = 7;
constexpr int16_t kSemitonesPerOctave = 12;

// Semitones above C of each step, C to B.
constexpr std::array<int16_t, 7> kStepSemitones{0, 2, 4, 5, 7, 9, 11};

// Semitones of a diatonic remainder from -6 to 6.
constexpr std::array<int16_t, 13> kDiatonicSemitones{-11, -9, -7, -5, -4, -2, 0, 2, 4, 5, 7, 9, 11};

// Scale degree and black key of each MIDI key above its C.
constexpr std::array<int16_t, 12> kKeyDegrees{0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6};
constexpr std::array<bool, 12> kBlackKeys{false, true,  false, true,  false, false,
                                          true,  false, true,  false, true,  false};

constexpr int16_t kMiddleCOctave = 5;

// The children that give octave, step and alter of each pitched element.
struct PitchChildren {
  std::string_view Tag;
  const char* Octave;
  const char* Step;
  const char* Alter; // nullptr: the element has none
};

constexpr std::array<PitchChildren, 3> kPitchChildren{{
    {"pitch", "octave", "step", "alter"},
    {"staff-tuning", "tuning-octave", "tuning-step", "tuning-alter"},
    {"unpitched", "display-octave", "display-step", nullptr},
}};

// Clef numbers by sign, line, octave change and host year; the first matching row wins.
constexpr int16_t kAny = std::numeric_limits<int16_t>::min();
constexpr int32_t kNoYearLimit = std::numeric_limits<int32_t>::max();

struct ClefRule {
  std::string_view Sign;
  int16_t Line;
  int16_t OctaveChange;
  int32_t FromYear;
  int32_t BeforeYear;
  int16_t Clef;
};

constexpr std::array<ClefRule, 21> kClefRules{{
    {"g", 1, kAny, 2001, kNoYearLimit, 8},
    {"g", kAny, -1, 0, kNoYearLimit, 5},
    {"g", kAny, 1, 2001, kNoYearLimit, 13},
    {"g", kAny, kAny, 0, kNoYearLimit, 0},
    {"f", 3, kAny, 0, kNoYearLimit, 7},
    {"f", kAny, -1, 0, kNoYearLimit, 6},
    {"f", kAny, 1, 2001, kNoYearLimit, 14},
    {"f", kAny, kAny, 0, kNoYearLimit, 3},
    {"c", 4, kAny, 0, 2001, 2},
    {"c", kAny, kAny, 0, 2001, 1},
    {"c", 1, kAny, 2001, kNoYearLimit, 11},
    {"c", 2, kAny, 2001, kNoYearLimit, 10},
    {"c", 4, kAny, 2001, kNoYearLimit, 2},
    {"c", 5, kAny, 2001, kNoYearLimit, 9},
    {"c", kAny, kAny, 2001, kNoYearLimit, 1},
    {"percussion", kAny, kAny, 0, 2001, 4},
    {"percussion", kAny, kAny, 2001, kNoYearLimit, 12},
    {"tab", kAny, kAny, 0, 2003, 5},
    {"tab", kAny, kAny, 2003, kNoYearLimit, 16},
    {"none", kAny, kAny, 2003, kNoYearLimit, 15},
    {"none", kAny, kAny, 0, 2003, 0},
}};

bool Matches(const ClefRule& rule, std::string_view sign, int16_t line,
             std::optional<int16_t> octaveChange, int32_t year) {
  return rule.Sign == sign && (rule.Line == kAny || rule.Line == line) &&
         (rule.OctaveChange == kAny || (octaveChange && *octaveChange == rule.OctaveChange)) &&
         year >= rule.FromYear && year < rule.BeforeYear;
}

std::string Lower(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// A child's value as a 16-bit integer when it is there and numeric.
std::optional<int16_t> NumericChild(const xml::XmlNode& element, const std::string& name) {
  std::optional<std::string> text = ChildText(element, name);
  if (!text || !NumericValue(*text)) return std::nullopt;
  return Integer16(*text);
}

} // namespace

int16_t StepXmlToFinale(std::string_view step) {
  if (step.size() != 1) return -1;
  const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(step.front())));
  const size_t number = kStepLetters.find(letter);
  return number == std::string_view::npos ? int16_t{-1} : static_cast<int16_t>(number);
}

std::string StepFinaleToXml(int number) {
  if (number < 0 || number >= kStepsPerOctave) return {};
  return std::string(1, kStepLetters[static_cast<size_t>(number)]);
}

bool PitchAndOctave(std::string_view tonic, int16_t tonicOctave, int16_t tcd, std::string& step,
                    int16_t& octave) {
  int s = StepXmlToFinale(tonic);
  if (s == -1) return false;
  int o = tonicOctave;
  int d = tcd;
  while (d > 6) {
    ++o;
    d -= kStepsPerOctave;
  }
  while (d < -6) {
    --o;
    d += kStepsPerOctave;
  }
  s += d;
  while (s >= kStepsPerOctave) {
    ++o;
    s -= kStepsPerOctave;
  }
  while (s < 0) {
    --o;
    s += kStepsPerOctave;
  }
  step = StepFinaleToXml(s);
  octave = static_cast<int16_t>(o);
  return true;
}

int16_t WholeSteps(std::string_view step1, int16_t octave1, std::string_view step2,
                   int16_t octave2) {
  const int16_t number1 = StepXmlToFinale(step1);
  const int16_t number2 = StepXmlToFinale(step2);
  if (number1 == -1 || number2 == -1) return 0;
  return static_cast<int16_t>(number2 - number1 + kStepsPerOctave * (octave2 - octave1));
}

int16_t ChromaticTranspositionSteps(int16_t diatonic, int16_t alteration) {
  int remainder = diatonic;
  int octaves = 0;
  while (remainder >= kStepsPerOctave) {
    remainder -= kStepsPerOctave;
    ++octaves;
  }
  while (remainder < -6) {
    remainder += kStepsPerOctave;
    --octaves;
  }
  return static_cast<int16_t>(kDiatonicSemitones[static_cast<size_t>(remainder + 6)] + alteration +
                              kSemitonesPerOctave * octaves);
}

void FromMidi(uint8_t key, int16_t& tcd, int16_t& alteration) {
  const size_t inOctave = key % kSemitonesPerOctave;
  alteration = kBlackKeys[inOctave] ? 1 : 0;
  tcd = static_cast<int16_t>((key / kSemitonesPerOctave - kMiddleCOctave) * kStepsPerOctave +
                             kKeyDegrees[inOctave]);
}

uint8_t MidiNote(const xml::XmlNode& element) {
  return Guarded("MidiNote error ", kMidiNoteHandler, [&] {
    int octave = 0;
    int16_t semitones = 0;
    int alter = 0;
    const std::string tag = element.tagName();
    for (const PitchChildren& children : kPitchChildren) {
      if (children.Tag != tag) continue;
      octave = Integer16(element.selectSingleNode(children.Octave).text());
      const int16_t step = StepXmlToFinale(element.selectSingleNode(children.Step).text());
      semitones = step == -1 ? int16_t{0} : kStepSemitones[static_cast<size_t>(step)];
      if (children.Alter) {
        std::optional<std::string> alterText = ChildText(element, children.Alter);
        if (alterText) alter = Integer16(*alterText);
      }
    }
    const int key = (octave + 1) * kSemitonesPerOctave + semitones + alter;
    if (key < 0 || key > std::numeric_limits<uint8_t>::max()) throw std::overflow_error("Overflow");
    return static_cast<uint8_t>(key);
  });
}

int16_t ClefValue(const xml::XmlNode& clefElement, int32_t finaleVersion) {
  return Guarded("ClefValue error ", kClefValueHandler, [&] {
    const std::string sign = Lower(clefElement.selectSingleNode("sign").text());
    const int16_t line = NumericChild(clefElement, "line").value_or(0);
    const std::optional<int16_t> octaveChange = NumericChild(clefElement, "clef-octave-change");
    for (const ClefRule& rule : kClefRules)
      if (Matches(rule, sign, line, octaveChange, finaleVersion)) return rule.Clef;
    return int16_t{0};
  });
}

} // namespace ostin
