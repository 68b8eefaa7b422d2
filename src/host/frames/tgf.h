#pragma once
// An open frame: the entries of one layer of one staff in one measure, with their notes.
// A new object is freed; Load opens a frame, Free closes it, and every open frame must
// be freed before the object is loaded again or dies.
#include <cstdint>
#include <memory>
#include <vector>

#include "host/frames/entry.h"
#include "host/frames/frame_fields.h"

namespace ostin {

class Tgf {
public:
  // A destructor cannot raise: a frame left open is logged and freed.
  ~Tgf() { FreeLeftOpen(); }

  // Opens the frame and reads its head and all entries with their notes. mirrorOK: a
  // mirrored frame may come back (export); false where the caller writes.
  void Load(int16_t iuList, int16_t slot, int16_t meas, int16_t layer, bool mirrorOK);
  // Writes the open frame into the document (the entries are saved by their own Save).
  void Save();
  // Closes the frame and drops the entries.
  void Free();
  // Inserts number entries in front of the 0-based position offset; the objects held stay.
  void InsertEntry(int16_t offset, int16_t number);
  // Entry i from 1 to NumEntries; nullptr out of range.
  Entry* Entries(int i);

  bool Loaded() const { return loaded_; }
  bool Freed() const { return freed_; }

  ReadOnly<int16_t, ostin::Tgf> IuList; // staff list the frame was opened under; 0 the score
  ReadOnly<int16_t, ostin::Tgf> StaffSlot;
  ReadOnly<int16_t, ostin::Tgf> Inst;
  ReadOnly<int16_t, ostin::Tgf> Meas;
  ReadOnly<int16_t, ostin::Tgf> Layer; // from 0
  ReadOnly<bool, ostin::Tgf> IsMirror;
  ReadOnly<int16_t, ostin::Tgf> Frame;
  ReadOnly<int16_t, ostin::Tgf> Spare; // passed by the bridge, never read
  ReadOnly<int16_t, ostin::Tgf> NumEntries;

private:
  bool ReadHead();
  void Clear();
  void ClearHead();
  void FreeLeftOpen() noexcept;
  void RequireLoaded(const char* operation, int32_t number) const;

  std::vector<std::unique_ptr<Entry>> entries_;
  bool loaded_ = false;
  bool freed_ = true;

public:
  // The bridge's handle of the open frame; declared last, as it takes the class's name.
  ReadOnly<int32_t, ostin::Tgf> Tgf;
};

} // namespace ostin
