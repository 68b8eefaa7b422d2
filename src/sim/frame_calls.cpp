// The frame calls of the bridge as the host stand-in answers them: frames of entries and
// notes, measure durations, MIDI keys and metrics.
#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/bridge.h"
#include "host/frames/frame_bits.h"
#include "sim/fault_point.h"
#include "sim/host.h"
#include "sim/record_store.h"

namespace {
using ostin::sim::Document;
using ostin::sim::FrameStore;
using ostin::sim::Host;
using ostin::sim::OpenFrame;
using ostin::sim::OpenFrames;
using ostin::sim::RecordKey;
using ostin::sim::StoredEntry;
using ostin::sim::StoredNote;

using ostin::kEfGrace;
using ostin::kEfLaunchesVoiceTwo;
using ostin::kEfTupletStart;
using ostin::kEfVoiceTwo;

// Bits the host reads from records.
constexpr int32_t kAuxCompositeBeats = 0x0080;
constexpr int32_t kAuxCompositeDiv = 0x0040;
constexpr int32_t kFloatOwnTime = 0x0400;
constexpr int32_t kFloatOwnKey = 0x0800;
constexpr int32_t kFloatCompositeBeats = 0x0080;
constexpr int32_t kFloatCompositeDiv = 0x0040;
constexpr int32_t kGfholdClefList = 0x0400;
constexpr int32_t kTimeUpperNewGroup = 0x0001;
constexpr int32_t kKeyMapScaleStep = static_cast<int32_t>(0x80000000u);
constexpr int32_t kFirstNonLinearKey = 0x4000;

Document& Doc() {
  return Host::Instance().Doc();
}
FrameStore& Store() {
  return Doc().Frames;
}
OpenFrames& Opened() {
  return Store().Open;
}

// A stored record of the open document, read by field name; false when absent.
class StoredView {
public:
  StoredView(std::string_view className, const RecordKey& key) {
    const ostin::sim::RecordTable* table = Doc().FindTable(className);
    if (!table) return;
    auto it = table->Rows.find(key);
    if (it == table->Rows.end()) return;
    shape_ = table->Shape;
    record_ = &it->second;
  }
  explicit operator bool() const { return record_ != nullptr; }
  int32_t operator()(const char* field, size_t index = 0) const {
    const std::vector<int32_t>& numbers = (*record_)[shape_->FieldIndex(field)].Numbers;
    return index < numbers.size() ? numbers[index] : 0;
  }

private:
  const ostin::sim::RecordShape* shape_ = nullptr;
  const ostin::sim::StoredRecord* record_ = nullptr;
};

RecordKey Key(int32_t cmper, int32_t inci) {
  return RecordKey{cmper, static_cast<int16_t>(inci), 0};
}

int FloorDiv(int a, int b) {
  return a / b - (a % b != 0 && (a < 0) != (b < 0));
}
int FloorMod(int a, int b) {
  return a - FloorDiv(a, b) * b;
}

// ---- Measure time ----

struct TimeInForce {
  int32_t Beats = 0;
  int32_t DivBeat = 0;
  bool CompositeBeats = false;
  bool CompositeDiv = false;
};

// The time a staff plays in a measure: its own from its float record where it has one.
std::optional<TimeInForce> TimeAt(int16_t inst, int16_t meas) {
  StoredView measure("MeasureSpec", Key(meas, 0));
  if (!measure) return std::nullopt;
  StoredView own("MeasureFloat", Key(inst, meas));
  if (own && (own("Flag") & kFloatOwnTime))
    return TimeInForce{own("Bts"), own("Div"), (own("Flag") & kFloatCompositeBeats) != 0,
                       (own("Flag") & kFloatCompositeDiv) != 0};
  int32_t aux = measure("Auxflag");
  return TimeInForce{measure("Beats"), measure("DivBeat"), (aux & kAuxCompositeBeats) != 0,
                     (aux & kAuxCompositeDiv) != 0};
}

struct UpperSlot {
  const char* Main;
  const char* Flag;
};
constexpr UpperSlot kUpperSlots[] = {{"Main_1", "Flag_1"}, {"Main_2", "Flag_2"}};
constexpr const char* kLowerSlots[] = {"Main_1", "Main_2", "Main_3"};

// Beats per group of a composite upper list; a slot with the new-group bit starts a group,
// a Main of 0 ends the list.
std::vector<int32_t> UpperGroups(int32_t list) {
  std::vector<int32_t> groups;
  for (int inci = 0; inci <= std::numeric_limits<int16_t>::max(); ++inci) {
    StoredView record("TimeUpper", Key(list, inci));
    if (!record) break;
    for (const UpperSlot& slot : kUpperSlots) {
      int32_t beats = record(slot.Main);
      if (beats == 0) return groups;
      if (groups.empty() || (record(slot.Flag) & kTimeUpperNewGroup))
        groups.push_back(beats);
      else
        groups.back() += beats;
    }
  }
  return groups;
}

// Beat lengths of a composite lower list, one per group; a Main of 0 ends the list.
std::vector<int32_t> LowerValues(int32_t list) {
  std::vector<int32_t> values;
  for (int inci = 0; inci <= std::numeric_limits<int16_t>::max(); ++inci) {
    StoredView record("TimeLower", Key(list, inci));
    if (!record) break;
    for (const char* slot : kLowerSlots) {
      if (record(slot) == 0) return values;
      values.push_back(record(slot));
    }
  }
  return values;
}

int32_t Duration(const TimeInForce& time) {
  std::vector<int32_t> beats =
      time.CompositeBeats ? UpperGroups(time.Beats) : std::vector<int32_t>{time.Beats};
  std::vector<int32_t> lengths =
      time.CompositeDiv ? LowerValues(time.DivBeat) : std::vector<int32_t>{time.DivBeat};
  if (beats.empty() || lengths.empty()) return 0;
  // A single value on one side applies to every group of the other; two lists pair up.
  size_t groups = beats.size() == 1 || lengths.size() == 1 ? std::max(beats.size(), lengths.size())
                                                           : std::min(beats.size(), lengths.size());
  int64_t total = 0;
  for (size_t g = 0; g < groups; ++g)
    total +=
        int64_t{beats[std::min(g, beats.size() - 1)]} * lengths[std::min(g, lengths.size() - 1)];
  return static_cast<int32_t>(std::clamp<int64_t>(total, 0, std::numeric_limits<int32_t>::max()));
}

// ---- Pitch ----

constexpr int kNaturalSemitones[7] = {0, 2, 4, 5, 7, 9, 11}; // C D E F G A B
// Tonic step by fifths mod 7, major and minor.
constexpr int kMajorTonic[7] = {0, 4, 1, 5, 2, 6, 3};
constexpr int kMinorTonic[7] = {5, 2, 6, 3, 0, 4, 1};
// Place of each step (C to B) in the order of sharps F C G D A E B and of flats B E A D G C F.
constexpr int kSharpPlace[7] = {2, 4, 6, 1, 3, 5, 7};
constexpr int kFlatPlace[7] = {6, 4, 2, 7, 5, 3, 1};
constexpr int kTonicOctave = 4; // the tonic's octave that Tcd 0 stands in

// The key in force for a staff in a measure: its own from its float record where it has one.
int32_t KeyAt(int16_t inst, int16_t meas) {
  StoredView own("MeasureFloat", Key(inst, meas));
  if (own && (own("Flag") & kFloatOwnKey)) return own("Key");
  StoredView measure("MeasureSpec", Key(meas, 0));
  return measure ? measure("Key") : 0;
}

int KeySignatureAlter(int step, int fifths) {
  if (fifths > 0) {
    int p = kSharpPlace[step];
    return fifths >= p + 7 ? 2 : fifths >= p ? 1 : 0;
  }
  int q = kFlatPlace[step];
  return fifths <= -q - 7 ? -2 : fifths <= -q ? -1 : 0;
}

int LinearMidi(int32_t key, int tcd, int alteration) {
  int fifths = static_cast<int8_t>(key & 0xFF);
  bool minor = ((key >> 8) & 0xFF) == 1;
  int tonic = (minor ? kMinorTonic : kMajorTonic)[FloorMod(fifths, 7)];
  int step = tonic + tcd;
  int octave = kTonicOctave + FloorDiv(step, 7);
  int letter = FloorMod(step, 7);
  return (octave + 1) * 12 + kNaturalSemitones[letter] + KeySignatureAlter(letter, fifths) +
         alteration;
}

// A non-linear key: its scale from KeyFormat, its tonic from ToneCenter and the chromatic
// place of each scale step from KeyMap (indexes from C, values the step with the top bit).
int NonLinearMidi(int32_t key, int tcd, int alteration) {
  StoredView format("KeyFormat", Key(key, 0));
  int chromatic = format && format("Chromatic") > 0 ? format("Chromatic") : 12;
  int diatonic = format && format("Diatonic") > 0 ? format("Diatonic") : 7;
  StoredView center("ToneCenter", Key(key, 0));
  int tonic = center ? FloorMod(center("Units"), diatonic) : 0;
  int step = tonic + tcd;
  int octave = kTonicOctave + FloorDiv(step, diatonic);
  int degree = FloorMod(step, diatonic);
  int natural = diatonic == 7 ? kNaturalSemitones[degree] : degree * chromatic / diatonic;
  int place = natural;
  StoredView map("KeyMap", Key(key, 0));
  for (int k = 0; map && k < 12; ++k)
    if ((map("Steps", k) & kKeyMapScaleStep) && (map("Steps", k) & 0x7FFFFFFF) == degree) place = k;
  // An altered step that wrapped round the octave (B sharp at 0) stays next to its letter.
  if (place - natural > chromatic / 2) place -= chromatic;
  if (natural - place > chromatic / 2) place += chromatic;
  int offset = (place + alteration) * 12;
  return (octave + 1) * 12 +
         (offset >= 0 ? offset + chromatic / 2 : offset - chromatic / 2) / chromatic;
}

int16_t MidiOf(const OpenFrame& frame, const StoredNote& note) {
  int32_t key = KeyAt(frame.Inst, frame.Meas);
  int midi = key >= kFirstNonLinearKey ? NonLinearMidi(key, note.Tcd, note.Alteration)
                                       : LinearMidi(key, note.Tcd, note.Alteration);
  return static_cast<int16_t>(std::clamp(midi, 0, 255));
}

// ---- Positions and sounding durations ----

// An exact count of EDUs, for positions inside tuplets.
struct Fraction {
  int64_t Num = 0;
  int64_t Den = 1;
  Fraction Reduced() const {
    int64_t g = std::gcd(Num, Den);
    return g > 1 ? Fraction{Num / g, Den / g} : *this;
  }
  Fraction operator+(const Fraction& o) const {
    return Fraction{Num * o.Den + o.Num * Den, Den * o.Den}.Reduced();
  }
  Fraction operator-(const Fraction& o) const { return *this + Fraction{-o.Num, o.Den}; }
  Fraction operator*(const Fraction& o) const {
    return Fraction{Num * o.Num, Den * o.Den}.Reduced();
  }
  int64_t Floor() const { return Num / Den - (Num % Den != 0 && Num < 0); }
};

struct OpenTuplet {
  Fraction Remaining; // written EDUs still to come
  Fraction Ratio;     // sounding per written
};

struct VoiceClock {
  Fraction Position;
  std::vector<OpenTuplet> Tuplets; // outermost first
};

// The tuplets that start at an entry, outermost first: Tupnum notes of Tupsymdur in the
// time of Refnum of Refdur.
std::vector<OpenTuplet> TupletsAt(int32_t entnum) {
  std::vector<OpenTuplet> started;
  for (int inci = 0; inci <= std::numeric_limits<int16_t>::max(); ++inci) {
    StoredView tuplet("Tuplet", Key(entnum, inci));
    if (!tuplet) break;
    int64_t written = int64_t{tuplet("Tupnum")} * tuplet("Tupsymdur");
    int64_t sounding = int64_t{tuplet("Refnum")} * tuplet("Refdur");
    if (written > 0 && sounding > 0)
      started.push_back({Fraction{written, 1}, Fraction{sounding, written}.Reduced()});
  }
  std::stable_sort(started.begin(), started.end(), [](const OpenTuplet& a, const OpenTuplet& b) {
    return a.Remaining.Num > b.Remaining.Num;
  });
  return started;
}

// Sounding length of an entry; each open tuplet counts the entry in its own written time.
Fraction Sounding(VoiceClock& clock, const StoredEntry& entry) {
  if (entry.Ef & kEfGrace) return Fraction{0, 1}; // grace notes take no time in the measure
  if (entry.Ef & kEfTupletStart)
    for (OpenTuplet& tuplet : TupletsAt(entry.Entnum))
      clock.Tuplets.push_back(tuplet);
  Fraction length{entry.Dura, 1};
  for (auto it = clock.Tuplets.rbegin(); it != clock.Tuplets.rend(); ++it) {
    it->Remaining = it->Remaining - length;
    length = length * it->Ratio;
  }
  while (!clock.Tuplets.empty() && clock.Tuplets.back().Remaining.Num <= 0)
    clock.Tuplets.pop_back();
  return length;
}

struct ClefChange {
  uint32_t Edu;
  int16_t Clef;
};

// The clefs of a staff in a measure from its frame holder, in order of position.
std::vector<ClefChange> ClefsAt(int16_t inst, int16_t meas) {
  StoredView holder("Gfhold", Key(inst, meas));
  if (!holder) return {{0, 0}};
  if (!(holder("Flag") & kGfholdClefList)) return {{0, static_cast<int16_t>(holder("Clef"))}};
  std::vector<ClefChange> clefs;
  for (int inci = 0; inci <= std::numeric_limits<int16_t>::max(); ++inci) {
    StoredView element("ClefElement", Key(holder("Clef"), inci));
    if (!element) break;
    clefs.push_back(
        {static_cast<uint16_t>(element("ClefEdu")), static_cast<int16_t>(element("Clef"))});
  }
  if (clefs.empty()) clefs.push_back({0, 0});
  return clefs;
}

int16_t ClefAt(const std::vector<ClefChange>& clefs, int32_t edu) {
  int16_t clef = clefs.front().Clef;
  for (const ClefChange& change : clefs)
    if (edu >= 0 && change.Edu <= static_cast<uint32_t>(edu)) clef = change.Clef;
  return clef;
}

// Positions follow the durations: voice two starts where the entry that launches it starts,
// and voice one goes on behind that entry.
void Refresh(OpenFrame& frame) {
  if (!frame.Stale) return;
  size_t count = frame.Entries.size();
  frame.Elldur.assign(count, 0);
  frame.Actdur.assign(count, 0);
  frame.Clef.assign(count, 0);
  std::vector<ClefChange> clefs = ClefsAt(frame.Inst, frame.Meas);
  VoiceClock one, two;
  Fraction launch;
  bool inVoiceTwo = false;
  for (size_t i = 0; i < count; ++i) {
    const StoredEntry& entry = frame.Entries[i];
    bool voiceTwo = (entry.Ef & kEfVoiceTwo) != 0;
    if (voiceTwo && !inVoiceTwo) two = VoiceClock{launch, {}};
    inVoiceTwo = voiceTwo;
    VoiceClock& clock = voiceTwo ? two : one;
    Fraction start = clock.Position;
    if (!voiceTwo && (entry.Ef & kEfLaunchesVoiceTwo)) launch = start;
    clock.Position = start + Sounding(clock, entry);
    frame.Elldur[i] = static_cast<int32_t>(start.Floor());
    frame.Actdur[i] = static_cast<int32_t>(clock.Position.Floor() - start.Floor());
    frame.Clef[i] = ClefAt(clefs, frame.Elldur[i]);
  }
  frame.Stale = false;
}

// ---- Frames ----

// The highest frame number that any frame holder names.
int16_t HighestHeldFrame() {
  const ostin::sim::RecordTable* holders = Doc().FindTable("Gfhold");
  int16_t highest = 0;
  if (!holders) return highest;
  int frameField = holders->Shape->FieldIndex("Frame");
  for (const auto& [key, record] : holders->Rows)
    for (int32_t number : record[frameField].Numbers)
      highest = std::max<int16_t>(highest, static_cast<int16_t>(number));
  return highest;
}

// The frame number of a layer, from the staff's holder of the measure. A caller that may
// write gets a new empty frame for a layer without one, entered in the holder (made if
// missing), as the host does when music is first put into a layer.
int16_t FrameOf(int16_t inst, int16_t meas, int16_t layer, bool mayWrite) {
  if (layer < 0 || layer >= Doc().MaxLayers) return 0;
  StoredView holder("Gfhold", Key(inst, meas));
  if (holder && holder("Frame", layer) > 0) return static_cast<int16_t>(holder("Frame", layer));
  if (!mayWrite) return 0;
  int16_t number = Store().NewFrame(HighestHeldFrame);
  if (number == 0) return 0;
  const ostin::sim::RecordShape& shape = ostin::sim::ShapeOf("Gfhold");
  ostin::sim::RecordTable& table = Doc().Table(shape);
  auto [row, added] = table.Rows.try_emplace(Key(inst, meas), Doc().NewRecord(shape));
  row->second[shape.FieldIndex("Frame")].Numbers.at(layer) = number;
  return number;
}

StoredEntry* EntryAt(OpenFrame& frame, int index) {
  return index >= 1 && index <= static_cast<int>(frame.Entries.size()) ? &frame.Entries[index - 1]
                                                                       : nullptr;
}

// The note behind a note pointer, with its frame.
struct NotePlace {
  OpenFrame* Frame = nullptr;
  StoredNote* Note = nullptr;
};

NotePlace NoteAt(OpenFrame* frame, int entryIndex, int noteIndex) {
  StoredEntry* entry = frame ? EntryAt(*frame, entryIndex) : nullptr;
  if (!entry || noteIndex < 1 || noteIndex > static_cast<int>(entry->Notes.size())) return {};
  return {frame, &entry->Notes[noteIndex - 1]};
}

// ---- Metrics ----

// Metrics objects of the host by handle: an entry's, once filled, holds its layout.
struct MetricsTable {
  std::unordered_map<int32_t, std::optional<ostin::sim::EntryLayout>> Entries;
  std::unordered_map<int32_t, int16_t> Arrays; // first handle, element count
  std::unordered_map<int32_t, bool> Measures;
  int32_t NextHandle = 1;

