#pragma once
// Host text split into runs of one font each, and what a run of plain text says.
#include <cstdint>
#include <string>
#include <vector>

#include "host/text/caret.h"

namespace ostin {

// Splits text at its caret commands into portions (held from index 0); commands that follow
// each other make no portion between them. Each portion gets its font's name and class; a
// hidden portion loses its text. plain and music count the portions with text in a text
// font and in the others. The result is the portion count.
int16_t ParseTextPortions(std::vector<TextPortion>& portions, const std::string& text, int32_t tag,
                          int16_t& plain, int16_t& music,
                          const ExpressionValues* expression = nullptr);

struct PortionData {
  std::string Text;
  bool Bold = false;
  bool Italic = false;
  std::string Lang;
  bool Rehearsal = false; // a boxed letter of JazzText
};

// A plain portion's text, re-coded for the Jazz text fonts, its style and its language.
PortionData TextPortionData(const TextPortion& portion);

// The language of a text by its letters: "de", "fr", "es" or empty.
std::string LanguageCheckWestern(const std::string& text);

} // namespace ostin
