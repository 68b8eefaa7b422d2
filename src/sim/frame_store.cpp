#include "sim/frame_store.h"

#include <algorithm>
#include <limits>
#include <string>
#include <unordered_map>

#include <nlohmann/json.hpp>

#include "sim/document.h"

namespace ostin::sim {

namespace {
constexpr int kEntryShift = 4;
constexpr int kSlotShift = 16;
constexpr int32_t kNoteMask = 0xF;
constexpr int32_t kEntryMask = 0xFFF;
constexpr size_t kMaxOpenFrames = 0x7FFE;

// One number field of a stored entry or note, by its name in the document file.
template <class R> struct NumberField {
  const char* Name;
  int16_t R::*Short;
  int32_t R::*Long;
  bool Always = false; // written even at 0
};

const NumberField<StoredEntry> kEntryFields[] = {
    {"Entnum", nullptr, &StoredEntry::Entnum, true},
    {"Dura", &StoredEntry::Dura, nullptr},
    {"Orgposi", &StoredEntry::Orgposi, nullptr},
    {"Ef", nullptr, &StoredEntry::Ef},
    {"Xef", &StoredEntry::Xef, nullptr},
};
const NumberField<StoredNote> kNoteFields[] = {
    {"Tcd", &StoredNote::Tcd, nullptr},
    {"Alteration", &StoredNote::Alteration, nullptr},
    {"NoteID", &StoredNote::NoteID, nullptr},
    {"Flag", nullptr, &StoredNote::Flag},
};
constexpr const char* kNotes = "notes";

bool Fits(const nlohmann::json& value, bool wide) {
  if (!value.is_number_integer()) return false;
  int64_t v = value.get<int64_t>();
  if (wide)
    return v >= std::numeric_limits<int32_t>::min() && v <= std::numeric_limits<int32_t>::max();
  return v >= std::numeric_limits<int16_t>::min() && v <= std::numeric_limits<int16_t>::max();
}

// Fields at 0 are left out, but for those always written.
template <class R, size_t N>
nlohmann::json FieldsToJson(const R& record, const NumberField<R> (&fields)[N]) {
  nlohmann::json json = nlohmann::json::object();
  for (const NumberField<R>& field : fields) {
    int32_t value = field.Short ? int32_t{record.*field.Short} : record.*field.Long;
    if (value != 0 || field.Always) json[field.Name] = value;
  }
  return json;
}

// Reads one named field into the record; false when the record has no such field.
template <class R, size_t N>
bool FieldFromJson(R& record, const NumberField<R> (&fields)[N], const std::string& name,
                   const nlohmann::json& value, const std::string& where) {
  auto field = std::find_if(std::begin(fields), std::end(fields),
                            [&](const NumberField<R>& f) { return name == f.Name; });
  if (field == std::end(fields)) return false;
  bool wide = field->Long != nullptr;
  if (!Fits(value, wide))
    throw DocumentError(where + ", field " + name + ": not a " + (wide ? "32" : "16") +
                        "-bit number");
  if (wide)
    record.*field->Long = value.get<int32_t>();
  else
    record.*field->Short = value.get<int16_t>();
  return true;
}

nlohmann::json EntryToJson(const StoredEntry& entry) {
  nlohmann::json json = FieldsToJson(entry, kEntryFields);
  if (entry.Notes.empty()) return json;
  nlohmann::json notes = nlohmann::json::array();
  for (const StoredNote& note : entry.Notes)
    notes.push_back(FieldsToJson(note, kNoteFields));
  json[kNotes] = std::move(notes);
  return json;
}

StoredNote NoteFromJson(const nlohmann::json& json, const std::string& where) {
  if (!json.is_object()) throw DocumentError(where + ": an object expected");
  StoredNote note;
  for (const auto& [name, value] : json.items())
    if (!FieldFromJson(note, kNoteFields, name, value, where))
      throw DocumentError(where + ": unknown field \"" + name + "\"");
  return note;
}

std::vector<StoredNote> NotesFromJson(const nlohmann::json& json, const std::string& where) {
  if (!json.is_array()) throw DocumentError(where + ", field notes: a list expected");
  if (json.size() > static_cast<size_t>(FrameStore::kMaxNotes))
    throw DocumentError(where + ", field notes: " + std::to_string(json.size()) +
                        " notes, at most " + std::to_string(FrameStore::kMaxNotes) + " allowed");
  std::vector<StoredNote> notes;
  for (size_t i = 0; i < json.size(); ++i)
    notes.push_back(NoteFromJson(json[i], where + ", note " + std::to_string(i + 1)));
  return notes;
}

StoredEntry EntryFromJson(const nlohmann::json& json, std::string where) {
  if (!json.is_object()) throw DocumentError(where + ": an object expected");
  if (json.contains("Entnum") && Fits(json["Entnum"], true))
    where += " (Entnum " + std::to_string(json["Entnum"].get<int32_t>()) + ")";
  StoredEntry entry;
  for (const auto& [name, value] : json.items()) {
    if (name == kNotes)
      entry.Notes = NotesFromJson(value, where);
    else if (!FieldFromJson(entry, kEntryFields, name, value, where))
      throw DocumentError(where + ": unknown field \"" + name + "\"");
  }
  if (entry.Entnum < 1) throw DocumentError(where + ", field Entnum: a number from 1 expected");
  return entry;
}

// Entry numbers seen so far, with the frame that holds each.
using EntnumOwners = std::unordered_map<int32_t, int16_t>;

StoredFrame FrameFromJson(const nlohmann::json& json, int16_t number, EntnumOwners& owners) {
  std::string where = "frame " + std::to_string(number);
  if (!json.contains("entries") || !json["entries"].is_array())
    throw DocumentError(where + ", field entries: a list expected");
  StoredFrame frame;
  for (const auto& [name, value] : json.items())
    if (name != "frame" && name != "entries")
      throw DocumentError(where + ": unknown field \"" + name + "\"");
  const nlohmann::json& entries = json["entries"];
  for (size_t i = 0; i < entries.size(); ++i) {
    std::string at = where + ", entry " + std::to_string(i + 1);
    StoredEntry entry = EntryFromJson(entries[i], at);
    auto [owner, fresh] = owners.emplace(entry.Entnum, number);
    if (!fresh)
      throw DocumentError(at + " (Entnum " + std::to_string(entry.Entnum) +
                          "), field Entnum: already used in frame " +
                          std::to_string(owner->second));
    frame.push_back(std::move(entry));
  }
  if (frame.size() > static_cast<size_t>(OpenFrames::kMaxEntries))
    throw DocumentError(where + ", field entries: more than " +
                        std::to_string(OpenFrames::kMaxEntries) + " entries");
  return frame;
}

int16_t FrameNumberFromJson(const nlohmann::json& json, size_t position) {
  std::string where = "frames, list element " + std::to_string(position + 1);
  if (!json.is_object()) throw DocumentError(where + ": an object expected");
  if (!json.contains("frame") || !Fits(json["frame"], false) || json["frame"].get<int16_t>() < 1)
    throw DocumentError(where + ", field frame: a frame number from 1 to 32767 expected");
  return json["frame"].get<int16_t>();
}
} // namespace

int32_t OpenFrames::Add(OpenFrame frame) {
  size_t slot;
  if (!freeSlots_.empty()) {
    slot = freeSlots_.back();
    freeSlots_.pop_back();
  } else {
    if (slots_.size() >= kMaxOpenFrames) return 0;
    slot = slots_.size();
    slots_.emplace_back();
  }
  int32_t handle = nextHandle_++;
  slots_[slot] = std::move(frame);
  slotOf_.emplace(handle, slot);
  return handle;
}

OpenFrame* OpenFrames::Find(int32_t handle) {
  auto it = slotOf_.find(handle);
  return it == slotOf_.end() ? nullptr : &*slots_[it->second];
}

bool OpenFrames::Remove(int32_t handle) {
  auto it = slotOf_.find(handle);
  if (it == slotOf_.end()) return false;
  slots_[it->second].reset();
  freeSlots_.push_back(it->second);
  slotOf_.erase(it);
  return true;
}

int32_t OpenFrames::EntryPointer(int32_t handle, int entry) const {
  auto it = slotOf_.find(handle);
  if (it == slotOf_.end()) return 0;
  return (static_cast<int32_t>(it->second + 1) << kSlotShift) | (entry << kEntryShift);
}

OpenFrames::Place OpenFrames::Resolve(int32_t pointer) {
  int64_t slot = (static_cast<int64_t>(pointer) >> kSlotShift) - 1;
  if (slot < 0 || slot >= static_cast<int64_t>(slots_.size()) || !slots_[slot]) return {};
  OpenFrame& frame = *slots_[slot];
  int entry = (pointer >> kEntryShift) & kEntryMask;
  if (entry < 1 || entry > static_cast<int>(frame.Entries.size())) return {};
  return {&frame, entry, pointer & kNoteMask};
}

int16_t FrameStore::NewFrame(const std::function<int16_t()>& highestHeld) {
  if (nextFrame_ == 0) {
    int32_t highestStored = Frames.empty() ? 0 : Frames.rbegin()->first;
    nextFrame_ = std::max<int32_t>(highestStored, highestHeld()) + 1;
  }
  if (nextFrame_ > std::numeric_limits<int16_t>::max()) return 0;
  auto number = static_cast<int16_t>(nextFrame_++);
  Frames[number] = {};
  return number;
}

nlohmann::json FrameStore::ToJson() const {
  nlohmann::json list = nlohmann::json::array();
  for (const auto& [number, frame] : Frames) {
    nlohmann::json entries = nlohmann::json::array();
    for (const StoredEntry& entry : frame)
      entries.push_back(EntryToJson(entry));
    list.push_back({{"frame", number}, {"entries", std::move(entries)}});
  }
  return {{"nextEntnum", NextEntnum}, {"list", std::move(list)}};
}

FrameStore FrameStore::FromJson(const nlohmann::json& json) {
  if (!json.is_object()) throw DocumentError("\"frames\" must be an object");
  for (const auto& [name, value] : json.items())
    if (name != "nextEntnum" && name != "list")
      throw DocumentError("frames: unknown field \"" + name + "\"");
  FrameStore store;
  EntnumOwners owners;
  static const nlohmann::json kNoFrames = nlohmann::json::array();
  const nlohmann::json& list = json.contains("list") ? json["list"] : kNoFrames;
  if (!list.is_array()) throw DocumentError("frames, field list: a list expected");
  for (size_t i = 0; i < list.size(); ++i) {
    int16_t number = FrameNumberFromJson(list[i], i);
    if (store.Frames.count(number))
      throw DocumentError("frame " + std::to_string(number) + ": frame number given twice");
    store.Frames.emplace(number, FrameFromJson(list[i], number, owners));
  }
  int32_t highest = 0;
  for (const auto& [entnum, frame] : owners)
    highest = std::max(highest, entnum);
  store.NextEntnum = highest + 1;
  if (json.contains("nextEntnum")) {
    const nlohmann::json& next = json["nextEntnum"];
    if (!Fits(next, true) || next.get<int32_t>() < store.NextEntnum)
      throw DocumentError("frames, field nextEntnum: a 32-bit number above entry number " +
                          std::to_string(highest) + " expected");
    store.NextEntnum = next.get<int32_t>();
  }
  return store;
}

bool FrameStore::operator==(const FrameStore& other) const {
  return Frames == other.Frames && NextEntnum == other.NextEntnum;
}

} // namespace ostin::sim
