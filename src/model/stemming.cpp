#include "model/stemming.h"

#include <algorithm>
#include <array>

#include "host/bridge.h"
#include "host/frames/frame_bits.h"
#include "model/arithmetic_pitch.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kClefNotFound = Code(0x80040525);
constexpr int32_t kEntryStemWithoutTonic = Code(0x80040526);
constexpr int32_t kDefaultStemWithoutTonic = Code(0x80040527);
constexpr int32_t kConvertPlacementHandler = Code(0x8004070F);
constexpr int32_t kForFinaleHandler = Code(0x80040710);
constexpr int32_t kForXmlHandler = Code(0x80040711);
constexpr int32_t kDefaultStemHandler = Code(0x80040712);
constexpr int32_t kGetEntryStemHandler = Code(0x80040713);
constexpr int32_t kSingleEntryStemHandler = Code(0x80040714);

constexpr int16_t kQuarter = 1024;
constexpr int16_t kWhole = 4096;

// The pitch on the middle line of a five-line staff, by clef number.
struct MiddleLine {
  std::string_view Step;
  int16_t Octave;
};
constexpr std::array<MiddleLine, 15> kMiddleLines{{
    {"B", 4}, // 0
    {"C", 4}, // 1
    {"A", 3}, // 2
    {"D", 3}, // 3
    {"B", 4}, // 4
    {"B", 3}, // 5
    {"D", 2}, // 6
    {"F", 3}, // 7
    {"D", 5}, // 8
    {"F", 3}, // 9
    {"E", 4}, // 10
    {"G", 4}, // 11
    {"B", 4}, // 12
    {"B", 5}, // 13
    {"D", 4}, // 14
}};

const MiddleLine& MiddleLineOf(int16_t clef) {
  return clef >= 0 && clef < static_cast<int16_t>(kMiddleLines.size()) ? kMiddleLines[clef]
                                                                       : kMiddleLines[0];
}

// Articulation sides by placement; an empty stem matches any stem.
struct PlacementRow {
  int32_t Placement;
  std::string_view Stem;
  std::string_view Side;
  std::string_view Reversed;
};
constexpr std::array<PlacementRow, 6> kPlacements{{
    {2, "", "above", "below"},
    {3, "", "below", "above"},
    {1, "up", "above", "below"},
    {1, "down", "below", "above"},
    {0, "up", "below", "above"},
    {0, "down", "above", "below"},
}};

std::string UpWhen(bool up) {
  return up ? "up" : "down";
}

// The direction of a fixed or frozen stem.
std::string FixedDirection(int32_t ef) {
  return UpWhen(ef & kEfStemUp);
}

// The highest step above and the lowest below the middle line among notes seen so far.
struct Extremes {
  int16_t Highest = 0;
  int16_t Lowest = 0;
  void Add(int16_t d) {
    Highest = std::max(Highest, d);
    Lowest = std::min(Lowest, d);
  }
  std::string Direction() const { return UpWhen(-Lowest > Highest); }
};

// The staff's index in the part: FindStaff gives 0 for a part of one staff, which is staff 1.
int16_t InPart(const XmlPart& part, int16_t staff) {
  return staff >= 1 && staff <= part.Staves() ? staff : int16_t{1};
}

// Step and octave of a note as it stands on the staff.
void PitchOfNote(Tgf& tgf, int16_t entryIndex, int16_t noteIndex, const Note& note,
                 const XmlPart& part, int16_t staff, std::string& step, int16_t& octave) {
  if (!part.PercussionStaff) {
    const int16_t tcd = part.TransposeChromatic
                            ? static_cast<int16_t>(note.Tcd + part.TransposeChromaticInterval)
                            : static_cast<int16_t>(note.Tcd);
    PitchAndOctave(part.Tonic, part.Octave, tcd, step, octave);
    return;
  }
  const int16_t midi = TgfNoteToMidi(tgf.Tgf, entryIndex, noteIndex, 0);
  const XmlPercussion* found = part.Percussion(std::to_string(midi + 1));
  if (found != nullptr && found->Active) {
    const int16_t index = InPart(part, staff);
    PitchAndOctave(part.StaffStepPitch.at(index), part.StaffStepOctave.at(index), found->StaffStep,
                   step, octave);
  } else {
    PitchAndOctave("C", 4, note.Tcd, step, octave);
  }
}

