// The measure skeleton: one measure element per measure in every part, with its number,
// breaks, barlines, repeats, endings, opening attributes and multiple rests.
#include "export/to_xml.h"
#include "host/records.h"
#include "model/measure_numbering.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kInitializeFreezeMusicHandler = Code(0x800402D7);
constexpr int32_t kInitializeMeasuresHandler = Code(0x8004032E);
constexpr int16_t kForwardRepeatBit = 0x8;
constexpr int16_t kBackwardRepeatBit = 0x4;
constexpr int16_t kEndingBit = 0x2;
constexpr int16_t kNewSystemBit = static_cast<int16_t>(0x8000);
constexpr int16_t kNewPageBit = 0x800;
constexpr int16_t kKeyFloatBit = 0x800;
constexpr int16_t kHiddenTimeBit = 0x10;
constexpr int16_t kRepeatTimesBit = 0x800;
constexpr int16_t kUseSymbolsBit = 1;

// The bar style of a measure's right end; empty when the measure gives none.
std::string BarStyleOf(int16_t meflag) {
  switch (meflag & 0xF0) {
  case 0x00:
    return "none";
  case 0x20:
    return "light-light";
  case 0x30:
  case 0x60:
    return "dotted";
  case 0x40:
    return "heavy";
  case 0x50:
    return "light-heavy";
  default:
    return {};
  }
}

std::string TrimmedText(const std::string& text) {
  size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}
} // namespace

// What one reading of a measure's records gives to all parts.
struct ToXml::MeasureHead {
  int16_t Number = 0;
  MeasureSpec Spec;
  std::string BarStyle;
  bool ForwardRepeat = false;
  bool BackwardRepeatEnd = false;
  bool HasEnding = false;
  bool NewPage = false;
  bool NewSystem = false;
  std::string NumberText;
  bool Implicit = false;
  std::string EndingNumber;
  bool HasEndingRepeat = false;
  bool HasBackwardRepeat = false;
  EndingRepeat Ending;
  BackwardRepeat Backward;
  // The score's time of this measure.
  int16_t Beats = 0, DivBeat = 0;
  bool CompositeBeats = false, CompositeDiv = false, Symbol = false;
};

// The measure loop's memory of key, time and transposition, for the score and by part.
struct ToXml::SkeletonState {
  XmlMeasNumbering Numbering;
  int16_t LastKey = 0, LastBeats = 0, LastDivbeat = 0;
  std::vector<int16_t> PartKey, PartBeats, PartDivbeat;
  std::vector<std::string> PartBeatsText, PartBeatTypeText;
  std::vector<int16_t> PartInterval, PartKeySig, PartKeyOptInterval;
  bool TranspositionChanged = false;
  int16_t NextMultipleRest = 0;
  MultimeasureRest Rest;
};

void ToXml::InitializeFreezeMusic() {
  Guarded("ToXml InitializeFreezeMusic error ", kInitializeFreezeMusicHandler, [&] {
    FreezeMusic frozen;
    int16_t cmper = 0, inci = 0;
    // The walk goes on from the whole key of each record, so that a record of another
    // incidence is not met again.
    while (frozen.GetNext(cmper, inci)) {
      if (frozen.Cmper() > NumberOfMeasures) break;
      if (frozen.Cmper() >= 1) SystemBreaks[frozen.Cmper()] = true;
      if (frozen.NextMeas > NumberOfMeasures) break;
      if (frozen.NextMeas >= 1) SystemBreaks[frozen.NextMeas] = true;
      cmper = frozen.Cmper();
      inci = frozen.Inci();
    }
    // The first measure never starts a new system in the output.
    if (NumberOfMeasures >= 1) SystemBreaks[1] = false;
  });
}

