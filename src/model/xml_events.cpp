// The planning pass of import: where each element of a MusicXML measure lands in the frames.
#include "model/xml_events.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

#include "model/arithmetic.h"
#include "platform/window_system.h"
#include "shell/error_log.h"
#include "shell/failure.h"
#include "shell/messages.h"

namespace ostin {

namespace {

// Handler numbers, one for each operation.
constexpr int32_t kAddEntryCountFailed = Code(0x80040528);
constexpr int32_t kAssignByNoteFailed = Code(0x800404f7);
constexpr int32_t kMatchingForwardFailed = Code(0x80040506);
constexpr int32_t kCheckForNotesFailed = Code(0x800404f8);

// Raised places with numbers of their own.
constexpr int32_t kMappedStaffOutOfRange = Code(0x80040505);
constexpr int32_t kNonNumericStaff = Code(0x80040469);
constexpr int32_t kStaffBeyondPart = Code(0x800403c0);
constexpr int32_t kNonNumericDuration = Code(0x800404f9);
constexpr int32_t kNonNumericDivisions = Code(0x800404fc);
constexpr int32_t kNonNumericForward = Code(0x800404fb);

constexpr int16_t kLayerCount = 4;
constexpr int16_t kTopLayer = 3;
constexpr int32_t kLayersHeadMessage = 186;
constexpr int32_t kLayersDroppedMessage = 187;
constexpr int32_t kMayRecurMessage = 188;
constexpr int32_t kDivisionsChangeMessage = 189;
constexpr const char* kLineBreak = "\r\n";

// A numeric text as a whole 32-bit number, halves to even; nothing when it is not one.
std::optional<int32_t> WholeNumber(const std::string& text) {
  std::optional<double> value = NumericValue(text);
  if (!value || std::fabs(*value) > std::numeric_limits<int32_t>::max()) return std::nullopt;
  return RoundHalfEven(*value);
}

// A length that must fit the 16-bit field, as the host's arithmetic demands.
int16_t Narrow16(int32_t value) {
  if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max())
    throw std::overflow_error("Overflow");
  return static_cast<int16_t>(value);
}

bool Has(const xml::XmlNode& element, const std::string& xpath) {
  return static_cast<bool>(element.selectSingleNode(xpath));
}

int32_t CountOf(const xml::XmlNode& element, const std::string& xpath) {
  return element.selectNodes(xpath).length();
}

// The measure for messages: its number text, or its index when the text is not known.
std::string MeasureName(const XmlPart& part) {
  return part.MeasureNumber.empty() ? std::to_string(part.Measure) : part.MeasureNumber;
}

// A staff has music: two or more elements, or one that is more than a bare rest.
bool AnyMusic(const xml::XmlNode& measure, const std::string& all, const std::string& real) {
  return CountOf(measure, all) >= 2 || Has(measure, real);
}

// Voice numbers to staff and layer, bounded 1 to the part's highest voice.
class VoiceMap {
public:
  explicit VoiceMap(int16_t maxVoices)
      : staff_(static_cast<std::size_t>(std::max<int16_t>(maxVoices, 0))), layer_(staff_.size()) {}
  int16_t& Staff(int32_t voice) { return staff_.at(Index(voice)); }
  int16_t& Layer(int32_t voice) { return layer_.at(Index(voice)); }

private:
  std::size_t Index(int32_t voice) const {
    if (voice < 1 || voice > static_cast<int32_t>(staff_.size()))
      throw std::out_of_range("Subscript out of range");
    return static_cast<std::size_t>(voice - 1);
  }
  std::vector<int16_t> staff_, layer_;
};

// The part's voice map goes first; each staff's next free layer is above its mapped ones.
void MapAssignedVoices(XmlPart& part, VoiceMap& map) {
  if (!part.VoicesAssigned) return;
  for (int16_t v = 1; v <= part.MaxVoices; ++v) {
    if (!part.GetVoicesUsed(v)) continue;
    const int16_t staff = part.GetVoiceStaff(v);
    if (staff < 1 || staff > part.Staves())
      RaiseLogged("Voice " + std::to_string(v) + " has staff " + std::to_string(staff) +
                      " when max staves = " + std::to_string(part.Staves()),
                  kMappedStaffOutOfRange);
    map.Staff(v) = staff;
    map.Layer(v) = part.GetVoiceLayer(v);
    part.Layers.at(staff) =
        std::max<int16_t>(part.Layers.at(staff), static_cast<int16_t>(map.Layer(v) + 1));
  }
}

} // namespace

