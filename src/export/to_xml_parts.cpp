// The part list: staves merged into parts, groups, instruments and their MIDI set-up.
#include <algorithm>

#include "export/to_xml.h"
#include "host/bridge.h"
#include "model/arithmetic_midi.h"
#include "model/arithmetic_numbers.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kInitializePartsHandler = Code(0x80040320);
constexpr int32_t kPruneInstrumentsHandler = Code(0x800402DF);
constexpr int32_t kLoadScoreInstrumentsHandler = Code(0x80040298);
constexpr int32_t kLoadMidiInstrumentHandler = Code(0x80040299);
constexpr int32_t kRangeCheckHandler = Code(0x8004029A);
constexpr int32_t kFindXmlPartHandler = Code(0x8004029B);
constexpr int32_t kStaffSpecAbsent = Code(0x80040304);
constexpr int16_t kBrace = 3;
constexpr int16_t kHiddenGroupNames = static_cast<int16_t>(0x8000);
constexpr int16_t kHiddenStaffNames = 0x100;
constexpr int16_t kLastMeasure = 32767;
constexpr int32_t kLastEdu = 0x7FFFFFFF;
constexpr int kSources = 5;

std::string Trimmed(const std::string& text) {
  size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool Named(const std::string& text) {
  return !Trimmed(text).empty();
}

std::string GroupSymbol(int16_t bracket) {
  if (bracket == 3 || bracket == 5) return "brace";
  if (bracket == 1) return "line";
  return "bracket";
}
} // namespace

// The working tables of the part list, by staff slot and by group, from 1.
struct ToXml::PartListState {
  std::vector<std::shared_ptr<StaffSpec>> SlotStaff;
  std::vector<std::string> SlotFullName, SlotAbbrevName;
  std::vector<int16_t> SlotStaves, SlotPart, SlotGroupLevel;
  std::vector<GroupSpec> Groups;
  std::vector<std::string> GroupFullName, GroupAbbrevName;
  std::vector<bool> GroupIsWritten;
  int16_t MergedAway = 0;

  int16_t GroupCount() const { return static_cast<int16_t>(Groups.size()) - 1; }
};

void ToXml::InitializeParts() {
  Guarded("ToXml InitializeParts error ", kInitializePartsHandler, [&] {
    PartListState state;
    ReadSlots(state);
    ReadGroups(state);
    for (int16_t group = 1; group <= state.GroupCount(); ++group)
      DecideGroup(state, group);
    NumberOfParts = static_cast<int16_t>(NumberOfStaves - state.MergedAway);
    CreateXmlParts(state);
    WriteScoreParts(state);
    WriteGroups(state);
    ThinDeviceNames();
    LoadTimeSignatureAbbreviations();
  });
}

void ToXml::ReadSlots(PartListState& state) {
  size_t size = NumberOfStaves + 1;
  state.SlotStaff.resize(size);
  state.SlotFullName.resize(size);
  state.SlotAbbrevName.resize(size);
  state.SlotStaves.assign(size, 1);
  state.SlotPart.assign(size, 0);
  state.SlotGroupLevel.assign(size, 0);
  for (int16_t slot = 1; slot <= NumberOfStaves; ++slot) {
    InstrumentUsed used;
    used.MustLoad(0, static_cast<int16_t>(slot - 1));
    auto staff = std::make_shared<StaffSpec>();
    staff->FinaleVersion = FinaleVersion;
    if (!staff->Load(used.Inst, 0))
      RaiseLogged("ToXml InitializeParts: staff " + std::to_string(used.Inst) + " of slot " +
                      std::to_string(slot) + " has no StaffSpec",
                  kStaffSpecAbsent);
    state.SlotFullName[slot] = staff->FullNameText();
    state.SlotAbbrevName[slot] = staff->AbbrvNameText();
    state.SlotStaff[slot] = std::move(staff);
  }
}

void ToXml::ReadGroups(PartListState& state) {
  state.Groups.resize(1);
  state.GroupFullName.resize(1);
  state.GroupAbbrevName.resize(1);
  int16_t previous = 0;
  // The score's own groups have Cmper 0; those of part extractions follow them. Each group
  // is a record object of its own: an object reads its name texts once.
  for (;;) {
    GroupSpec group;
    group.FinaleVersion = FinaleVersion;
    if (!group.GetNext(0, previous) || group.Cmper() != 0) break;
    state.GroupFullName.push_back(group.FullNameText());
    state.GroupAbbrevName.push_back(group.AbrvNameText());
    state.Groups.push_back(group);
    previous = group.Inci();
  }
  state.GroupIsWritten.assign(state.Groups.size(), true);
}

