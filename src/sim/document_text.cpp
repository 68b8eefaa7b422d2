#include "sim/document_text.h"

#include <sstream>

#include <nlohmann/json.hpp>

#include "platform/code_page.h"

namespace ostin::sim {

namespace {
std::string FieldText(const FieldShape& field, const FieldValue& value) {
  // Appended piece by piece: a literal in front of a temporary string trips GCC 12's
  // false -Wrestrict at -O3.
  if (field.Kind == FieldKind::TXT) {
    std::string text = "\"";
    text += HostToUtf8(value.Text);
    return text + '"';
  }
  if (!IsBlock(field.Kind)) return std::to_string(value.Numbers.at(0));
  std::string text = "[";
  for (size_t i = 0; i < value.Numbers.size(); ++i) {
    if (i) text += ' ';
    text += std::to_string(value.Numbers[i]);
  }
  return text + "]";
}
// A section of the document as lines: each list item on a line of its own.
void DescribeSection(std::ostringstream& out, const std::string& title,
                     const nlohmann::json& section) {
  if (!section.is_object()) return;
  for (const auto& [name, value] : section.items()) {
    if (value.is_array()) {
      if (value.empty()) continue;
      out << title << " " << name << " (" << value.size() << ")\n";
      for (const nlohmann::json& item : value)
        out << "  " << item.dump() << "\n";
    } else {
      out << title << " " << name << ": " << value.dump() << "\n";
    }
  }
}

// Fields of an entry or a note, by name, with flag words in hexadecimal.
std::string FieldsText(const nlohmann::json& item) {
  std::string text;
  for (const auto& [name, value] : item.items()) {
    if (name == "notes" || name == "Entnum") continue;
    std::ostringstream field;
    bool flags = name == "Ef" || name == "Xef" || name == "Flag";
    if (flags && value.is_number_integer())
      field << std::hex << "0x" << static_cast<uint32_t>(value.get<int32_t>());
    else
      field << value.dump();
    text += " " + name + "=" + field.str();
  }
  return text;
}

void DescribeFrames(std::ostringstream& out, const nlohmann::json& frames) {
  if (!frames.is_object() || !frames.contains("list")) return;
  out << "Frames (" << frames["list"].size() << "), next entry number "
      << frames.value("nextEntnum", 0) << "\n";
  for (const nlohmann::json& frame : frames["list"]) {
    out << "  frame " << frame.value("frame", 0) << "\n";
    for (const nlohmann::json& entry : frame.value("entries", nlohmann::json::array())) {
      out << "    entry " << entry.value("Entnum", 0) << ":" << FieldsText(entry) << "\n";
      for (const nlohmann::json& note : entry.value("notes", nlohmann::json::array()))
        out << "      note" << FieldsText(note) << "\n";
    }
  }
}
} // namespace

std::string DescribeDocument(const Document& document) {
  std::ostringstream out;
  out << "Document " << (document.Path.empty() ? "(new)" : document.Path) << "\n";
  out << "  host year " << document.FinaleVersion << ", " << document.MaxLayers
      << " layers per frame";
  if (!document.Title.empty()) out << ", title \"" << document.Title << "\"";
  out << "\n";
  for (const auto& [className, table] : document.Records) {
    if (table.Rows.empty()) continue;
    out << className << " (" << table.Rows.size() << ")\n";
    for (const auto& [key, record] : table.Rows) {
      out << "  [" << key.Cmper << ", " << key.Inci << "]";
      for (size_t i = 0; i < table.Shape->Fields.size(); ++i)
        out << " " << table.Shape->Fields[i].Name << "="
            << FieldText(table.Shape->Fields[i], record[i]);
      out << "\n";
    }
  }
  DescribeSection(out, "Texts:", document.Texts.ToJson());
  DescribeFrames(out, document.Frames.ToJson());
  return out.str();
}

} // namespace ostin::sim
