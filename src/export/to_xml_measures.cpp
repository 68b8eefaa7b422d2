// The measure skeleton: one measure element per measure in every part, with its number,
// breaks, barlines, repeats, endings, opening attributes and multiple rests.
#include "export/to_xml.h"
#include "host/records.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kInitializeFreezeMusicHandler = Code(0x800402D7);
constexpr int32_t kInitializeMeasuresHandler = Code(0x8004032E);
} // namespace

void ToXml::InitializeFreezeMusic() {
  Guarded("ToXml InitializeFreezeMusic error ", kInitializeFreezeMusicHandler, [&] {
    FreezeMusic frozen;
    int16_t cmper = 0;
    while (frozen.GetNext(cmper, 0)) {
      if (frozen.Cmper() > NumberOfMeasures) break;
      SystemBreaks[frozen.Cmper()] = true;
      if (frozen.NextMeas > NumberOfMeasures) break;
      if (frozen.NextMeas >= 1) SystemBreaks[frozen.NextMeas] = true;
      cmper = frozen.Cmper();
    }
    // The first measure never starts a new system in the output.
    if (NumberOfMeasures >= 1) SystemBreaks[1] = false;
  });
}

void ToXml::InitializeMeasures() {
  Guarded("ToXml InitializeMeasures error ", kInitializeMeasuresHandler, [&] {
    for (int16_t measure = 1; measure <= NumberOfMeasures; ++measure) {
      if (measure >= 2) CheckProgress(1, 0, 0);
      // Each measure's skeleton joins every part here.
    }
    CheckProgress(1, 0, 0);
  });
}

} // namespace ostin
