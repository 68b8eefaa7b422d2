#include "host/frames/tgf.h"

#include <string>

#include "host/bridge.h"
#include "shell/error_log.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kLoadedAlready = Code(0x800404B0);
constexpr int32_t kLoadFailed = Code(0x800402F6);
constexpr int32_t kLoadHeadFailed = Code(0x80040731);
constexpr int32_t kLoadHandler = Code(0x80040730);
constexpr int32_t kSaveNotLoaded = Code(0x80040732);
constexpr int32_t kSaveFailed = Code(0x80040735);
constexpr int32_t kSaveHandler = Code(0x80040739);
constexpr int32_t kFreedTwice = Code(0x800404B1);
constexpr int32_t kFreeFailed = Code(0x8004073A);
constexpr int32_t kFreeHandler = Code(0x800402FD);
constexpr int32_t kInsertNotLoaded = Code(0x8004073B);
constexpr int32_t kInsertFailed = Code(0x80040318);
constexpr int32_t kInsertHeadFailed = Code(0x80040319);
constexpr int32_t kInsertHandler = Code(0x8004073C);
constexpr int32_t kClearHandler = Code(0x8004073D);
constexpr int32_t kEntriesHandler = Code(0x8004073E);

constexpr const char* kLineBreak = "\r\n";

// "iu = 0, slot = 1, meas = 2, layer = 0": where a frame stands, as the log names it.
std::string Place(int iuList, int slot, int meas, int layer) {
  return "iu = " + std::to_string(iuList) + ", slot = " + std::to_string(slot) +
         ", meas = " + std::to_string(meas) + ", layer = " + std::to_string(layer);
}

std::string Text(bool value) {
  return value ? "True" : "False";
}
} // namespace

void Tgf::Load(int16_t iuList, int16_t slot, int16_t meas, int16_t layer, bool mirrorOK) {
  Guarded("TGF Load error ", kLoadHandler, [&] {
    if (!freed_)
      RaiseLogged(std::string("Trying to load a new TGF before the old one is freed") + kLineBreak +
                      "Old TGF: " + Place(IuList, StaffSlot, Meas, Layer) + kLineBreak +
                      "New TGF: " + Place(iuList, slot, meas, layer),
                  kLoadedAlready);
    int32_t handle = FxLoadTgf(iuList, slot, meas, layer, mirrorOK ? -1 : 0);
    if (handle == 0)
      RaiseLogged("COM FxLoadTgf call failed for iuList = " + std::to_string(iuList) +
                      ", slot = " + std::to_string(slot) + ", meas = " + std::to_string(meas) +
                      ", layer = " + std::to_string(layer) + ", mirror OK = " + Text(mirrorOK),
                  kLoadFailed);
    // From here the object holds an open frame, so that Free can close it after a failure.
    Tgf = handle;
    freed_ = false;
    if (!ReadHead()) RaiseLogged("COM GetTgf call failed", kLoadHeadFailed);
    entries_.clear();
    for (int16_t i = 1; i <= NumEntries; ++i) {
      entries_.push_back(std::make_unique<Entry>());
      entries_.back()->Load(Tgf, i);
    }
    loaded_ = true;
  });
}

void Tgf::Save() {
  Guarded("TGF Save error ", kSaveHandler, [&] {
    RequireLoaded("Save", kSaveNotLoaded);
    if (!FxSaveTgf(Tgf)) RaiseLogged("COM SaveTgf call failed", kSaveFailed);
  });
}

void Tgf::Free() {
  Guarded("TGF Free error ", kFreeHandler, [&] {
    if (freed_) RaiseLogged("TGF being freed twice before being loaded", kFreedTwice);
    int16_t closed = FxFreeTgf(Tgf);
    Clear();
    ClearHead();
    loaded_ = false;
    freed_ = true;
    if (!closed) RaiseLogged("COM FxFreeTgf call failed", kFreeFailed);
  });
}

void Tgf::InsertEntry(int16_t offset, int16_t number) {
  Guarded("TGF InsertEntry error ", kInsertHandler, [&] {
    RequireLoaded("InsertEntry", kInsertNotLoaded);
    for (auto& entry : entries_)
      entry->Save();
    if (!FxInsertExentry(Tgf, offset, number))
      RaiseLogged("COM InsertExentry call failed for offset = " + std::to_string(offset) +
                      ", number = " + std::to_string(number),
                  kInsertFailed);
    if (!ReadHead())
      RaiseLogged("COM GetTgf call failed for offset = " + std::to_string(offset),
                  kInsertHeadFailed);
    // The list grows keeping its objects; the entries behind the insertion point moved.
    entries_.resize(static_cast<size_t>(NumEntries));
    for (int16_t i = 1; i <= NumEntries; ++i) {
      std::unique_ptr<Entry>& entry = entries_[i - 1];
      if (entry) {
        entry->LoadPtr(Tgf, i);
      } else {
        entry = std::make_unique<Entry>();
        entry->Load(Tgf, i);
      }
    }
  });
}

Entry* Tgf::Entries(int i) {
  return Guarded("TGF Entries Property Get error ", kEntriesHandler, [&]() -> Entry* {
    return i >= 1 && i <= static_cast<int>(entries_.size()) ? entries_[i - 1].get() : nullptr;
  });
}

bool Tgf::ReadHead() {
  int16_t mirror = 0;
  int16_t done = GetTgf(Tgf, IuList.Slot(), StaffSlot.Slot(), Inst.Slot(), Meas.Slot(),
                        Layer.Slot(), &mirror, Frame.Slot(), Spare.Slot(), NumEntries.Slot());
  IsMirror = mirror != 0;
  return done != 0;
}

void Tgf::Clear() {
  Guarded("TGF Clear error ", kClearHandler, [&] {
    // Released from last to first, as the host gave them.
    while (!entries_.empty())
      entries_.pop_back();
    NumEntries = 0;
  });
}

void Tgf::ClearHead() {
  Tgf = 0;
  for (ReadOnly<int16_t, ostin::Tgf>* field :
       {&IuList, &StaffSlot, &Inst, &Meas, &Layer, &Frame, &Spare, &NumEntries})
    *field = 0;
  IsMirror = false;
}

void Tgf::RequireLoaded(const char* operation, int32_t number) const {
  if (!loaded_) RaiseLogged(std::string("TGF ") + operation + " before the TGF is loaded", number);
}

void Tgf::FreeLeftOpen() noexcept {
  if (freed_) return;
  try {
    WriteLog(std::string("TGF being deleted before being freed: ") + kLineBreak +
             "iu = " + std::to_string(IuList) + ", slot = " + std::to_string(StaffSlot) +
             ", inst = " + std::to_string(Inst) + ", meas = " + std::to_string(Meas) +
             ", layer = " + std::to_string(Layer));
    FxFreeTgf(Tgf);
  } catch (...) {
    // Nothing may leave a destructor; the host drops the frame with the document.
  }
}

} // namespace ostin
