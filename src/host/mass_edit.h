#pragma once
// A run of work under the host's progress display, with the user's cancel.
#include <cstdint>

namespace ostin {

class MassEdit {
public:
  MassEdit() = default;
  MassEdit(const MassEdit&) = delete;
  MassEdit& operator=(const MassEdit&) = delete;
  ~MassEdit();

  void StartEdit(int32_t region, int32_t jobSize);
  // True to go on, false when the user has cancelled.
  bool Progress(int16_t increment, int16_t instrument, int16_t measure, int16_t layer);
  void EndEdit(bool cancel);

  int32_t JobSize = 0;
  int32_t Region = 0;
  int16_t Instrument = 0, Measure = 0, Layer = 0, Increment = 0;
  int32_t CurrentSize = 0;
  bool Started = false;
  bool Stopped = false;

private:
  int32_t handle_ = 0;
};

} // namespace ostin
