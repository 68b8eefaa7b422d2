#pragma once
// The document's texts and fonts as the host keeps them: the font table and the raw
// texts by tag and id. Names and texts are held in the host's code page.
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include <nlohmann/json_fwd.hpp>

namespace ostin::sim {

struct FontEntry {
  std::string Name;
  int16_t CharsetAndOS = kWindowsFont;
  int16_t PitchAndFamily = 0;
  bool operator==(const FontEntry&) const = default;

  static constexpr int16_t kWindowsFont = 0x2000;
};

class TextStore {
public:
  // Font number (from 1) to font.
  std::map<int16_t, FontEntry> Fonts;
  // (tag, id) to raw text.
  std::map<std::pair<int32_t, int16_t>, std::string> RawTexts;

  // The lowest number of the font of that name; a name the table lacks is added under the
  // next free number. 0 for an empty name or a full table.
  int16_t FontNumber(const std::string& name, int16_t charsetAndOS = FontEntry::kWindowsFont);
  const FontEntry* FindFont(int16_t number) const;

  const std::string* FindRawText(int32_t tag, int16_t id) const;
  // The next free id under a tag, from 1.
  int16_t NextRawTextId(int32_t tag) const;

  nlohmann::json ToJson() const;
  // Reads the "texts" section of a document; throws DocumentError naming what is wrong.
  static TextStore FromJson(const nlohmann::json& json);
  bool operator==(const TextStore&) const = default;
};

} // namespace ostin::sim
