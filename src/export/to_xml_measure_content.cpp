// The content of one measure of one part: layers, voices, entries, clefs and directions.
#include <algorithm>
#include <array>

#include "export/to_xml.h"
#include "host/bridge.h"
#include "host/bridge_frames.h"
#include "host/frames/frame_bits.h"
#include "host/gfhold.h"
#include "model/arithmetic_numbers.h"
#include "shell/error_log.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kLoadMeasureHandler = Code(0x80040345);
constexpr int32_t kMissingMeasure = Code(0x80040495);
constexpr int32_t kLayerOverrun = Code(0x8004029C);
constexpr int32_t kInitializePartTablesHandler = Code(0x800402B1);
constexpr int32_t kLoadEmptyMeasureHandler = Code(0x8004034B);
constexpr int32_t kLoadMeasureItemHandler = Code(0x800404A8);
constexpr int32_t kLoadMeasureItemsHandler = Code(0x800404AA);
constexpr int32_t kAddClefHandler = Code(0x80040701);
constexpr int32_t kAddBeamsHandler = Code(0x8004034E);

constexpr int32_t kEndOfMeasure = 0x7FFFFFFF;
constexpr int16_t kWholeNote = 4096;
constexpr int16_t kQuarterNote = 1024;
constexpr int16_t kMaxBeamLevels = 6;
// Items this close to the cursor in time are taken in without an offset.
constexpr int32_t kItemSlack = 47;

// StaffSpec.MoreFlags and StaffSpec.Flag bits of the display flags.
constexpr int16_t kShowStemsBit = 0x10;
constexpr int16_t kShowBeamsBit = 0x400;
constexpr int16_t kShowTupletsBit = 0x2000;
constexpr int16_t kTupletsByStaffBit = 0x200;
constexpr int16_t kShowDotsBit = 0x8;
constexpr int16_t kShowRestsBit = 0x2;
constexpr int16_t kShowTiesBit = 0x4;
constexpr int16_t kStemsUpBit = 0x40;
constexpr int16_t kStemsDownBit = 0x20;

// Beam levels of the note types.
struct BeamType {
  std::string_view Type;
  int16_t Levels;
};
constexpr std::array<BeamType, 6> kBeamTypes{
    {{"eighth", 1}, {"16th", 2}, {"32nd", 3}, {"64th", 4}, {"128th", 5}, {"256th", 6}}};

int16_t LevelsOf(std::string_view type) {
  for (const BeamType& row : kBeamTypes)
    if (row.Type == type) return row.Levels;
  return 0;
}

// The beam text of one level from which of the three counts reach it.
std::string BeamText(int16_t level, int16_t previous, int16_t thisLevels, int16_t next) {
  if (level > thisLevels) return {};
  const bool before = level <= previous;
  const bool after = level <= next;
  if (before && after) return "continue";
  if (before) return "end";
  if (after) return "begin";
  return next <= previous ? "backward hook" : "forward hook";
}

// An attributes element counts as opening when only print and left barlines stand before it.
bool IsOpening(const xml::XmlNode& attributes) {
  for (xml::XmlNode node = attributes.previousSibling(); node; node = node.previousSibling()) {
    const std::string name = node.nodeName();
    if (name == "print") continue;
    if (name == "barline" && node.getAttribute("location") == "left") continue;
    return false;
  }
  return true;
}
} // namespace

// One of the four beam chains of a layer: the last element, how many levels join it to the
// element before, and its own levels.
struct ToXml::BeamChain {
  xml::XmlNode Element;
  int16_t Link = 0;
  int16_t Levels = 0;
  bool RestInBeam = false;
};

// The working variables of one LoadMeasure call; lengths in EDU.
struct ToXml::MeasureState {
  static constexpr int kVoiceOne = 0, kVoiceOneGrace = 1, kVoiceTwo = 2, kVoiceTwoGrace = 3;