void ToXml::DecideGroup(PartListState& state, int16_t index) {
  GroupSpec& group = state.Groups[index];
  int16_t first = FxInstToSlot(group.StartInst, 0);
  int16_t last = FxInstToSlot(group.EndInst, 0);
  bool hidden = group.Flag & kHiddenGroupNames;
  std::string groupName = hidden ? "" : state.GroupFullName[index];
  std::string groupAbbrev = hidden ? "" : state.GroupAbbrevName[index];
  auto staffName = [&](int16_t slot, bool full) -> std::string {
    if (state.SlotStaff[slot]->Instflag & kHiddenStaffNames) return {};
    return full ? state.SlotFullName[slot] : state.SlotAbbrevName[slot];
  };
  if (group.BracketID == kBrace) {
    for (int16_t earlier = 1; earlier < index; ++earlier) {
      const GroupSpec& other = state.Groups[earlier];
      if (other.StartInst == group.StartInst && other.EndInst == group.EndInst &&
          other.BracketID == group.BracketID)
        return;
    }
    if (!RangeCheck(first, last)) return;
    for (int16_t slot = first; slot <= last; ++slot) {
      bool groupNamed = Named(groupName) || Named(groupAbbrev);
      bool staffNamed = Named(staffName(slot, true)) || Named(staffName(slot, false));
      if (groupNamed && staffNamed) return;
      if (!Named(groupName)) groupName = staffName(slot, true);
      if (!Named(groupAbbrev)) groupAbbrev = staffName(slot, false);
    }
    state.SlotStaves[first] = static_cast<int16_t>(last - first + 1);
    state.MergedAway = static_cast<int16_t>(state.MergedAway + last - first);
    for (int16_t slot = first + 1; slot <= last; ++slot)
      state.SlotStaves[slot] = 0;
    if (Named(groupName))
      state.SlotFullName[first] = groupName;
    else if (Named(state.GroupFullName[index]))
      state.SlotFullName[first] = state.GroupFullName[index];
    if (Named(groupAbbrev))
      state.SlotAbbrevName[first] = groupAbbrev;
    else if (Named(state.GroupAbbrevName[index]))
      state.SlotAbbrevName[first] = state.GroupAbbrevName[index];
    state.GroupIsWritten[index] = false;
    return;
  }
  if (group.BracketID != 0) return;
  if (!Named(state.GroupFullName[index]) && !Named(state.GroupAbbrevName[index])) {
    state.GroupIsWritten[index] = false;
    return;
  }
  bool staffNamed = Named(staffName(first, true)) || Named(staffName(first, false));
  if (group.StartInst == group.EndInst && !staffNamed && Named(groupName)) {
    state.SlotFullName[first] = groupName;
    if (Named(groupAbbrev)) state.SlotAbbrevName[first] = groupAbbrev;
    state.GroupIsWritten[index] = false;
  }
}

void ToXml::CreateXmlParts(PartListState& state) {
  XmlParts.clear();
  XmlParts.emplace_back();
  int16_t slot = 1;
  for (int16_t number = 1; number <= NumberOfParts; ++number) {
    auto part = std::make_unique<XmlPart>();
    part->FinaleVersion = FinaleVersion;
    part->Number = number;
    part->StartSlot = slot;
    part->StartStaff = FxSlotToInst(slot, 0);
    part->SetStaves(state.SlotStaves[slot]);
    part->Measure = 1;
    part->MeasureNumber = "1";
    for (int16_t staff = 1; staff <= part->Staves(); ++staff) {
      int16_t at = static_cast<int16_t>(slot + staff - 1);
      state.SlotPart[at] = number;
      part->SetStaffSpecs(staff, state.SlotStaff[at]);
      StaffSpec& spec = *part->StaffSpecs(staff);
      if (!spec.LoadCurrent(spec.Cmper(), 1, 0)) continue;
      part->InitializeFromStaffStyle(staff);
      part->NextStyleChange(staff);
    }
    slot = static_cast<int16_t>(slot + state.SlotStaves[slot]);
    XmlParts.push_back(std::move(part));
  }
}

