#include "sim/document_text.h"

#include <sstream>

#include "platform/code_page.h"

namespace ostin::sim {

namespace {
std::string FieldText(const FieldShape& field, const FieldValue& value) {
  if (field.Kind == FieldKind::TXT) return "\"" + HostToUtf8(value.Text) + "\"";
  if (!IsBlock(field.Kind)) return std::to_string(value.Numbers.at(0));
  std::string text = "[";
  for (size_t i = 0; i < value.Numbers.size(); ++i)
    text += (i ? " " : "") + std::to_string(value.Numbers[i]);
  return text + "]";
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
  return out.str();
}

} // namespace ostin::sim