  xml::XmlNode MeasureElement;
  Gfhold Holder;
  Tgf Frame;
  int32_t Position = 0;
  int32_t Voice1Position = 0;
  int32_t Voice2Position = 0;
  int32_t LaunchLength = 0;
  bool InVoice2 = false;
  xml::XmlNode FirstElement;
  xml::XmlNode LastElement;
  std::vector<xml::XmlNode> HereElements, FirstElements;
  xml::XmlNode PendingNotations;
  std::array<BeamChain, 4> Chains;

  // The staff being written.
  int16_t Slot = 0;
  int16_t Instrument = 0;
  int16_t StaffNumber = 0;
  int16_t OldClef = 0;
  int16_t ClefIndex = 1;
  int16_t NextClef = 0;
  int32_t NextClefEdu = 0;
  bool ClefsPending = false;
  int16_t FrameLayers = 0;
  int16_t VisibleFrameLayers = 0;
  int16_t Layer = 0;

  BeamChain& ChainOf(bool voiceTwo, bool grace) {
    return Chains[(voiceTwo ? kVoiceTwo : kVoiceOne) + (grace ? 1 : 0)];
  }
};

void ToXml::InitializePartTables(XmlPart& part) {
  Guarded("ToXml InitializePartTables error ", kInitializePartTablesHandler, [&] {
    const size_t size = static_cast<size_t>(std::max<int16_t>(part.Staves(), 0)) + 1;
    for (auto* table : {&ShowStems, &ShowBeams, &ShowTuplets, &ShowDots, &ShowRests, &ShowTies})
      table->assign(size, true);
    StaffStemsUp.assign(size, false);
    StaffStemsDown.assign(size, false);
    OctaveShift.assign(size, 0);
    Stemming_.UseMetrics = StemmingUseMetrics;
    WavyLineOpen.assign(size, false);
    if (FinaleVersion < 2003) return;
    for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
      const auto& spec = part.StaffSpecs(staff);
      if (!spec) continue;
      const int16_t more = spec->MoreFlags;
      ShowStems[staff] = more & kShowStemsBit;
      ShowBeams[staff] = ShowStems[staff] && (more & kShowBeamsBit);
      ShowTuplets[staff] = !(spec->Flag & kTupletsByStaffBit) || (more & kShowTupletsBit);
      ShowDots[staff] = more & kShowDotsBit;
      ShowRests[staff] = more & kShowRestsBit;
      ShowTies[staff] = more & kShowTiesBit;
      StaffStemsUp[staff] = more & kStemsUpBit;
      StaffStemsDown[staff] = more & kStemsDownBit;
    }
  });
}

void ToXml::LoadMeasure(XmlPart& part) {
  MeasureState state;
  state.Holder.SetFinaleVersion(FinaleVersion);
  try {
    for (int16_t staff = 1; staff <= part.Staves(); ++staff)
      LoadStaff(state, part, staff);
    // The end of the measure for shapes comes with the shapes' own stage.
    const xml::XmlNode measure = state.MeasureElement;
    if (const xml::XmlNode right = measure.selectSingleNode("barline[@location='right']"))
      measure.appendChild(measure.removeChild(right));
    for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
      if (part.Measure != part.StyleChangeMeasure.at(staff) ||
          !part.OutOfRange(staff, kEndOfMeasure))
        continue;
      SwitchStaffStyle(measure, part, staff, kEndOfMeasure, false);
      part.InitializeStringTuning();
    }
  } catch (...) {
    if (state.Frame.Loaded()) state.Frame.Free();
    Failure failure = CurrentFailure();
    Register(failure);
    if (failure.IsOwn()) throw failure;
    WriteLog("ToXml LoadMeasure error " + std::to_string(failure.Number) + " in staff " +
             std::to_string(state.Instrument) + ", measure " + std::to_string(part.Measure) +
             ": \r\n" + failure.Description);
    throw Failure::Internal(kLoadMeasureHandler);
  }
}

