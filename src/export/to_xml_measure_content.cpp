// The content of one measure of one part: layers, voices, entries, clefs and directions.
#include "export/to_xml.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kLoadMeasureHandler = Code(0x80040345);
} // namespace

void ToXml::InitializePartTables(XmlPart&) {}

void ToXml::LoadMeasure(XmlPart&) {
  Guarded("ToXml LoadMeasure error ", kLoadMeasureHandler, [] {});
}

} // namespace ostin
