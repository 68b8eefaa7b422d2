#include "tools/score_generator.h"

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tools/score_builder.h"

namespace ostin::tools {

namespace {
// Keys and times the piece walks through, one step every so many measures.
constexpr KeySig kKeys[] = {{0, false},  {2, false}, {-3, false}, {4, false},
                            {-1, false}, {0, true},  {-5, false}, {3, true}};
constexpr TimeSig kTimes[] = {{4, kQuarter}, {3, kQuarter}, {2, Dotted(kQuarter)}, {2, kHalf}};
constexpr int kMeasuresPerKey = 16;
constexpr int kMeasuresPerTime = 24;

// Note values to draw from, the common ones more often.
constexpr int16_t kUpperValues[] = {kWhole,   Dotted(kHalf), kHalf,     Dotted(kQuarter), kQuarter,
                                    kQuarter, kQuarter,      kEighth,   kEighth,          kEighth,
                                    kEighth,  kSixteenth,    kSixteenth};
constexpr int16_t kLowerValues[] = {kWhole, kHalf, kHalf, Dotted(kHalf), kQuarter, kQuarter};

struct StaffLook {
  int16_t Clef;
  int16_t Middle; // diatonic index of the staff's middle line
};
constexpr StaffLook kLooks[] = {
    {kTrebleClef, 34}, {kTrebleClef, 34}, {kAltoClef, 28}, {kBassClef, 22}};
constexpr int kRange = 5; // steps the melody may stray from the middle
constexpr int kStavesPerGroup = 4;
constexpr int kGroupBracket = 2;
// The fixed day of the last change written into the header, so that output stays the same.
constexpr int16_t kHeaderYear = 2026, kHeaderMonth = 1, kHeaderDay = 15;

KeySig KeyOfMeasure(int measure) {
  return kKeys[(measure - 1) / kMeasuresPerKey % std::size(kKeys)];
}
TimeSig TimeOfMeasure(int measure) {
  return kTimes[(measure - 1) / kMeasuresPerTime % std::size(kTimes)];
}

class Generator {
public:
  explicit Generator(const ScoreSize& size)
      : size_(size), rng_(size.Seed), score_(ScoreBuilder::FromDefaultDocument()) {}

  sim::Document Run() {
    score_.SetHeader(
        {"Generated score " + std::to_string(size_.Staves) + " x " + std::to_string(size_.Measures),
         "Ostin Light", "", kHeaderYear, kHeaderMonth, kHeaderDay});
    AddStaves();
    AddMeasures();
    for (int16_t measure = 1; measure <= size_.Measures; ++measure)
      for (int16_t staff = 1; staff <= size_.Staves; ++staff) {
        FillLayer(staff, measure, 0);
        if (staff % 3 == 1) FillLayer(staff, measure, 1);
      }
    return score_.Build();
  }

private:
  // A draw from 0 to n - 1 that does not depend on the library's distributions.
  int Roll(int n) { return static_cast<int>(rng_() % static_cast<uint32_t>(n)); }

  void AddStaves() {
    for (int16_t staff = 1; staff <= size_.Staves; ++staff) {
      const StaffLook& look = kLooks[(staff - 1) % std::size(kLooks)];
      std::string number = std::to_string(staff);
      int16_t transposition = staff % 8 == 2 ? kTransposeBFlat : 0;
      auto program = static_cast<int16_t>(staff * 7 % 128 + 1);
      score_.AddStaff({"Staff " + number, "St. " + number, look.Clef, transposition,
                       Sound{"Instrument " + number, program, 0}});
    }
    for (int16_t first = 1; first <= size_.Staves; first += kStavesPerGroup) {
      auto last = static_cast<int16_t>(std::min(first + kStavesPerGroup - 1, int{size_.Staves}));
      score_.AddGroup({first, last, kGroupBracket,
                       "Group " + std::to_string((first - 1) / kStavesPerGroup + 1), ""});
    }
  }

  void AddMeasures() {
    for (int measure = 1; measure <= size_.Measures; ++measure) {
      bool keyChangesNext =
          measure < size_.Measures && !(KeyOfMeasure(measure + 1) == KeyOfMeasure(measure));
      score_.AddMeasure({KeyOfMeasure(measure),
                         TimeOfMeasure(measure),
                         {},
                         keyChangesNext ? kDoubleBarline : kNormalBarline});
    }
  }

