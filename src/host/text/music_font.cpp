#include "host/text/music_font.h"

#include <string_view>

#include "host/text/fonts.h"
#include "host/text/text_failures.h"
#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

namespace {
struct Glyph {
  unsigned char Code;
  std::string_view Kind;
  std::string_view Name;
  uint16_t OnlyIn = 0; // fonts it is read in; 0 for all
  uint16_t NotIn = 0;  // fonts it is not read in
};

constexpr Glyph kGlyphs[] = {
    {35, "accidental-mark", "sharp"},
    {73, "accidental-mark", "sharp"},
    {98, "accidental-mark", "flat"},
    {105, "accidental-mark", "flat"},
    {110, "accidental-mark", "natural"},
    {233, "accidental-mark", "natural"},
    {42, "pedal", "pedal-stop"},
    {161, "pedal", "pedal-start"},
    {44, "articulations", "breath-mark"},
    {84, "ornaments", "delayed-turn", 0, kJazz},
    {217, "ornaments", "trill-mark"},
    {85, "fermata", "fermata-upright"},
    {117, "fermata", "fermata-inverted"},
    {174, "eyeglasses", "eyeglasses", kJazz},
    {70, "dynamics", "mf"},
    {80, "dynamics", "mp"},
    {83, "dynamics", "sf"},
    {90, "dynamics", "fz"},
    {102, "dynamics", "f"},
    {112, "dynamics", "p"},
    {130, "dynamics", "sfp"},
    {141, "dynamics", "sffz"},
    {167, "dynamics", "sfz"},
    {175, "dynamics", "pppp"},
    {182, "dynamics", "sfpp"},
    {184, "dynamics", "ppp"},
    {185, "dynamics", "pp"},
    {196, "dynamics", "ff"},
    {234, "dynamics", "fp"},
    {235, "dynamics", "ffff"},
    {236, "dynamics", "fff"},
};

struct GlyphPair {
  unsigned char First, Second;
  std::string_view Name;
};

constexpr GlyphPair kDynamicPairs[] = {
    {83, 112, "sfp"},    {83, 185, "sfpp"},    {184, 184, "pppppp"}, {184, 185, "ppppp"},
    {236, 196, "fffff"}, {236, 236, "ffffff"}, {142, 90, "rfz"},     {142, 102, "rf"},
};

struct NoteCode {
  unsigned char Code;
  std::string_view Note;
};

constexpr NoteCode kMetronomeNotes[] = {
    {101, "eighth"}, {104, "half"}, {113, "quarter"}, {169, "quarter"}, {120, "16th"}};

constexpr NoteCode kMetronomeDigits[] = {{188, "0"}, {193, "1"}, {170, "2"}, {163, "3"},
                                         {162, "4"}, {176, "5"}, {164, "6"}, {166, "7"},
                                         {165, "8"}, {187, "9"}};

constexpr unsigned char kMetronomeEquals = 200;
// Fonts whose "k" is a dot too.
constexpr uint16_t kFontsWithDotK = kMaestro | kMaestroWide | kPetrucci;

struct NoteLetter {
  char Letter;
  std::string_view Note;
};

constexpr NoteLetter kTextNotes[] = {
    {'q', "quarter"}, {'e', "eighth"}, {'h', "half"}, {'x', "16th"}, {'w', "whole"}};

constexpr unsigned char kCirca = 130;

template <class Row, size_t N> const Row* FindCode(const Row (&rows)[N], unsigned char code) {
  for (const Row& row : rows)
    if (row.Code == code) return &row;
  return nullptr;
}

unsigned char At(const std::string& bytes, size_t i) {
  return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
}

MusicText OneGlyph(unsigned char code, uint16_t font) {
  for (const Glyph& glyph : kGlyphs) {
    if (glyph.Code != code || (glyph.OnlyIn && !(glyph.OnlyIn & font)) || (glyph.NotIn & font))
      continue;
    return {std::string(glyph.Kind), {std::string(glyph.Name)}};
  }
  return {"", {""}};
}

MusicText TwoGlyphs(unsigned char first, unsigned char second) {
  for (const GlyphPair& pair : kDynamicPairs)
    if (pair.First == first && pair.Second == second) return {"dynamics", {std::string(pair.Name)}};
  return {};
}

// Note, dots, the equals sign and digits, each in its music font character.
MusicText MetronomeGlyphs(const std::string& bytes, uint16_t font) {
  const NoteCode* note = FindCode(kMetronomeNotes, At(bytes, 0));
  if (!note) return {};
  size_t i = 1;
  int dots = 0;
  for (; At(bytes, i) == '.' || (At(bytes, i) == 'k' && (font & kFontsWithDotK)); ++i)
    ++dots;
  if (At(bytes, i++) != kMetronomeEquals) return {};
  std::string digits;
  for (; i < bytes.size(); ++i) {
    const NoteCode* digit = FindCode(kMetronomeDigits, At(bytes, i));
    if (!digit) return {};
    digits += digit->Note;
  }
  if (digits.empty()) return {};
  return {"metronome", {std::string(note->Note), std::to_string(dots), digits}};
}

const NoteLetter* TextNote(char c) {
  for (const NoteLetter& note : kTextNotes)
    if (note.Letter == c) return &note;
  return nullptr;
}

// The length of the equals sign at i (" = ", "= ", " =", "="), 0 when none stands there.
size_t EqualsAt(const std::string& text, size_t i) {
  constexpr std::string_view kForms[] = {" = ", "= ", " =", "="};
  for (std::string_view form : kForms)
    if (text.compare(i, form.size(), form) == 0) return form.size();
  return 0;
}

// The right side of a metronome mark in text, in UTF-8: digits, "-", blanks inside, "ca." and
// the value for "#". Sets end to the place of the character that ended the reading.
std::string RightSide(const std::string& bytes, size_t i, const std::string& value, size_t& end) {
  std::string right;
  for (; i < bytes.size(); ++i) {
    unsigned char c = At(bytes, i);
    if ((c >= '0' && c <= '9') || c == '-' || (c == ' ' && !right.empty()))
      right += static_cast<char>(c);
    else if (c == kCirca)
      right += "ca.";
    else if (c == '#')
      right += value.empty() ? "#" : value;
    else if (c != ' ')
      break;
  }
  end = i;
  return right;
}

MusicText MetronomeText(const std::string& bytes, const std::string& value) {
  size_t i = 0;
  bool paren = bytes[0] == '(' || bytes[0] == '{';
  if (paren) ++i;
  const NoteLetter* note = TextNote(static_cast<char>(At(bytes, i++)));
  if (!note) return {};
  int dots = 0;
  for (; At(bytes, i) == '.' || At(bytes, i) == 'd'; ++i)
    ++dots;
  size_t equals = EqualsAt(bytes, i);
  if (equals == 0) return {};
  i += equals;
  std::string right;
  size_t end = bytes.size();
  const NoteLetter* rightNote = i + 1 == bytes.size() ? TextNote(bytes[i]) : nullptr;
  if (rightNote)
    right = std::string(rightNote->Note);
  else
    right = RightSide(bytes, i, value, end);
  if (right.empty()) return {};
  paren = paren && (At(bytes, end) == ')' || At(bytes, end) == '}');
  MusicText result{"metronome", {std::string(note->Note), std::to_string(dots), right}};
  if (paren) result.List.emplace_back("paren");
  return result;
}
} // namespace

MusicText ParseMusicFont(const std::string& text, const std::string& font,
                         const std::string& value) {
  return Guarded("ParseMusicFont error ", text_failures::kParseMusicFont, [&] {
    std::string bytes = Utf8ToHost(text);
    uint16_t bit = MusicFontBitOf(font);
    if (bytes.size() == 1) return OneGlyph(At(bytes, 0), bit);
    if (bytes.size() == 2) return TwoGlyphs(At(bytes, 0), At(bytes, 1));
    if (bytes.size() >= 3) return MetronomeGlyphs(bytes, bit);
    return MusicText{};
  });
}

MusicText ParseMusicTextFont(const std::string& text, const std::string& font,
                             const std::string& value) {
  return Guarded("ParseMusicTextFont error ", text_failures::kParseMusicTextFont, [&] {
    std::string bytes = Utf8ToHost(text);
    if (bytes.size() < 3) return MusicText{};
    return MetronomeText(bytes, value);
  });
}

} // namespace ostin
