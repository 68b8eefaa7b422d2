#pragma once
// Reading music font text as music: dynamics, marks and metronome marks.
#include <cstdint>
#include <string>
#include <vector>

namespace ostin {

// What a music text says: its kind ("dynamics", "metronome", ...) and the list of values.
struct MusicText {
  std::string Kind;
  std::vector<std::string> List; // List(1) of the engines is List[0]
  int16_t Count() const { return static_cast<int16_t>(List.size()); }
};

// Text in a music font (font is its name). One character gives a mark or a dynamic (an
// unknown one an empty kind and name), two a dynamic, three or more a metronome mark: note,
// dots, digits.
MusicText ParseMusicFont(const std::string& text, const std::string& font,
                         const std::string& value);
// Text in a music text font, such as "q = 120" or "(q. = h)": note, dots, the right side and,
// in parentheses, "paren". value stands for "#".
MusicText ParseMusicTextFont(const std::string& text, const std::string& font,
                             const std::string& value);

} // namespace ostin
