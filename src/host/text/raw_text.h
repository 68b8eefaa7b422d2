#pragma once
// The document's raw texts by tag and id, in UTF-8.
#include <cstdint>
#include <string>

namespace ostin {

// The raw text of that tag and id; empty when the document holds none.
std::string ReadRawText(int32_t tag, int16_t id);
// Writes the raw text; a refusal is logged as "Finale SetRawText function call failed".
void WriteRawText(int32_t tag, int16_t id, const std::string& text);

} // namespace ostin