  // A note value that fits in what is left of the measure.
  int16_t DrawValue(int32_t remaining, bool lower) {
    constexpr int kTries = 8;
    for (int tries = 0; tries < kTries; ++tries) {
      int16_t value = lower ? kLowerValues[Roll(std::size(kLowerValues))]
                            : kUpperValues[Roll(std::size(kUpperValues))];
      if (value <= remaining) return value;
    }
    return remaining >= kQuarter ? kQuarter : remaining >= kEighth ? kEighth : kSixteenth;
  }

  EntrySpec DrawNotes(int16_t value, int& melody, int middle, const KeySig& key) {
    melody = std::clamp(melody + Roll(5) - 2, middle - kRange, middle + kRange);
    EntrySpec entry{value, {}};
    int notes = Roll(4) == 0 ? 2 + Roll(2) : 1;
    for (int i = 0; i < notes; ++i)
      entry.Notes.push_back({ScalePitch(static_cast<int16_t>(melody - 2 * i), key), false, false});
    return entry;
  }

  // A second voice through the whole measure, launched by its first entry.
  void AddVoiceTwo(std::vector<EntrySpec>& entries, int16_t measure, int middle) {
    KeySig key = KeyOfMeasure(measure);
    int melody = middle;
    std::vector<EntrySpec> voice;
    for (int32_t remaining = TimeOfMeasure(measure).Duration(); remaining > 0;) {
      int16_t value = DrawValue(remaining, true);
      remaining -= value;
      voice.push_back(DrawNotes(value, melody, middle, key));
      voice.back().VoiceTwo = true;
    }
    entries.front().LaunchesVoiceTwo = true;
    entries.insert(entries.begin() + 1, voice.begin(), voice.end());
  }

  // The entry before this one in the layer, in this measure or at the end of the last one
  // when the key stays; nullptr when there is none to tie from.
  EntrySpec* TieSource(std::vector<EntrySpec>& entries, int16_t staff, int16_t measure,
                       int16_t layer) {
    if (!entries.empty()) return &entries.back();
    if (measure == 1 || !(KeyOfMeasure(measure) == KeyOfMeasure(measure - 1))) return nullptr;
    std::vector<EntrySpec>* before = score_.Layer(staff, static_cast<int16_t>(measure - 1), layer);
    if (!before) return nullptr;
    for (auto it = before->rbegin(); it != before->rend(); ++it)
      if (!it->VoiceTwo) return &*it;
    return nullptr;
  }

  void FillLayer(int16_t staff, int16_t measure, int16_t layer) {
    KeySig key = KeyOfMeasure(measure);
    int middle = kLooks[(staff - 1) % std::size(kLooks)].Middle - (layer == 1 ? 4 : 0);
    int melody = middle;
    std::vector<EntrySpec> entries;
    for (int32_t remaining = TimeOfMeasure(measure).Duration(); remaining > 0;) {
      int16_t value = DrawValue(remaining, layer == 1);
      remaining -= value;
      EntrySpec* source = TieSource(entries, staff, measure, layer);
      if (source && !source->Notes.empty() && Roll(8) == 0) {
        EntrySpec tied{value, source->Notes};
        for (size_t i = 0; i < tied.Notes.size(); ++i) {
          source->Notes[i].TieStart = true;
          tied.Notes[i].TieStart = false;
          tied.Notes[i].TieEnd = true;
        }
        entries.push_back(tied);
      } else if (Roll(10) == 0) {
        entries.push_back(Rest(value));
      } else {
        entries.push_back(DrawNotes(value, melody, middle, key));
      }
    }
    if (layer == 0 && staff % 3 == 2 && measure % 2 == 1) AddVoiceTwo(entries, measure, middle - 4);
    score_.SetLayer(staff, measure, layer, std::move(entries));
  }

  ScoreSize size_;
  std::mt19937 rng_;
  ScoreBuilder score_;
};
} // namespace

sim::Document GenerateScore(const ScoreSize& size) {
  if (size.Staves < 1 || size.Measures < 1)
    throw BuildError("a score needs at least one staff and one measure");
  // One frame per staff and measure, and one more on every third staff.
  int64_t frames = int64_t{size.Measures} * (size.Staves + (size.Staves + 2) / 3);
  if (frames > std::numeric_limits<int16_t>::max())
    throw BuildError(std::to_string(size.Staves) + " staves of " + std::to_string(size.Measures) +
                     " measures need " + std::to_string(frames) +
                     " frames: more frames than the host can number (32767)");
  return Generator(size).Run();
}

} // namespace ostin::tools