void CheckForNotes(const xml::XmlNode& measure, int16_t staves, std::vector<bool>& hasNotes) {
  Guarded("CheckForNotes error ", kCheckForNotesFailed, [&] {
    hasNotes.assign(static_cast<std::size_t>(std::max<int16_t>(staves, 0)) + 1, false);
    const std::string real = "note[(pitch | unpitched | type)]";
    if (staves == 1) {
      hasNotes[1] = AnyMusic(measure, "note | forward", real + " | forward");
      return;
    }
    for (int16_t s = 1; s <= staves; ++s) {
      const std::string on = "[normalize-space(staff)='" + std::to_string(s) + "']";
      hasNotes[s] =
          AnyMusic(measure, "note" + on + " | forward" + on, real + on + " | forward" + on);
    }
    // Elements without a staff child belong to the first staff.
    if (staves >= 1 && !hasNotes[1])
      hasNotes[1] =
          AnyMusic(measure, "note[not(staff)] | forward[not(staff)]", real + " | forward");
  });
}

// What both planners carry through one walk of the measure.
struct XmlEvents::Pass {
  Pass(XmlEvents& plan, XmlPart& part, bool byVoice)
      : Plan(plan), Part(part), ByVoice(byVoice), Measure(MeasureName(part)) {}

  XmlEvents& Plan;
  XmlPart& Part;
  bool ByVoice;
  std::string Measure;
  int16_t PreviousStaff = 0;
  int16_t PreviousSlot = 0;
  int16_t PreviousLayer = 0;
  int16_t CurrentSlot = 0;
  bool DivisionsChanged = false;
  bool Warned = false;
  bool TooManyLayers = false;
  int16_t CrowdedStaff = 0;

  int16_t SlotOf(int16_t staff) const { return static_cast<int16_t>(Part.StartSlot + staff - 1); }
  // The slot that messages name: the event's, else the latest one, else the part's first.
  int16_t MessageSlot() const {
    if (CurrentSlot > 0) return CurrentSlot;
    return PreviousSlot > 0 ? PreviousSlot : Part.StartSlot;
  }
  int32_t& Position(int16_t layer, int16_t staff) {
    return Plan.layerPosition_.at(staff).at(layer);
  }
  bool HasNotes(const XmlEvent& event) const {
    return Plan.hasNotes_.at(event.Staff) || Plan.hasNotes_.at(event.DisplayStaff);
  }
  int32_t Edus(int32_t divisions) const { return GetActualDuration(divisions, Part.Divisions()); }
  // The position of a layer as a start in EDUs; 0 without divisions or beyond the layers.
  int32_t StartOf(int16_t layer, int16_t staff) {
    if (Part.Divisions() == 0 || layer > kTopLayer) return 0;
    return Edus(Position(layer, staff));
  }
  void Follow(int32_t position) { Plan.maxDivisions_ = std::max(Plan.maxDivisions_, position); }

  // The number in the element's staff child, 0 without one.
  int16_t StaffChild(const xml::XmlNode& element) const {
    std::optional<std::string> text = ChildText(element, "staff");
    if (!text) return 0;
    std::optional<int32_t> value = WholeNumber(*text);
    if (!value)
      RaiseLogged("Non-numeric staff value \"" + *text + "\" in staff slot " +
                      std::to_string(MessageSlot()) + ", measure " + Measure,
                  kNonNumericStaff);
    if (*value < 1 || *value > Part.Staves())
      RaiseLogged("Cannot use staff " + std::to_string(*value) + " on " +
                      std::to_string(Part.Staves()) + " staff part in staff slot " +
                      std::to_string(MessageSlot()) + ", measure " + Measure,
                  kStaffBeyondPart);
    return static_cast<int16_t>(*value);
  }

  // The content of the duration child in divisions, 0 without one.
  int32_t DurationChild(const XmlEvent& event) const {
    std::optional<std::string> text = ChildText(event.Element, "duration");
    if (!text) return 0;
    std::optional<int32_t> value = WholeNumber(*text);
    if (!value)
      RaiseLogged("Non-numeric duration value \"" + *text + "\" in " +
                      (ByVoice ? "staff slot " : "instrument ") + std::to_string(event.Staff) +
                      ", measure " + Measure,
                  kNonNumericDuration);
    return *value;
  }

