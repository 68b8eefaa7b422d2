#include "shell/messages.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "shell/failure.h"
#include "shell/message_table.h"

namespace ostin {

namespace {

constexpr int32_t kFormatStringError = Code(0x80040696);
constexpr int32_t kFormatResStringError = Code(0x80040697);

bool SameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// Position of `what` in `text` from `from` on, ignoring case; npos where it is absent.
size_t FindNoCase(std::string_view text, std::string_view what, size_t from) {
  auto found = std::search(text.begin() + from, text.end(), what.begin(), what.end(), SameLetter);
  return found == text.end() ? std::string_view::npos : static_cast<size_t>(found - text.begin());
}

} // namespace

std::string MessageText(int32_t id) {
  const MessageRow* row = FindMessageRow(id);
  if (row == nullptr) return {};
  const char* text = TextIn(*row, CurrentLanguage());
  // A row that the running language's table lacks reads as the main table's row.
  return text != nullptr ? text : row->Main;
}

std::string FormatResString(int32_t id, const std::vector<std::string>& args) {
  return Guarded("FormatResString error ", kFormatResStringError,
                 [&] { return FormatString(MessageText(id), args); });
}

std::string FormatString(const std::string& text, const std::vector<std::string>& args) {
  return Guarded("FormatString error ", kFormatStringError, [&] {
    std::string result = text;
    for (size_t i = 0; i < args.size(); ++i) {
      // Appended, not "%" + number: GCC 12 at -O3 flags that form with a false -Wrestrict.
      std::string placeholder = "%";
      placeholder += std::to_string(i + 1);
      size_t at = FindNoCase(result, placeholder, 0);
      if (at == std::string::npos) break;
      // Each place is filled once: the scan goes on after the argument just put in.
      while (at != std::string::npos) {
        result.replace(at, placeholder.size(), args[i]);
        at = FindNoCase(result, placeholder, at + args[i].size());
      }
    }
    return result;
  });
}

} // namespace ostin