// The part's measure element of the current measure; the skeleton noted each one as it made
// it, so no search of the part is needed.
xml::XmlNode ToXml::MeasureElementOf(const XmlPart& part) const {
  bool noted = part.Number >= 1 && part.Number < static_cast<int16_t>(MeasureElements.size()) &&
               part.Measure >= 1 &&
               part.Measure < static_cast<int16_t>(MeasureElements[part.Number].size());
  if (noted) return MeasureElements[part.Number][part.Measure];
  if (!part.Part()) return xml::XmlNode();
  return part.Part().selectSingleNode("measure[" + std::to_string(part.Measure) + "]");
}

void ToXml::LoadStaff(MeasureState& state, XmlPart& part, int16_t staff) {
  state.Slot = static_cast<int16_t>(part.StartSlot + staff - 1);
  state.Instrument = FxSlotToInst(state.Slot, 0);
  state.MeasureElement = MeasureElementOf(part);
  if (!state.MeasureElement)
    RaiseLogged("Cannot find XML measure " + std::to_string(part.Measure) + " in staff " +
                    std::to_string(state.Instrument),
                kMissingMeasure);
  LastBeamOnStem = {};
  state.OldClef = part.Clefs(staff);
  if (part.Measure == 1)
    SwitchStaffStyle(state.MeasureElement, part, staff, 0, true);
  else if (part.Measure == part.StyleChangeMeasure.at(staff) && part.StyleChangeEdu.at(staff) == 0)
    SwitchStaffStyle(state.MeasureElement, part, staff, 0, false);
  if (const xml::XmlNode key = state.MeasureElement.selectSingleNode("attributes/key"))
    part.SetKey(key);
  if (const xml::XmlNode transpose = state.MeasureElement.selectSingleNode("attributes/transpose"))
    part.SetTranspose(transpose);
  state.StaffNumber = part.Staves() > 1 ? staff : 0;
  if (!state.Holder.Load(state.Instrument, part.Measure)) {
    LoadStaffWithoutFrames(state, part, staff, false);
    return;
  }
  ReadHolderClefs(state, part, staff);
  CountFrameLayers(state, part.Measure);
  for (int16_t layer = 0; layer < 4; ++layer)
    if (state.Holder.FrameOf(layer) > 0) LoadLayer(state, part, staff, layer);
  if (state.FrameLayers == 0) LoadStaffWithoutFrames(state, part, staff, true);
  FinishStaff(state, part, state.LastElement);
}

void ToXml::ReadHolderClefs(MeasureState& state, XmlPart& part, int16_t staff) {
  Gfhold& holder = state.Holder;
  state.ClefIndex = 1;
  if (part.ClefChange) {
    state.NextClef = holder.Clefs(1);
    state.NextClefEdu = static_cast<int32_t>(holder.ClefEdus(1));
  } else {
    state.NextClef = part.Clefs(staff);
    state.NextClefEdu = 0;
  }
  const bool startClef = part.ClefChange
                             ? state.NextClefEdu == 0 && state.NextClef != part.Clefs(staff)
                             : state.OldClef != state.NextClef;
  if (startClef) {
    AddClef(state.MeasureElement, StaffClef(state.NextClef, state.StaffNumber), state.StaffNumber);
    if (part.ClefChange) part.SetClefs(staff, state.NextClef);
  }
  state.ClefsPending = holder.ClefMax() >= 2 && part.ClefChange;
  if (state.ClefsPending && state.NextClefEdu == 0) {
    state.ClefIndex = 2;
    state.NextClef = holder.Clefs(2);
    state.NextClefEdu = static_cast<int32_t>(holder.ClefEdus(2));
  }
}

// Counts the layers with a frame, and from 2002 on those that hold a visible entry.
void ToXml::CountFrameLayers(MeasureState& state, int16_t measure) {
  state.FrameLayers = 0;
  state.VisibleFrameLayers = 0;
  for (int16_t layer = 0; layer < 4; ++layer) {
    if (state.Holder.FrameOf(layer) <= 0) continue;
    ++state.FrameLayers;
    if (FinaleVersion < 2002) continue;
    state.Frame.Load(0, state.Slot, measure, layer, true);
    for (int i = 1; i <= state.Frame.NumEntries; ++i)
      if (!(state.Frame.Entries(i)->Ef & kEfHidden)) {
        ++state.VisibleFrameLayers;
        break;
      }
    state.Frame.Free();
  }
}

