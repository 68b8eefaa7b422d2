#pragma once
// The name texts of staves, staff styles and groups: text blocks that a record names by
// number, read once through their caret commands and written as new blocks.
#include <cstdint>
#include <string>

namespace ostin {

// The failure numbers of reading and writing one name text.
struct NameTextPlaces {
  int32_t Get;
  int32_t Let;
};

class NameText {
public:
  // The text of block `block`, without its caret commands; empty for no block. Read once.
  std::string Get(int32_t version, int16_t block, const NameTextPlaces& places);
  // Writes a new text: an empty one clears the field, the cached one changes nothing, any
  // other makes a new text block in the name font and gives its number for the field.
  int16_t Let(int32_t version, int16_t block, const std::string& text,
              const NameTextPlaces& places);

private:
  bool cached_ = false;
  std::string value_;
};

inline constexpr NameTextPlaces kStaffFullName{static_cast<int32_t>(0x80040326u),
                                               static_cast<int32_t>(0x80040327u)};
inline constexpr NameTextPlaces kStaffAbbrvName{static_cast<int32_t>(0x80040328u),
                                                static_cast<int32_t>(0x80040329u)};
inline constexpr NameTextPlaces kGroupFullName{static_cast<int32_t>(0x8004032Au),
                                               static_cast<int32_t>(0x8004032Bu)};
inline constexpr NameTextPlaces kGroupAbrvName{static_cast<int32_t>(0x8004032Cu),
                                               static_cast<int32_t>(0x8004032Du)};
inline constexpr NameTextPlaces kStyleFullName{static_cast<int32_t>(0x8004065Fu),
                                               static_cast<int32_t>(0x80040660u)};
inline constexpr NameTextPlaces kStyleAbbrvName{static_cast<int32_t>(0x80040661u),
                                                static_cast<int32_t>(0x80040662u)};

} // namespace ostin
