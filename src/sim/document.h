#pragma once
// The stand-in's document: typed records under their keys, kept in memory and saved
// as one JSON file.
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "sim/frame_store.h"
#include "sim/record_catalog.h"
#include "sim/text_store.h"

namespace ostin::sim {

struct RecordKey {
  int32_t Cmper = 0; // Cmper, Cmper1 or Entnum
  int16_t Inci = 0;  // Inci or Cmper2
  int16_t Third = 0; // the third key of the records that have one
  auto operator<=>(const RecordKey&) const = default;
};

// One field of a stored record: numbers for values and blocks, bytes for text.
struct FieldValue {
  std::vector<int32_t> Numbers;
  std::string Text; // in the host's code page
};

using StoredRecord = std::vector<FieldValue>;

struct RecordTable {
  const RecordShape* Shape = nullptr;
  std::map<RecordKey, StoredRecord> Rows;
};

// A document that cannot be read: what and where.
class DocumentError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

class Document {
public:
  int32_t FinaleVersion = 2004;
  int16_t MaxLayers = 4;
  std::string Path;  // the file it was read from or saved to; empty for a new document
  std::string Title; // the name the host shows for a document without a file
  std::map<std::string, RecordTable, std::less<>> Records;
  TextStore Texts;
  FrameStore Frames;

  RecordTable& Table(const RecordShape& shape);
  const RecordTable* FindTable(std::string_view className) const;
  // A record with the host's default content.
  StoredRecord NewRecord(const RecordShape& shape) const;
  // Elements of a block field as this document holds it.
  int BlockSize(const FieldShape& field) const;
  // Blocks whose length the record holds in another field (the passes of an ending).
  static bool IsGrowingBlock(const FieldShape& field);

  nlohmann::json ToJson() const;
  // Reads a document; a record type, key or field that does not fit is refused with a
  // DocumentError naming the record and the field.
  static Document FromJson(const nlohmann::json& json);

  static Document LoadFile(const std::string& path);
  // Writes the document to a temporary file and renames it over the target.
  void SaveFile(const std::string& path) const;
};

} // namespace ostin::sim