void ToXml::InitializeMeasures() {
  Guarded("ToXml InitializeMeasures error ", kInitializeMeasuresHandler, [&] {
    SkeletonState state;
    state.Numbering.Initialize();
    // Each part's measure elements by number, from 1.
    MeasureElements.assign(NumberOfParts + 1, std::vector<xml::XmlNode>(1));
    size_t parts = NumberOfParts + 1;
    for (auto* table : {&state.PartKey, &state.PartBeats, &state.PartDivbeat, &state.PartInterval,
                        &state.PartKeySig, &state.PartKeyOptInterval})
      table->assign(parts, 0);
    state.PartBeatsText.assign(parts, std::string());
    state.PartBeatTypeText.assign(parts, std::string());
    if (state.Rest.GetNext(0, 0)) state.NextMultipleRest = state.Rest.Cmper();
    for (int16_t measure = 1;; ++measure) {
      MeasureHead head;
      if (!head.Spec.Load(measure, 0)) break;
      if (measure >= 2) CheckProgress(1, 0, 0);
      ReadMeasureHead(state, measure, head);
      for (int16_t index = 1; index <= NumberOfParts; ++index) {
        XmlPart& part = *XmlParts[index];
        part.Measure = measure;
        xml::XmlNode element = Element("measure");
        element.setAttribute("number", head.NumberText);
        if (head.Implicit) element.setAttribute("implicit", "yes");
        // A measure whose records contradict each other is named in the message.
        try {
          FillMeasure(state, head, part, index, element);
        } catch (...) {
          RaiseAtPosition(index, head.NumberText, kInitializeMeasuresHandler);
        }
        part.Part().appendChild(element);
        MeasureElements[index].push_back(element);
      }
      state.LastKey = head.Spec.Key;
      state.LastBeats = head.Beats;
      state.LastDivbeat = head.DivBeat;
    }
    ResetPartsToStart();
    AddFinalBarlines();
    CheckProgress(1, 0, 0);
  });
}

void ToXml::ReadMeasureHead(SkeletonState& state, int16_t measure, MeasureHead& head) {
  head.Number = measure;
  int16_t meflag = head.Spec.Meflag;
  head.BarStyle = BarStyleOf(meflag);
  head.ForwardRepeat = meflag & kForwardRepeatBit;
  head.BackwardRepeatEnd = meflag & kBackwardRepeatBit;
  head.HasEnding = meflag & kEndingBit;
  head.NewPage = FinaleVersion >= 2001 && (head.Spec.Newflag & kNewPageBit);
  bool breaks = measure < static_cast<int16_t>(SystemBreaks.size()) && SystemBreaks[measure];
  head.NewSystem = breaks || (meflag & kNewSystemBit);
  if (head.HasEnding) ReadEndingData(measure, head);
  state.Numbering.NextMeasure(head.NumberText, head.Implicit);
  ParseTimeSignature(head.Spec, head.Beats, head.DivBeat, head.CompositeBeats, head.CompositeDiv,
                     head.Symbol, 0);
}

void ToXml::ReadEndingData(int16_t measure, MeasureHead& head) {
  head.HasEndingRepeat = head.Ending.Load(measure, 0);
  EndingRepeatText text;
  bool hasText = text.Load(measure, 0);
  head.HasBackwardRepeat = head.Backward.Load(measure, 0);
  if (hasText) {
    std::string number = TrimmedText(text.Text);
    if (number.size() >= 2 && number.back() == '.') number.pop_back();
    head.EndingNumber = number;
  } else if (head.HasEndingRepeat) {
    for (int i = 1; i <= head.Ending.NumTotalPasses; ++i)
      head.EndingNumber += (i > 1 ? ", " : "") + std::to_string(head.Ending.Pass(i));
  }
}

void ToXml::FillMeasure(SkeletonState& state, const MeasureHead& head, XmlPart& part, int16_t index,
                        xml::XmlNode measure) {
  xml::XmlNode print, left, attributes, sound, right;
  if (head.NewPage || head.NewSystem) {
    print = Element("print");
    print.setAttribute(head.NewPage ? "new-page" : "new-system", "yes");
  }
  if (head.Number >= 2)
    AddKeyTimeTransposeChanges(state, head, part, index, attributes);
  else
    AddFirstAttributes(state, head, part, index, attributes);
  if (head.Number == 1 && InitialTempo > 0) {
    sound = Element("sound");
    sound.setAttribute("xtempo", std::to_string(InitialTempo));
  }
  if (head.Number == state.NextMultipleRest) AddMultipleRest(state, attributes);
  AddBarlines(head, left, right);
  for (xml::XmlNode* child : {&print, &left, &attributes, &sound, &right})
    if (*child) measure.appendChild(*child);
}

