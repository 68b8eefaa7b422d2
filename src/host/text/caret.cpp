#include "host/text/caret.h"

#include <string_view>

#include "host/bridge.h"
#include "host/text/fonts.h"
#include "host/text/text_failures.h"
#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr std::string_view kNoBreakSpace = "\u00A0";

enum class Insert { Text, Value, Control };

struct KnownInsert {
  std::string_view Command;
  Insert Kind;
  std::string_view Text;
};

constexpr KnownInsert kInserts[] = {
    {"^flat()", Insert::Text, "b"},
    {"^sharp()", Insert::Text, "#"},
    {"^natural()", Insert::Text, "-natural"},
    {"^doubleflat()", Insert::Text, "bb"},
    {"^doublesharp()", Insert::Text, "x"},
    {"^cprsym()", Insert::Text, "\u00A9"},
    {"^value()", Insert::Value, ""},
    {"^control()", Insert::Control, ""},
    {"^pass()", Insert::Text, ""},
    {"^prftime()", Insert::Text, ""},
    {"^totpages()", Insert::Text, ""},
};

std::string ValueOf(const KnownInsert& insert, const ExpressionValues* expression) {
  if (insert.Kind == Insert::Text) return std::string(insert.Text);
  if (!expression) return {};
  return std::to_string(insert.Kind == Insert::Value ? expression->Value : expression->Auxdata1);
}
} // namespace

std::string ConsumeCaretCommand(const std::string& text, bool& literalCaret, int32_t tag,
                                TextPortion& portion) {
  int16_t literal = 0;
  std::string rest;
  std::array<int32_t, 4>& values = portion.HostValues;
  std::string bytes = Utf8ToHost(text);
  // A call that takes nothing would never end a walk: it counts as refused.
  if (!FxParseCaretCommand(bytes, &literal, tag, &portion.Font, &portion.Size, &portion.Efx,
                           &values[0], &values[1], &values[2], &values[3], &rest) ||
      rest.size() >= bytes.size())
    throw Failure::Internal(text_failures::kParseCaretCommandRefused);
  literalCaret = literal != 0;
  return HostToUtf8(rest);
}

std::string InsertValue(const std::string& text, int& consumed,
                        const ExpressionValues* expression) {
  return Guarded("InsertValue error ", text_failures::kInsertValue, [&] {
    consumed = 0;
    size_t close = text.find(')');
    if (text.empty() || text[0] != '^' || close == std::string::npos) return std::string();
    std::string_view command = std::string_view(text).substr(0, close + 1);
    for (const KnownInsert& insert : kInserts) {
      if (insert.Command != command) continue;
      consumed = static_cast<int>(command.size());
      return ValueOf(insert, expression);
    }
    return std::string();
  });
}

std::string ParseCaretCommands(int32_t tag, const std::string& text) {
  return Guarded("ParseCaretCommands error ", text_failures::kParseCaretCommands, [&] {
    std::string out;
    std::string rest = text;
    TextPortion font;
    for (size_t caret = rest.find('^'); caret != std::string::npos; caret = rest.find('^')) {
      out += rest.substr(0, caret);
      rest.erase(0, caret);
      int consumed = 0;
      std::string value = InsertValue(rest, consumed);
      if (consumed > 0) {
        out += value;
        rest.erase(0, consumed);
        continue;
      }
      bool literal = false;
      rest = ConsumeCaretCommand(rest, literal, tag, font);
      if (literal) out += '^';
      // The document's EngraverFontSet shows its "I" as a blank that does not break.
      if (font.Font != 0 && font.Font == EngraverFontSetNumber() && !rest.empty() &&
          rest[0] == 'I') {
        out += kNoBreakSpace;
        rest.erase(0, 1);
      }
    }
    return out + rest;
  });
}

std::string SmartShapeText(const std::string& text) {
  return Guarded("SmartShapeText error ", text_failures::kSmartShapeText, [&] {
    std::string rest = text;
    TextPortion font;
    bool literal = false;
    while (!rest.empty() && rest[0] == '^')
      rest = ConsumeCaretCommand(rest, literal, kLineTextTag, font);
    bool plain = rest.find('^') == std::string::npos || rest.size() < 2;
    if (rest.empty() || !plain || !CheckFont(font.Font).IsText) return std::string();
    return rest;
  });
}

} // namespace ostin