  // A divisions child takes effect; a change after music in the layer is remembered.
  void ReadDivisions(const XmlEvent& event) {
    std::optional<std::string> text = ChildText(event.Element, "divisions");
    if (!text) return;
    std::optional<int32_t> value = WholeNumber(*text);
    if (!value)
      RaiseLogged("Non-numeric divisions value \"" + *text + "\" in staff slot " +
                      std::to_string(event.Slot) + ", measure " + Measure,
                  kNonNumericDivisions);
    Part.SetDivisions(*value);
    if (event.Layer <= kTopLayer && Position(event.Layer, event.Staff) > 0) DivisionsChanged = true;
  }

  // A backup after a divisions change can't be followed: the user hears of it once a pass.
  void WarnDivisionsChange() {
    if (!DivisionsChanged || Warned) return;
    platform::Windows().MessageBox(MessageText(kDivisionsChangeMessage), "", platform::kMbOk);
    DivisionsChanged = false;
    Warned = true;
  }

  // Opens an entry of the event's length in its layer and moves the layer on.
  void OpenEntry(XmlEvent& event, bool visible, int16_t duration) {
    event.NewEntry = true;
    Plan.AddEntryCount(event.Staff, event.Layer, visible);
    event.Duration = duration;
    int32_t& position = Position(event.Layer, event.Staff);
    position += event.XmlDuration;
    Follow(position);
  }

  // A note that isn't a chord member opens an entry; a chord member adds a note to it. A
  // note beyond the fourth layer is neither, and is reported at the end.
  void PlanNote(XmlEvent& event, bool chord) {
    const bool visible = !Has(event.Element, "@print-object[. = 'no']");
    if (event.Layer > kTopLayer) {
      if (!TooManyLayers) CrowdedStaff = event.Staff;
      TooManyLayers = true;
      return;
    }
    if (chord) {
      event.NewNote = true;
      return;
    }
    std::optional<std::string> type = ChildText(event.Element, "type");
    const int32_t edus =
        type ? GetSymbolicDuration(*type, CountOf(event.Element, "dot")) : Edus(event.XmlDuration);
    OpenEntry(event, visible, Narrow16(edus));
    event.NewNote = !Has(event.Element, "rest");
  }

  // A forward in a staff with music holds its place with a hidden entry.
  void PlanForwardEntry(XmlEvent& event) {
    OpenEntry(event, false, Narrow16(Edus(event.XmlDuration)));
  }

  // Jumps in a direction's sound are made with the repeats, not as directions.
  void PlanOther(XmlEvent& event) {
    const std::string tag = event.Element.tagName();
    if (tag == "direction")
      event.NoOutput = Has(event.Element, "sound[@dacapo | @coda | @segno | @dalsegno | "
                                          "@tocoda | @fine]");
    else if (tag != "harmony" && tag != "sound")
      event.NoOutput = true;
  }

  // After the last element: the notes beyond the fourth layer were dropped.
  void RaiseTooManyLayers() const {
    if (!TooManyLayers) return;
    throw Failure(kTooManyLayers, std::string(kPlugInSource),
                  FormatResString(kLayersHeadMessage, {Measure, std::to_string(CrowdedStaff)}) +
                      kLineBreak + MessageText(kLayersDroppedMessage) + kLineBreak +
                      MessageText(kMayRecurMessage));
  }

  // Working tables of the backup planner, by staff, and the place of the last backup.
  std::vector<bool> StaffStarted;
  std::vector<int32_t> PendingGap;
  int32_t LastBackup = 0;

  // The first note or forward of a staff after a backup: the backup fills the gap before it.
  void FillPendingGap(const XmlEvent& event, bool takeSlot) {
    if (event.Layer > kTopLayer || StaffStarted.at(event.Staff)) return;
    StaffStarted.at(event.Staff) = true;
    int32_t& gap = PendingGap.at(event.Staff);
    if (gap <= 0) return;
    XmlEvent& filler = Plan.Item(LastBackup);
    filler.Staff = event.Staff;
    filler.Layer = event.Layer;
    if (takeSlot) filler.Slot = event.Slot;
    filler.Duration = Narrow16(Edus(gap));
    filler.NewEntry = true;
    Plan.AddEntryCount(event.Staff, event.Layer, false);
    int32_t& position = Position(event.Layer, event.Staff);
    position += gap;
    Follow(position);
    gap = 0;
  }