void ToXml::LoadLayer(MeasureState& state, XmlPart& part, int16_t staff, int16_t layer) {
  state.Layer = layer;
  part.Layers.at(staff) = layer;
  if (state.Position > 0) {
    state.MeasureElement.appendChild(CursorMove("backup", state.Position));
    state.Position = 0;
    state.Voice1Position = 0;
  }
  state.LastElement = {};
  state.Chains = {};
  LastBeamOnStem = {};
  state.InVoice2 = false;
  LayerStem = LayerPrefs_[layer].DefaultStem(state.FrameLayers, state.VisibleFrameLayers);
  state.Frame.Load(0, state.Slot, part.Measure, layer, true);
  for (int16_t index = 1; index <= state.Frame.NumEntries; ++index)
    LoadLayerEntry(state, part, staff, index);
  CheckLayerFits(state, part, staff);
  WriteClefsLeftOver(state, part, staff);
  for (BeamChain& chain : state.Chains)
    CloseBeamChain(chain, staff);
  state.Frame.Free();
}

// A frame whose entries run past the end of its measure contradicts the measure's time: the
// voices of the part could not be lined up, so the export stops here.
void ToXml::CheckLayerFits(const MeasureState& state, const XmlPart& part, int16_t staff) {
  const int32_t length = FxGetMeasureDuration(state.Frame.Inst, part.Measure);
  if (state.Voice1Position <= length) return;
  RaiseLogged("ToXml LoadMeasure: the entries of layer " + std::to_string(state.Layer + 1) +
                  " of staff " + std::to_string(staff) + " last " +
                  std::to_string(state.Voice1Position) + " EDU in a measure of " +
                  std::to_string(length),
              kLayerOverrun);
}

void ToXml::LoadLayerEntry(MeasureState& state, XmlPart& part, int16_t staff, int16_t index) {
  Entry& entry = *state.Frame.Entries(index);
  const int32_t ef = entry.Ef;
  const bool voiceTwo = ef & kEfVoiceTwo;
  SwitchVoice(state, part, staff, voiceTwo);
  TestStyleChange(state, part, staff);
  if (state.ClefsPending &&
      (voiceTwo ? state.Voice2Position : state.Voice1Position) >= state.NextClefEdu) {
    WritePendingClef(state, part, staff);
    TakeNextClef(state);
  }
  LoadItemsAt(state, part, state.Position, false);
  WriteItems(state);

  // A whole rest alone in its frame fills the measure, whatever its time signature.
  const bool measureRest =
      !(ef & kEfNote) && entry.Dura == kWholeNote && state.Frame.NumEntries == 1;
  const int32_t length = measureRest ? FxGetMeasureDuration(state.Frame.Inst, part.Measure)
                                     : static_cast<int32_t>(entry.Actdur);
  PlaceEntryStem(state, part, staff, index);

  const xml::XmlNode written =
      LoadEntry(entry, state.Frame, state.MeasureElement, part, staff, index);
  state.LastElement = written;
  if (!state.FirstElement) state.FirstElement = written;
  if (state.PendingNotations) {
    xml::XmlNode target = state.ChainOf(state.InVoice2, false).Element;
    if (!target) target = written;
    if (target && target.nodeName() == "note") {
      AddNotations(target, state.PendingNotations);
      RemoveDuplicateWavyLine(target);
    }
    state.PendingNotations = {};
  }

  if (voiceTwo) {
    state.Voice2Position += length;
    state.InVoice2 = true;
  } else {
    state.Voice1Position += length;
    state.LaunchLength = (ef & kEfLaunchesVoiceTwo) ? length : 0;
    state.InVoice2 = false;
  }
  state.Position += length;
  LinkBeams(state, entry, staff);
  TestStyleChange(state, part, staff);
}

