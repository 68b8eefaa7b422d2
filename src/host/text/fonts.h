#pragma once
// The document's fonts: the font table record, the classes of fonts by name, and the
// look-ups the engines make.
#include <cstdint>
#include <string>
#include <string_view>

#include "host/bridge.h"
#include "host/record.h"
#include "host/record_places.h"

namespace ostin {

// The font table has Create, Load and Next calls, and no Save.
struct FontNameTraits {
  static constexpr const char* kClass = "FontName";
  static constexpr int32_t kVariantYear = 0;
  static constexpr const RecordPlaces& kPlaces = kFontNamePlaces;
  using Key = int16_t;
  using KeyOf = RecordKeyOf<Key>;
  struct Fields {
    OSTIN_SHAPE_FontName(OSTIN_MEMBER)
  };
  static void NameBlocks(Fields&) {}
  static int16_t Create(bool, KeyOf& k) { return CreateFontInfo(&k.Cmper, &k.Inci); }
  static int16_t Load(bool, const KeyOf& k, Fields& f) {
    return LoadFontInfo(k.Cmper, k.Inci OSTIN_SHAPE_FontName(OSTIN_PTR_ARG));
  }
  static int16_t Next(bool, KeyOf& k, Fields& f) {
    return NextFontInfo(&k.Cmper, &k.Inci OSTIN_SHAPE_FontName(OSTIN_PTR_ARG));
  }
};

// One font of the document: Cmper is its number, Text its name.
class FontName : public Record<FontNameTraits> {
public:
  // Create(number, 0) reads the font at that number; past the last font it fails.
  void Create(int16_t number, int16_t inci);
  [[nodiscard]] bool Load(int16_t number, int16_t inci);
  [[nodiscard]] bool GetNext(int16_t number, int16_t inci);

  bool MacFont() const { return (CharsetAndOS & 0x1000) != 0; }
  bool WindowsFont() const { return (CharsetAndOS & 0x2000) != 0; }
  bool WesternFont() const { return (CharsetAndOS & 0x0FFF) == 0; }
  bool SymbolFont() const { return (CharsetAndOS & 0x0FFF) == 2; }

  // Set after each read: every font is taken in the system's own locale.
  int32_t Locale = 0;
  std::string Language;

private:
  void ComputeLocale();
};

// Classes of fonts, by exact name.
bool IsMusicFont(std::string_view name);
bool IsMusicTextFont(std::string_view name);
bool IsTextFont(std::string_view name);
bool IsPercussionNoteFont(std::string_view name);

// The music fonts whose characters the tables read, one bit each.
enum MusicFontBit : uint16_t {
  kMaestro = 0x0001,
  kMaestroWide = 0x0002,
  kPetrucci = 0x0004,
  kEngraverFontSet = 0x0008,
  kJazz = 0x0010,
  kMaestroPercussion = 0x0020,
  kTamburo = 0x0040,
  kJazzPerc = 0x0080,
  kEngraverFontExtras = 0x0100,
};
inline constexpr uint16_t kPercussionNoteFonts =
    kMaestroPercussion | kTamburo | kJazzPerc | kEngraverFontExtras;
// The bit of a font name; 0 for a font the tables do not read.
uint16_t MusicFontBitOf(std::string_view name);

struct FontClass {
  bool IsMusic = false;
  bool IsMusicText = false;
  bool IsText = true;
};
// A font that is neither music nor music text is text, and so is an empty name.
FontClass ClassOfFont(std::string_view name);
// The class of a document font, by its name.
FontClass CheckFont(int16_t font);

// The name of a document font; empty for a number the document lacks.
std::string FontNameOf(int16_t font);
// The document's number of a font name (FxFontNameToNum); the host adds a name it lacks.
int16_t FontNumberOf(const std::string& name);

// The number of the first font from 1 with that name; past the last font the failure of
// FontName.Create is raised.
int16_t FindFont(const std::string& name);
int16_t FirstMusicFont();
int16_t FirstTextFont();

// The document's number of "EngraverFontSet", looked up by the export at its start; 0 until
// then. ParseCaretCommands reads it.
int16_t& EngraverFontSetNumber();

} // namespace ostin
