#pragma once
// The import engine: reads one MusicXML file into the empty document open in the host.
#include <cstdint>
#include <string>

namespace ostin {

class FromXml {
public:
  // Set by the plug-in before Invoke.
  int32_t hwnd = 0;
  std::string FileName;
  int32_t FileType = 0;
  std::string SystemIdentifier;

  bool Invoke(int32_t selectedRegion, int32_t documentRegion);
};

} // namespace ostin
