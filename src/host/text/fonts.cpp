#include "host/text/fonts.h"

#include "host/text/text_failures.h"

namespace ostin {

namespace {
enum class FontKind { Music, MusicText, Text, PercussionNote };

struct KnownFont {
  std::string_view Name;
  FontKind Kind;
  uint16_t Bit;
};

constexpr KnownFont kKnownFonts[] = {
    {"Maestro", FontKind::Music, kMaestro},
    {"Maestro Wide", FontKind::Music, kMaestroWide},
    {"Jazz", FontKind::Music, kJazz},
    {"Petrucci", FontKind::Music, kPetrucci},
    {"EngraverFontSet", FontKind::Music, kEngraverFontSet},
    {"EngraverTextT", FontKind::MusicText, 0},
    {"EngraverTextH", FontKind::MusicText, 0},
    {"EngraverTextNCS", FontKind::MusicText, 0},
    {"Times New Roman", FontKind::Text, 0},
    {"Arial", FontKind::Text, 0},
    {"JazzText", FontKind::Text, 0},
    {"JazzTextExtended", FontKind::Text, 0},
    {"Maestro Percussion", FontKind::PercussionNote, kMaestroPercussion},
    {"Tamburo", FontKind::PercussionNote, kTamburo},
    {"JazzPerc", FontKind::PercussionNote, kJazzPerc},
    {"EngraverFontExtras", FontKind::PercussionNote, kEngraverFontExtras},
};

const KnownFont* Known(std::string_view name) {
  for (const KnownFont& font : kKnownFonts)
    if (font.Name == name) return &font;
  return nullptr;
}

bool IsKind(std::string_view name, FontKind kind) {
  const KnownFont* font = Known(name);
  return font && font->Kind == kind;
}

// The number of the first font from 1 whose name passes the test.
template <class Test> int16_t WalkFonts(Test test) {
  FontName font;
  for (int16_t number = 1;; ++number) {
    font.Create(number, 0);
    if (test(font.Text)) return number;
  }
}
} // namespace

void FontName::Create(int16_t number, int16_t inci) {
  Record::Create(number, inci);
  ComputeLocale();
}

bool FontName::Load(int16_t number, int16_t inci) {
  bool found = Record::Load(number, inci);
  ComputeLocale();
  return found;
}

bool FontName::GetNext(int16_t number, int16_t inci) {
  bool found = Record::GetNext(number, inci);
  ComputeLocale();
  return found;
}

void FontName::ComputeLocale() {
  Locale = 0;
  Language.clear();
}

bool IsMusicFont(std::string_view name) {
  return IsKind(name, FontKind::Music);
}
bool IsMusicTextFont(std::string_view name) {
  return IsKind(name, FontKind::MusicText);
}
bool IsTextFont(std::string_view name) {
  return IsKind(name, FontKind::Text);
}
bool IsPercussionNoteFont(std::string_view name) {
  return IsKind(name, FontKind::PercussionNote);
}

uint16_t MusicFontBitOf(std::string_view name) {
  const KnownFont* font = Known(name);
  return font ? font->Bit : 0;
}

FontClass ClassOfFont(std::string_view name) {
  FontClass result;
  result.IsMusic = IsMusicFont(name);
  result.IsMusicText = IsMusicTextFont(name);
  result.IsText = !result.IsMusic && !result.IsMusicText;
  return result;
}

FontClass CheckFont(int16_t font) {
  return Guarded("CheckFont error ", text_failures::kCheckFont,
                 [&] { return ClassOfFont(FontNameOf(font)); });
}

std::string FontNameOf(int16_t font) {
  return Guarded("FontNameOf error ", text_failures::kFontNameOf, [&] {
    std::string name;
    FxFontNumToName(font, &name);
    return HostToUtf8(name);
  });
}

int16_t FontNumberOf(const std::string& name) {
  return Guarded("FontNumberOf error ", text_failures::kFontNumberOf, [&] {
    int16_t number = FxFontNameToNum(Utf8ToHost(name));
    if (number == 0) throw Failure::Internal(text_failures::kFontNameToNumRefused);
    return number;
  });
}

int16_t FindFont(const std::string& name) {
  return Guarded("FindFont error ", text_failures::kFindFont,
                 [&] { return WalkFonts([&](const std::string& text) { return text == name; }); });
}

int16_t FirstMusicFont() {
  return Guarded("FirstMusicFont error ", text_failures::kFirstMusicFont, [] {
    return WalkFonts([](const std::string& text) { return IsMusicFont(text); });
  });
}

int16_t FirstTextFont() {
  return Guarded("FirstTextFont error ", text_failures::kFirstTextFont, [] {
    return WalkFonts([](const std::string& text) { return IsTextFont(text); });
  });
}

int16_t& EngraverFontSetNumber() {
  static int16_t number = 0;
  return number;
}

} // namespace ostin
