// Durations from EDU to the part's divisions, and the passes that finish the tree.
#include "export/to_xml.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kConvertDurationsHandler = Code(0x800402DE);
constexpr int32_t kCleanupInitialTempoHandler = Code(0x800402D9);
} // namespace

void ToXml::ConvertDurations(XmlPart&) {
  Guarded("ToXml ConvertDurations error ", kConvertDurationsHandler, [] {});
}

void ToXml::CleanupInitialTempo() {
  Guarded("ToXml CleanupInitialTempo error ", kCleanupInitialTempoHandler, [] {});
}

} // namespace ostin
