#include "sim/document.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include <nlohmann/json.hpp>

#include "platform/code_page.h"

namespace ostin::sim {

namespace {
constexpr const char* kFormatName = "ostin-document";
constexpr int kFormatVersion = 1;

// Appended piece by piece: a literal in front of a temporary string trips GCC 12's false
// -Wrestrict at -O3.
std::string KeyText(const RecordKey& key) {
  std::string text = "[";
  text += std::to_string(key.Cmper);
  text += ", ";
  text += std::to_string(key.Inci);
  if (key.Third) {
    text += ", ";
    text += std::to_string(key.Third);
  }
  return text + "]";
}

bool FitsWidth(const nlohmann::json& value, FieldKind kind) {
  if (!value.is_number_integer()) return false;
  int64_t v = value.get<int64_t>();
  if (IsWide(kind))
    return v >= std::numeric_limits<int32_t>::min() && v <= std::numeric_limits<int32_t>::max();
  return v >= std::numeric_limits<int16_t>::min() && v <= std::numeric_limits<int16_t>::max();
}

nlohmann::json FieldToJson(const FieldShape& field, const FieldValue& value) {
  if (field.Kind == FieldKind::TXT) return HostToUtf8(value.Text);
  if (IsBlock(field.Kind)) return value.Numbers;
  return value.Numbers.empty() ? 0 : value.Numbers[0];
}

void FieldFromJson(const Document& doc, const FieldShape& field, const nlohmann::json& json,
                   FieldValue& value, const std::string& where) {
  std::string at = where + ", field " + field.Name;
  if (field.Kind == FieldKind::TXT) {
    if (!json.is_string()) throw DocumentError(at + ": text expected");
    value.Text = Utf8ToHost(json.get<std::string>());
    return;
  }
  FieldKind element = IsWide(field.Kind) ? FieldKind::I32 : FieldKind::I16;
  if (!IsBlock(field.Kind)) {
    if (!FitsWidth(json, element))
      throw DocumentError(at + ": not a " + (IsWide(field.Kind) ? "32" : "16") + "-bit number");
    value.Numbers = {json.get<int32_t>()};
    return;
  }
  int size = doc.BlockSize(field);
  // A block of passes is as long as the record says.
  if (Document::IsGrowingBlock(field) && json.is_array() && !json.empty()) {
    size = static_cast<int>(json.size());
    value.Numbers.assign(size, 0);
  }
  if (!json.is_array() || static_cast<int>(json.size()) > size)
    throw DocumentError(at + ": a list of at most " + std::to_string(size) + " numbers expected");
  for (size_t i = 0; i < json.size(); ++i) {
    if (!FitsWidth(json[i], element))
      throw DocumentError(at + ", element " + std::to_string(i) + ": number out of range");
    value.Numbers[i] = json[i].get<int32_t>();
  }
}

size_t KeyParts(const RecordShape& shape) {
  return shape.Key == KeyForm::K3 ? 3 : 2;
}

RecordKey KeyFromJson(const nlohmann::json& json, const RecordShape& shape,
                      const std::string& where) {
  size_t parts = KeyParts(shape);
  bool fits = json.is_array() && json.size() == parts &&
              FitsWidth(json[0], shape.Key == KeyForm::KE ? FieldKind::I32 : FieldKind::I16);
  for (size_t i = 1; fits && i < parts; ++i)
    fits = FitsWidth(json[i], FieldKind::I16);
  if (!fits)
    throw DocumentError(where + ": key must be " + std::to_string(parts) +
                        " numbers of the record's widths");
  return RecordKey{json[0].get<int32_t>(), json[1].get<int16_t>(),
                   parts == 3 ? json[2].get<int16_t>() : int16_t{0}};
}

nlohmann::json KeyToJson(const RecordKey& key, const RecordShape& shape) {
  if (KeyParts(shape) == 3) return {key.Cmper, key.Inci, key.Third};
  return {key.Cmper, key.Inci};
}

void RecordsFromJson(Document& doc, const nlohmann::json& records) {
  if (!records.is_object()) throw DocumentError("\"records\" must be an object");
  for (const auto& [className, rows] : records.items()) {
    const RecordShape* shape = FindRecordShape(className);
    if (!shape) throw DocumentError("unknown record type \"" + className + "\"");
    if (!rows.is_array()) throw DocumentError("record " + className + ": a list expected");
    RecordTable& table = doc.Table(*shape);
    for (const nlohmann::json& row : rows) {
      std::string where = "record " + className;
      if (!row.is_object() || !row.contains("key"))
        throw DocumentError(where + ": each record needs a \"key\"");
      RecordKey key = KeyFromJson(row["key"], *shape, where);
      where += ' ';
      where += KeyText(key);
      if (table.Rows.count(key)) throw DocumentError(where + ": key given twice");
      StoredRecord record = doc.NewRecord(*shape);
      for (const auto& [name, value] : row.items()) {
        if (name == "key") continue;
        int index = shape->FieldIndex(name);
        if (index < 0) throw DocumentError(where + ": unknown field \"" + name + "\"");
        FieldFromJson(doc, shape->Fields[index], value, record[index], where);
      }
      table.Rows.emplace(key, std::move(record));
    }
  }
}
} // namespace

RecordTable& Document::Table(const RecordShape& shape) {
  auto it = Records.find(shape.Class);
  if (it == Records.end()) it = Records.emplace(shape.Class, RecordTable{&shape, {}}).first;
  return it->second;
}

const RecordTable* Document::FindTable(std::string_view className) const {
  auto it = Records.find(className);
  return it == Records.end() ? nullptr : &it->second;
}

bool Document::IsGrowingBlock(const FieldShape& field) {
  return field.Kind == FieldKind::P16 && std::strcmp(field.Name, "Passes") == 0;
}

int Document::BlockSize(const FieldShape& field) const {
  // The host keeps as many frames per holder as a frame may have layers.
  if (field.Kind == FieldKind::P16 && std::strcmp(field.Name, "Frame") == 0) return MaxLayers;
  return field.Count;
}

StoredRecord Document::NewRecord(const RecordShape& shape) const {
  StoredRecord record(shape.Fields.size());
  for (size_t i = 0; i < shape.Fields.size(); ++i) {
    const FieldShape& field = shape.Fields[i];
    if (field.Kind != FieldKind::TXT) record[i].Numbers.assign(BlockSize(field), 0);
  }
  return record;
}

nlohmann::json Document::ToJson() const {
  nlohmann::json records = nlohmann::json::object();
  for (const auto& [className, table] : Records) {
    if (table.Rows.empty()) continue;
    nlohmann::json rows = nlohmann::json::array();
    for (const auto& [key, record] : table.Rows) {
      nlohmann::json row = nlohmann::json::object();
      row["key"] = KeyToJson(key, *table.Shape);
      for (size_t i = 0; i < table.Shape->Fields.size(); ++i)
        row[table.Shape->Fields[i].Name] = FieldToJson(table.Shape->Fields[i], record[i]);
      rows.push_back(std::move(row));
    }
    records[className] = std::move(rows);
  }
  nlohmann::json json = {{"format", kFormatName},
                         {"formatVersion", kFormatVersion},
                         {"finaleVersion", FinaleVersion},
                         {"maxLayers", MaxLayers},
                         {"title", Title},
                         {"records", std::move(records)},
                         {"texts", Texts.ToJson()},
                         {"frames", Frames.ToJson()}};
  return json;
}

Document Document::FromJson(const nlohmann::json& json) {
  if (!json.is_object() || json.value("format", "") != kFormatName)
    throw DocumentError("not a document of Ostin Light (\"format\" is not \"" +
                        std::string(kFormatName) + "\")");
  Document doc;
  doc.FinaleVersion = json.value("finaleVersion", 2004);
  if (doc.FinaleVersion < 2000 || doc.FinaleVersion > 2004)
    throw DocumentError("\"finaleVersion\" must be a year from 2000 to 2004");
  doc.MaxLayers = json.value("maxLayers", static_cast<int16_t>(4));
  if (doc.MaxLayers < 4 || doc.MaxLayers > 16)
    throw DocumentError("\"maxLayers\" must be from 4 to 16");
  doc.Title = json.value("title", "");
  if (json.contains("records")) RecordsFromJson(doc, json["records"]);
  if (json.contains("texts")) doc.Texts = TextStore::FromJson(json["texts"]);
  if (json.contains("frames")) doc.Frames = FrameStore::FromJson(json["frames"]);
  return doc;
}

Document Document::LoadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw DocumentError(path + ": cannot open the document: " + std::strerror(errno));
  try {
    nlohmann::json json = nlohmann::json::parse(in);
    Document doc = FromJson(json);
    doc.Path = path;
    return doc;
  } catch (const nlohmann::json::exception& e) {
    throw DocumentError(path + ": not a document: " + e.what());
  } catch (const DocumentError& e) {
    throw DocumentError(path + ": " + e.what());
  }
}

void Document::SaveFile(const std::string& path) const {
  std::string temporary = path + ".tmp-ostin";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) throw DocumentError(path + ": cannot write the document: " + std::strerror(errno));
    out << ToJson().dump(1) << '\n';
    if (!out.flush()) {
      std::filesystem::remove(temporary);
      throw DocumentError(path + ": cannot write the document");
    }
  }
  std::error_code ec;
  std::filesystem::rename(temporary, path, ec);
  if (ec) {
    std::filesystem::remove(temporary);
    throw DocumentError(path + ": cannot write the document: " + ec.message());
  }
}

} // namespace ostin::sim