// Key, time and transposition that change in a measure after the first.
void ToXml::AddKeyTimeTransposeChanges(SkeletonState& state, const MeasureHead& head, XmlPart& part,
                                       int16_t index, xml::XmlNode& attributes) {
  auto attributesNode = [&]() -> xml::XmlNode& {
    if (!attributes) attributes = Element("attributes");
    return attributes;
  };
  for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
    if (part.StyleChangeMeasure.at(staff) != head.Number) continue;
    StaffSpec& spec = *part.StaffSpecs(staff);
    if (!spec.LoadCurrent(spec.Cmper(), head.Number, 0)) continue;
    part.InitializeFromStaffStyle(staff);
    part.NextStyleChange(staff);
  }
  state.TranspositionChanged = part.TransposeInterval != state.PartInterval[index] ||
                               part.TransposeKeySig != state.PartKeySig[index];
  if (state.TranspositionChanged) {
    state.PartInterval[index] = part.TransposeInterval;
    state.PartKeySig[index] = part.TransposeKeySig;
    state.PartKeyOptInterval[index] = part.TransposeKeyOptInterval;
  }
  // Key.
  int16_t oldKey = part.FloatKeys ? state.PartKey[index] : state.LastKey;
  int16_t key = KeyOfMeasure(head, part);
  if (key != oldKey || state.TranspositionChanged) {
    if (xml::XmlNode element = CreateKey(key, part, &oldKey)) {
      part.SetFinaleKey(key);
      attributesNode().appendChild(element);
    }
  }
  if (part.FloatKeys) state.PartKey[index] = key;
  // Time.
  AddTime(state, head, part, index, attributes, false);
  // Transposition.
  if (part.TransposeKeyOptInterval != state.PartKeyOptInterval[index] ||
      state.TranspositionChanged) {
    if (xml::XmlNode element = CreateTranspose(part, false)) attributesNode().appendChild(element);
  }
  state.PartKeyOptInterval[index] = part.TransposeKeyOptInterval;
}

// The key in force: the staff's own floating key, or the score's.
int16_t ToXml::KeyOfMeasure(const MeasureHead& head, const XmlPart& part) {
  if (!part.FloatKeys) return head.Spec.Key;
  MeasureFloat floating;
  if (floating.Load(part.StartStaff, head.Number) && (floating.Flag & kKeyFloatBit))
    return floating.Key;
  return head.Spec.Key;
}

// The time element when the meter changes, or in the first measure.
void ToXml::AddTime(SkeletonState& state, const MeasureHead& head, XmlPart& part, int16_t index,
                    xml::XmlNode& attributes, bool first) {
  int16_t beats = head.Beats, divBeat = head.DivBeat;
  bool compositeBeats = head.CompositeBeats, compositeDiv = head.CompositeDiv;
  bool symbol = head.Symbol;
  if (part.FloatTime)
    ParseTimeSignature(head.Spec, beats, divBeat, compositeBeats, compositeDiv, symbol,
                       part.StartStaff);
  int16_t oldBeats = part.FloatTime ? state.PartBeats[index] : state.LastBeats;
  int16_t oldDivbeat = part.FloatTime ? state.PartDivbeat[index] : state.LastDivbeat;
  if (!first && beats == oldBeats && divBeat == oldDivbeat) return;
  xml::XmlNode time = CreateTime(beats, divBeat, compositeBeats, compositeDiv, symbol);
  bool silent = part.NoTime || (head.Spec.Auxflag & kHiddenTimeBit);
  std::string beatsText = time.selectSingleNode("beats").text();
  std::string beatTypeText = time.selectSingleNode("beat-type").text();
  bool composite = compositeBeats || compositeDiv;
  bool sameText = part.FloatTime && composite && !first &&
                  beatsText == state.PartBeatsText[index] &&
                  beatTypeText == state.PartBeatTypeText[index];
  if (!silent && !sameText) {
    if (!attributes) attributes = Element("attributes");
    attributes.appendChild(time);
  }
  if (part.FloatTime) {
    state.PartBeats[index] = beats;
    state.PartDivbeat[index] = divBeat;
    state.PartBeatsText[index] = beatsText;
    state.PartBeatTypeText[index] = beatTypeText;
  }
}

// Divisions, key, time, staves, instruments, clefs and transposition of the first measure.
void ToXml::AddFirstAttributes(SkeletonState& state, const MeasureHead& head, XmlPart& part,
                               int16_t index, xml::XmlNode& attributes) {
  attributes = Element("attributes");
  attributes.appendChild(Element("divisions", "1024"));
  int16_t key = KeyOfMeasure(head, part);
  if (xml::XmlNode element = CreateKey(key, part, nullptr)) attributes.appendChild(element);
  part.SetFinaleKey(key);
  if (part.FloatKeys) state.PartKey[index] = key;
  AddTime(state, head, part, index, attributes, true);
  if (part.Staves() > 1) attributes.appendChild(Element("staves", std::to_string(part.Staves())));
  if (part.Instruments > 1)
    attributes.appendChild(Element("instruments", std::to_string(part.Instruments)));
  for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
    xml::XmlNode clef = attributes.appendChild(CreateClef(part.Clefs(staff)));
    if (part.Staves() > 1) clef.setAttribute("number", std::to_string(staff));
  }
  if (xml::XmlNode transpose = CreateTranspose(part, true)) attributes.appendChild(transpose);
  state.PartInterval[index] = part.TransposeInterval;
  state.PartKeySig[index] = part.TransposeKeySig;
  state.PartKeyOptInterval[index] = part.TransposeKeyOptInterval;
}

