#include "import/from_xml.h"

#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kImportUnavailable = Code(0x80040664);
}

bool FromXml::Invoke(int32_t, int32_t) {
  // The import road is not part of this release: the user is told, nothing is touched.
  throw Failure(kImportUnavailable, std::string(kPlugInSource),
                "MusicXML import is not available in this version");
}

} // namespace ostin