  int32_t Take(int32_t count) {
    int32_t first = NextHandle;
    NextHandle += count;
    return first;
  }
};

MetricsTable& Metrics() {
  static MetricsTable table;
  return table;
}

void SetRect(const std::array<int32_t, 4>& rect, int32_t* left, int32_t* top, int32_t* right,
             int32_t* bottom) {
  *left = rect[0];
  *top = rect[1];
  *right = rect[2];
  *bottom = rect[3];
}
} // namespace

int32_t FxLoadTgf(int16_t iuList, int16_t slot, int16_t meas, int16_t layer, int16_t mirrorOK) {
  OSTIN_FAULT_POINT("FxLoadTgf");
  int16_t inst = FxSlotToInst(slot, iuList);
  if (inst <= 0 || !StoredView("MeasureSpec", Key(meas, 0))) return 0;
  int16_t number = FrameOf(inst, meas, layer, mirrorOK == 0);
  if (number == 0) return 0;
  OpenFrame frame{iuList, slot, inst, meas, layer, number, {}, {}, {}, {}, true};
  auto stored = Store().Frames.find(number);
  if (stored != Store().Frames.end()) frame.Entries = stored->second;
  return Opened().Add(std::move(frame));
}

int16_t GetTgf(int32_t tgf, int16_t* iuList, int16_t* staffSlot, int16_t* inst, int16_t* meas,
               int16_t* layer, int16_t* mirror, int16_t* frame, int16_t* spare,
               int16_t* numEntries) {
  OSTIN_FAULT_POINT("GetTgf");
  OpenFrame* open = Opened().Find(tgf);
  if (!open) return 0;
  *iuList = open->IuList;
  *staffSlot = open->Slot;
  *inst = open->Inst;
  *meas = open->Meas;
  *layer = open->Layer;
  *mirror = 0; // the stand-in keeps no mirrored frames
  *frame = open->Frame;
  *spare = 0;
  *numEntries = static_cast<int16_t>(open->Entries.size());
  return 1;
}