void AddNotes(Tgf& tgf, Entry& entry, int16_t entryIndex, const XmlPart& part, int16_t staff,
              int16_t clef, Extremes& extremes) {
  for (int16_t i = 1; i <= entry.NumNotes; ++i) {
    const Note* note = entry.Notes(i);
    if (note == nullptr) break;
    std::string step;
    int16_t octave = 0;
    PitchOfNote(tgf, entryIndex, i, *note, part, staff, step, octave);
    extremes.Add(Stemming::ForXml(step, octave, clef));
  }
}

// The clef of a frame holder in force at a position: the index of the last clef change
// reached, 0 when none is.
int16_t ClefIndexAt(Gfhold& holder, int32_t elldur) {
  if (holder.ClefMax() == 1) return 1;
  for (int16_t i = holder.ClefMax(); i >= 1; --i)
    if (elldur >= static_cast<int32_t>(holder.ClefEdus(i))) return i;
  return 0;
}

// The clef in force at an entry of the frame.
int16_t ClefOfEntry(const Tgf& tgf, const Entry& entry, Gfhold& holder, const XmlPart& part,
                    int16_t staff) {
  if (!part.ClefChange) return part.Clefs(InPart(part, staff));
  const int16_t index = ClefIndexAt(holder, entry.Elldur);
  if (index == 0)
    RaiseLogged("Could not find clef while computing beam stems for inst " +
                    std::to_string(tgf.Inst) + ", measure " + std::to_string(tgf.Meas),
                kClefNotFound);
  return holder.Clefs(index);
}

// Everything the cases of an entry's direction look at.
struct EntryState {
  int32_t Ef;
  int16_t Dura;
  std::string_view LayerStem;
  std::string_view LastBeam;
};

bool Has(const EntryState& s, int32_t bit) {
  return (s.Ef & bit) != 0;
}

// The direction written into the stem bits of an entry.
std::string WrittenDirection(const EntryState& s) {
  return Has(s, kEfStemUp) ? UpWhen(!Has(s, kEfStemDownWithUpBit))
                           : UpWhen(Has(s, kEfStemUpWithoutUpBit));
}

// The layer's direction, turned by the stem bits of the entry.
std::string LayerDirection(const EntryState& s) {
  if (s.LayerStem == "down") return UpWhen(Has(s, kEfStemUpWithoutUpBit));
  if (s.LayerStem == "up") return UpWhen(!Has(s, kEfStemDownWithUpBit));
  return std::string(s.LayerStem);
}

enum class StemFrom { Written, Layer, Stays, LastBeam, Single };
enum class BeamFrom { Stays, False, True, FalseForGrace };

// The cases of a stemmed entry; the first that applies decides.
struct StemCase {
  bool (*Applies)(const EntryState&);
  StemFrom Stem;
  BeamFrom Beam;
};
constexpr std::array<StemCase, 6> kStemCases{{
    {[](const EntryState& s) { return Has(s, kEfFrozenStem); }, StemFrom::Written, BeamFrom::Stays},
    {[](const EntryState& s) { return !s.LayerStem.empty() && !Has(s, kEfCrossStaff); },
     StemFrom::Layer, BeamFrom::False},
    {[](const EntryState& s) { return Has(s, kEfGrace | kEfLaunchesVoiceTwo | kEfVoiceTwo); },
     StemFrom::Written, BeamFrom::FalseForGrace},
    {[](const EntryState& s) { return Has(s, kEfNewBeam) && s.Dura < kQuarter; }, StemFrom::Stays,
     BeamFrom::True},
    {[](const EntryState& s) { return !s.LastBeam.empty() && !Has(s, kEfCrossStaff); },
     StemFrom::LastBeam, BeamFrom::False},
    {[](const EntryState& s) { return !s.LastBeam.empty() || s.Dura >= kQuarter; },
     StemFrom::Single, BeamFrom::False},
}};

