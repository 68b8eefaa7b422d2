#include "host/frames/metrics.h"

#include "host/bridge.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kNewEntryMetricsFailed = Code(0x8004074C);
constexpr int32_t kEntryGetFailed = Code(0x8004046C);
constexpr int32_t kEntryLoadHandler = Code(0x8004074D);
constexpr int32_t kNoteGetFailed = Code(0x80040750);
constexpr int32_t kNoteLoadHandler = Code(0x80040752);
constexpr int32_t kNewArrayFailed = Code(0x80040753);
constexpr int32_t kNewMeasureFailed = Code(0x80040754);
constexpr int32_t kTgfEntryGetFailed = Code(0x80040755);
constexpr int32_t kTgfMeasureGetFailed = Code(0x80040757);
constexpr int32_t kTgfLoadHandler = Code(0x80040759);

// A metrics handle of the host, deleted by its own call when the scope ends.
class MetricsHandle {
public:
  MetricsHandle(int32_t handle, int16_t (*remove)(int32_t)) : handle_(handle), remove_(remove) {}
  ~MetricsHandle() {
    try {
      if (handle_) remove_(handle_);
    } catch (...) {
      // A handle the host cannot delete dies with the host.
    }
  }
  MetricsHandle(const MetricsHandle&) = delete;
  MetricsHandle& operator=(const MetricsHandle&) = delete;
  int32_t Get() const { return handle_; }

private:
  int32_t handle_;
  int16_t (*remove_)(int32_t);
};
} // namespace

void EntryMetrics::Load(int16_t inst, int16_t meas, int32_t entnum, int16_t options) {
  Guarded("EntryMetrics Load error ", kEntryLoadHandler, [&] {
    missing_ = true;
    MetricsHandle handle(NewEntryMetrics(), DeleteEntryMetrics);
    if (!handle.Get()) RaiseLogged("COM NewEntryMetrics call failed", kNewEntryMetricsFailed);
    if (!FxGetEntryMetrics(inst, meas, entnum, handle.Get(), options)) return;
    if (!Fill(handle.Get())) RaiseLogged("COM GetEntryMetrics call failed", kEntryGetFailed);
    missing_ = false;
  });
}

bool EntryMetrics::Fill(int32_t handle) {
  return GetEntryMetrics(handle, Layer.Slot(), Edu.Slot(), SymDur.Slot(), NumNotes.Slot(),
                         EntryFlags.Slot(), HeadRectLeft.Slot(), HeadRectTop.Slot(),
                         HeadRectRight.Slot(), HeadRectBottom.Slot(), StemRectLeft.Slot(),
                         StemRectTop.Slot(), StemRectRight.Slot(), StemRectBottom.Slot(),
                         SecondsDivider.Slot(), LastDot.Slot(), FirstAcci.Slot()) != 0;
}

std::string EntryMetrics::StemDirection() const {
  if (missing_) return "";
  // How far the stem reaches above the head (a) and below it (b).
  int64_t a = static_cast<int64_t>(HeadRectTop) - StemRectTop;
  int64_t b = static_cast<int64_t>(StemRectBottom) - HeadRectBottom;
  if (b < a && a > 0) return "down";
  if (a < b && b >= 1) return "up";
  return "";
}

void NoteMetrics::Load(int32_t handle, int16_t index) {
  Guarded("NoteMetrics Load error ", kNoteLoadHandler, [&] {
    if (!GetNoteMetrics(handle, index, Hval.Slot(), NoteStart.Slot(), NoteWidth.Slot(),
                        NoteID.Slot()))
      RaiseLogged("COM GetNoteMetrics call failed", kNoteGetFailed);
  });
}

bool MeasureMetrics::Fill(int32_t handle) {
  return GetMeasureMetrics(handle, Ssys.Slot(), Iu.Slot(), Slot.Slot(), HorzPercent.Slot(),
                           Mewidth.Slot(), Scalewidth.Slot(), Percent.Slot(), Lperc.Slot(),
                           SsysTop.Slot(), FipTop.Slot(), FipBottom.Slot(), FipTopStaffLine.Slot(),
                           Meposadj.Slot(), FrontRepWidth.Slot(), BackRepWidth.Slot(),
                           BarWidth.Slot(), Top.Slot(), Left.Slot(), Bottom.Slot(), Right.Slot(),
                           TopStaffLine.Slot()) != 0;
}

void TgfEntryMetrics::Load(int32_t tgf, int16_t numEntries) {
  Guarded("TgfEntryMetrics Load error ", kTgfLoadHandler, [&] {
    missing_ = true;
    Tgf = tgf;
    NumEntries = numEntries;
    entries_.clear();
    entries_.resize(static_cast<size_t>(numEntries > 0 ? numEntries : 0));
    MetricsHandle array(NewEntryMetricsArray(numEntries), DeleteEntryMetricsArray);
    if (!array.Get()) RaiseLogged("COM NewEntryMetricsArray call failed", kNewArrayFailed);
    MetricsHandle measure(NewMeasureMetrics(), DeleteMeasureMetrics);
    if (!measure.Get()) RaiseLogged("COM NewMeasureMetrics call failed", kNewMeasureFailed);
    if (!FxGetTgfEntryMetrics(tgf, array.Get(), measure.Get(), 0)) return;
    // The elements of the array stand at the handles that follow its first one.
    for (size_t i = 0; i < entries_.size(); ++i) {
      if (!entries_[i].Fill(array.Get() + static_cast<int32_t>(i)))
        RaiseLogged("COM GetEntryMetrics call failed", kTgfEntryGetFailed);
      entries_[i].missing_ = false;
    }
    if (!MeasureMetrics.Fill(measure.Get()))
      RaiseLogged("COM GetMeasureMetrics call failed", kTgfMeasureGetFailed);
    missing_ = false;
  });
}

const EntryMetrics* TgfEntryMetrics::EntryMetrics(int i) const {
  return i >= 1 && i <= static_cast<int>(entries_.size()) ? &entries_[i - 1] : nullptr;
}

} // namespace ostin