int16_t FxSaveTgf(int32_t tgf) {
  OSTIN_FAULT_POINT("FxSaveTgf");
  OpenFrame* open = Opened().Find(tgf);
  if (!open) return 0;
  Store().Frames[open->Frame] = open->Entries;
  return 1;
}

int16_t FxFreeTgf(int32_t tgf) {
  OSTIN_FAULT_POINT("FxFreeTgf");
  return Opened().Remove(tgf) ? 1 : 0;
}

int16_t FxInsertExentry(int32_t tgf, int16_t offset, int16_t number) {
  OSTIN_FAULT_POINT("FxInsertExentry");
  OpenFrame* open = Opened().Find(tgf);
  if (!open || number < 1 || offset < 0 || offset > static_cast<int>(open->Entries.size()) ||
      open->Entries.size() + number > static_cast<size_t>(OpenFrames::kMaxEntries))
    return 0;
  std::vector<StoredEntry> fresh(static_cast<size_t>(number));
  for (StoredEntry& entry : fresh)
    entry.Entnum = Store().TakeEntnum();
  open->Entries.insert(open->Entries.begin() + offset, fresh.begin(), fresh.end());
  open->Stale = true;
  return 1;
}

int16_t GetEntry(int32_t tgf, int16_t index, int32_t* exentry, int32_t* entnum, int16_t* dura,
                 int16_t* orgposi, int32_t* ef, int16_t* xef, int16_t* numNotes, int32_t* elldur,
                 int32_t* actdur, int16_t* clef) {
  OSTIN_FAULT_POINT("GetEntry");
  OpenFrame* open = Opened().Find(tgf);
  const StoredEntry* entry = open ? EntryAt(*open, index) : nullptr;
  if (!entry) return 0;
  Refresh(*open);
  *exentry = Opened().EntryPointer(tgf, index);
  *entnum = entry->Entnum;
  *dura = entry->Dura;
  *orgposi = entry->Orgposi;
  *ef = entry->Ef;
  *xef = entry->Xef;
  *numNotes = static_cast<int16_t>(entry->Notes.size());
  *elldur = open->Elldur[index - 1];
  *actdur = open->Actdur[index - 1];
  *clef = open->Clef[index - 1];
  return 1;
}