void ToXml::WriteScoreParts(PartListState& state) {
  xml::XmlNode partList = root_.appendChild(Element("part-list"));
  for (int16_t number = 1; number <= NumberOfParts; ++number) {
    XmlPart& part = *XmlParts[number];
    std::string id = "P" + std::to_string(number);
    xml::XmlNode scorePart = partList.appendChild(Element("score-part"));
    scorePart.setAttribute("id", id);
    part.SetScorePart(scorePart);
    const std::string& fullName = state.SlotFullName[part.StartSlot];
    const std::string& abbreviation = state.SlotAbbrevName[part.StartSlot];
    scorePart.appendChild(Element("part-name", Named(fullName) ? fullName : "MusicXML Part"));
    if (Named(abbreviation)) scorePart.appendChild(Element("part-abbreviation", abbreviation));
    LoadScoreInstruments(scorePart, part);
    xml::XmlNode element = root_.appendChild(Element("part"));
    element.setAttribute("id", id);
    part.SetPart(element);
  }
}

void ToXml::WriteGroups(PartListState& state) {
  for (int16_t index = 1; index <= state.GroupCount(); ++index) {
    if (!state.GroupIsWritten[index]) continue;
    const GroupSpec& group = state.Groups[index];
    int16_t first = FxInstToSlot(group.StartInst, 0);
    int16_t last = FxInstToSlot(group.EndInst, 0);
    if (first < 1 || last > NumberOfStaves || first > last) continue;
    int16_t level = 0;
    for (int16_t slot = first; slot <= last; ++slot)
      level = std::max(level, state.SlotGroupLevel[slot]);
    ++level;
    for (int16_t slot = first; slot <= last; ++slot)
      state.SlotGroupLevel[slot] = level;
    xml::XmlNode start = Element("part-group");
    start.setAttribute("type", "start");
    start.setAttribute("number", std::to_string(level));
    if (!state.GroupFullName[index].empty())
      start.appendChild(Element("group-name", state.GroupFullName[index]));
    if (!state.GroupAbbrevName[index].empty())
      start.appendChild(Element("group-abbreviation", state.GroupAbbrevName[index]));
    if (group.BracketID > 0)
      start.appendChild(Element("group-symbol", GroupSymbol(group.BracketID)));
    xml::XmlNode firstScorePart = XmlParts[state.SlotPart[first]]->ScorePart();
    firstScorePart.parentNode().insertBefore(start, firstScorePart);
    xml::XmlNode stop = Element("part-group");
    stop.setAttribute("type", "stop");
    stop.setAttribute("number", std::to_string(level));
    xml::XmlNode lastScorePart = XmlParts[state.SlotPart[last]]->ScorePart();
    lastScorePart.parentNode().insertBefore(stop, lastScorePart.nextSibling());
  }
}

// One device needs no naming: the device names go when all name the same one.
void ToXml::ThinDeviceNames() {
  xml::XmlNodeList devices = root_.selectNodes(".//midi-device");
  if (devices.length() == 0) return;
  xml::XmlNode first = devices.item(0);
  for (int32_t i = 1; i < devices.length(); ++i) {
    xml::XmlNode device = devices.item(i);
    if (device.text() != first.text() || device.getAttribute("port") != first.getAttribute("port"))
      return;
  }
  for (int32_t i = 0; i < devices.length(); ++i)
    devices.item(i).parentNode().removeChild(devices.item(i));
}

void ToXml::LoadTimeSignatureAbbreviations() {
  Settings19 abbreviations;
  if (!abbreviations.Load(-2, 0)) return;
  AbbreviateCommon = abbreviations.AbbrCommon == 1;
  AbbreviateCut = abbreviations.AbbrCut == 1;
}

bool ToXml::RangeCheck(int16_t firstSlot, int16_t lastSlot) {
  return Guarded("ToXml RangeCheck error ", kRangeCheckHandler, [&] {
    if (firstSlot > lastSlot || firstSlot < 1) return false;
    int16_t count = static_cast<int16_t>(lastSlot - firstSlot + 1);
    std::vector<StaffSpec> staves(count);
    std::vector<int16_t> instruments(count);
    std::vector<bool> finished(count, false), tablature(count, false);
    for (int16_t i = 0; i < count; ++i) {
      instruments[i] = FxSlotToInst(static_cast<int16_t>(firstSlot + i), 0);
      staves[i].FinaleVersion = FinaleVersion;
      if (!staves[i].LoadCurrent(instruments[i], 1, 0)) return false;
    }
    for (;;) {
      bool allDone = true;
      int16_t nextMeasure = kLastMeasure;
      int32_t nextEdu = kLastEdu;
      for (int16_t i = 0; i < count; ++i) {
        const StaffSpec& staff = staves[i];
        if ((staff.Instflag & static_cast<int16_t>(0xC000)) || (staff.Flag & 0x2000) ||
            staff.Transposition != staves[0].Transposition)
          return false;
        if ((staff.Flag & 0x200) && staff.FretInstID >= 1) tablature[i] = true;
        if (staff.RangeEndMeas == kLastMeasure) {
          finished[i] = true;
          continue;
        }
        allDone = false;
        if (staff.RangeEndMeas < nextMeasure ||
            (staff.RangeEndMeas == nextMeasure && staff.RangeEndEdu < nextEdu)) {
          nextMeasure = staff.RangeEndMeas;
          nextEdu = staff.RangeEndEdu;
        }
      }
      if (allDone) break;
      for (int16_t i = 0; i < count; ++i) {
        if (finished[i]) continue;
        bool loaded = nextEdu == kLastEdu
                          ? staves[i].LoadCurrent(instruments[i], nextMeasure + 1, 0)
                          : staves[i].LoadCurrent(instruments[i], nextMeasure, nextEdu + 1);
        if (!loaded) return false;
      }
    }
    return std::count(tablature.begin(), tablature.end(), true) < 2;
  });
}

