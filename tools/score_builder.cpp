#include "tools/score_builder.h"

#include <algorithm>
#include <limits>

#include "host/frames/frame_bits.h"
#include "platform/code_page.h"
#include "sim/host.h"

namespace ostin::tools {

namespace {
constexpr int16_t kClefList = 0x0400;
constexpr int16_t kShownTime = 0x0004;
constexpr int16_t kPercussionStaff = 0x2000;
constexpr int16_t kOwnNoteheadFont = 0x0020;
constexpr int16_t kDrumStaffTag = 17491;
constexpr int16_t kNameTextTag = 25196;
constexpr int16_t kStaffShowsAll = 9246; // stems, beams, dots, rests, ties, tuplets
constexpr int16_t kFiveLines = 5;
constexpr int16_t kMeasureWidth = 288;
constexpr int16_t kDrumChannel = 10;
constexpr int16_t kChannels = 64;
constexpr int kMaxLayers = 4;
constexpr const char* kNameFont = "^font(Times New Roman,8192)^size(12)^efx(plain)";
constexpr const char* kPercussionFont = "Maestro Percussion";

// Records that describe staves, measures and music: the builder starts them afresh.
constexpr const char* kScoreRecords[] = {
    "StaffSpec",          "InstrumentUsed",    "MeasureSpec",        "Gfhold",
    "ClefElement",        "GroupSpec",         "TextBlock",          "Orchestra",
    "OrchestraText",      "PatchList",         "MidiPatch",          "DrumStaff",
    "PercussionMapTitle", "PercussionNoteDef", "PercussionNoteName", "Header"};

// Tonic step by fifths mod 7, major and minor; place of each step in the order of sharps
// F C G D A E B and of flats B E A D G C F.
constexpr int kMajorTonic[7] = {0, 4, 1, 5, 2, 6, 3};
constexpr int kMinorTonic[7] = {5, 2, 6, 3, 0, 4, 1};
constexpr int kSharpPlace[7] = {2, 4, 6, 1, 3, 5, 7};
constexpr int kFlatPlace[7] = {6, 4, 2, 7, 5, 3, 1};
constexpr int kTonicOctave = 4;

int FloorMod(int a, int b) {
  return ((a % b) + b) % b;
}

int KeyAlter(int step, int fifths) {
  if (fifths > 0) return fifths >= kSharpPlace[step] + 7 ? 2 : fifths >= kSharpPlace[step] ? 1 : 0;
  return fifths <= -kFlatPlace[step] - 7 ? -2 : fifths <= -kFlatPlace[step] ? -1 : 0;
}

std::string Place(int16_t staff, int16_t measure) {
  return "staff " + std::to_string(staff) + ", measure " + std::to_string(measure);
}

sim::RecordKey Key(int32_t cmper, int32_t inci) {
  return sim::RecordKey{cmper, static_cast<int16_t>(inci), 0};
}
} // namespace

int16_t KeySig::Value() const {
  return static_cast<int16_t>(((Minor ? 1 : 0) << 8) | (Fifths & 0xFF));
}

Pitch Pitch::Parse(std::string_view text) {
  static constexpr std::string_view kLetters = "CDEFGAB";
  auto refuse = [&](const char* why) {
    return BuildError("pitch \"" + std::string(text) + "\": " + why);
  };
  if (text.empty() || kLetters.find(text[0]) == std::string_view::npos)
    throw refuse("a letter C to B expected first");
  Pitch pitch;
  pitch.Step = static_cast<int16_t>(kLetters.find(text[0]));
  size_t i = 1;
  for (; i < text.size() && (text[i] == '#' || text[i] == 'b' || text[i] == 'x'); ++i)
    pitch.Alter = static_cast<int16_t>(pitch.Alter + (text[i] == 'b'   ? -1
                                                      : text[i] == 'x' ? 2
                                                                       : 1));
  if (pitch.Alter < -2 || pitch.Alter > 2) throw refuse("at most a double sharp or flat");
  if (i + 1 != text.size() || text[i] < '0' || text[i] > '9')
    throw refuse("one octave digit expected last");
  pitch.Octave = static_cast<int16_t>(text[i] - '0');
  return pitch;
}

Pitch ScalePitch(int16_t diatonic, const KeySig& key) {
  auto step = static_cast<int16_t>(FloorMod(diatonic, 7));
  return Pitch{step, static_cast<int16_t>((diatonic - step) / 7),
               static_cast<int16_t>(KeyAlter(step, key.Fifths))};
}

EntrySpec Notes(int16_t dura, std::string_view pitches) {
  EntrySpec entry{dura, {}};
  while (!pitches.empty()) {
    size_t blank = pitches.find(' ');
    std::string_view token = pitches.substr(0, blank);
    pitches = blank == std::string_view::npos ? std::string_view() : pitches.substr(blank + 1);
    if (token.empty()) continue;
    NoteSpec note;
    note.TieEnd = token.front() == '~';
    if (note.TieEnd) token.remove_prefix(1);
    note.TieStart = !token.empty() && token.back() == '~';
    if (note.TieStart) token.remove_suffix(1);
    note.Sound = Pitch::Parse(token);
    entry.Notes.push_back(note);
  }
  if (entry.Notes.empty()) throw BuildError("a note needs at least one pitch");
  return entry;
}

EntrySpec Rest(int16_t dura) {
  return EntrySpec{dura, {}};
}

ScoreBuilder::ScoreBuilder(sim::Document base) : doc_(std::move(base)) {
  for (const char* className : kScoreRecords)
    doc_.Records.erase(std::string(className));
  doc_.Frames = sim::FrameStore{};
  doc_.Path.clear();
}

ScoreBuilder ScoreBuilder::FromDefaultDocument() {
  return ScoreBuilder(sim::Host::NewDocument());
}

int ScoreBuilder::FieldOf(std::string_view className, const char* field) const {
  const sim::RecordShape* shape = sim::FindRecordShape(className);
  if (!shape) throw BuildError("no record type \"" + std::string(className) + "\"");
  int index = shape->FieldIndex(field);
  if (index < 0)
    throw BuildError("record " + std::string(className) + " has no field \"" + field + "\"");
  return index;
}

sim::StoredRecord& ScoreBuilder::Row(std::string_view className, sim::RecordKey key) {
  const sim::RecordShape* shape = sim::FindRecordShape(className);
  if (!shape) throw BuildError("no record type \"" + std::string(className) + "\"");
  sim::RecordTable& table = doc_.Table(*shape);
  auto it = table.Rows.find(key);
  if (it == table.Rows.end()) it = table.Rows.emplace(key, doc_.NewRecord(*shape)).first;
  return it->second;
}

int32_t ScoreBuilder::Field(std::string_view className, sim::RecordKey key, const char* field) {
  return Row(className, key)[FieldOf(className, field)].Numbers.at(0);
}

void ScoreBuilder::Set(std::string_view className, sim::RecordKey key,
                       std::initializer_list<std::pair<const char*, int32_t>> fields) {
  sim::StoredRecord& row = Row(className, key);
  for (const auto& [field, value] : fields)
    row[FieldOf(className, field)].Numbers.at(0) = value;
}

void ScoreBuilder::SetBlock(std::string_view className, sim::RecordKey key, const char* field,
                            std::vector<int32_t> values) {
  std::vector<int32_t>& numbers = Row(className, key)[FieldOf(className, field)].Numbers;
  const FieldShape& shape = sim::FindRecordShape(className)->Fields[FieldOf(className, field)];
  if (!sim::Document::IsGrowingBlock(shape) && values.size() > numbers.size())
    throw BuildError("record " + std::string(className) + ", field " + field + ": at most " +
                     std::to_string(numbers.size()) + " values");
  if (values.size() < numbers.size()) values.resize(numbers.size(), 0);
  numbers = std::move(values);
}

void ScoreBuilder::SetText(std::string_view className, sim::RecordKey key, const char* field,
                           const std::string& text) {
  Row(className, key)[FieldOf(className, field)].Text = Utf8ToHost(text);
}

void ScoreBuilder::SetHeader(const HeaderSpec& header) {
  static constexpr int kMonthDays[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool leap = header.Year % 4 == 0 && (header.Year % 100 != 0 || header.Year % 400 == 0);
  bool valid = header.Year >= 1 && header.Year <= 9999 && header.Month >= 1 && header.Month <= 12 &&
               header.Day >= 1 &&
               header.Day <= kMonthDays[header.Month - 1] - (header.Month == 2 && !leap);
  if (!valid)
    throw BuildError("header date " + std::to_string(header.Year) + "-" +
                     std::to_string(header.Month) + "-" + std::to_string(header.Day) +
                     ": not a day of a year from 1 to 9999");
  sim::RecordKey key{};
  Set("Header", key,
      {{"ModifiedYear", header.Year},
       {"ModifiedMonth", header.Month},
       {"ModifiedDay", header.Day}});
  SetText("Header", key, "Title", header.Title);
  SetText("Header", key, "Composer", header.Composer);
  SetText("Header", key, "UserCopyright", header.Copyright);
}

int16_t ScoreBuilder::AddNameText(const std::string& text) {
  if (text.empty()) return 0;
  const sim::RecordTable* blocks = doc_.FindTable("TextBlock");
  auto number = static_cast<int16_t>(
      blocks && !blocks->Rows.empty() ? blocks->Rows.rbegin()->first.Cmper + 1 : 1);
  Set("TextBlock", Key(number, 0), {{"TextID", -1}, {"TextTag", kNameTextTag}});
  SetText("TextBlock", Key(number, 0), "Text", kNameFont + text);
  return number;
}

// No alternate notation, and every layer shown.
constexpr int32_t kAllLayersShown = 0x0700;

int16_t ScoreBuilder::AddStaff(const StaffOptions& options) {
  if (staves_ == std::numeric_limits<int16_t>::max()) throw BuildError("too many staves");
  auto staff = ++staves_;
  Set("InstrumentUsed", Key(0, staff - 1), {{"Inst", staff}});
  Set("StaffSpec", Key(staff, 0),
      {{"Clefs", options.Clef},
       {"TopLines", 0},
       {"BotLines", kFiveLines},
       {"MoreFlags", kStaffShowsAll},
       {"AltFlag", kAllLayersShown},
       {"StaffID", staff},
       {"Transposition", options.Transposition},
       {"FullName", AddNameText(options.FullName)},
       {"AbbrvName", AddNameText(options.AbbrvName)}});
  staffClef_[staff] = options.Clef;
  if (options.Instrument) AddSound(staff, *options.Instrument);
  return staff;
}

// The staff plays through an orchestra entry: its patch list names the entry for every
// layer and for expressions, the entry names its channel, the channel's patch its program.
// Staves with the same sound share one entry.
void ScoreBuilder::AddSound(int16_t staff, const Sound& sound) {
  int16_t entry = 0;
  if (const sim::RecordTable* names = doc_.FindTable("OrchestraText"))
    for (const auto& [key, row] : names->Rows)
      if (row[0].Text == sound.Name) entry = static_cast<int16_t>(key.Cmper);
  if (entry == 0) {
    entry = ++orchestra_;
    int16_t channel = sound.Channel;
    if (channel == 0) {
      channel = static_cast<int16_t>(channel_ % kChannels + 1);
      if (channel == kDrumChannel) channel = static_cast<int16_t>(channel + 1);
      channel_ = channel;
    }
    int16_t patch = static_cast<int16_t>(channel - 1);
    Set("Orchestra", Key(entry, 0), {{"PatchInfo", patch}});
    SetText("OrchestraText", Key(entry, 0), "Text", sound.Name);
    std::string slot = std::to_string(patch % 3 + 1);
    std::string program = "PatchAndPatchType_" + slot, bank = "BankData_" + slot;
    Set("MidiPatch", Key(0, patch / 3), {{program.c_str(), sound.Program - 1}, {bank.c_str(), 0}});
  }
  SetBlock("PatchList", Key(staff, 0), "Layers", std::vector<int32_t>(kMaxLayers, entry - 1));
  Set("PatchList", Key(staff, 0), {{"Expressions", entry - 1}});
}

void ScoreBuilder::MakePercussionStaff(int16_t staff, const std::string& title,
                                       const std::vector<DrumNote>& drums) {
  if (staff < 1 || staff > staves_)
    throw BuildError("percussion staff " + std::to_string(staff) + ": no such staff");
  const sim::RecordTable* maps = doc_.FindTable("PercussionMapTitle");
  auto map =
      static_cast<int16_t>(maps && !maps->Rows.empty() ? maps->Rows.rbegin()->first.Cmper + 1 : 1);
  SetText("PercussionMapTitle", Key(map, 0), "Text", title);
  std::vector<int32_t> playMap(8, 0);
  for (const DrumNote& drum : drums) {
    if (drum.MidiKey < 0 || drum.MidiKey > 127)
      throw BuildError("drum \"" + drum.Name + "\": MIDI key out of 0 to 127");
    Set("PercussionNoteDef", Key(map, drum.MidiKey),
        {{"MidiNote", drum.MidiKey},
         {"StaffPos", drum.StaffPos},
         {"ClosedNotehead", drum.ClosedNotehead},
         {"OpenNotehead", drum.OpenNotehead}});
    if (!drum.Name.empty())
      SetText("PercussionNoteName", Key(map, drum.MidiKey), "Text", drum.Name);
    // Bit k of word w plays key 16 w + k; bit 15 is the sign bit of the word.
    int32_t word = playMap[drum.MidiKey / 16] | (1 << (drum.MidiKey % 16));
    playMap[drum.MidiKey / 16] = static_cast<int16_t>(word);
  }
  Set("DrumStaff", Key(staff, 0), {{"Tag", kDrumStaffTag}, {"PercMap", map}});
  SetBlock("DrumStaff", Key(staff, 0), "PlayMap", playMap);
  int32_t flag = Field("StaffSpec", Key(staff, 0), "Flag");
  Set("StaffSpec", Key(staff, 0),
      {{"Flag", flag | kPercussionStaff | kOwnNoteheadFont},
       {"Mfont", doc_.Texts.FontNumber(kPercussionFont)},
       {"Clefs", kPercussionClef},
       {"DrumStaffTag", kDrumStaffTag},
       {"DrumStaffCmper", staff}});
  staffClef_[staff] = kPercussionClef;
}

void ScoreBuilder::AddGroup(const GroupOptions& options) {
  if (options.FirstStaff < 1 || options.LastStaff > staves_ ||
      options.FirstStaff > options.LastStaff)
    throw BuildError("group of staves " + std::to_string(options.FirstStaff) + " to " +
                     std::to_string(options.LastStaff) + ": not staves of the score");
  auto group = ++groups_;
  Set("GroupSpec", Key(0, group),
      {{"StartInst", options.FirstStaff},
       {"EndInst", options.LastStaff},
       {"BracketID", options.Bracket},
       {"FullNameID", AddNameText(options.FullName)},
       {"AbrvNameID", AddNameText(options.AbbrvName)}});
}

int16_t ScoreBuilder::AddMeasure(const MeasureOptions& options) {
  if (measures_ == std::numeric_limits<int16_t>::max()) throw BuildError("too many measures");
  auto measure = static_cast<int16_t>(measures_ + 1);
  std::string where = "measure " + std::to_string(measure);
  if (options.Key.Fifths < -7 || options.Key.Fifths > 7)
    throw BuildError(where + ": a key has from 7 flats to 7 sharps");
  if (options.Time.Beats < 1 || options.Time.DivBeat < 1)
    throw BuildError(where + ": a time needs beats and a beat length");
  measures_ = measure;
  Set("MeasureSpec", Key(measure, 0),
      {{"Measpace", kMeasureWidth},
       {"Key", options.Key.Value()},
       {"Beats", options.Time.Beats},
       {"DivBeat", options.Time.DivBeat},
       {"Meflag", options.Meflag}});
  if (options.Shown)
    Set("MeasureSpec", Key(measure, 0),
        {{"Newflag", kShownTime},
         {"DispBeats", options.Shown->Beats},
         {"DispDivbeat", options.Shown->DivBeat}});
  return measure;
}

KeySig ScoreBuilder::KeyOf(int16_t measure) {
  int32_t value = Field("MeasureSpec", Key(measure, 0), "Key");
  return KeySig{static_cast<int8_t>(value & 0xFF), ((value >> 8) & 0xFF) == 1};
}

int32_t ScoreBuilder::DurationOf(int16_t measure) {
  return Field("MeasureSpec", Key(measure, 0), "Beats") *
         Field("MeasureSpec", Key(measure, 0), "DivBeat");
}

void ScoreBuilder::CheckPlace(int16_t staff, int16_t measure, const char* what) const {
  if (staff < 1 || staff > staves_ || measure < 1 || measure > measures_)
    throw BuildError(std::string(what) + " at " + Place(staff, measure) +
                     ": no such staff or measure");
}

void ScoreBuilder::SetLayer(int16_t staff, int16_t measure, int16_t layer,
                            std::vector<EntrySpec> entries) {
  CheckPlace(staff, measure, "layer");
  if (layer < 0 || layer >= kMaxLayers)
    throw BuildError(Place(staff, measure) + ": layers are 0 to 3, not " + std::to_string(layer));
  layers_[{staff, measure, layer}] = std::move(entries);
}

std::vector<EntrySpec>* ScoreBuilder::Layer(int16_t staff, int16_t measure, int16_t layer) {
  auto it = layers_.find({staff, measure, layer});
  return it == layers_.end() ? nullptr : &it->second;
}

void ScoreBuilder::SetClefChanges(int16_t staff, int16_t measure,
                                  std::vector<std::pair<int32_t, int16_t>> clefs) {
  CheckPlace(staff, measure, "clefs");
  if (clefs.empty() || clefs.front().first != 0)
    throw BuildError(Place(staff, measure) + ": the clefs of a measure start at 0");
  std::sort(clefs.begin(), clefs.end());
  clefChanges_[{staff, measure}] = std::move(clefs);
}

// Tcd counts diatonic steps from the key's tonic in octave 4; the alteration is what the
// note adds to the key's own note of its step.
sim::StoredEntry ScoreBuilder::MakeEntry(const EntrySpec& spec, const KeySig& key) {
  sim::StoredEntry entry;
  entry.Entnum = doc_.Frames.TakeEntnum();
  entry.Dura = spec.Dura;
  entry.Ef = (spec.Notes.empty() ? kEfValid : kEfValid | kEfNote) |
             (spec.VoiceTwo ? kEfVoiceTwo : 0) | (spec.LaunchesVoiceTwo ? kEfLaunchesVoiceTwo : 0);
  int tonic = (key.Minor ? kMinorTonic : kMajorTonic)[FloorMod(key.Fifths, 7)];
  int16_t id = 0;
  for (const NoteSpec& note : spec.Notes) {
    sim::StoredNote stored;
    stored.Tcd =
        static_cast<int16_t>(note.Sound.Octave * 7 + note.Sound.Step - (kTonicOctave * 7 + tonic));
    stored.Alteration =
        static_cast<int16_t>(note.Sound.Alter - KeyAlter(note.Sound.Step, key.Fifths));
    stored.NoteID = ++id;
    stored.Flag = kNoteValid | (note.TieStart ? kNoteTieStart : 0) |
                  (note.TieEnd ? kNoteTieEnd : 0) |
                  (stored.Alteration != 0 ? kNoteAccidentalShown : 0);
    entry.Notes.push_back(stored);
  }
  return entry;
}

// Each staff's holder of a measure names its clef: the clef in force at the start, or a
// list of the clefs inside the measure.
void ScoreBuilder::WriteHolders() {
  for (int16_t staff = 1; staff <= staves_; ++staff) {
    int16_t clef = staffClef_[staff];
    for (int16_t measure = 1; measure <= measures_; ++measure) {
      auto changes = clefChanges_.find({staff, measure});
      const sim::RecordTable* holders = doc_.FindTable("Gfhold");
      bool held = holders && holders->Rows.count(Key(staff, measure));
      if (changes == clefChanges_.end()) {
        if (held) Set("Gfhold", Key(staff, measure), {{"Clef", clef}, {"Flag", 0}});
        continue;
      }
      auto list = ++clefLists_;
      int16_t inci = 0;
      for (const auto& [edu, change] : changes->second)
        Set("ClefElement", Key(list, inci++), {{"Clef", change}, {"ClefEdu", edu}});
      Set("Gfhold", Key(staff, measure), {{"Clef", list}, {"Flag", kClefList}});
      clef = changes->second.back().second;
    }
  }
}

// Voice one fills the measure; each run of voice two stays inside it from the start of
// the entry that launches it.
void ScoreBuilder::CheckLayer(int16_t staff, int16_t measure, int16_t layer,
                              const std::vector<EntrySpec>& entries) {
  std::string where = Place(staff, measure) + ", layer " + std::to_string(layer);
  int32_t length = 0, launch = -1, voiceTwo = 0;
  for (const EntrySpec& entry : entries) {
    if (entry.Dura <= 0 || entry.Notes.size() > sim::FrameStore::kMaxNotes)
      throw BuildError(where + ": an entry needs a length and at most 12 notes");
    if (!entry.VoiceTwo) {
      launch = entry.LaunchesVoiceTwo ? length : -1;
      voiceTwo = 0;
      length += entry.Dura;
      continue;
    }
    if (launch < 0) throw BuildError(where + ": voice two must follow the entry that launches it");
    voiceTwo += entry.Dura;
    if (launch + voiceTwo > DurationOf(measure))
      throw BuildError(where + ": voice two runs past the end of the measure");
  }
  if (length != DurationOf(measure))
    throw BuildError(where + ": the entries last " + std::to_string(length) + " EDU, the measure " +
                     std::to_string(DurationOf(measure)));
}

sim::Document ScoreBuilder::Build() {
  int32_t frame = 0;
  for (const auto& [place, entries] : layers_) {
    const auto& [staff, measure, layer] = place;
    CheckLayer(staff, measure, layer, entries);
    if (++frame > std::numeric_limits<int16_t>::max())
      throw BuildError("more frames than the host can number (32767)");
    KeySig key = KeyOf(measure);
    sim::StoredFrame& stored = doc_.Frames.Frames[static_cast<int16_t>(frame)];
    for (const EntrySpec& entry : entries)
      stored.push_back(MakeEntry(entry, key));
    Row("Gfhold", Key(staff, measure))[FieldOf("Gfhold", "Frame")].Numbers.at(layer) = frame;
  }
  WriteHolders();
  return std::move(doc_);
}

} // namespace ostin::tools