int16_t GetExentry(int32_t tgf, int16_t index, int32_t* exentry) {
  OSTIN_FAULT_POINT("GetExentry");
  OpenFrame* open = Opened().Find(tgf);
  if (!open || !EntryAt(*open, index)) return 0;
  *exentry = Opened().EntryPointer(tgf, index);
  return 1;
}

int16_t SetEntry(int32_t exentry, int16_t dura, int16_t orgposi, int32_t ef, int16_t xef,
                 int16_t numNotes) {
  OSTIN_FAULT_POINT("SetEntry");
  OpenFrames::Place place = Opened().Resolve(exentry);
  if (!place.Frame || place.Note != 0 || numNotes < 0 || numNotes > FrameStore::kMaxNotes) return 0;
  StoredEntry& entry = place.Frame->Entries[place.Entry - 1];
  entry.Dura = dura;
  entry.Orgposi = orgposi;
  entry.Ef = ef;
  entry.Xef = xef;
  entry.Notes.resize(static_cast<size_t>(numNotes));
  place.Frame->Stale = true;
  return 1;
}

int16_t GetNote(int32_t exentry, int16_t index, int32_t* exnote, int16_t* tcd, int16_t* alteration,
                int16_t* noteID, int32_t* flag) {
  OSTIN_FAULT_POINT("GetNote");
  OpenFrames::Place place = Opened().Resolve(exentry);
  NotePlace note = place.Note == 0 ? NoteAt(place.Frame, place.Entry, index) : NotePlace{};
  if (!note.Note) return 0;
  *exnote = OpenFrames::NotePointer(exentry, index);
  *tcd = note.Note->Tcd;
  *alteration = note.Note->Alteration;
  *noteID = note.Note->NoteID;
  *flag = note.Note->Flag;
  return 1;
}