void ToXml::LoadScoreInstruments(xml::XmlNode scorePart, XmlPart& part) {
  Guarded("ToXml LoadScoreInstruments error ", kLoadScoreInstrumentsHandler, [&] {
    part.Instruments = 0;
    std::string partId = scorePart.getAttribute("id");
    // Orchestra index and instrument id by staff and source; sources 1 to 4 are the layers.
    std::vector<std::array<int16_t, kSources + 1>> indices(part.Staves() + 1);
    std::vector<std::array<std::string, kSources + 1>> ids(part.Staves() + 1);
    auto setInstrument = [&](int16_t staff, int source, const std::string& id) {
      ids[staff][source] = id;
      if (source <= 4)
        part.LayerInstruments.at(staff).at(source - 1) = id;
      else
        part.ExpressionInstruments.at(staff) = id;
    };
    for (int16_t staff = 1; staff <= part.Staves(); ++staff) {
      PatchList patches;
      int16_t instrument = FxSlotToInst(static_cast<int16_t>(part.StartSlot + staff - 1), 0);
      if (!patches.Load(instrument, 0)) continue;
      for (int source = 1; source <= kSources; ++source) {
        int16_t index =
            static_cast<int16_t>((source <= 4 ? patches.Layers(source) : patches.Expressions) + 1);
        indices[staff][source] = index;
        std::string known = KnownInstrument(indices, ids, staff, source, index);
        if (!known.empty()) {
          setInstrument(staff, source, known);
          continue;
        }
        std::string id = partId + "-I" + std::to_string(index);
        MidiSetup midi = WriteScoreInstrument(scorePart, id, index);
        setInstrument(staff, source, id);
        ++part.Instruments;
        if (part.PercussionStaff && source == 1) WritePercussionInstruments(scorePart, part, midi);
      }
    }
  });
}

// The id already given to an orchestra index at this or an earlier staff and source.
std::string ToXml::KnownInstrument(const std::vector<std::array<int16_t, 6>>& indices,
                                   const std::vector<std::array<std::string, 6>>& ids,
                                   int16_t staff, int source, int16_t index) {
  for (int16_t s = 1; s <= staff; ++s)
    for (int k = 1; k <= (s == staff ? source - 1 : kSources); ++k)
      if (indices[s][k] == index && !ids[s][k].empty()) return ids[s][k];
  return {};
}

// The score-instrument of an orchestra entry with its device and MIDI set-up.
ToXml::MidiSetup ToXml::WriteScoreInstrument(xml::XmlNode scorePart, const std::string& id,
                                             int16_t index) {
  Orchestra orchestra;
  OrchestraText name;
  bool hasOrchestra = orchestra.Load(index, 0);
  bool hasName = name.Load(index, 0);
  int16_t patch = hasOrchestra ? orchestra.PatchInfo : 0;
  int32_t program = 0, bank = 0;
  MidiPatch patchData;
  if (patchData.Load(0, static_cast<int16_t>(patch / 3))) {
    int slot = patch % 3 + 1;
    ConvertMidiPatchBank(patchData.PatchAndPatchType(slot), patchData.BankData(slot), program,
                         bank);
  }
  int16_t channelIndex = static_cast<int16_t>(patch + 1);
  int16_t channel = FinaleChannels_.Channel(channelIndex);
  xml::XmlNode instrument = Element("score-instrument");
  instrument.setAttribute("id", id);
  instrument.appendChild(Element("instrument-name", hasName ? name.Text : ""));
  scorePart.insertBefore(instrument, scorePart.selectSingleNode("midi-device|midi-instrument"));
  if (FinaleChannels_.MultiDevice && !scorePart.selectSingleNode("midi-device")) {
    xml::XmlNode device =
        scorePart.appendChild(Element("midi-device", FinaleChannels_.DeviceName(channelIndex)));
    device.setAttribute("port", std::to_string(FinaleChannels_.Port(channelIndex)));
  }
  MidiSetup midi{channel, static_cast<int16_t>(bank), static_cast<int16_t>(program)};
  scorePart.appendChild(LoadMidiInstrument(id, midi.Channel, midi.Bank, midi.Program, 0));
  return midi;
}

