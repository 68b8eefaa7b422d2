#pragma once
// One entry of an open frame (a note, chord or rest) and its notes. Both live only while
// their frame is open: the bridge's pointers die with it.
#include <array>
#include <cstdint>

#include "host/frames/frame_bits.h"
#include "host/frames/frame_fields.h"

namespace ostin {

class Note {
public:
  // GetNote; clears changed.
  void Load(int32_t exentry, int16_t index);
  // SetNote, only when a field was written.
  void Save(int32_t exentry, int16_t index);
  bool Changed() const { return changed_; }

private:
  bool changed_ = false;

public:
  ReadOnly<int32_t, Note> Exnote;
  Tracked<int16_t, Note> Tcd{changed_};        // diatonic steps from the tonic
  Tracked<int16_t, Note> Alteration{changed_}; // chromatic alteration from the key's note
  Tracked<int16_t, Note> NoteID{changed_};
  Tracked<int32_t, Note> Flag{changed_};
};

class Entry {
public:
  static constexpr int kMaxNotes = 12;

  // GetEntry, then the notes; clears changed.
  void Load(int32_t tgf, int16_t index);
  // The entry's pointer only, after entries moved.
  void LoadPtr(int32_t tgf, int16_t index);
  // SetEntry when a field was written, then every note.
  void Save();
  // Note i from 1 to 12; nullptr out of range.
  Note* Notes(int i);
  bool Changed() const { return changed_; }

private:
  bool changed_ = false;
  std::array<Note, kMaxNotes> notes_;

public:
  ReadOnly<int32_t, Entry> Exentry;
  ReadOnly<int32_t, Entry> Entnum;
  Tracked<int16_t, Entry> Dura{changed_}; // written duration in EDUs, dots included
  Tracked<int16_t, Entry> Orgposi{changed_};
  Tracked<int32_t, Entry> Ef{changed_};
  Tracked<int16_t, Entry> Xef{changed_};
  Tracked<int16_t, Entry> NumNotes{changed_};
  ReadOnly<int32_t, Entry> Elldur; // position in the measure in EDUs
  ReadOnly<int32_t, Entry> Actdur; // sounding duration in EDUs, tuplets applied
  ReadOnly<int16_t, Entry> Clef;
};

} // namespace ostin
