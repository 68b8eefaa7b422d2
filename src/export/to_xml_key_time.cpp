// The key, time and transpose elements from the host's key numbers, meters and transpositions.
#include <algorithm>
#include <array>

#include "export/to_xml.h"
#include "model/arithmetic_key.h"
#include "platform/window_system.h"
#include "shell/error_log.h"
#include "shell/failure.h"
#include "shell/messages.h"

namespace ostin {

namespace {
constexpr int32_t kUnknownBeatDivision = Code(0x80040342);
constexpr int32_t kNoCompositePairs = Code(0x80040494);
constexpr int32_t kUnknownCompositeDivision = Code(0x80040490);
constexpr int32_t kCreateKeyHandler = Code(0x8004028F);
constexpr int32_t kParseTimeSignatureHandler = Code(0x80040290);
constexpr int32_t kConvertTimeHandler = Code(0x80040291);
constexpr int32_t kCreateTimeHandler = Code(0x80040292);
constexpr int32_t kCreateCompositeHandler = Code(0x80040293);
constexpr int32_t kCreateTimeUpperHandler = Code(0x80040294);
constexpr int32_t kCreateTimeLowerHandler = Code(0x80040295);
constexpr int32_t kCreateTransposeHandler = Code(0x80040296);
constexpr int32_t kCreateTransposeChromaticHandler = Code(0x80040297);
constexpr int16_t kNonLinearKey = 0x4000;
constexpr int16_t kFloatTimeBit = 0x400;

int16_t SignedLowByte(int16_t key) {
  return static_cast<int8_t>(key & 0xFF);
}

// A key of 7 to 14 accidentals written the short way round, when the option asks for it.
int16_t Simplified(int16_t fifths, bool simplify) {
  if (!simplify) return fifths;
  if (fifths >= -14 && fifths <= -7) return fifths + 12;
  if (fifths >= 7 && fifths <= 14) return fifths - 12;
  return fifths;
}

// True when the new key has fewer accidentals of the old key's kind, or the other kind.
bool NeedsCancel(int16_t old, int16_t fifths, bool modeChange) {
  if (old == 0) return false;
  if (old == fifths) return modeChange;
  if ((old < 0 && fifths >= 0) || (old > 0 && fifths < 1)) return true;
  return old > 0 ? old > fifths : old < fifths;
}

// One source of a meter: where beats, beat and the composite and symbol flags come from.
struct TimeSource {
  int16_t beats, divBeat;
  bool compositeBeats, compositeDiv;
  bool hasSymbol; // a symbol flag of its own, else the abbreviation options decide
  bool symbol;
};

// The chromatic steps of a key-based transposition, by key offset and diatonic steps.
struct ChromaticRule {
  int16_t key;
  std::array<int16_t, 2> diatonic;
  int16_t chromatic;
};

constexpr std::array<ChromaticRule, 52> kChromaticRules{{
    {-7, {1, 1}, 1},    {-7, {-6, -6}, -11}, {-6, {-4, -3}, -6},  {-6, {3, 4}, 6},
    {-5, {-1, 0}, -1},  {-5, {6, 7}, 11},    {-4, {-5, -4}, -8},  {-4, {2, 3}, 4},
    {-3, {-2, -1}, -3}, {-3, {5, 6}, 9},     {-2, {-6, -5}, -10}, {-2, {1, 2}, 2},
    {-1, {-3, -2}, -5}, {-1, {4, 5}, 7},     {1, {-5, -4}, -7},   {1, {2, 3}, 5},
    {2, {-2, -1}, -2},  {2, {5, 6}, 10},     {3, {-6, -5}, -9},   {3, {1, 2}, 3},
    {4, {-3, -2}, -4},  {4, {4, 5}, 8},      {5, {-6, -6}, -11},  {5, {0, 1}, 1},
    {6, {-4, -3}, -6},  {6, {3, 4}, 6},      {7, {-1, -1}, -1},   {7, {6, 6}, 11},
}};

constexpr std::array<int16_t, 13> kSemitonesOfDiatonic = {-11, -9, -7, -5, -4, -2, 0,
                                                          2,   4,  5,  7,  9,  11};

// Brings the diatonic steps into -6 to 6, counting the octaves moved.
void FoldOctaves(int16_t& diatonic, int16_t& octave) {
  while (diatonic >= 7) {
    diatonic -= 7;
    ++octave;
  }
  while (diatonic < -6) {
    diatonic += 7;
    --octave;
  }
}

// The chromatic steps of the table; false for a pair it does not hold.
bool ChromaticOf(int16_t key, int16_t diatonic, int16_t& octave, int16_t& chromatic) {
  if (key == 0) {
    chromatic = 0;
    return true;
  }
  // Unisons of the two outermost keys sit an octave apart by the direction of the octave.
  if (key == -7 && diatonic == 0) {
    chromatic = octave < 0 ? -11 : 1;
    if (octave < 0) ++octave;
    return true;
  }
  if (key == 7 && diatonic == 0) {
    chromatic = octave > 0 ? 11 : -1;
    if (octave > 0) --octave;
    return true;
  }
  for (const ChromaticRule& rule : kChromaticRules)
    if (rule.key == key && (rule.diatonic[0] == diatonic || rule.diatonic[1] == diatonic)) {
      chromatic = rule.chromatic;
      return true;
    }
  return false;
}
} // namespace

xml::XmlNode ToXml::CreateKey(int16_t key, XmlPart& part, const int16_t* oldKey) {
  return Guarded("ToXml CreateKey error ", kCreateKeyHandler, [&] {
    int16_t keySig = part.TransposeKeySig;
    bool simplify = part.TransposeKeyOpt && keySig != 0;
    if (key >= kNonLinearKey) return CreateKeyNonLinear(key, *document_);
    int16_t fifths = 0;
    int16_t mode = 0;
    if (!part.IgnoreKey) {
      mode = static_cast<int16_t>((key >> 8) & 0xFF);
      fifths = Simplified(static_cast<int16_t>(keySig + SignedLowByte(key)), simplify);
    }
    bool cancel = false;
    int16_t old = 0;
    if (oldKey && KeyCancelOutgoing && *oldKey < kNonLinearKey && !part.IgnoreKey) {
      old = Simplified(static_cast<int16_t>(keySig + SignedLowByte(*oldKey)), simplify);
      cancel = NeedsCancel(old, fifths, KeyModeChange);
    }
    xml::XmlNode element = Element("key");
    if (cancel) element.appendChild(Element("cancel", std::to_string(old)));
    element.appendChild(Element("fifths", std::to_string(fifths)));
    if (mode == 0) element.appendChild(Element("mode", "major"));
    if (mode == 1) element.appendChild(Element("mode", "minor"));
    return element;
  });
}

void ToXml::ParseTimeSignature(const MeasureSpec& measure, int16_t& beats, int16_t& divBeat,
                               bool& compositeBeats, bool& compositeDiv, bool& symbol,
                               int16_t staff) {
  Guarded("ToXml ParseTimeSignature error ", kParseTimeSignatureHandler, [&] {
    MeasureFloat floating;
    bool floats =
        staff > 0 && floating.Load(staff, measure.Cmper()) && (floating.Flag & kFloatTimeBit);
    TimeSource source{};
    if (floats && (floating.Flag & 0x200))
      source = {floating.DispBeats,
                floating.DispDivbeat,
                (floating.Flag & 0x1) != 0,
                (floating.Flag & 0x2) != 0,
                true,
                (floating.Flag & 0x4) != 0};
    else if (floats)
      source = {
          floating.Bts, floating.Div, (floating.Flag & 0x80) != 0, (floating.Flag & 0x40) != 0,
          false,        false};
    else if (measure.Newflag & 0x4)
      source = {measure.DispBeats,
                measure.DispDivbeat,
                (measure.Newflag & 0x100) != 0,
                (measure.Newflag & 0x200) != 0,
                true,
                (measure.Newflag & 0x2) != 0};
    else
      source = {measure.Beats,
                measure.DivBeat,
                (measure.Auxflag & 0x80) != 0,
                (measure.Auxflag & 0x40) != 0,
                false,
                false};
    beats = source.beats;
    divBeat = source.divBeat;
    compositeBeats = source.compositeBeats;
    compositeDiv = source.compositeDiv;
    if (compositeBeats || compositeDiv)
      symbol = false;
    else if (source.hasSymbol)
      symbol = source.symbol;
    else
      symbol = (beats == 4 && divBeat == 1024 && AbbreviateCommon) ||
               (beats == 2 && divBeat == 2048 && AbbreviateCut);
  });
}

void ToXml::ConvertTime(int16_t beats, int16_t divBeat, int16_t& outBeats, int16_t& outBeatType) {
  Guarded("ToXml ConvertTime error ", kConvertTimeHandler, [&] {
    outBeats = beats;
    for (int16_t beatType = 256, plain = 16; beatType >= 1; beatType /= 2, plain *= 2) {
      if (divBeat == plain) {
        outBeatType = beatType;
        return;
      }
      if (divBeat == plain * 3) {
        outBeatType = beatType;
        outBeats = static_cast<int16_t>(beats * 3);
        return;
      }
    }
  });
}

xml::XmlNode ToXml::CreateTime(int16_t beats, int16_t divBeat, bool compositeBeats,
                               bool compositeDiv, bool symbol) {
  return Guarded("ToXml CreateTime error ", kCreateTimeHandler, [&] {
    if (compositeBeats || compositeDiv)
      return CreateCompositeTimeSignature(beats, divBeat, compositeBeats, compositeDiv);
    int16_t outBeats = 0;
    int16_t outBeatType = 0;
    ConvertTime(beats, divBeat, outBeats, outBeatType);
    if (outBeatType == 0)
      throw Failure(kUnknownBeatDivision, std::string(kPlugInSource),
                    "Unknown time signature beat division " + std::to_string(divBeat));
    xml::XmlNode time = Element("time");
    if (symbol && outBeats == 4 && outBeatType == 4) time.setAttribute("symbol", "common");
    if (symbol && outBeats == 2 && outBeatType == 2) time.setAttribute("symbol", "cut");
    time.appendChild(Element("beats", std::to_string(outBeats)));
    time.appendChild(Element("beat-type", std::to_string(outBeatType)));
    return time;
  });
}

xml::XmlNode ToXml::CreateCompositeTimeSignature(int16_t beats, int16_t divBeat,
                                                 bool compositeBeats, bool compositeDiv) {
  return Guarded("ToXml CreateCompositeTimeSignature error ", kCreateCompositeHandler, [&] {
    std::vector<std::string> lower, upper;
    if (compositeDiv) {
      lower = CreateTimeLower(divBeat);
    } else {
      int16_t ignored = 0, beatType = 0;
      ConvertTime(1, divBeat, ignored, beatType);
      lower = {std::to_string(beatType)};
    }
    upper = compositeBeats ? CreateTimeUpper(beats) : std::vector{std::to_string(beats)};
    size_t pairs = std::min(lower.size(), upper.size());
    if (pairs < 1) RaiseLogged("Cannot create composite time signature", kNoCompositePairs);
    xml::XmlNode time = Element("time");
    for (size_t i = 0; i < pairs; ++i) {
      time.appendChild(Element("beats", upper[i]));
      time.appendChild(Element("beat-type", lower[i]));
    }
    return time;
  });
}

std::vector<std::string> ToXml::CreateTimeUpper(int16_t record) {
  return Guarded("ToXml CreateTimeUpper error ", kCreateTimeUpperHandler, [&] {
    std::vector<std::string> groups;
    TimeUpper upper;
    if (!upper.Load(record, 0)) return groups;
    for (int slot = 1; slot <= 2 && upper.Main(slot) != 0; ++slot) {
      std::string value = std::to_string(upper.Main(slot));
      if ((upper.Flag(slot) & 0x1) || groups.empty())
        groups.push_back(value);
      else
        groups.back() += " + " + value;
    }
    return groups;
  });
}

std::vector<std::string> ToXml::CreateTimeLower(int16_t record) {
  return Guarded("ToXml CreateTimeLower error ", kCreateTimeLowerHandler, [&] {
    std::vector<std::string> values;
    TimeLower lower;
    for (int16_t inci = 0; lower.Load(record, inci); ++inci) {
      for (int slot = 1; slot <= 3 && lower.Main(slot) != 0; ++slot) {
        int16_t ignored = 0, beatType = 0;
        ConvertTime(1, lower.Main(slot), ignored, beatType);
        if (beatType == 0)
          RaiseLogged("Unknown time signature composite beat division " +
                          std::to_string(lower.Main(slot)),
                      kUnknownCompositeDivision);
        values.push_back(std::to_string(beatType));
      }
    }
    return values;
  });
}

xml::XmlNode ToXml::CreateTranspose(const XmlPart& part, bool suppressZero) {
  return Guarded("ToXml CreateTranspose error ", kCreateTransposeHandler, [&] {
    if (part.TransposeChromatic)
      return CreateTransposeChromatic(part.TransposeChromaticInterval, part.TransposeChromaticAlter,
                                      suppressZero);
    int16_t interval = part.TransposeKeyOptInterval;
    int16_t keySig = part.TransposeKeySig;
    if (interval == 0 && keySig == 0)
      return suppressZero ? xml::XmlNode() : TransposeElement(0, 0, 0, true);
    int16_t diatonic = static_cast<int16_t>(-interval);
    int16_t octave = 0;
    FoldOctaves(diatonic, octave);
    int16_t chromatic = 0;
    if (keySig < -7 || keySig > 7 || !ChromaticOf(keySig, diatonic, octave, chromatic)) {
      platform::Windows().MessageBox(
          FormatResString(210, {std::to_string(interval), std::to_string(keySig)}), "",
          platform::kMbOk);
      return xml::XmlNode();
    }
    return TransposeElement(diatonic, chromatic, octave, false);
  });
}

xml::XmlNode ToXml::CreateTransposeChromatic(int16_t interval, int16_t alteration,
                                             bool suppressZero) {
  return Guarded("ToXml CreateTransposeChromatic error ", kCreateTransposeChromaticHandler, [&] {
    if (interval == 0 && alteration == 0)
      return suppressZero ? xml::XmlNode() : TransposeElement(0, 0, 0, true);
    int16_t diatonic = static_cast<int16_t>(-interval);
    int16_t octave = 0;
    FoldOctaves(diatonic, octave);
    int16_t chromatic = static_cast<int16_t>(kSemitonesOfDiatonic[diatonic + 6] - alteration);
    return TransposeElement(diatonic, chromatic, octave, false);
  });
}

// A transpose element; the all-zero one names its octave change too.
xml::XmlNode ToXml::TransposeElement(int16_t diatonic, int16_t chromatic, int16_t octave,
                                     bool zero) {
  xml::XmlNode transpose = Element("transpose");
  transpose.appendChild(Element("diatonic", std::to_string(diatonic)));
  transpose.appendChild(Element("chromatic", std::to_string(chromatic)));
  if (zero || octave != 0) transpose.appendChild(Element("octave-change", std::to_string(octave)));
  return transpose;
}

} // namespace ostin
