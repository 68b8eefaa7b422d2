#include "host/frames/entry.h"

#include "host/bridge.h"
#include "shell/failure.h"
#include "xml/xml_errors.h"

namespace ostin {

namespace {
constexpr int32_t kGetEntryFailed = Code(0x8004073F);
constexpr int32_t kEntryLoadHandler = Code(0x80040740);
constexpr int32_t kGetExentryFailed = Code(0x80040741);
constexpr int32_t kEntryLoadPtrHandler = Code(0x80040742);
constexpr int32_t kSetEntryFailed = Code(0x80040743);
constexpr int32_t kEntrySaveHandler = Code(0x80040744);
constexpr int32_t kNotesHandler = Code(0x80040745);
constexpr int32_t kGetNoteFailed = Code(0x80040746);
constexpr int32_t kNoteLoadHandler = Code(0x80040747);
constexpr int32_t kSetNoteFailed = Code(0x80040748);
constexpr int32_t kNoteSaveHandler = Code(0x8004074A);

// A note out of range is an empty reference; using it is the runtime's error.
Note& Required(Note* note) {
  if (!note) xml::detail::FailUnset();
  return *note;
}
} // namespace

void Note::Load(int32_t exentry, int16_t index) {
  Guarded("Note Load error ", kNoteLoadHandler, [&] {
    if (!GetNote(exentry, index, Exnote.Slot(), Tcd.Slot(), Alteration.Slot(), NoteID.Slot(),
                 Flag.Slot()))
      RaiseLogged("COM GetNote call failed", kGetNoteFailed);
    changed_ = false;
  });
}

void Note::Save(int32_t exentry, int16_t index) {
  Guarded("Note Save error ", kNoteSaveHandler, [&] {
    if (!changed_) return;
    if (!SetNote(exentry, index, Tcd, Alteration, NoteID, Flag))
      RaiseLogged("COM SetNote call failed", kSetNoteFailed);
    changed_ = false;
  });
}

void Entry::Load(int32_t tgf, int16_t index) {
  Guarded("Entry Load error ", kEntryLoadHandler, [&] {
    if (!GetEntry(tgf, index, Exentry.Slot(), Entnum.Slot(), Dura.Slot(), Orgposi.Slot(), Ef.Slot(),
                  Xef.Slot(), NumNotes.Slot(), Elldur.Slot(), Actdur.Slot(), Clef.Slot()))
      RaiseLogged("COM GetEntry call failed", kGetEntryFailed);
    for (int16_t i = 1; i <= NumNotes; ++i)
      Required(Notes(i)).Load(Exentry, i);
    changed_ = false;
  });
}

void Entry::LoadPtr(int32_t tgf, int16_t index) {
  Guarded("Entry LoadPtr error ", kEntryLoadPtrHandler, [&] {
    if (!GetExentry(tgf, index, Exentry.Slot()))
      RaiseLogged("COM GetExentry call failed", kGetExentryFailed);
  });
}

void Entry::Save() {
  Guarded("Entry Save error ", kEntrySaveHandler, [&] {
    if (changed_) {
      if (!SetEntry(Exentry, Dura, Orgposi, Ef, Xef, NumNotes))
        RaiseLogged("COM SetEntry call failed", kSetEntryFailed);
      changed_ = false;
    }
    for (int16_t i = 1; i <= NumNotes; ++i)
      Required(Notes(i)).Save(Exentry, i);
  });
}

Note* Entry::Notes(int i) {
  return Guarded("Entry Notes property get error ", kNotesHandler,
                 [&]() -> Note* { return i >= 1 && i <= kMaxNotes ? &notes_[i - 1] : nullptr; });
}

} // namespace ostin