void ToXml::SwitchVoice(MeasureState& state, XmlPart& part, int16_t staff, bool voiceTwo) {
  if (voiceTwo && !state.InVoice2) {
    // Each run of voice two counts from its own start.
    state.Voice2Position = 0;
    if (state.LaunchLength > 0) {
      state.MeasureElement.appendChild(CursorMove("backup", state.LaunchLength));
      state.Position -= state.LaunchLength;
    }
    return;
  }
  if (voiceTwo || !state.InVoice2) return;
  for (int chain : {MeasureState::kVoiceTwo, MeasureState::kVoiceTwoGrace}) {
    CloseBeamChain(state.Chains[chain], staff);
    state.Chains[chain] = {};
  }
  const int32_t gap = state.Voice2Position - state.LaunchLength;
  if (gap > 0) state.MeasureElement.appendChild(CursorMove("backup", gap));
  if (gap < 0) {
    // Voice two stopped short of the launching entry: its own voice makes up the rest.
    const int16_t voice = static_cast<int16_t>(state.Layer + 5 + 8 * (staff - 1));
    xml::XmlNode forward = CursorMove("forward", -gap);
    forward.appendChild(Element("voice", std::to_string(voice)));
    state.MeasureElement.appendChild(forward);
    NoteVoice(part, voice);
  }
  state.Position -= gap;
}

void ToXml::PlaceEntryStem(MeasureState& state, const XmlPart& part, int16_t staff, int16_t index) {
  Entry& entry = *state.Frame.Entries(index);
  const int32_t ef = entry.Ef;
  const int voice = (ef & kEfVoiceTwo) ? 1 : 0;
  const bool shortNewBeam = entry.Dura < kQuarterNote && (ef & kEfNewBeam);
  const std::string lastBeam =
      entry.Dura < kQuarterNote && !(ef & kEfNewBeam) ? LastBeamOnStem[voice] : std::string();
  Stemming_.GetEntryStem(state.Frame, index, state.Holder, part, staff, LayerStem, lastBeam,
                         XmlStem, FinaleStem, BeamStart);
  if (FinaleVersion >= 2003 && !(!LayerStem.empty() && state.VisibleFrameLayers >= 2)) {
    if (StaffStemsUp.at(staff))
      XmlStem = "up";
    else if (StaffStemsDown.at(staff))
      XmlStem = "down";
  }
  if (shortNewBeam || BeamStart) {
    if (ef & kEfNote) {
      LastBeamOnStem[voice] = XmlStem.empty() || XmlStem == "double" ? FinaleStem : XmlStem;
    } else {
      int16_t howMany = 0;
      LastBeamOnStem[voice] =
          Stemming_.DefaultStem(state.Frame, index, state.Holder, part, staff, true, howMany);
    }
  } else if (entry.Dura >= kQuarterNote) {
    LastBeamOnStem[voice].clear();
  }
}

// Joins the written element to the beam chain of its voice.
void ToXml::LinkBeams(MeasureState& state, Entry& entry, int16_t staff) {
  const xml::XmlNode element = state.LastElement;
  const int32_t ef = entry.Ef;
  bool isRest = true;
  std::string type;
  if (element.nodeName() == "forward") {
    const auto duration = NumericValue(ChildText(element, "duration").value_or(""));
    int16_t dots = 0;
    if (duration) ParseDuration(static_cast<int32_t>(*duration), type, dots);
  } else {
    isRest = static_cast<bool>(ChildElement(element, "rest"));
    type = ChildText(element, "type").value_or("");
  }
  const int16_t levels = LevelsOf(type);
  int16_t link = (ef & kEfNewBeam) ? 0 : levels;
  if ((ef & kEfSecondaryBeamBreaks) && link >= 1) {
    SecondaryBeamBreakMods breaks;
    if (breaks.Load(entry.Entnum, 0))
      for (int16_t i = 1; i <= levels - 1; ++i)
        if (breaks.Breaks.at(i - 1) != 0) {
          link = i;
          break;
        }
  }
  const bool grace = ef & kEfGrace;
  const bool voiceTwo = ef & kEfVoiceTwo;
  BeamChain& chain = state.ChainOf(voiceTwo, grace);
  BeamChain& graceChain = state.ChainOf(voiceTwo, true);
  if (isRest && levels != 0 && link != 0) {
    // A rest under a beam: only the primary beam runs across it.
    chain.RestInBeam = true;
    return;
  }
  if (chain.RestInBeam && link >= 2) link = 1;
  if (ShowBeams.at(staff)) AddBeams(chain.Element, chain.Link, chain.Levels, link);
  chain.Element = element;
  chain.Link = std::min(chain.Levels, link);
  chain.Levels = isRest && chain.Link < 1 ? int16_t{0} : levels;
  if (!grace) {
    CloseBeamChain(graceChain, staff);
    graceChain.Element = {};
    graceChain.Link = 0;
    graceChain.Levels = 0;
    chain.RestInBeam = false;
  }
  graceChain.RestInBeam = false;
}

