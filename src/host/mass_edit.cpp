#include "host/mass_edit.h"

#include "host/bridge.h"
#include "platform/window_system.h"
#include "shell/error_log.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kStartFailed = Code(0x800402CD);
constexpr int32_t kStartHandler = Code(0x800402CE);
constexpr int32_t kProgressHandler = Code(0x800402CF);
constexpr int32_t kEndFailed = Code(0x800402D0);
constexpr int32_t kEndHandler = Code(0x800402D1);
} // namespace

MassEdit::~MassEdit() {
  // A destructor cannot raise: the unended edit is logged, and the host ends it.
  if (Started && !Stopped) {
    WriteLog("Mass edit object deleted without ending mass edit first");
    FxEndMassEdit(handle_, 1);
  }
}

void MassEdit::StartEdit(int32_t region, int32_t jobSize) {
  Guarded("FxStartMassEdit error ", kStartHandler, [&] {
    Region = region;
    JobSize = jobSize;
    handle_ = FxStartMassEdit(region, jobSize);
    if (handle_ == 0) RaiseLogged("FxStartMassEdit call failed", kStartFailed);
    Started = true;
    Stopped = false;
  });
}

bool MassEdit::Progress(int16_t increment, int16_t instrument, int16_t measure, int16_t layer) {
  return Guarded("FxMassEditProgress error ", kProgressHandler, [&] {
    Increment = increment;
    Instrument = instrument;
    Measure = measure;
    Layer = layer;
    CurrentSize += increment;
    platform::Windows().DoEvents();
    int16_t goOn = FxMassEditProgress(handle_, increment, instrument, measure, layer);
    platform::Windows().DoEvents();
    return goOn != 0;
  });
}

void MassEdit::EndEdit(bool cancel) {
  Guarded("FxEndMassEdit error ", kEndHandler, [&] {
    int16_t ended = FxEndMassEdit(handle_, cancel ? 1 : 0);
    handle_ = 0;
    JobSize = Region = CurrentSize = 0;
    Instrument = Measure = Layer = Increment = 0;
    Started = false;
    Stopped = true;
    if (!ended) RaiseLogged("FxEndMassEdit call failed", kEndFailed);
  });
}

} // namespace ostin