int16_t SetNote(int32_t exentry, int16_t index, int16_t tcd, int16_t alteration, int16_t noteID,
                int32_t flag) {
  OSTIN_FAULT_POINT("SetNote");
  OpenFrames::Place place = Opened().Resolve(exentry);
  NotePlace note = place.Note == 0 ? NoteAt(place.Frame, place.Entry, index) : NotePlace{};
  if (!note.Note) return 0;
  *note.Note = StoredNote{tcd, alteration, noteID, flag};
  return 1;
}

int32_t FxGetMeasureDuration(int16_t inst, int16_t meas) {
  OSTIN_FAULT_POINT("FxGetMeasureDuration");
  std::optional<TimeInForce> time = TimeAt(inst, meas);
  return time ? Duration(*time) : 0;
}

int16_t FxNoteToMidi(int32_t exnote, int16_t) {
  if (Host::Instance().Refuses("FxNoteToMidi")) return -1;
  OpenFrames::Place place = Opened().Resolve(exnote);
  NotePlace note = NoteAt(place.Frame, place.Entry, place.Note);
  return note.Note ? MidiOf(*note.Frame, *note.Note) : -1;
}

int16_t TgfNoteToMidi(int32_t tgf, int16_t entry, int16_t note, int16_t) {
  if (Host::Instance().Refuses("TgfNoteToMidi")) return -1;
  NotePlace place = NoteAt(Opened().Find(tgf), entry, note);
  return place.Note ? MidiOf(*place.Frame, *place.Note) : -1;
}