void ToXml::WritePendingClef(MeasureState& state, XmlPart& part, int16_t staff) {
  if (state.NextClef == part.Clefs(staff)) return;
  xml::XmlNode attributes = Element("attributes");
  attributes.appendChild(StaffClef(state.NextClef, state.StaffNumber));
  state.MeasureElement.appendChild(attributes);
  part.SetClefs(staff, state.NextClef);
}

void ToXml::TakeNextClef(MeasureState& state) {
  if (state.ClefIndex >= state.Holder.ClefMax()) {
    state.ClefsPending = false;
    return;
  }
  ++state.ClefIndex;
  state.NextClef = state.Holder.Clefs(state.ClefIndex);
  state.NextClefEdu = static_cast<int32_t>(state.Holder.ClefEdus(state.ClefIndex));
}

// Clefs behind the last entry of the layer: the cursor moves to each before it goes out.
void ToXml::WriteClefsLeftOver(MeasureState& state, XmlPart& part, int16_t staff) {
  while (state.ClefsPending) {
    if (state.NextClef != part.Clefs(staff)) {
      if (state.Position > state.NextClefEdu)
        state.MeasureElement.appendChild(CursorMove("backup", state.Position - state.NextClefEdu));
      else if (state.Position < state.NextClefEdu)
        state.MeasureElement.appendChild(CursorMove("forward", state.NextClefEdu - state.Position));
      state.Position = state.NextClefEdu;
      WritePendingClef(state, part, staff);
      TestStyleChange(state, part, staff);
    }
    TakeNextClef(state);
  }
}

void ToXml::TestStyleChange(MeasureState& state, XmlPart& part, int16_t staff) {
  if (part.Measure == part.StyleChangeMeasure.at(staff) && part.OutOfRange(staff, state.Position))
    SwitchStaffStyle(state.MeasureElement, part, staff, state.Position, false);
}

// A staff without a frame holder, or with one that names no frame: a rest fills the measure.
void ToXml::LoadStaffWithoutFrames(MeasureState& state, XmlPart& part, int16_t staff,
                                   bool hasHolder) {
  if (!hasHolder && !part.ClefChange && state.OldClef != part.Clefs(staff)) {
    AddClef(state.MeasureElement, StaffClef(part.Clefs(staff), state.StaffNumber),
            state.StaffNumber);
  }
  if (state.Position > 0) {
    state.MeasureElement.appendChild(CursorMove("backup", state.Position));
    state.Position = 0;
    state.Voice1Position = 0;
    TestStyleChange(state, part, staff);
  }
  LoadItemsAt(state, part, 0, false);
  WriteItems(state);
  int32_t length = 0;
  const xml::XmlNode rest = LoadEmptyMeasure(state.MeasureElement, part, staff, length);
  state.Voice1Position = length;
  state.InVoice2 = false;
  state.Position = state.Voice1Position;
  TestStyleChange(state, part, staff);
  if (hasHolder) return;
  state.FirstElement = rest;
  if (state.PendingNotations) AddNotations(rest, state.PendingNotations);
  state.PendingNotations = {};
  FinishStaff(state, part, rest);
}