// Stems that the user has fixed outright: the bit and the MusicXML stem it gives.
struct FixedStem {
  int32_t Bit;
  std::string_view XmlStem;
};
constexpr std::array<FixedStem, 2> kFixedStems{{
    {kEfDoubleStem, "double"},
    {kEfSplitStem, ""},
}};

} // namespace

std::string Stemming::ConvertPlacement(int32_t thisPlacement, bool reversed,
                                       std::string_view thisStem) {
  return Guarded("Stemming ConvertPlacement error ", kConvertPlacementHandler, [&] {
    for (const PlacementRow& row : kPlacements)
      if (row.Placement == thisPlacement && (row.Stem.empty() || row.Stem == thisStem))
        return std::string(reversed ? row.Reversed : row.Side);
    return std::string();
  });
}

int16_t Stemming::ForXml(std::string_view pitchStep, int16_t octave, int16_t finaleClef) {
  return Guarded("Stemming ForXml error ", kForXmlHandler, [&] {
    const MiddleLine& line = MiddleLineOf(finaleClef);
    return static_cast<int16_t>((octave - line.Octave) * 7 +
                                (StepXmlToFinale(pitchStep) - StepXmlToFinale(line.Step)));
  });
}

int16_t Stemming::ForFinale(int16_t tcd, int16_t finaleClef, const XmlPart& thisPart) {
  return Guarded("Stemming ForFinale error ", kForFinaleHandler, [&] {
    std::string step;
    int16_t octave = 0;
    PitchAndOctave(thisPart.Tonic, thisPart.Octave, tcd, step, octave);
    return ForXml(step, octave, finaleClef);
  });
}

std::string Stemming::SingleEntryStem(Tgf& thisTgf, Entry& entry, int16_t entryIndex,
                                      const XmlPart& thisPart, int16_t thisStaff, int16_t clef) {
  return Guarded("Stemming SingleEntryStem error ", kSingleEntryStemHandler, [&] {
    Extremes extremes;
    AddNotes(thisTgf, entry, entryIndex, thisPart, thisStaff, clef, extremes);
    return extremes.Direction();
  });
}

std::string Stemming::DefaultStem(Tgf& thisTgf, int16_t entryIndex, Gfhold& thisGfhold,
                                  const XmlPart& thisPart, int16_t thisStaff, bool freezeOK,
                                  int16_t& howManyEntries) const {
  return Guarded("Stemming DefaultStem error ", kDefaultStemHandler, [&] {
    if (thisPart.Tonic.empty())
      throw Failure(kDefaultStemWithoutTonic, std::string(kPlugInSource),
                    "Cannot determine default stem direction without tonic");
    howManyEntries = 0;
    Entry* first = thisTgf.Entries(entryIndex);
    if (first == nullptr) return Extremes().Direction();
    int16_t clef = ClefOfEntry(thisTgf, *first, thisGfhold, thisPart, thisStaff);
    int16_t clefIndex = thisPart.ClefChange ? ClefIndexAt(thisGfhold, first->Elldur) : 0;
    const int32_t group = first->Ef & (kEfVoiceTwo | kEfGrace);
    Extremes extremes;
    std::string frozen;
    for (int16_t i = entryIndex; i <= thisTgf.NumEntries; ++i) {
      Entry& entry = *thisTgf.Entries(i);
      if (thisPart.ClefChange && i > entryIndex && clefIndex < thisGfhold.ClefMax()) {
        clefIndex = ClefIndexAt(thisGfhold, entry.Elldur);
        clef = thisGfhold.Clefs(clefIndex);
      }
      const int32_t ef = entry.Ef;
      if ((ef & (kEfVoiceTwo | kEfGrace)) != group) continue;
      if (i > entryIndex && (entry.Dura >= kQuarter || (ef & kEfNewBeam))) break;
      if (!(ef & kEfNote) || (ef & kEfGrace)) continue;
      if (freezeOK && (ef & kEfFrozenStem)) {
        if (frozen.empty()) frozen = FixedDirection(ef);
      } else {
        AddNotes(thisTgf, entry, i, thisPart, thisStaff, clef, extremes);
      }
      ++howManyEntries;
    }
    return frozen.empty() ? extremes.Direction() : frozen;
  });
}