// The multiple rest that starts here; only the first part carries it.
void ToXml::AddMultipleRest(SkeletonState& state, xml::XmlNode& attributes) {
  int16_t count = static_cast<int16_t>(state.Rest.StopBefore - state.Rest.Cmper());
  xml::XmlNode style = Element("measure-style");
  xml::XmlNode rest = style.appendChild(Element("multiple-rest", std::to_string(count)));
  if ((state.Rest.Flag & kUseSymbolsBit) && count < state.Rest.SymbolMeasures)
    rest.setAttribute("use-symbols", "yes");
  if (!attributes) attributes = Element("attributes");
  attributes.appendChild(style);
  state.NextMultipleRest =
      state.Rest.GetNext(state.NextMultipleRest, 0) ? state.Rest.Cmper() : int16_t{0};
}

// Bar styles, repeats and endings of both ends of the measure.
void ToXml::AddBarlines(const MeasureHead& head, xml::XmlNode& left, xml::XmlNode& right) {
  // The barline of one side, made when first needed.
  auto Barline = [&](xml::XmlNode& side) -> xml::XmlNode& {
    if (!side) side = Element("barline");
    return side;
  };
  auto barStyle = [&](const std::string& style) { return Element("bar-style", style); };
  if (head.BarStyle.empty()) {
    if (head.ForwardRepeat) Barline(left).appendChild(barStyle("heavy-light"));
    if (head.BackwardRepeatEnd) Barline(right).appendChild(barStyle("light-heavy"));
  } else {
    Barline(right).appendChild(barStyle(head.BackwardRepeatEnd ? "light-heavy" : head.BarStyle));
  }
  if (head.HasEnding) {
    auto ending = [&](xml::XmlNode& side, const char* type) {
      xml::XmlNode element = Barline(side).appendChild(Element("ending"));
      element.setAttribute("number", head.EndingNumber);
      element.setAttribute("type", type);
    };
    if (head.HasEndingRepeat) ending(left, "start");
    if (head.HasBackwardRepeat)
      ending(right, "stop");
    else if (head.HasEndingRepeat && head.Ending.Nextend == 0)
      ending(right, "discontinue");
  }
  if (head.ForwardRepeat)
    Barline(left).appendChild(Element("repeat")).setAttribute("direction", "forward");
  if (head.BackwardRepeatEnd) {
    xml::XmlNode repeat = Barline(right).appendChild(Element("repeat"));
    repeat.setAttribute("direction", "backward");
    BackwardRepeat backward;
    if (!head.HasEnding && backward.Load(head.Number, 0) && (backward.Flag & kRepeatTimesBit) &&
        backward.Actuate > 2)
      repeat.setAttribute("times", std::to_string(backward.Actuate));
  }
  if (left) left.setAttribute("location", "left");
  if (right) right.setAttribute("location", "right");
}

// Every staff back at the start of the piece, for the content pass.
void ToXml::ResetPartsToStart() {
  for (int16_t index = 1; index <= NumberOfParts; ++index) {
    XmlPart& part = *XmlParts[index];
    part.Measure = 1;
    for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
      StaffSpec& spec = *part.StaffSpecs(staff);
      if (!spec.LoadCurrent(spec.Cmper(), 1, 0)) continue;
      part.InitializeFromStaffStyle(staff);
      part.NextStyleChange(staff);
    }
  }
}

void ToXml::AddFinalBarlines() {
  Settings09 barlines;
  if (!barlines.Load(-2, 0) || !barlines.FinalBarline) return;
  for (int16_t index = 1; index <= NumberOfParts; ++index) {
    xml::XmlNode last = XmlParts[index]->Part().selectSingleNode("measure[position()=last()]");
    if (!last || last.selectSingleNode("barline[@location='right']")) continue;
    xml::XmlNode barline = last.appendChild(Element("barline"));
    barline.setAttribute("location", "right");
    barline.appendChild(Element("bar-style", "light-heavy"));
  }
}

} // namespace ostin
