#pragma once
// Characters of the music fonts read as MusicXML noteheads and accidentals, and back.
#include <cstdint>
#include <string>

#include "xml/xml_node.h"

namespace ostin {

// The plain closed and open noteheads of the music fonts.
inline constexpr int16_t kClosedNotehead = 207;
inline constexpr int16_t kOpenNotehead = 250;

// A quarter-tone accidental of a percussion note font; empty for any other character.
std::string ParseAccidental(int character, const std::string& font);

struct NoteheadText {
  std::string Text;   // empty: no notehead element
  std::string Filled; // "yes", "no" or empty
  bool Parentheses = false;
};

// The notehead a character of the font (by name) shows. The plain heads give "normal" only
// where they differ from the duration's own head, or with option.
NoteheadText ParseNotehead(int character, const std::string& font, int32_t dura, bool option);

// The character of a notehead element in the font; without an element the plain head, closed
// when filled. 0 for a notehead the font does not have.
int16_t GetNotehead(const xml::XmlNode& element, const std::string& font, bool filled);

} // namespace ostin