int32_t NewEntryMetrics() {
  OSTIN_FAULT_POINT("NewEntryMetrics");
  int32_t handle = Metrics().Take(1);
  Metrics().Entries.emplace(handle, std::nullopt);
  return handle;
}

int16_t DeleteEntryMetrics(int32_t metrics) {
  OSTIN_FAULT_POINT("DeleteEntryMetrics");
  return Metrics().Entries.erase(metrics) ? 1 : 0;
}

int32_t NewEntryMetricsArray(int16_t numEntries) {
  OSTIN_FAULT_POINT("NewEntryMetricsArray");
  // Even an empty array has a first handle.
  int16_t count = std::max<int16_t>(numEntries, 1);
  int32_t first = Metrics().Take(count);
  for (int32_t i = 0; i < count; ++i)
    Metrics().Entries.emplace(first + i, std::nullopt);
  Metrics().Arrays.emplace(first, count);
  return first;
}

int16_t DeleteEntryMetricsArray(int32_t array) {
  OSTIN_FAULT_POINT("DeleteEntryMetricsArray");
  auto it = Metrics().Arrays.find(array);
  if (it == Metrics().Arrays.end()) return 0;
  for (int32_t i = 0; i < it->second; ++i)
    Metrics().Entries.erase(array + i);
  Metrics().Arrays.erase(it);
  return 1;
}

