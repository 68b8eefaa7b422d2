// The part list: staves merged into parts, groups, instruments and their MIDI set-up.
#include "export/to_xml.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kInitializePartsHandler = Code(0x80040320);
constexpr int32_t kPruneInstrumentsHandler = Code(0x800402DF);
} // namespace

void ToXml::InitializeParts() {
  Guarded("ToXml InitializeParts error ", kInitializePartsHandler, [&] {
    XmlParts.clear();
    XmlParts.emplace_back();
    NumberOfParts = 0;
  });
}

void ToXml::PruneInstruments(XmlPart&) {
  Guarded("ToXml PruneInstruments error ", kPruneInstrumentsHandler, [] {});
}

} // namespace ostin