  // A backup places the voice that follows: in a layer that ends at its target, else in a
  // free layer or the fullest one short of the target, with the gap still to fill.
  void PlaceNextVoice(const XmlEvent& event) {
    int32_t target = 0;
    if (event.Layer <= kTopLayer && event.XmlDuration < Position(event.Layer, event.Staff))
      target = Position(event.Layer, event.Staff) - event.XmlDuration;
    for (int16_t i = 1; i <= Plan.staves_; ++i) {
      StaffStarted.at(i) = false;
      int16_t& layer = Part.Layers.at(i);
      if (layer > kTopLayer) continue;
      if (Plan.entries_.at(i).at(layer) == 0) {
        PendingGap.at(i) = target;
        continue;
      }
      int16_t unused = -1;
      int16_t shortest = -1;
      bool matched = false;
      for (int16_t l = 0; l <= kTopLayer && !matched; ++l) {
        const int32_t position = Position(l, i);
        if (position == target) {
          layer = l;
          PendingGap.at(i) = 0;
          matched = true;
        } else if (position == 0) {
          if (unused < 0) unused = l;
        } else if (position < target && (shortest < 0 || position > Position(shortest, i))) {
          shortest = l;
        }
      }
      if (matched) continue;
      if (unused >= 0) {
        layer = unused;
        PendingGap.at(i) = target;
      } else if (shortest >= 0) {
        layer = shortest;
        PendingGap.at(i) = target - Position(shortest, i);
      } else {
        layer = kLayerCount;
      }
    }
  }

  // A voice's note or forward must not start before the cursor; when its layer stands short
  // of the cursor, a hidden entry fills the gap first. False when the voice ran ahead.
  bool CatchUp(XmlEvent& event, int32_t current) {
    int32_t& position = Position(event.Layer, event.Staff);
    if (position > current) return false;
    if (position == current) return true;
    XmlEvent filler = event;
    filler.Element = {};
    filler.Duration = Narrow16(Edus(current - position));
    filler.NewEntry = true;
    Plan.AddEntryCount(event.Staff, event.Layer, false);
    Plan.Add(filler);
    position = current;
    event.Start = Edus(current);
    return true;
  }

  void Remember(const XmlEvent& event) {
    PreviousStaff = event.Staff;
    PreviousSlot = event.Slot;
    PreviousLayer = event.Layer;
  }
};

// The planners' handler: divisions missing from GetActualDuration is told where, and goes
// on with its number; all else by the standard handler.
template <class Pass, class Body>
void PlannerGuarded(std::string_view logText, int32_t ownNumber, const char* road, const Pass& pass,
                    Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    if (failure.Number == kDivisionsMissing) {
      Register(failure);
      RaiseLogged(std::string("Divisions not set in ") + road + " assignment of staff slot " +
                      std::to_string(pass.MessageSlot()) + ", measure " + pass.Measure,
                  kDivisionsMissing);
    }
    StandardHandler(logText, ownNumber);
  } catch (...) {
    StandardHandler(logText, ownNumber);
  }
}

int16_t XmlEvents::Entries(int16_t staff, int16_t layer) const {
  if (staff < 1 || staff > staves_ || layer < 0 || layer > kTopLayer) return 0;
  return entries_.at(staff).at(layer);
}

int16_t XmlEvents::VisibleEntries(int16_t staff, int16_t layer) const {
  if (staff < 1 || staff > staves_ || layer < 0 || layer > kTopLayer) return 0;
  return visibleEntries_.at(staff).at(layer);
}

int16_t XmlEvents::Layers(int16_t index) const {
  return index < 1 || index > staves_ ? 0 : layers_.at(index);
}

int16_t XmlEvents::VisibleLayers(int16_t index) const {
  return index < 1 || index > staves_ ? 0 : visibleLayers_.at(index);
}

void XmlEvents::Clear() {
  while (!events_.empty())
    events_.pop_back();
}

void XmlEvents::Assign(const xml::XmlNode& measure, XmlPart& part) {
  Guarded("XmlEvents Assign error ", kAssignFailed, [&] {
    const int32_t divisions = part.Divisions();
    byVoice_ = false;
    Clear();
    try {
      if (part.MaxVoices < 1) {
        AssignByNote(measure, part);
      } else {
        bool ok = false;
        AssignByVoice(measure, part, ok);
        byVoice_ = ok;
        if (!ok) {
          Clear();
          part.SetDivisions(divisions);
          AssignByNote(measure, part);
        }
      }
    } catch (...) {
      part.SetDivisions(divisions);
      throw;
    }
    part.SetDivisions(divisions);
  });
}

