#include "host/text/text_portion.h"

#include <string_view>

#include "host/text/fonts.h"
#include "host/text/jazz_text.h"
#include "host/text/text_failures.h"
#include "shell/failure.h"

namespace ostin {

namespace {
// The portion at a count from 1, made when the count first reaches it.
TextPortion& At(std::vector<TextPortion>& portions, int16_t count) {
  if (portions.size() < static_cast<size_t>(count)) portions.resize(count);
  return portions[count - 1];
}

// A new portion starts in the font of the one before.
TextPortion StartAfter(const TextPortion& before) {
  TextPortion next;
  next.Font = before.Font;
  next.Size = before.Size;
  next.Efx = before.Efx;
  next.HostValues = before.HostValues;
  return next;
}

// Walks the text; gives the portion count. Text waits in pending until a command or the end
// closes its portion.
int16_t SplitPortions(std::vector<TextPortion>& portions, const std::string& text, int32_t tag,
                      const ExpressionValues* expression) {
  int16_t count = !text.empty() && text[0] != '^' ? 1 : 0;
  std::string pending;
  std::string rest = text;
  auto store = [&] {
    if (count == 0) count = 1;
    At(portions, count).Text = pending;
  };
  while (!rest.empty()) {
    size_t caret = rest.find('^');
    pending += rest.substr(0, caret);
    rest.erase(0, caret);
    int consumed = 0;
    std::string value = InsertValue(rest, consumed, expression);
    if (consumed > 0) {
      pending += value;
      rest.erase(0, consumed);
      continue;
    }
    if (!pending.empty()) {
      store();
      pending.clear();
      if (rest.empty()) break;
      portions.push_back(StartAfter(portions[count - 1]));
      ++count;
    }
    if (count == 0) count = 1;
    bool literal = false;
    rest = ConsumeCaretCommand(rest, literal, tag, At(portions, count));
    if (literal) pending += '^'; // pending is empty here
  }
  if (!pending.empty()) store();
  portions.resize(count);
  return count;
}

// Names and classes each portion by its font, drops hidden text, and counts the portions
// with text.
void ClassifyPortions(std::vector<TextPortion>& portions, int16_t& plain, int16_t& music) {
  plain = 0;
  music = 0;
  for (TextPortion& portion : portions) {
    portion.FontName = FontNameOf(portion.Font);
    FontClass kind = ClassOfFont(portion.FontName);
    portion.IsMusic = kind.IsMusic;
    portion.IsMusicText = kind.IsMusicText;
    portion.IsText = kind.IsText;
    if (portion.Efx & kEfxHidden) portion.Text.clear();
    if (portion.Text.empty()) continue;
    ++(portion.IsText ? plain : music);
  }
}

struct LanguageLetters {
  std::string_view Lang;
  std::string_view Letters; // two bytes of UTF-8 each
};

constexpr LanguageLetters kLanguageLetters[] = {
    {"de", "öäüßÖÄÜ"},
    {"fr", "èéçÈÉÇ"},
    {"es", "ñÑ"},
};
} // namespace

int16_t ParseTextPortions(std::vector<TextPortion>& portions, const std::string& text, int32_t tag,
                          int16_t& plain, int16_t& music, const ExpressionValues* expression) {
  return Guarded("ParseTextPortions error ", text_failures::kParseTextPortions, [&] {
    portions.clear();
    int16_t count = SplitPortions(portions, text, tag, expression);
    ClassifyPortions(portions, plain, music);
    return count;
  });
}

PortionData TextPortionData(const TextPortion& portion) {
  return Guarded("TextPortionData error ", text_failures::kTextPortionData, [&] {
    PortionData data;
    if (portion.FontName == "JazzText")
      data.Text = JazzTextStrip(portion.Text, data.Rehearsal);
    else if (portion.FontName == "JazzTextExtended")
      data.Text = JazzTextExtendedStrip(portion.Text);
    else
      data.Text = portion.Text;
    data.Bold = (portion.Efx & kEfxBold) != 0;
    data.Italic = (portion.Efx & kEfxItalic) != 0;
    data.Lang = LanguageCheckWestern(data.Text);
    return data;
  });
}

std::string LanguageCheckWestern(const std::string& text) {
  for (const LanguageLetters& language : kLanguageLetters)
    for (size_t i = 0; i < language.Letters.size(); i += 2)
      if (text.find(language.Letters.substr(i, 2)) != std::string::npos)
        return std::string(language.Lang);
  return {};
}

} // namespace ostin
