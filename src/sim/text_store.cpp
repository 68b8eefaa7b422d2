#include "sim/text_store.h"

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <string_view>

#include <nlohmann/json.hpp>

#include "platform/code_page.h"
#include "sim/document.h"

namespace ostin::sim {

namespace {
constexpr int16_t kMaxNumber = std::numeric_limits<int16_t>::max();

// Refuses the fields of an item that the section does not know.
void OnlyFields(const nlohmann::json& item, std::initializer_list<std::string_view> known,
                const std::string& where) {
  for (const auto& [name, value] : item.items())
    if (std::find(known.begin(), known.end(), name) == known.end())
      throw DocumentError(where + ": unknown field \"" + name + "\"");
}

int64_t NumberOf(const nlohmann::json& item, const char* name, int64_t low, int64_t high,
                 const std::string& where) {
  const auto it = item.find(name);
  if (it == item.end()) throw DocumentError(where + ": \"" + name + "\" missing");
  if (!it->is_number_integer() || it->get<int64_t>() < low || it->get<int64_t>() > high)
    throw DocumentError(where + ": \"" + name + "\" must be a number from " + std::to_string(low) +
                        " to " + std::to_string(high));
  return it->get<int64_t>();
}

int16_t ShortOr(const nlohmann::json& item, const char* name, int16_t fallback,
                const std::string& where) {
  if (!item.contains(name)) return fallback;
  return static_cast<int16_t>(NumberOf(item, name, std::numeric_limits<int16_t>::min(),
                                       std::numeric_limits<int16_t>::max(), where));
}

std::string TextOf(const nlohmann::json& item, const char* name, const std::string& where) {
  const auto it = item.find(name);
  if (it == item.end() || !it->is_string())
    throw DocumentError(where + ": \"" + name + "\" must be text");
  return Utf8ToHost(it->get<std::string>());
}

// The list of a section's part, or an empty list when the part is not there.
const nlohmann::json& ListOf(const nlohmann::json& json, const char* name) {
  static const nlohmann::json empty = nlohmann::json::array();
  const auto it = json.find(name);
  if (it == json.end()) return empty;
  if (!it->is_array()) throw DocumentError(std::string("texts: \"") + name + "\" must be a list");
  return *it;
}

const nlohmann::json& ItemAt(const nlohmann::json& list, size_t i, const std::string& where) {
  if (!list[i].is_object()) throw DocumentError(where + ": an object expected");
  return list[i];
}

void FontsFromJson(TextStore& store, const nlohmann::json& list) {
  for (size_t i = 0; i < list.size(); ++i) {
    std::string where = "texts: fonts, item " + std::to_string(i + 1);
    const nlohmann::json& item = ItemAt(list, i, where);
    OnlyFields(item, {"number", "name", "charsetAndOS", "pitchAndFamily"}, where);
    auto number = static_cast<int16_t>(NumberOf(item, "number", 1, kMaxNumber, where));
    where = "texts: font " + std::to_string(number);
    FontEntry font{TextOf(item, "name", where),
                   ShortOr(item, "charsetAndOS", FontEntry::kWindowsFont, where),
                   ShortOr(item, "pitchAndFamily", 0, where)};
    if (font.Name.empty()) throw DocumentError(where + ": \"name\" must not be empty");
    if (!store.Fonts.emplace(number, font).second)
      throw DocumentError(where + ": number given twice");
  }
}

void RawTextsFromJson(TextStore& store, const nlohmann::json& list) {
  for (size_t i = 0; i < list.size(); ++i) {
    std::string where = "texts: rawTexts, item " + std::to_string(i + 1);
    const nlohmann::json& item = ItemAt(list, i, where);
    OnlyFields(item, {"tag", "id", "text"}, where);
    auto tag = static_cast<int32_t>(NumberOf(item, "tag", std::numeric_limits<int32_t>::min(),
                                             std::numeric_limits<int32_t>::max(), where));
    auto id = static_cast<int16_t>(NumberOf(item, "id", 1, kMaxNumber, where));
    where = "texts: raw text " + std::to_string(tag) + ", " + std::to_string(id);
    if (!store.RawTexts.emplace(std::pair(tag, id), TextOf(item, "text", where)).second)
      throw DocumentError(where + ": given twice");
  }
}
} // namespace

int16_t TextStore::FontNumber(const std::string& name, int16_t charsetAndOS) {
  if (name.empty()) return 0;
  for (const auto& [number, font] : Fonts)
    if (font.Name == name) return number;
  int16_t highest = Fonts.empty() ? 0 : Fonts.rbegin()->first;
  if (highest == kMaxNumber) return 0;
  auto next = static_cast<int16_t>(highest + 1);
  Fonts.emplace(next, FontEntry{name, charsetAndOS, 0});
  return next;
}

const FontEntry* TextStore::FindFont(int16_t number) const {
  auto it = Fonts.find(number);
  return it == Fonts.end() ? nullptr : &it->second;
}

const std::string* TextStore::FindRawText(int32_t tag, int16_t id) const {
  auto it = RawTexts.find({tag, id});
  return it == RawTexts.end() ? nullptr : &it->second;
}

int16_t TextStore::NextRawTextId(int32_t tag) const {
  int16_t highest = 0;
  for (const auto& [key, text] : RawTexts)
    if (key.first == tag) highest = std::max(highest, key.second);
  return static_cast<int16_t>(highest + 1);
}

nlohmann::json TextStore::ToJson() const {
  nlohmann::json fonts = nlohmann::json::array();
  for (const auto& [number, font] : Fonts)
    fonts.push_back({{"number", number},
                     {"name", HostToUtf8(font.Name)},
                     {"charsetAndOS", font.CharsetAndOS},
                     {"pitchAndFamily", font.PitchAndFamily}});
  nlohmann::json raw = nlohmann::json::array();
  for (const auto& [key, text] : RawTexts)
    raw.push_back({{"tag", key.first}, {"id", key.second}, {"text", HostToUtf8(text)}});
  return {{"fonts", std::move(fonts)}, {"rawTexts", std::move(raw)}};
}

TextStore TextStore::FromJson(const nlohmann::json& json) {
  if (!json.is_object()) throw DocumentError("texts: an object expected");
  for (const auto& [name, value] : json.items())
    if (name != "fonts" && name != "rawTexts")
      throw DocumentError("texts: unknown part \"" + name + "\"");
  TextStore store;
  FontsFromJson(store, ListOf(json, "fonts"));
  RawTextsFromJson(store, ListOf(json, "rawTexts"));
  return store;
}

} // namespace ostin::sim