void XmlEvents::Prepare(const XmlPart& part) {
  staves_ = part.Staves();
  const auto size = static_cast<std::size_t>(std::max<int16_t>(staves_, 0)) + 1;
  entries_.assign(size, LayerCounts{});
  visibleEntries_.assign(size, LayerCounts{});
  layers_.assign(size, 0);
  visibleLayers_.assign(size, 0);
  layerPosition_.assign(size, {});
  maxDivisions_ = 0;
}

void XmlEvents::AddEntryCount(int16_t staff, int16_t layer, bool visible) {
  Guarded("XmlEvents AddEntryCount error ", kAddEntryCountFailed, [&] {
    int16_t& entries = entries_.at(staff).at(layer);
    if (entries == 0) ++layers_.at(staff);
    ++entries;
    if (!visible) return;
    int16_t& visibleEntries = visibleEntries_.at(staff).at(layer);
    if (visibleEntries == 0) ++visibleLayers_.at(staff);
    ++visibleEntries;
  });
}

void XmlEvents::MatchingForward(const xml::XmlNode& backup, int32_t backupDuration,
                                const XmlEvent& event, const XmlPart& part, int32_t& result) {
  Guarded("XmlEvents MatchingForward error ", kMatchingForwardFailed, [&] {
    result = 0;
    xml::XmlNode next = backup.selectSingleNode("following-sibling::*[1]");
    if (!next || next.tagName() != "forward" || Has(next, "staff")) return;
    const std::string text = ChildText(next, "duration").value_or("");
    std::optional<int32_t> duration = WholeNumber(text);
    if (!duration)
      RaiseLogged("Non-numeric duration value \"" + text +
                      "\" during forward element in staff slot " + std::to_string(event.Slot) +
                      ", measure " + MeasureName(part),
                  kNonNumericForward);
    if (*duration <= backupDuration) result = std::max(*duration, 0);
  });
}

void XmlEvents::AssignByNote(const xml::XmlNode& measure, XmlPart& part) {
  Pass pass(*this, part, false);
  PlannerGuarded("XmlEvents AssignByNote error ", kAssignByNoteFailed, "note", pass, [&] {
    Prepare(part);
    for (int16_t s = 1; s <= staves_; ++s)
      part.Layers.at(s) = 0;
    CheckForNotes(measure, staves_, hasNotes_);
    pass.StaffStarted.assign(static_cast<std::size_t>(staves_) + 1, false);
    pass.PendingGap.assign(pass.StaffStarted.size(), 0);
    bool noteRun = false;
    bool skipForward = false;

    xml::XmlNodeList children = measure.selectNodes("*");
    for (int32_t index = 0; index < children.length(); ++index) {
      XmlEvent event;
      event.Element = children.item(index);
      const std::string tag = event.Element.tagName();
      const bool isNote = tag == "note" || tag == "forward";
      pass.CurrentSlot = 0;
      const int16_t staffChild = pass.StaffChild(event.Element);
      event.DisplayStaff = staffChild > 0 ? staffChild
                           : isNote       ? int16_t{1}
                                          : std::max<int16_t>(pass.PreviousStaff, 1);
      if ((tag == "backup" || isNote) && noteRun) {
        event.Staff = pass.PreviousStaff;
        event.Slot = pass.PreviousSlot;
        event.Layer = pass.PreviousLayer;
      } else {
        event.Staff = event.DisplayStaff;
        event.Slot = pass.SlotOf(event.Staff);
        event.Layer = part.Layers.at(event.Staff);
        if (isNote) noteRun = true;
      }
      pass.CurrentSlot = event.Slot;
      event.Start = pass.StartOf(event.Layer, event.Staff);
      event.XmlDuration = pass.DurationChild(event);

      int16_t previousLayer = event.Layer;
      if (tag == "note") {
        if (pass.HasNotes(event)) {
          pass.FillPendingGap(event, true);
          pass.PlanNote(event, Has(event.Element, "chord"));
        }
      } else if (tag == "attributes") {
        pass.ReadDivisions(event);
      } else if (tag == "backup") {
        int32_t matching = 0;
        MatchingForward(event.Element, event.XmlDuration, event, part, matching);
        if (matching > 0) {
          event.XmlDuration -= matching;
          skipForward = true;
        }
        if (event.XmlDuration < 1) {
          event.NoOutput = true;
        } else {
          pass.PlaceNextVoice(event);
          previousLayer = part.Layers.at(event.Staff);
          noteRun = false;
          pass.WarnDivisionsChange();
        }
      } else if (tag == "forward") {
        if (skipForward) {
          event.NoOutput = true;
          skipForward = false;
        } else if (pass.HasNotes(event) && event.Layer <= kTopLayer) {
          pass.FillPendingGap(event, false);
          pass.PlanForwardEntry(event);
        }
      } else {
        pass.PlanOther(event);
      }
      Add(event);
      if (tag == "backup") pass.LastBackup = Count();
      pass.Remember(event);
      pass.PreviousLayer = previousLayer;
    }
    pass.RaiseTooManyLayers();
  });
}

