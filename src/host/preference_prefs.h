#pragma once
// Read-only preference classes loaded by a number of their own: the default font of a kind
// of text, and the default look of tuplets.
#include <cstdint>
#include <string>

#include "host/record_macros.h"
#include "host/record_shapes.h"

namespace ostin {

class DefaultFontPrefs {
public:
  // False when the document has no such preference; also resolves the font's name.
  [[nodiscard]] bool Load(int16_t number);
  // The font as caret commands, as text of the host starts with them.
  std::string CaretCommands() const;

  int16_t PrefNumber = 0;
  OSTIN_SHAPE_DefaultFontPrefs(OSTIN_MEMBER) std::string FontName;
};

class TupletPrefs {
public:
  [[nodiscard]] bool Load(int16_t number);

  int16_t PrefNumber = 0;
  OSTIN_SHAPE_TupletPrefs(OSTIN_MEMBER)
};

} // namespace ostin