// One instrument per sound of a percussion staff, on the channel of the staff's first layer.
void ToXml::WritePercussionInstruments(xml::XmlNode scorePart, XmlPart& part,
                                       const MidiSetup& midi) {
  part.InitializePercussion(scorePart.getAttribute("id"));
  std::vector<const XmlPercussion*> sounds = part.PercussionMap.InOrder();
  for (const XmlPercussion* sound : sounds) {
    xml::XmlNode instrument = Element("score-instrument");
    instrument.setAttribute("id", sound->InstrumentID);
    instrument.appendChild(Element("instrument-name", sound->InstrumentName));
    scorePart.insertBefore(instrument, scorePart.selectSingleNode("midi-device|midi-instrument"));
  }
  for (const XmlPercussion* sound : sounds)
    scorePart.appendChild(LoadMidiInstrument(sound->InstrumentID, midi.Channel, midi.Bank,
                                             midi.Program, sound->MidiNote));
}

xml::XmlNode ToXml::LoadMidiInstrument(const std::string& id, int16_t channel, int16_t bank,
                                       int16_t program, int16_t unpitched) {
  return Guarded("ToXml LoadMidiInstrument error ", kLoadMidiInstrumentHandler, [&] {
    xml::XmlNode instrument = Element("midi-instrument");
    instrument.setAttribute("id", id);
    const std::pair<const char*, int16_t> children[] = {{"midi-channel", channel},
                                                        {"midi-bank", bank},
                                                        {"midi-program", program},
                                                        {"midi-unpitched", unpitched}};
    for (const auto& [name, value] : children)
      if (value > 0) instrument.appendChild(Element(name, std::to_string(value)));
    return instrument;
  });
}

XmlPart* ToXml::FindXmlPart(int16_t staff) {
  return Guarded("ToXml FindXmlPart error ", kFindXmlPartHandler, [&]() -> XmlPart* {
    for (int16_t number = 1; number <= NumberOfParts; ++number) {
      XmlPart& part = *XmlParts[number];
      if (part.StartStaff == staff) return &part;
      if (part.Staves() >= 2 && part.StartStaff < staff &&
          staff <= part.StartStaff + part.Staves() - 1)
        return &part;
    }
    return nullptr;
  });
}

void ToXml::PruneInstruments(XmlPart& part) {
  Guarded("ToXml PruneInstruments error ", kPruneInstrumentsHandler, [&] {
    xml::XmlNode scorePart = part.ScorePart();
    xml::XmlNodeList instruments = scorePart.selectNodes("score-instrument");
    if (instruments.length() < 2) return;
    const xml::XmlNode& element = part.Part();
    bool named =
        element.selectSingleNode(".//instrument") || element.selectSingleNode(".//midi-instrument");
    int removed = 0;
    for (int32_t i = 0; i < instruments.length(); ++i) {
      xml::XmlNode instrument = instruments.item(i);
      std::string id = instrument.getAttribute("id");
      bool keep = named ? (element.selectSingleNode(".//instrument[@id='" + id + "']") ||
                           element.selectSingleNode(".//midi-instrument[@id='" + id + "']"))
                        : i == 0;
      if (keep) continue;
      scorePart.removeChild(instrument);
      if (xml::XmlNode midi = scorePart.selectSingleNode("midi-instrument[@id='" + id + "']"))
        scorePart.removeChild(midi);
      ++removed;
    }
    xml::XmlNode count = element.selectSingleNode(".//instruments");
    std::optional<double> value = count ? NumericValue(count.text()) : std::nullopt;
    if (!value) return;
    int number = RoundHalfEven(*value);
    if (number <= removed + 1)
      count.parentNode().removeChild(count);
    else
      count.parentNode().replaceChild(Element("instruments", std::to_string(number - removed)),
                                      count);
  });
}

} // namespace ostin