// Takes every item left in the measure; a pending notations goes to the target note.
void ToXml::FinishStaff(MeasureState& state, XmlPart& part, xml::XmlNode target) {
  LoadItemsAt(state, part, state.Position, true);
  if (state.PendingNotations && target && target.nodeName() == "note")
    AddNotations(target, state.PendingNotations);
  state.PendingNotations = {};
  WriteItems(state);
}

void ToXml::LoadItemsAt(MeasureState& state, XmlPart& part, int32_t position, bool allRemaining) {
  LoadMeasureItems(part.Measure, position, part, state.Slot, state.StaffNumber, state.HereElements,
                   state.PendingNotations, state.FirstElements, allRemaining);
}

// Items due here go behind the music; those placed first go before all music of the measure.
void ToXml::WriteItems(MeasureState& state) {
  for (const xml::XmlNode& element : state.HereElements)
    state.MeasureElement.appendChild(element);
  for (const xml::XmlNode& element : state.FirstElements)
    state.MeasureElement.insertBefore(element, state.FirstElement);
  state.HereElements.clear();
  state.FirstElements.clear();
}

void ToXml::CloseBeamChain(BeamChain& chain, int16_t staff) {
  if (ShowBeams.at(staff)) AddBeams(chain.Element, chain.Link, chain.Levels, 0);
}

// A clef, numbered by its staff in a part of several staves.
xml::XmlNode ToXml::StaffClef(int16_t clef, int16_t staffNumber) {
  xml::XmlNode element = CreateClef(clef);
  if (staffNumber > 0) element.setAttribute("number", std::to_string(staffNumber));
  return element;
}

xml::XmlNode ToXml::CursorMove(const char* name, int32_t duration) {
  xml::XmlNode move = Element(name);
  move.appendChild(Element("duration", std::to_string(duration)));
  return move;
}

// Notes a voice number as written; numbers outside the part's voices are not kept.
void ToXml::NoteVoice(XmlPart& part, int16_t voice) {
  if (part.GetVoicesUsed(voice)) return;
  part.SetVoicesUsed(voice, true);
  if (part.GetVoicesUsed(voice)) ++part.Voices;
}

void ToXml::LoadMeasureItems(int16_t measure, int32_t position, XmlPart& part, int16_t slot,
                             int16_t staffNumber, std::vector<xml::XmlNode>& hereElements,
                             xml::XmlNode& pendingNotations,
                             std::vector<xml::XmlNode>& firstElements, bool allRemaining) {
  Guarded("ToXml LoadMeasureItems error ", kLoadMeasureItemsHandler, [&] {
    hereElements.clear();
    firstElements.clear();
    pendingNotations = {};
    if (slot < 1 || static_cast<size_t>(slot) >= MeasureItemCursor.size() ||
        static_cast<size_t>(slot) >= MeasureItems_.size())
      return;
    int32_t& cursor = MeasureItemCursor[slot];
    const ostin::MeasureItems& items = MeasureItems_[slot];
    while (cursor > 0 && cursor <= items.Count()) {
      const MeasureItem& item = items.Item(cursor);
      if (item.Measure() != measure || !(allRemaining || ItemDue(item.Edu, position))) break;
      bool placeFirst = false;
      const xml::XmlNode element = LoadMeasureItem(item, part, slot, placeFirst, staffNumber);
      const std::string name = element ? element.nodeName() : std::string();
      if (name == "notations") {
        if (pendingNotations) {
          while (const xml::XmlNode child = element.firstChild())
            pendingNotations.appendChild(child);
        } else {
          pendingNotations = element;
        }
      }
      if (name == "direction" || name == "sound")
        (placeFirst ? firstElements : hereElements).push_back(element);
      if (name == "direction") {
        const int32_t offset = ItemOffset(placeFirst, item.Edu, position);
        if (offset != 0)
          InsertBeforeFirstOf(element, Element("offset", std::to_string(offset)),
                              "footnote | level | voice | staff | sound");
      }
      cursor = cursor < items.Count() ? cursor + 1 : 0;
    }
  });
}