void Stemming::GetEntryStem(Tgf& thisTgf, int16_t entryIndex, Gfhold& thisGfhold,
                            const XmlPart& thisPart, int16_t thisStaff, std::string_view layerStem,
                            std::string_view lastBeam, std::string& xmlStem,
                            std::string& finaleStem, bool& beamStart) {
  Guarded("Stemming GetEntryStem error ", kGetEntryStemHandler, [&] {
    xmlStem.clear();
    finaleStem.clear();
    beamStart = false;
    if (thisPart.Tonic.empty())
      RaiseLogged("Cannot determine stem direction without tonic for inst " +
                      std::to_string(thisTgf.Inst) + ", measure " + std::to_string(thisTgf.Meas),
                  kEntryStemWithoutTonic);
    Entry* found = thisTgf.Entries(entryIndex);
    if (found == nullptr || !(found->Ef & kEfNote)) return;
    Entry& entry = *found;
    const EntryState state{entry.Ef, entry.Dura, layerStem, lastBeam};
    auto single = [&] {
      const int16_t clef = ClefOfEntry(thisTgf, entry, thisGfhold, thisPart, thisStaff);
      return SingleEntryStem(thisTgf, entry, entryIndex, thisPart, thisStaff, clef);
    };

    if (state.Dura >= kWhole) {
      finaleStem = Has(state, kEfFrozenStem) ? FixedDirection(state.Ef) : single();
    } else {
      if (state.Dura < kQuarter) {
        int16_t howMany = 0;
        finaleStem =
            DefaultStem(thisTgf, entryIndex, thisGfhold, thisPart, thisStaff, true, howMany);
        beamStart = howMany > 1;
      }
      const auto fixed = std::find_if(kFixedStems.begin(), kFixedStems.end(),
                                      [&](const FixedStem& f) { return Has(state, f.Bit); });
      if (fixed != kFixedStems.end()) {
        finaleStem = FixedDirection(state.Ef);
        xmlStem = fixed->XmlStem;
        beamStart = false;
      } else {
        if (UseMetrics) {
          EntryMetrics.Load(thisTgf.Inst, thisTgf.Meas, entry.Entnum, 0);
          xmlStem = EntryMetrics.StemDirection();
          if (!xmlStem.empty()) finaleStem = xmlStem;
        }
        const auto stemCase = std::find_if(kStemCases.begin(), kStemCases.end(),
                                           [&](const StemCase& c) { return c.Applies(state); });
        if (stemCase != kStemCases.end()) {
          switch (stemCase->Stem) {
          case StemFrom::Written:
            finaleStem = WrittenDirection(state);
            break;
          case StemFrom::Layer:
            finaleStem = LayerDirection(state);
            break;
          case StemFrom::Stays:
            break;
          case StemFrom::LastBeam:
            finaleStem = lastBeam;
            break;
          case StemFrom::Single:
            finaleStem = single();
            break;
          }
          switch (stemCase->Beam) {
          case BeamFrom::Stays:
            break;
          case BeamFrom::False:
            beamStart = false;
            break;
          case BeamFrom::True:
            beamStart = true;
            break;
          case BeamFrom::FalseForGrace:
            if (Has(state, kEfGrace)) beamStart = false;
            break;
          }
        }
      }
      if (!finaleStem.empty() && xmlStem.empty()) xmlStem = finaleStem;
    }
    if (finaleStem.empty()) finaleStem = xmlStem;
  });
}

} // namespace ostin