int32_t NewMeasureMetrics() {
  OSTIN_FAULT_POINT("NewMeasureMetrics");
  int32_t handle = Metrics().Take(1);
  Metrics().Measures.emplace(handle, true);
  return handle;
}

int16_t DeleteMeasureMetrics(int32_t metrics) {
  OSTIN_FAULT_POINT("DeleteMeasureMetrics");
  return Metrics().Measures.erase(metrics) ? 1 : 0;
}

int16_t FxGetEntryMetrics(int16_t, int16_t, int32_t entnum, int32_t metrics, int16_t) {
  OSTIN_FAULT_POINT("FxGetEntryMetrics");
  // Only entries whose layout the host was given have metrics; entry numbers are unique.
  auto handle = Metrics().Entries.find(metrics);
  auto layout = Store().Layouts.find(entnum);
  if (handle == Metrics().Entries.end() || layout == Store().Layouts.end()) return 0;
  handle->second = layout->second;
  return 1;
}

int16_t FxGetTgfEntryMetrics(int32_t tgf, int32_t array, int32_t measureMetrics, int16_t) {
  OSTIN_FAULT_POINT("FxGetTgfEntryMetrics");
  // The stand-in lays out no whole frames: their metrics are always missing.
  return 0;
}

int16_t GetEntryMetrics(int32_t metrics, int16_t* layer, int32_t* edu, int16_t* symDur,
                        int16_t* numNotes, int32_t* entryFlags, int32_t* headRectLeft,
                        int32_t* headRectTop, int32_t* headRectRight, int32_t* headRectBottom,
                        int32_t* stemRectLeft, int32_t* stemRectTop, int32_t* stemRectRight,
                        int32_t* stemRectBottom, int16_t* secondsDivider, int32_t* lastDot,
                        int32_t* firstAcci) {
  OSTIN_FAULT_POINT("GetEntryMetrics");
  auto it = Metrics().Entries.find(metrics);
  if (it == Metrics().Entries.end() || !it->second) return 0;
  *layer = *symDur = *numNotes = *secondsDivider = 0;
  *edu = *entryFlags = *lastDot = *firstAcci = 0;
  SetRect(it->second->HeadRect, headRectLeft, headRectTop, headRectRight, headRectBottom);
  SetRect(it->second->StemRect, stemRectLeft, stemRectTop, stemRectRight, stemRectBottom);
  return 1;
}

