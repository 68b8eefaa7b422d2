#include "sim/record_catalog.h"

#include "host/record_macros.h"
#include "host/record_shapes.h"

namespace ostin::sim {

int RecordShape::FieldIndex(std::string_view name) const {
  for (size_t i = 0; i < Fields.size(); ++i)
    if (name == Fields[i].Name) return static_cast<int>(i);
  return -1;
}

#define OSTIN_CATALOG_PLAIN(C, B, K, S, ops) RecordShape{#C, KeyForm::K, {S(OSTIN_FIELD_SHAPE)}},
#define OSTIN_CATALOG_VARIANT(C, B, K, S, P, Y, ops)                                               \
  RecordShape{#C, KeyForm::K, {S(OSTIN_FIELD_SHAPE)}},

#define OSTIN_CATALOG_HANDMADE(C, K, S) RecordShape{#C, KeyForm::K, {S(OSTIN_FIELD_SHAPE)}},

const std::vector<RecordShape>& RecordShapes() {
  static const std::vector<RecordShape> shapes = {
      OSTIN_PLAIN_RECORDS(OSTIN_CATALOG_PLAIN) OSTIN_VARIANT_RECORDS(OSTIN_CATALOG_VARIANT)
          OSTIN_HANDMADE_RECORDS(OSTIN_CATALOG_HANDMADE)};
  return shapes;
}

const RecordShape* FindRecordShape(std::string_view className) {
  for (const RecordShape& shape : RecordShapes())
    if (shape.Class == className) return &shape;
  return nullptr;
}

bool IsBlock(FieldKind kind) {
  return kind == FieldKind::B16 || kind == FieldKind::B32 || kind == FieldKind::P16;
}

bool IsWide(FieldKind kind) {
  return kind == FieldKind::I32 || kind == FieldKind::B32;
}

} // namespace ostin::sim