void XmlEvents::AssignByVoice(const xml::XmlNode& measure, XmlPart& part, bool& ok) {
  Pass pass(*this, part, true);
  PlannerGuarded("XmlEvents AssignByVoice error ", kAssignByVoiceFailed, "voice", pass, [&] {
    ok = false;
    Prepare(part);
    for (int16_t s = 1; s <= staves_; ++s)
      part.Layers.at(s) = 0;
    CheckForNotes(measure, staves_, hasNotes_);

    VoiceMap map(part.MaxVoices);
    MapAssignedVoices(part, map);

    int32_t current = 0;
    int32_t previousStart = 0;
    xml::XmlNodeList children = measure.selectNodes("*");
    for (int32_t index = 0; index < children.length(); ++index) {
      XmlEvent event;
      event.Element = children.item(index);
      const std::string tag = event.Element.tagName();
      pass.CurrentSlot = 0;

      bool notChord = true;
      bool hasVoice = false;
      int32_t voice = 0;
      bool staffSet = false;
      if (tag == "note" || tag == "forward") {
        notChord = !Has(event.Element, "chord");
        std::optional<std::string> voiceText = ChildText(event.Element, "voice");
        hasVoice = voiceText.has_value();
        if (tag == "note" && !hasVoice) return;
        if (hasVoice) {
          std::optional<int32_t> number = WholeNumber(*voiceText);
          if (!number || *number > part.MaxVoices || *number < 0) return;
          voice = *number;
          const int16_t mapped = map.Staff(voice);
          if (mapped >= 1 && notChord) {
            event.Staff = mapped;
            event.Layer = map.Layer(voice);
            event.Slot = pass.SlotOf(mapped);
            staffSet = true;
          }
        }
      }
      // A voice opens its layer on the staff where it first appears.
      const bool opens = hasVoice && notChord;
      const int16_t staffChild = pass.StaffChild(event.Element);
      if (staffSet) {
        event.DisplayStaff = staffChild > 0 ? staffChild : event.Staff;
      } else {
        const int16_t previous = std::max<int16_t>(pass.PreviousStaff, 1);
        event.Staff = staffChild > 0 && notChord ? staffChild : previous;
        event.DisplayStaff = staffChild > 0 ? staffChild : event.Staff;
        event.Slot = pass.SlotOf(event.Staff);
        event.Layer = opens ? part.Layers.at(event.Staff) : pass.PreviousLayer;
        if (opens) {
          map.Staff(voice) = event.Staff;
          map.Layer(voice) = event.Layer;
          ++part.Layers.at(event.Staff);
        }
      }
      pass.CurrentSlot = event.Slot;
      if (part.Divisions() == 0 || event.Layer > kTopLayer)
        event.Start = 0;
      else
        event.Start = notChord ? pass.StartOf(event.Layer, event.Staff) : previousStart;

      if (opens) {
        if (event.Layer > kTopLayer)
          event.NoOutput = true;
        else if (!pass.CatchUp(event, current))
          return;
      }
      event.XmlDuration = pass.DurationChild(event);

      if (tag == "note") {
        if (pass.HasNotes(event)) pass.PlanNote(event, !notChord);
        if (notChord) current += event.XmlDuration;
      } else if (tag == "attributes") {
        pass.ReadDivisions(event);
        event.Start = part.Divisions() == 0 ? 0 : pass.Edus(current);
      } else if (tag == "backup") {
        current = std::max(current - event.XmlDuration, 0);
        event.NoOutput = true;
        if (event.XmlDuration >= 1) pass.WarnDivisionsChange();
      } else if (tag == "forward") {
        if (!hasVoice)
          event.NoOutput = true;
        else if (pass.HasNotes(event) && event.Layer <= kTopLayer)
          pass.PlanForwardEntry(event);
        current += event.XmlDuration;
        pass.Follow(current);
      } else {
        pass.PlanOther(event);
        if (part.Divisions() >= 1) event.Start = pass.Edus(current);
      }
      Add(event);
      pass.Remember(event);
      previousStart = event.Start;
    }
    pass.RaiseTooManyLayers();
    ok = true;
  });
}

} // namespace ostin
