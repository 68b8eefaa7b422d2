#pragma once
// Where the host has drawn entries, notes and measures. Metrics exist only for music the
// host has laid out; without them an object says that they are missing.
#include <cstdint>
#include <string>
#include <vector>

#include "host/frames/frame_fields.h"

namespace ostin {

class EntryMetrics {
public:
  // The metrics of an entry of a staff and measure; options is 0.
  void Load(int16_t inst, int16_t meas, int32_t entnum, int16_t options);
  // "up", "down" or empty, from the rectangles of head and stem.
  std::string StemDirection() const;
  bool Missing() const { return missing_; }

  ReadOnly<int16_t, EntryMetrics> Layer;
  ReadOnly<int32_t, EntryMetrics> Edu;
  ReadOnly<int16_t, EntryMetrics> SymDur;
  ReadOnly<int16_t, EntryMetrics> NumNotes;
  ReadOnly<int32_t, EntryMetrics> EntryFlags;
  ReadOnly<int32_t, EntryMetrics> HeadRectLeft, HeadRectTop, HeadRectRight, HeadRectBottom;
  ReadOnly<int32_t, EntryMetrics> StemRectLeft, StemRectTop, StemRectRight, StemRectBottom;
  ReadOnly<int16_t, EntryMetrics> SecondsDivider;
  ReadOnly<int32_t, EntryMetrics> LastDot;
  ReadOnly<int32_t, EntryMetrics> FirstAcci;

private:
  friend class TgfEntryMetrics;
  // GetEntryMetrics from a handle; false when the call fails.
  bool Fill(int32_t handle);
  bool missing_ = true;
};

class NoteMetrics {
public:
  // Note index (from 1) of the entry metrics behind a handle.
  void Load(int32_t handle, int16_t index);

  ReadOnly<int32_t, NoteMetrics> Hval;
  ReadOnly<int32_t, NoteMetrics> NoteStart;
  ReadOnly<int16_t, NoteMetrics> NoteWidth;
  ReadOnly<int16_t, NoteMetrics> NoteID;
};

class MeasureMetrics {
public:
  ReadOnly<int16_t, MeasureMetrics> Ssys, Iu, Slot;
  ReadOnly<int32_t, MeasureMetrics> HorzPercent;
  ReadOnly<int16_t, MeasureMetrics> Mewidth, Scalewidth;
  ReadOnly<int32_t, MeasureMetrics> Percent, Lperc, SsysTop, FipTop, FipBottom, FipTopStaffLine,
      Meposadj;
  ReadOnly<int16_t, MeasureMetrics> FrontRepWidth, BackRepWidth, BarWidth;
  ReadOnly<int32_t, MeasureMetrics> Top, Left, Bottom, Right, TopStaffLine;

private:
  friend class TgfEntryMetrics;
  bool Fill(int32_t handle);
};

// The metrics of all entries of an open frame and of its measure.
class TgfEntryMetrics {
public:
  void Load(int32_t tgf, int16_t numEntries);
  // Entry i from 1 to NumEntries; nullptr out of range.
  const ostin::EntryMetrics* EntryMetrics(int i) const;
  bool Missing() const { return missing_; }

  ReadOnly<int32_t, TgfEntryMetrics> Tgf;
  ReadOnly<int16_t, TgfEntryMetrics> NumEntries;
  ostin::MeasureMetrics MeasureMetrics;

private:
  std::vector<ostin::EntryMetrics> entries_;
  bool missing_ = true;
};

} // namespace ostin
