#pragma once
// Reads the host's open document through the bridge as the export does and lists what does
// not add up: staves without StaffSpec, keys and clefs the host has not got, frames whose
// entries do not fill their measure. Also runs the tools.
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "host/bridge.h"
#include "host/frames/entry.h"
#include "host/frames/frame_bits.h"
#include "host/frames/tgf.h"
#include "host/gfhold.h"
#include "host/records.h"

namespace ostin::testing {

// Runs a program of the build in folder, output to out.txt and err.txt; its exit status.
inline int RunTool(const std::string& folder, const std::string& command) {
  const std::string line = "cd '" + folder + "' && LANG=C '" + OSTIN_BIN_DIR + "'/" + command +
                           " </dev/null >out.txt 2>err.txt";
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct ScoreShape {
  int Staves = 0, Measures = 0, Frames = 0;
  std::vector<std::string> Problems;
};

inline std::string At(int16_t staff, int16_t measure) {
  return "staff " + std::to_string(staff) + ", measure " + std::to_string(measure);
}

inline void CheckFrame(int16_t slot, int16_t staff, int16_t measure, int16_t layer,
                       ScoreShape& shape) {
  Tgf frame;
  frame.Load(0, slot, measure, layer, true);
  const std::string where = At(staff, measure) + ", layer " + std::to_string(layer);
  int32_t length = 0, measureLength = FxGetMeasureDuration(staff, measure);
  for (int16_t i = 1; i <= frame.NumEntries; ++i) {
    Entry& entry = *frame.Entries(i);
    if (!(entry.Ef & kEfVoiceTwo)) length += entry.Actdur;
    if (entry.Elldur + entry.Actdur > measureLength)
      shape.Problems.push_back(where + ", entry " + std::to_string(i) + ": past the end");
  }
  if (length != measureLength)
    shape.Problems.push_back(where + ": " + std::to_string(length) + " of " +
                             std::to_string(measureLength) + " EDU");
  frame.Free();
  ++shape.Frames;
}

inline ScoreShape CheckOpenScore() {
  ScoreShape shape;
  std::vector<int16_t> staves;
  for (int16_t staff; (staff = FxSlotToInst(static_cast<int16_t>(staves.size() + 1), 0)) > 0;) {
    staves.push_back(staff);
    StaffSpec spec;
    spec.FinaleVersion = 2004;
    if (!spec.Load(staff, 0))
      shape.Problems.push_back("staff " + std::to_string(staff) + ": no StaffSpec");
  }
  MeasureSpec measure;
  for (int16_t m = 1; measure.Load(m, 0); ++m) {
    shape.Measures = m;
    int fifths = static_cast<int8_t>(measure.Key & 0xFF), mode = (measure.Key >> 8) & 0xFF;
    if (measure.Key < 0 || fifths < -7 || fifths > 7 || mode > 1)
      shape.Problems.push_back("measure " + std::to_string(m) + ": key " +
                               std::to_string(measure.Key));
    for (size_t slot = 1; slot <= staves.size(); ++slot) {
      int16_t staff = staves[slot - 1];
      Gfhold holder;
      holder.SetFinaleVersion(2004);
      if (!holder.Load(staff, m)) continue;
      for (int i = 1; i <= holder.ClefMax(); ++i)
        if (holder.Clefs(i) < 0 || holder.Clefs(i) > 17)
          shape.Problems.push_back(At(staff, m) + ": clef " + std::to_string(holder.Clefs(i)));
      for (int16_t layer = 0; layer < 4; ++layer)
        if (holder.FrameOf(layer) > 0)
          CheckFrame(static_cast<int16_t>(slot), staff, m, layer, shape);
    }
  }
  shape.Staves = static_cast<int>(staves.size());
  if (shape.Staves == 0 || shape.Measures == 0) shape.Problems.push_back("no staves or measures");
  return shape;
}

} // namespace ostin::testing
