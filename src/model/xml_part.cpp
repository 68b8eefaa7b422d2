// The running state of one MusicXML part: identity, time, key, transposition and staves.
#include "model/xml_part.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/handmade_records.h"
#include "host/preference_prefs.h"
#include "host/text/fonts.h"
#include "model/arithmetic.h"
#include "shell/failure.h"

namespace ostin {

namespace {

// Handler numbers, one for each operation.
constexpr int32_t kSetKeyFailed = Code(0x80040668);
constexpr int32_t kGetTonicFailed = Code(0x80040669);
constexpr int32_t kNonLinearTonicFailed = Code(0x8004066a);
constexpr int32_t kKeySignatureAlterFailed = Code(0x8004066c);
constexpr int32_t kSetKeySimplificationFailed = Code(0x8004066d);
constexpr int32_t kSetOctaveFailed = Code(0x8004066e);
constexpr int32_t kInitializeTranspositionFailed = Code(0x8004066f);
constexpr int32_t kTransposeValueFailed = Code(0x80040671);
constexpr int32_t kSetTransposeFailed = Code(0x80040672);
constexpr int32_t kSetTransposeStaffStyleFailed = Code(0x80040674);
constexpr int32_t kSetClefFailed = Code(0x80040676);
constexpr int32_t kSetStaffStepFailed = Code(0x80040677);
constexpr int32_t kCountLinesFailed = Code(0x80040679);
constexpr int32_t kNextStyleChangeFailed = Code(0x8004067a);
constexpr int32_t kOutOfRangeFailed = Code(0x8004067b);
constexpr int32_t kFindStaffFailed = Code(0x8004067c);
constexpr int32_t kNonTransposingFailed = Code(0x8004067d);
constexpr int32_t kActualTimeSignatureFailed = Code(0x8004067e);
constexpr int32_t kSetPartFailed = Code(0x80040680);
constexpr int32_t kSetScorePartFailed = Code(0x80040681);
constexpr int32_t kSetStavesFailed = Code(0x80040682);
constexpr int32_t kSetStaffSpecsFailed = Code(0x80040683);
constexpr int32_t kSetClefsFailed = Code(0x80040684);
constexpr int32_t kSetFinaleKeyFailed = Code(0x80040685);
constexpr int32_t kClassInitializeFailed = Code(0x80040686);
constexpr int32_t kInitializeFromStaffStyleFailed = Code(0x80040687);
constexpr int32_t kInitializeStringTuningFailed = Code(0x80040688);

// Raised places with numbers of their own.
constexpr int32_t kInitializeIndexOutOfRange = Code(0x8004078D);
constexpr int32_t kStyleIndexOutOfRange = Code(0x8004078E);
constexpr int32_t kStaffNotInPart = Code(0x800403E3);

constexpr int32_t kEndOfMeasure = 0x7FFFFFFF;
constexpr int16_t kLastMeasure = 32767;
constexpr int16_t kNonLinearKeys = 0x4000;
constexpr int16_t kDefaultNoteheadFontPref = 24;
constexpr int16_t kDefaultAccidentalFontPref = 19;

// Tonic letters by fifths mod 7.
constexpr std::array<std::string_view, 7> kMajorTonics = {"C", "G", "D", "A", "E", "B", "F"};
constexpr std::array<std::string_view, 7> kMinorTonics = {"A", "E", "B", "F", "C", "G", "D"};
constexpr std::string_view kSharpOrder = "FCGDAEB";
constexpr std::string_view kFlatOrder = "BEADGCF";

// The pitch one ledger line under a five-line staff, in treble positions, by clef number.
struct StaffStep {
  const char* Pitch;
  int16_t Octave;
};
constexpr std::array<StaffStep, 15> kStaffSteps = {{{"C", 4},
                                                    {"D", 3},
                                                    {"B", 2},
                                                    {"E", 2},
                                                    {"C", 4},
                                                    {"C", 3},
                                                    {"E", 1},
                                                    {"G", 2},
                                                    {"E", 4},
                                                    {"G", 2},
                                                    {"F", 3},
                                                    {"A", 3},
                                                    {"C", 4},
                                                    {"C", 5},
                                                    {"E", 3}}};

// Sign-extends the low bits of a packed field.
int16_t Signed(int32_t value, int bits) {
  const int32_t mask = (1 << bits) - 1;
  int32_t field = value & mask;
  if (field & (1 << (bits - 1))) field -= 1 << bits;
  return static_cast<int16_t>(field);
}

std::string FontOfPref(int16_t number) {
  DefaultFontPrefs prefs;
  return prefs.Load(number) ? prefs.FontName : std::string();
}

} // namespace

XmlPart::XmlPart() {
  Guarded("XmlPart Class_Initialize error ", kClassInitializeFailed, [&] {
    defaultNoteheadFont_ = FontOfPref(kDefaultNoteheadFontPref);
    defaultAccidentalFont_ = FontOfPref(kDefaultAccidentalFontPref);
    SetStaves(1);
  });
}

void XmlPart::SetPart(const xml::XmlNode& part) {
  Guarded("XmlPart SetPart error ", kSetPartFailed, [&] {
    part_ = part;
    scorePart_ = {};
    id_.clear();
    if (!part) return;
    id_ = part.getAttribute("id");
    scorePart_ = part.selectSingleNode("../part-list/score-part[@id='" + id_ + "']");
  });
}

void XmlPart::SetScorePart(const xml::XmlNode& scorePart) {
  Guarded("XmlPart SetScorePart error ", kSetScorePartFailed, [&] {
    scorePart_ = scorePart;
    part_ = {};
    id_.clear();
    if (!scorePart) return;
    id_ = scorePart.getAttribute("id");
    part_ = scorePart.selectSingleNode("../../part[@id='" + id_ + "']");
  });
}

void XmlPart::SetStaves(int16_t staves) {
  Guarded("XmlPart SetStaves error ", kSetStavesFailed, [&] {
    staves_ = staves;
    const auto size = static_cast<std::size_t>(std::max<int16_t>(staves, 0)) + 1;
    staffSpecs_.resize(size);
    clefs_.resize(size);
    StaffLines.resize(size);
    StaffStepPitch.resize(size);
    StaffStepOctave.resize(size);
    StaffLinePitch.resize(size);
    StaffLineOctave.resize(size);
    LineOffset.resize(size);
    AlternateNotation.resize(size);
    AlternateLayer.resize(size);
    Layers.resize(size);
    LayerVisible.resize(size, std::vector<bool>(4, true));
    NoteheadFont.resize(size, defaultNoteheadFont_);
    AccidentalFont.resize(size, defaultAccidentalFont_);
    ExpressionInstruments.resize(size);
    LayerInstruments.resize(size, std::vector<std::string>(4));
    StyleChangeMeasure.assign(size, 1);
    StyleChangeEdu.assign(size, 0);
    MaxVoices = static_cast<int16_t>(8 * staves);
  });
}

void XmlPart::RecomputeDivisionsPerBar() {
  divisionsPerBar_ = xmlBeatType_ == 0 ? 0 : xmlBeats_ * divisions_ * 4 / xmlBeatType_;
}

void XmlPart::SetDivisions(int32_t divisions) {
  divisions_ = divisions;
  RecomputeDivisionsPerBar();
}

void XmlPart::SetXmlBeats(int16_t beats) {
  xmlBeats_ = beats;
  RecomputeDivisionsPerBar();
}

void XmlPart::SetXmlBeatType(int16_t beatType) {
  xmlBeatType_ = beatType;
  RecomputeDivisionsPerBar();
}

void XmlPart::SetFinaleKey(int16_t key) {
  Guarded("XmlPart SetFinaleKey error ", kSetFinaleKeyFailed, [&] {
    finaleKey_ = key;
    SetKeySimplification();
  });
}

void XmlPart::SetStaffSpecs(int16_t index, std::shared_ptr<StaffSpec> spec) {
  Guarded("XmlPart SetStaffSpecs error ", kSetStaffSpecsFailed, [&] {
    staffSpecs_.at(index) = std::move(spec);
    Layers.at(index) = 0;
    SetClef(index, true);
    if (index == 1 && staffSpecs_[1]) {
      FloatKeys = (staffSpecs_[1]->Instflag & 0x8000) != 0;
      FloatTime = (staffSpecs_[1]->Instflag & 0x4000) != 0;
    }
  });
}

void XmlPart::SetClefs(int16_t index, int16_t clef) {
  Guarded("XmlPart SetClefs error ", kSetClefsFailed, [&] {
    clefs_.at(index) = clef;
    SetStaffStep(index);
  });
}

void XmlPart::SetKey(const xml::XmlNode& key) {
  Guarded("XmlPart SetKey error ", kSetKeyFailed, [&] {
    key_ = key;
    Tonic.clear();
    Fifths = 0;
    NonLinear = false;
    if (key) {
      const auto fifths = ChildText(key, "fifths");
      if (fifths) {
        Fifths = Integer16(*fifths);
        const auto mode = ChildText(key, "mode");
        Tonic = GetTonic(Fifths, mode && TrimmedLower(*mode) == "minor");
      } else {
        NonLinear = true;
        Tonic = NonLinearTonic(Measure);
      }
    }
    SetKeySimplification();
    SetOctave();
  });
}

std::string XmlPart::GetTonic(int16_t fifths, bool minor) {
  return Guarded("XmlPart GetTonic error ", kGetTonicFailed, [&] {
    if (fifths < -14 || fifths > 14) return std::string();
    const auto& tonics = minor ? kMinorTonics : kMajorTonics;
    return std::string(tonics[static_cast<std::size_t>((fifths % 7 + 7) % 7)]);
  });
}

std::string XmlPart::NonLinearTonic(int16_t measure) {
  return Guarded("XmlPart NonLinearTonic error ", kNonLinearTonicFailed, [&] {
    MeasureSpec spec;
    ToneCenter center;
    if (!spec.Load(measure, 0) || !center.Load(spec.Key, 0)) return std::string("C");
    return StepFinaleToXml(center.Units(1));
  });
}

int16_t XmlPart::KeySignatureAlter(const std::string& step) const {
  return Guarded("XmlPart KeySignatureAlter error ", kKeySignatureAlterFailed, [&]() -> int16_t {
    if (NonLinear) {
      if (!key_) return 0;
      auto steps = key_.selectNodes("key-step");
      for (int32_t i = 0; i < steps.length(); ++i) {
        const auto keyStep = steps.item(i);
        if (keyStep.text() != step) continue;
        const auto alter = keyStep.nextSibling();
        return alter ? Integer16(alter.text()) : int16_t{0};
      }
      return 0;
    }
    if (step.size() != 1) return 0;
    if (Fifths > 0) {
      const auto p = static_cast<int>(kSharpOrder.find(step[0])) + 1;
      if (p == 0) return 0;
      return Fifths >= p + 7 ? 2 : Fifths >= p ? 1 : 0;
    }
    const auto q = static_cast<int>(kFlatOrder.find(step[0])) + 1;
    if (q == 0) return 0;
    return Fifths <= -q - 7 ? -2 : Fifths <= -q ? -1 : 0;
  });
}

void XmlPart::SetKeySimplification() {
  Guarded("XmlPart SetKeySimplification error ", kSetKeySimplificationFailed, [&] {
    TransposeKeyOptInterval = TransposeInterval;
    if (finaleKey_ >= kNonLinearKeys || !TransposeKeyOpt || TransposeKeySig == 0) return;
    const int s = Signed(finaleKey_, 8) + TransposeKeySig;
    if (s >= -14 && s <= -7)
      --TransposeKeyOptInterval;
    else if (s >= 7 && s <= 14)
      ++TransposeKeyOptInterval;
  });
}

void XmlPart::SetOctave() {
  Guarded("XmlPart SetOctave error ", kSetOctaveFailed, [&] {
    Octave = 4;
    if (TransposeKeyOptInterval == 0 || TransposeChromatic) return;
    int d = std::max<int>(StepXmlToFinale(Tonic), 0) - TransposeKeyOptInterval;
    for (; d < 0; d += 7)
      ++Octave;
    for (; d >= 7; d -= 7)
      --Octave;
  });
}

void XmlPart::InitializeTransposition(int16_t value) {
  Guarded("XmlPart InitializeTransposition error ", kInitializeTranspositionFailed, [&] {
    TransposeKeyOpt = (value & 0x4000) != 0;
    if ((value & 0x2000) == 0) {
      TransposeChromatic = false;
      TransposeKeySig = Signed(value, 6);
      TransposeInterval = Signed(value >> 6, 6);
      SetKeySimplification();
      SetOctave();
      TransposeKeyOptKeySig = TransposeKeySig;
    } else {
      TransposeChromatic = true;
      TransposeChromaticInterval = Signed(value, 8);
      TransposeChromaticAlter = Signed(value >> 8, 4);
      TransposeChromaticSteps =
          ChromaticTranspositionSteps(TransposeChromaticInterval, TransposeChromaticAlter);
    }
  });
}

int16_t XmlPart::TransposeValue(const xml::XmlNode& transpose) {
  return Guarded("XmlPart TransposeValue error ", kTransposeValueFailed, [&] {
    const auto chromaticText = ChildText(transpose, "chromatic");
    const int16_t chromatic = chromaticText ? Integer16(*chromaticText) : int16_t{0};
    const auto diatonicText = ChildText(transpose, "diatonic");
    const int16_t diatonic =
        diatonicText ? Integer16(*diatonicText) : TransposeDefaultDiatonic(chromatic);
    const auto octaveText = ChildText(transpose, "octave-change");
    const int16_t octave = octaveText ? Integer16(*octaveText) : int16_t{0};
    ostin::TransposeKeySig(chromatic, diatonic, octave, this->TransposeKeySig,
                           TransposeKeyOptKeySig, TransposeInterval);
    TransposeKeyOptInterval = TransposeInterval;
    return static_cast<int16_t>((this->TransposeKeySig & 63) | ((TransposeInterval * 64) & 0xFC0));
  });
}

void XmlPart::ApplyTransposeOctave(const xml::XmlNode& transpose) {
  if (transpose) {
    const auto diatonic = ChildText(transpose, "diatonic");
    if (diatonic) {
      int32_t interval = -Integer16(*diatonic);
      const auto octave = ChildText(transpose, "octave-change");
      if (octave) interval -= 7 * Integer16(*octave);
      TransposeKeyOptInterval = static_cast<int16_t>(interval);
    }
  }
  SetOctave();
}

void XmlPart::SetTranspose(const xml::XmlNode& transpose) {
  Guarded("XmlPart SetTranspose error ", kSetTransposeFailed, [&] {
    transpose_ = transpose;
    ApplyTransposeOctave(transpose);
  });
}

int16_t XmlPart::SetTransposeStaffStyle(const xml::XmlNode& transpose) {
  return Guarded("XmlPart SetTransposeStaffStyle error ", kSetTransposeStaffStyleFailed, [&] {
    const int16_t value = TransposeValue(transpose);
    ApplyTransposeOctave(transpose);
    return value;
  });
}

void XmlPart::SetClef(int16_t index, bool setValue) {
  Guarded("XmlPart SetClef error ", kSetClefFailed, [&] {
    const auto& spec = staffSpecs_.at(index);
    if (!spec) return;
    if ((spec->Transposition & 0x8000) == 0) {
      if (setValue) SetClefs(index, static_cast<int16_t>(spec->Clefs & 0xFF));
      ClefChange = true;
    } else {
      SetClefs(index, static_cast<int16_t>((spec->Clefs >> 8) & 0xFF));
      ClefChange = false;
    }
  });
}

void XmlPart::SetStaffStep(int16_t index) {
  Guarded("XmlPart SetStaffStep error ", kSetStaffStepFailed, [&] {
    const int16_t clef = clefs_.at(index);
    const StaffStep step = clef >= 0 && clef < static_cast<int16_t>(kStaffSteps.size())
                               ? kStaffSteps[static_cast<std::size_t>(clef)]
                               : kStaffSteps[0];
    StaffStepPitch.at(index) = step.Pitch;
    StaffStepOctave.at(index) = step.Octave;
    PitchAndOctave(step.Pitch, step.Octave, LineOffset.at(index), StaffLinePitch.at(index),
                   StaffLineOctave.at(index));
  });
}

void XmlPart::CountLines(int16_t topLines, int16_t botLines, int16_t& top, int16_t& count) {
  Guarded("XmlPart CountLines error ", kCountLinesFailed, [&] {
    if (topLines == 0) {
      count = botLines;
      top = static_cast<int16_t>(2 - botLines);
      return;
    }
    if (topLines % 2 == 0) {
      count = 5;
      top = -3;
      return;
    }
    // Line positions from the lowest: BotLines bit b is position -b, TopLines bit b is 16 - b.
    std::vector<int16_t> positions;
    for (int bit = 15; bit >= 0; --bit)
      if (botLines & (1 << bit)) positions.push_back(static_cast<int16_t>(-bit));
    for (int bit = 15; bit >= 5; --bit)
      if (topLines & (1 << bit)) positions.push_back(static_cast<int16_t>(16 - bit));
    count = static_cast<int16_t>(positions.size());
    if (count == 1)
      top = static_cast<int16_t>(positions[0] + 1);
    else if (count > 1)
      top = positions[1];
  });
}

void XmlPart::InitializeFromStaffStyle(int16_t index) {
  Guarded("XmlPart InitializeFromStaffStyle error ", kInitializeFromStaffStyleFailed, [&] {
    if (index < 1 || index > staves_ || !staffSpecs_[static_cast<std::size_t>(index)])
      RaiseLogged("InitializeFromStaffStyle for index " + std::to_string(index) +
                      " outside range of 1 to " + std::to_string(staves_),
                  kInitializeIndexOutOfRange);
    const StaffSpec& spec = *staffSpecs_[static_cast<std::size_t>(index)];
    SetClef(index, false);
    IgnoreKey = (spec.Instflag & 0x0001) != 0;
    PercussionStaff = (spec.Flag & 0x2000) != 0;
    if (!PercussionStaff && FinaleVersion >= 2003 && (spec.Flag & 0x0200) != 0 &&
        spec.FretInstID > 0) {
      TabStaff = index;
      Capo = static_cast<int16_t>(spec.CapoLowFret & 0xFF);
      UseTabLetters = (spec.MoreFlags & 0x0200) != 0;
    }
    AlternateNotation[index] = static_cast<int16_t>(spec.AltFlag & 0x000F);
    AlternateLayer[index] = static_cast<int16_t>((spec.AltFlag & 0x00F0) >> 4);
    for (int16_t layer = 0; layer <= 3; ++layer)
      LayerVisible[index][layer] = layer == AlternateLayer[index] ? AlternateNotation[index] == 0
                                                                  : (spec.AltFlag & 0x0200) != 0;
    NoteheadFont[index] = defaultNoteheadFont_;
    FontName font;
    if ((spec.Flag & 0x0020) != 0 && font.Load(spec.Mfont, 0)) NoteheadFont[index] = font.Text;
    AccidentalFont[index] = defaultAccidentalFont_;
    int16_t top = 0;
    CountLines(spec.TopLines, spec.BotLines, top, StaffLines[index]);
    LineOffset[index] = static_cast<int16_t>((top + 3) * -2);
    SetStaffStep(index);
    NoTime = (spec.Instflag & 0x0010) != 0 && staves_ == 1;
    InitializeTransposition(spec.Transposition);
    if (FinaleVersion >= 2003) InitializeStringTuning();
  });
}

void XmlPart::InitializeStringTuning() {
  Guarded("XmlPart InitializeStringTuning error ", kInitializeStringTuningFailed, [&] {
    if (TabStaff < 1 || TabStaff > staves_ || !staffSpecs_[static_cast<std::size_t>(TabStaff)])
      return;
    FretInstrument instrument;
    if (!instrument.Load(staffSpecs_[static_cast<std::size_t>(TabStaff)]->FretInstID, 0)) return;
    Frets = instrument.NoOfFrets;
    Strings = instrument.NoOfStrings;
    DiatonicFrets = instrument.DiatonicStepsLo != 0 || instrument.DiatonicStepsHi != 0;
    if (Strings < 1) {
      StringTuning.assign(1, 0);
      return;
    }
    const auto count =
        std::min<std::size_t>(static_cast<std::size_t>(Strings), instrument.StringTuning.size());
    StringTuning.assign(instrument.StringTuning.begin(),
                        instrument.StringTuning.begin() + static_cast<std::ptrdiff_t>(count));
  });
}

void XmlPart::NextStyleChange(int16_t index) {
  Guarded("XmlPart NextStyleChange error ", kNextStyleChangeFailed, [&] {
    if (index < 1 || index > staves_)
      RaiseLogged("NextStyleChange for index " + std::to_string(index) + " outside range of 1 to " +
                      std::to_string(staves_),
                  kStyleIndexOutOfRange);
    auto& spec = staffSpecs_[static_cast<std::size_t>(index)];
    StyleChangeMeasure[index] = 1;
    StyleChangeEdu[index] = 0;
    if (!spec || !spec->LoadCurrent(spec->Cmper(), Measure, kEndOfMeasure)) return;
    StyleChangeMeasure[index] = spec->RangeEndMeas;
    if (spec->RangeEndEdu != kEndOfMeasure) {
      StyleChangeEdu[index] = spec->RangeEndEdu + 1;
    } else if (spec->RangeEndMeas == kLastMeasure) {
      StyleChangeMeasure[index] = 1;
    } else {
      StyleChangeMeasure[index] = static_cast<int16_t>(spec->RangeEndMeas + 1);
    }
  });
}

bool XmlPart::OutOfRange(int16_t staff, int32_t edu) const {
  return Guarded("XmlPart OutOfRange error ", kOutOfRangeFailed, [&] {
    const auto& spec = staffSpecs_.at(staff);
    if (!spec) return false;
    if (Measure < spec->RangeStartMeas || Measure > spec->RangeEndMeas) return true;
    return (Measure == spec->RangeStartMeas && edu < spec->RangeStartEdu) ||
           (Measure == spec->RangeEndMeas && edu > spec->RangeEndEdu);
  });
}

int16_t XmlPart::FindStaff(int16_t instrument) const {
  return Guarded("XmlPart FindStaff error ", kFindStaffFailed, [&]() -> int16_t {
    if (staves_ == 1) return 0;
    const int index = instrument - StartStaff + 1;
    if (index < 1 || index > staves_)
      RaiseLogged("Finale instrument " + std::to_string(instrument) + " not found in XML part",
                  kStaffNotInPart);
    return static_cast<int16_t>(index);
  });
}

bool XmlPart::NonTransposing() const {
  return Guarded("XmlPart NonTransposing error ", kNonTransposingFailed, [&] {
    if (!part_ || part_.selectSingleNode("measure/attributes/transpose")) return false;
    auto clefs = part_.selectNodes(".//clef");
    for (int32_t i = 0; i < clefs.length(); ++i)
      if (TrimmedLower(clefs.item(i).text()) == "percussion") return false;
    return true;
  });
}

void XmlPart::ActualTimeSignature(int32_t duration, int16_t& beats, int16_t& divBeat,
                                  bool& found) const {
  Guarded("XmlPart ActualTimeSignature error ", kActualTimeSignatureFailed, [&] {
    found = false;
    if (duration == divisionsPerBar_) return;
    // A beat type the arithmetic does not know ends the search without a result.
    const auto edus = [](int32_t beatType) -> int32_t {
      try {
        return EdusPerBeatType(beatType);
      } catch (const Failure& failure) {
        if (failure.Number == kUnknownBeatType) return 0;
        throw;
      }
    };
    int32_t t = xmlBeatType_;
    const int32_t firstEdus = edus(t);
    if (firstEdus == 0) return;
    const bool compound = FinaleDivbeat == firstEdus * 3;
    const int32_t q = 4 * divisions_;
    int32_t e = 0;
    int32_t result = 0;
    while (true) {
      if (t > q || q % t != 0) return;
      const int32_t u = q / t;
      if (duration % u == 0) {
        result = duration / u;
        e = edus(t);
        break;
      }
      t *= 2;
      if (edus(t) == 0) return;
    }
    if (compound && result % 3 == 0) {
      e *= 3;
      result /= 3;
    }
    beats = static_cast<int16_t>(result);
    divBeat = static_cast<int16_t>(e);
    found = true;
  });
}

} // namespace ostin
