#pragma once
// The stand-in's description of every record type, made from the record shapes: what a
// stored record holds and how it is named in the document file.
#include <string>
#include <string_view>
#include <vector>

namespace ostin {

enum class FieldKind { I16, I32, TXT, B16, B32, P16 };

struct FieldShape {
  const char* Name;
  FieldKind Kind;
  int Count; // elements of a block; 1 for a single value
};

} // namespace ostin

namespace ostin::sim {

enum class KeyForm { K2, KE, K3 };

struct RecordShape {
  std::string Class;
  KeyForm Key;
  std::vector<FieldShape> Fields;

  // Index of the field of that name, or -1.
  int FieldIndex(std::string_view name) const;
};

const std::vector<RecordShape>& RecordShapes();
// The shape of a record class, or nullptr for an unknown class.
const RecordShape* FindRecordShape(std::string_view className);

bool IsBlock(FieldKind kind);
bool IsWide(FieldKind kind); // 32-bit values

} // namespace ostin::sim