int16_t GetNoteMetrics(int32_t metrics, int16_t, int32_t*, int32_t*, int16_t*, int16_t*) {
  OSTIN_FAULT_POINT("GetNoteMetrics");
  // No note of the stand-in's layout has metrics.
  return 0;
}

int16_t GetMeasureMetrics(int32_t metrics, int16_t* ssys, int16_t* iu, int16_t* slot,
                          int32_t* horzPercent, int16_t* mewidth, int16_t* scalewidth,
                          int32_t* percent, int32_t* lperc, int32_t* ssysTop, int32_t* fipTop,
                          int32_t* fipBottom, int32_t* fipTopStaffLine, int32_t* meposadj,
                          int16_t* frontRepWidth, int16_t* backRepWidth, int16_t* barWidth,
                          int32_t* top, int32_t* left, int32_t* bottom, int32_t* right,
                          int32_t* topStaffLine) {
  OSTIN_FAULT_POINT("GetMeasureMetrics");
  if (!Metrics().Measures.count(metrics)) return 0;
  for (int16_t* value :
       {ssys, iu, slot, mewidth, scalewidth, frontRepWidth, backRepWidth, barWidth})
    *value = 0;
  for (int32_t* value : {horzPercent, percent, lperc, ssysTop, fipTop, fipBottom, fipTopStaffLine,
                         meposadj, top, left, bottom, right, topStaffLine})
    *value = 0;
  return 1;
}
