#include "host/text/noteheads.h"

#include <array>
#include <string_view>

#include "host/text/fonts.h"
#include "host/text/text_failures.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr uint16_t kMaestros = kMaestro | kMaestroWide;
constexpr uint16_t kEngraverLike = kMaestros | kPetrucci | kEngraverFontSet;
constexpr uint16_t kPercussion = kPercussionNoteFonts;
constexpr uint16_t kPercussionButExtras = kMaestroPercussion | kTamburo | kJazzPerc;

struct AccidentalGlyph {
  unsigned char Code;
  uint16_t Fonts;
  std::string_view Text;
};

constexpr AccidentalGlyph kAccidentals[] = {
    {66, kPercussion, "quarter-flat"},
    {73, kPercussion, "three-quarters-flat"},
    {181, kPercussion, "quarter-sharp"},
    {229, kEngraverFontExtras, "three-quarters-sharp"},
    {247, kPercussionButExtras, "three-quarters-sharp"},
};

// Characters of a font group that show one notehead; unused places of Codes hold 0.
struct HeadGlyphs {
  uint16_t Fonts;
  std::array<unsigned char, 6> Codes;
  std::string_view Text;
  std::string_view Filled;
  bool Parentheses = false;
};

constexpr HeadGlyphs kHeadGlyphs[] = {
    {kEngraverLike, {32, 202}, "none", ""},
    {kEngraverLike, {33, 213, 243}, "slash", ""},
    {kEngraverLike, {43, 246}, "cross", ""},
    {kEngraverLike, {79, 124, 225}, "diamond", "no"},
    {kEngraverLike, {177}, "triangle", "no"},
    {kEngraverLike, {192}, "x", ""},
    {kEngraverLike, {208, 227}, "square", "yes"},
    {kEngraverLike, {209}, "triangle", "yes"},
    {kEngraverLike, {226}, "diamond", "yes"},
    {kEngraverFontSet, {88}, "circle-x", ""},
    {kEngraverFontSet, {108, 121}, "normal", "yes", true},
    {kMaestros | kPetrucci, {121}, "triangle", "no"},
    {kMaestros | kPetrucci, {180}, "diamond", "no"},
    {kMaestros, {173}, "square", "no"},
    {kMaestros, {203}, "slash", ""},
    {kJazz, {32, 202}, "none", ""},
    {kJazz, {33, 208, 209, 213, 226, 243}, "slash", ""},
    {kJazz, {43}, "cross", ""},
    {kJazz, {79, 124, 225, 253}, "diamond", "no"},
    {kJazz, {121, 177}, "triangle", "no"},
    {kJazz, {192}, "x", ""},
    {kJazz, {205}, "circle-x", ""},
    {kJazz, {227}, "square", "yes"},
    {kPercussion, {33}, "triangle", "no"},
    {kPercussion, {35, 84, 117}, "diamond", "no"},
    {kPercussion, {37}, "normal", "no"},
    {kPercussion, {41}, "square", "no"},
    {kPercussion, {43}, "cross", ""},
    {kPercussion, {47, 63, 83}, "slash", ""},
    {kPercussion, {48}, "square", "yes"},
    {kPercussion, {49}, "triangle", "yes"},
    {kPercussion, {51, 116}, "diamond", "yes"},
    {kPercussion, {53}, "normal", "yes"},
    {kPercussion, {69}, "normal", "no", true},
    {kPercussion, {88}, "circle-x", ""},
    {kPercussion, {101}, "normal", "yes", true},
    {kPercussion, {120}, "x", ""},
    {kPercussionButExtras, {89, 90}, "circle-x", ""},
    {kPercussionButExtras, {121, 122}, "x", ""},
};

// The fonts of each column of kHeadChoices.
constexpr uint16_t kHeadColumns[] = {kMaestros, kPetrucci, kEngraverFontSet, kJazz, kPercussion};

struct HeadPair {
  int16_t Filled, Open;
};

struct HeadChoice {
  std::string_view Text;
  bool Parentheses;
  std::array<HeadPair, 5> Codes; // by column; 0 where the font has no such head
};

