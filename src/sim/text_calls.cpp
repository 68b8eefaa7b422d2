// The text and font calls of the bridge as the host stand-in answers them.
#include <charconv>
#include <string_view>

#include "host/bridge.h"
#include "sim/fault_point.h"
#include "sim/host.h"

namespace {
using ostin::sim::FontEntry;
using ostin::sim::Host;

ostin::sim::TextStore& Texts() {
  return Host::Instance().Doc().Texts;
}

// What a caret command may set.
struct CaretValues {
  int16_t* Font;
  int16_t* Size;
  int16_t* Efx;
  int32_t* FirstValue;
};

// A whole decimal number, blanks around it allowed.
bool ParseNumber(std::string_view text, int32_t& value) {
  while (!text.empty() && text.front() == ' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

// ^font(name) or ^font(name,charset): the host finds the font by name, adding a name it
// does not know, and keeps the charset as the first host value.
bool SetFont(std::string_view args, CaretValues& values) {
  std::string_view name = args;
  int32_t charset = FontEntry::kWindowsFont;
  size_t comma = args.rfind(',');
  if (comma != std::string_view::npos && ParseNumber(args.substr(comma + 1), charset))
    name = args.substr(0, comma);
  int16_t number = Texts().FontNumber(std::string(name), static_cast<int16_t>(charset));
  if (number == 0) return false;
  *values.Font = number;
  *values.FirstValue = charset;
  return true;
}

bool SetSize(std::string_view args, CaretValues& values) {
  int32_t size = 0;
  if (!ParseNumber(args, size) || size < 1 || size > 32767) return false;
  *values.Size = static_cast<int16_t>(size);
  return true;
}

struct EfxName {
  std::string_view Name;
  int16_t Bits;
};
constexpr EfxName kEfxNames[] = {
    {"bold", 0x01}, {"italic", 0x02}, {"underline", 0x04}, {"strikeout", 0x20}, {"hidden", 0x80}};

// ^efx(n) sets the style bits; ^efx(plain) clears them and each named style adds its bit,
// so that ^efx(plain)^efx(bold)^efx(italic) gives bold italic.
bool SetEfx(std::string_view args, CaretValues& values) {
  int32_t bits = 0;
  if (ParseNumber(args, bits)) {
    *values.Efx = static_cast<int16_t>(bits);
    return true;
  }
  while (!args.empty()) {
    size_t comma = args.find(',');
    std::string_view name = args.substr(0, comma);
    args = comma == std::string_view::npos ? std::string_view() : args.substr(comma + 1);
    if (name == "plain") {
      *values.Efx = 0;
      continue;
    }
    const EfxName* known = nullptr;
    for (const EfxName& efx : kEfxNames)
      if (efx.Name == name) known = &efx;
    if (!known) return false;
    *values.Efx = static_cast<int16_t>(*values.Efx | known->Bits);
  }
  return true;
}

struct CaretCommand {
  std::string_view Name;
  bool (*Apply)(std::string_view args, CaretValues& values);
};
constexpr CaretCommand kCaretCommands[] = {{"font", SetFont}, {"size", SetSize}, {"efx", SetEfx}};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Parses the command at the start of text into values; gives the length it took, 0 when the
// command is refused. A caret that starts no command stands for itself.
size_t ParseCommand(std::string_view text, bool& literal, CaretValues& values) {
  literal = true;
  if (text.size() > 1 && text[1] == '^') return 2;
  size_t open = 1;
  while (open < text.size() && IsLetter(text[open]))
    ++open;
  if (open == 1 || open == text.size() || text[open] != '(') return 1;
  size_t close = text.find(')', open);
  if (close == std::string_view::npos) return 1;
  literal = false;
  std::string_view name = text.substr(1, open - 1);
  std::string_view args = text.substr(open + 1, close - open - 1);
  for (const CaretCommand& command : kCaretCommands)
    if (command.Name == name && !command.Apply(args, values)) return 0;
  // Other commands (page numbers, titles and the like) set nothing that is asked for here.
  return close + 1;
}

void FillFontInfo(const FontEntry& font OSTIN_SHAPE_FontName(OSTIN_PTR_PARAM)) {
  *CharsetAndOS = font.CharsetAndOS;
  *PitchAndFamily = font.PitchAndFamily;
  *Text = font.Name;
}
} // namespace

int16_t GetRawText(int32_t tag, int16_t id, std::string* text) {
  OSTIN_FAULT_POINT("GetRawText");
  const std::string* found = Texts().FindRawText(tag, id);
  *text = found ? *found : std::string();
  return found ? 1 : 0;
}

int16_t SetRawText(int32_t tag, int16_t id, const std::string& text) {
  OSTIN_FAULT_POINT("SetRawText");
  if (id < 1) return 0;
  Texts().RawTexts[{tag, id}] = text;
  return 1;
}

int16_t FxFontNameToNum(const std::string& name) {
  OSTIN_FAULT_POINT("FxFontNameToNum");
  return Texts().FontNumber(name);
}

int16_t FxFontNumToName(int16_t num, std::string* name) {
  OSTIN_FAULT_POINT("FxFontNumToName");
  const FontEntry* font = Texts().FindFont(num);
  *name = font ? font->Name : std::string();
  return font ? 1 : 0;
}

int16_t FxParseCaretCommand(const std::string& text, int16_t* literalCaret, int32_t tag,
                            int16_t* font, int16_t* size, int16_t* efx, int32_t* value1,
                            int32_t* value2, int32_t* value3, int32_t* value4, std::string* rest) {
  OSTIN_FAULT_POINT("FxParseCaretCommand");
  // The tag chooses the host's text store; every store reads the commands alike.
  if (text.empty() || text[0] != '^') return 0;
  CaretValues values{font, size, efx, value1};
  bool literal = false;
  size_t taken = ParseCommand(text, literal, values);
  if (taken == 0) return 0;
  *literalCaret = literal ? -1 : 0;
  *rest = text.substr(taken);
  return 1;
}

int16_t CreateFontInfo(OSTIN_KEYP_K2) {
  OSTIN_FAULT_POINT("CreateFontInfo");
  // The host makes no font by number: it answers for a font its table holds.
  return *inci == 0 && Texts().FindFont(*cmper) ? 1 : 0;
}

int16_t LoadFontInfo(OSTIN_KEYV_K2 OSTIN_SHAPE_FontName(OSTIN_PTR_PARAM)) {
  OSTIN_FAULT_POINT("LoadFontInfo");
  const FontEntry* font = inci == 0 ? Texts().FindFont(cmper) : nullptr;
  if (!font) return 0;
  FillFontInfo(*font, CharsetAndOS, PitchAndFamily, Text);
  return 1;
}

int16_t NextFontInfo(OSTIN_KEYP_K2 OSTIN_SHAPE_FontName(OSTIN_PTR_PARAM)) {
  OSTIN_FAULT_POINT("NextFontInfo");
  // The first font after the key; every font stands at incidence 0.
  const auto& fonts = Texts().Fonts;
  auto it = *inci < 0 ? fonts.lower_bound(*cmper) : fonts.upper_bound(*cmper);
  if (it == fonts.end()) return 0;
  *cmper = it->first;
  *inci = 0;
  FillFontInfo(it->second, CharsetAndOS, PitchAndFamily, Text);
  return 1;
}