int32_t ToXml::ItemOffset(bool placeFirst, int32_t itemEdu, int32_t position) {
  int32_t offset = 0;
  if (itemEdu > 0) offset = placeFirst ? itemEdu : itemEdu - position;
  return offset >= -kItemSlack && offset <= kItemSlack ? 0 : offset;
}

xml::XmlNode ToXml::LoadMeasureItem(const MeasureItem&, XmlPart&, int16_t, bool& placeFirst,
                                    int16_t) {
  return Guarded("ToXml LoadMeasureItem error ", kLoadMeasureItemHandler, [&] {
    // Shapes, expressions, text repeats and measure texts come with their own stage.
    placeFirst = false;
    return xml::XmlNode();
  });
}

xml::XmlNode ToXml::LoadEmptyMeasure(xml::XmlNode measure, XmlPart& part, int16_t staff,
                                     int32_t& duration) {
  return Guarded("ToXml LoadEmptyMeasure error ", kLoadEmptyMeasureHandler, [&] {
    const int16_t instrument = FxSlotToInst(static_cast<int16_t>(part.StartSlot + staff - 1), 0);
    duration = FxGetMeasureDuration(instrument, part.Measure);
    xml::XmlNode note = Element("note");
    note.appendChild(Element("rest"));
    note.appendChild(Element("duration", std::to_string(duration)));
    const int16_t voice = static_cast<int16_t>(part.Layers.at(staff) + 1 + 8 * (staff - 1));
    note.appendChild(Element("voice", std::to_string(voice)));
    NoteVoice(part, voice);
    if (part.Staves() > 1) note.appendChild(Element("staff", std::to_string(staff)));
    return measure.appendChild(note);
  });
}

void ToXml::AddClef(xml::XmlNode measure, xml::XmlNode clef, int16_t number) {
  Guarded("ToXml AddClef error ", kAddClefHandler, [&] {
    xml::XmlNode attributes = ChildElement(measure, "attributes");
    if (attributes && !IsOpening(attributes)) attributes = {};
    if (!attributes) {
      attributes = Element("attributes");
      const xml::XmlNode left = measure.selectSingleNode("barline[@location='left']");
      measure.insertBefore(attributes, left ? left.nextSibling() : measure.firstChild());
      attributes.appendChild(clef);
      return;
    }
    const std::string path =
        number > 0 ? "clef[@number='" + std::to_string(number) + "']" : std::string("clef");
    if (const xml::XmlNode old = attributes.selectSingleNode(path)) {
      attributes.replaceChild(clef, old);
      return;
    }
    InsertBeforeFirstOf(attributes, clef, "staff-details | transpose | directive | measure-style");
  });
}

void ToXml::AddBeams(xml::XmlNode element, int16_t previous, int16_t thisLevels, int16_t next) {
  Guarded("ToXml AddBeams error ", kAddBeamsHandler, [&] {
    if (!element || element.nodeName() != "note" || ChildElement(element, "rest") ||
        ChildElement(element, "beam"))
      return;
    bool written = false;
    if (thisLevels != 0 && (previous != 0 || next != 0))
      for (int16_t level = 1; level <= kMaxBeamLevels; ++level) {
        const std::string text = BeamText(level, previous, thisLevels, next);
        if (text.empty()) continue;
        xml::XmlNode beam = Element("beam", text);
        beam.setAttribute("number", std::to_string(level));
        InsertBeforeFirstOf(element, beam, "notations | lyric");
        written = true;
      }
    if (written || !GraceAlwaysSlash) return;
    // The attribute is set in place, so that the chains that hold the note keep it.
    if (const xml::XmlNode grace = ChildElement(element, "grace"))
      grace.setAttribute("slash", "yes");
  });
}

void ToXml::AddNotations(xml::XmlNode note, xml::XmlNode notations) {
  note.insertBefore(notations, ChildElement(note, "lyric"));
}

void ToXml::InsertBeforeFirstOf(xml::XmlNode parent, xml::XmlNode child,
                                const std::string& following) {
  parent.insertBefore(child, parent.selectSingleNode(following));
}

} // namespace ostin