constexpr HeadChoice kHeadChoices[] = {
    {"normal", false, {{{207, 250}, {207, 250}, {207, 250}, {207, 250}, {207, 250}}}},
    {"normal", true, {{{0, 0}, {0, 0}, {108, 0}, {0, 0}, {101, 207}}}},
    {"slash", false, {{{243, 243}, {243, 243}, {243, 243}, {243, 243}, {47, 47}}}},
    {"triangle", false, {{{209, 177}, {209, 177}, {209, 177}, {0, 177}, {49, 33}}}},
    {"diamond", false, {{{226, 225}, {226, 225}, {226, 225}, {0, 225}, {51, 35}}}},
    {"square", false, {{{208, 173}, {208, 0}, {208, 0}, {227, 173}, {48, 41}}}},
    {"cross", false, {{{43, 43}, {43, 43}, {43, 43}, {43, 43}, {43, 43}}}},
    {"x", false, {{{192, 192}, {192, 192}, {192, 192}, {192, 192}, {120, 120}}}},
    {"circle-x", false, {{{0, 0}, {0, 0}, {88, 88}, {205, 205}, {88, 88}}}},
    {"none", false, {{{32, 32}, {32, 32}, {32, 32}, {32, 32}, {32, 32}}}},
};

bool Holds(const std::array<unsigned char, 6>& codes, int character) {
  for (unsigned char code : codes)
    if (code != 0 && code == character) return true;
  return false;
}

// The choice of that text; parentheses that the text has no row for are not told.
const HeadChoice* FindChoice(const std::string& text, bool parentheses) {
  const HeadChoice* plain = nullptr;
  for (const HeadChoice& choice : kHeadChoices) {
    if (choice.Text != text) continue;
    if (choice.Parentheses == parentheses) return &choice;
    if (!choice.Parentheses) plain = &choice;
  }
  return plain;
}

int ColumnOf(uint16_t font) {
  for (size_t i = 0; i < std::size(kHeadColumns); ++i)
    if (kHeadColumns[i] & font) return static_cast<int>(i);
  return -1;
}
} // namespace

std::string ParseAccidental(int character, const std::string& font) {
  return Guarded("ParseAccidental error ", text_failures::kParseAccidental, [&] {
    uint16_t bit = MusicFontBitOf(font);
    for (const AccidentalGlyph& glyph : kAccidentals)
      if (glyph.Code == character && (glyph.Fonts & bit)) return std::string(glyph.Text);
    return std::string();
  });
}

NoteheadText ParseNotehead(int character, const std::string& font, int32_t dura, bool option) {
  return Guarded("ParseNotehead error ", text_failures::kParseNotehead, [&] {
    // The plain heads say something only where the duration would show the other one.
    if (character == kClosedNotehead)
      return dura < 2048 && !option ? NoteheadText{} : NoteheadText{"normal", "yes"};
    if (character == kOpenNotehead)
      return dura >= 2048 && !option ? NoteheadText{} : NoteheadText{"normal", "no"};
    uint16_t bit = MusicFontBitOf(font);
    for (const HeadGlyphs& glyphs : kHeadGlyphs)
      if ((glyphs.Fonts & bit) && Holds(glyphs.Codes, character))
        return NoteheadText{std::string(glyphs.Text), std::string(glyphs.Filled),
                            glyphs.Parentheses};
    return NoteheadText{};
  });
}

int16_t GetNotehead(const xml::XmlNode& element, const std::string& font, bool filled) {
  return Guarded("GetNotehead error ", text_failures::kGetNotehead, [&]() -> int16_t {
    if (!element) return filled ? kClosedNotehead : kOpenNotehead;
    if (element.getAttributeNode("filled")) filled = element.getAttribute("filled") == "yes";
    const HeadChoice* choice =
        FindChoice(element.text(), element.getAttribute("parentheses") == "yes");
    int column = ColumnOf(MusicFontBitOf(font));
    if (!choice || column < 0) return 0;
    const HeadPair& pair = choice->Codes[column];
    return filled ? pair.Filled : pair.Open;
  });
}

} // namespace ostin
