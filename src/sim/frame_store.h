#pragma once
// The document's frames: the entries and notes of every layer of every staff and measure,
// kept by frame number, with the frames the running process has open.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace ostin::sim {

struct StoredNote {
  int16_t Tcd = 0;
  int16_t Alteration = 0;
  int16_t NoteID = 0;
  int32_t Flag = 0;
  bool operator==(const StoredNote&) const = default;
};

struct StoredEntry {
  int32_t Entnum = 0;
  int16_t Dura = 0;
  int16_t Orgposi = 0;
  int32_t Ef = 0;
  int16_t Xef = 0;
  std::vector<StoredNote> Notes;
  bool operator==(const StoredEntry&) const = default;
};

using StoredFrame = std::vector<StoredEntry>;

// A frame opened through the bridge: where it stands and a working copy of its entries,
// written back only when the frame is saved.
struct OpenFrame {
  int16_t IuList = 0, Slot = 0, Inst = 0, Meas = 0, Layer = 0, Frame = 0;
  StoredFrame Entries;
  // Position, sounding duration and clef of each entry, made afresh after a change.
  std::vector<int32_t> Elldur, Actdur;
  std::vector<int16_t> Clef;
  bool Stale = true;
};

// The open frames of the running process. Handles are never given twice; the pointers of
// entries and notes pack the frame's place in the table with the entry and note index,
// so that they move with the entries, as the host's pointers do.
class OpenFrames {
public:
  static constexpr int kMaxEntries = 4095;

  int32_t Add(OpenFrame frame);
  OpenFrame* Find(int32_t handle);
  bool Remove(int32_t handle);

  // Pointer of entry index (from 1) of an open frame; 0 for an unknown handle.
  int32_t EntryPointer(int32_t handle, int entry) const;
  static int32_t NotePointer(int32_t entryPointer, int note) { return entryPointer | note; }

  struct Place {
    OpenFrame* Frame = nullptr; // nullptr when the pointer leads nowhere
    int Entry = 0;              // from 1
    int Note = 0;               // from 1; 0 in an entry pointer
  };
  Place Resolve(int32_t pointer);

private:
  std::unordered_map<int32_t, size_t> slotOf_;
  std::vector<std::optional<OpenFrame>> slots_;
  std::vector<size_t> freeSlots_;
  int32_t nextHandle_ = 1;
};

// Where the host has drawn an entry, for its metrics: left, top, right, bottom.
struct EntryLayout {
  std::array<int32_t, 4> HeadRect{};
  std::array<int32_t, 4> StemRect{};
};

class FrameStore {
public:
  static constexpr int kMaxNotes = 12;

  std::map<int16_t, StoredFrame> Frames; // by frame number
  // The next entry number of the document: entry numbers are never given twice.
  int32_t NextEntnum = 1;

  int32_t TakeEntnum() { return NextEntnum++; }
  // Makes an empty frame under a number that no frame and no holder uses; 0 when none is
  // left. highestHeld tells the highest frame number the holders name; it is asked once.
  int16_t NewFrame(const std::function<int16_t()>& highestHeld);

  // Not saved with the document: the frames open in this process and the host's layout of
  // entries by entry number.
  OpenFrames Open;
  std::map<int32_t, EntryLayout> Layouts;

  nlohmann::json ToJson() const;
  // Reads the "frames" section of a document; throws DocumentError naming what is wrong.
  static FrameStore FromJson(const nlohmann::json& json);
  // Compares what the document file holds.
  bool operator==(const FrameStore& other) const;

private:
  int32_t nextFrame_ = 0; // 0 until the first new frame
};

} // namespace ostin::sim
