#include "host/text/jazz_text.h"

#include <string_view>

#include "host/text/text_failures.h"
#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

namespace {
struct CodeRange {
  unsigned char First, Last;
};

constexpr CodeRange kLetters[] = {{32, 90}, {97, 122}};
constexpr CodeRange kJazzTextKept[] = {{32, 90}, {97, 122}, {169, 169}, {174, 174}, {188, 190}};

constexpr unsigned char kFirstDigit = 191, kLastDigit = 200;
constexpr unsigned char kFirstBoxedLetter = 216, kLastBoxedLetter = 241;

struct Recoded {
  unsigned char Code;
  std::string_view Text;
};

constexpr Recoded kJazzTextExtended[] = {
    {128, "Ä"}, {129, "Å"}, {130, "Ç"}, {131, "É"}, {132, "Ñ"}, {133, "Ö"}, {134, "Ü"},
    {135, "á"}, {136, "å"}, {137, "â"}, {138, "ä"}, {139, "ã"}, {140, "å"}, {141, "ç"},
    {144, "ê"}, {145, "ë"}, {150, "ñ"}, {151, "ó"}, {153, "ô"}, {154, "ö"}, {155, "õ"},
    {156, "ú"}, {158, "û"}, {159, "ü"}, {168, "©"}, {169, "©"}, {203, "Å"}, {204, "Ã"},
    {205, "Õ"}, {216, "ÿ"}, {229, "Â"}, {230, "Ê"}, {231, "Á"}, {232, "Ë"}, {234, "Í"},
    {235, "Î"}, {236, "Ï"}, {238, "Ó"}, {239, "Ô"}, {242, "Ú"}, {243, "Û"},
};

template <size_t N> bool InRanges(unsigned char c, const CodeRange (&ranges)[N]) {
  for (const CodeRange& range : ranges)
    if (c >= range.First && c <= range.Last) return true;
  return false;
}
} // namespace

std::string JazzTextStrip(const std::string& text, bool& rehearsal) {
  return Guarded("JazzTextStrip error ", text_failures::kJazzTextStrip, [&] {
    rehearsal = false;
    std::string bytes = Utf8ToHost(text);
    std::string out;
    for (unsigned char c : bytes) {
      if (InRanges(c, kJazzTextKept))
        out += static_cast<char>(c);
      else if (c >= kFirstDigit && c <= kLastDigit)
        out += static_cast<char>('0' + (c - kFirstDigit));
    }
    auto only = bytes.size() == 1 ? static_cast<unsigned char>(bytes[0]) : 0;
    if (out.empty() && only >= kFirstBoxedLetter && only <= kLastBoxedLetter) {
      out = static_cast<char>('A' + (only - kFirstBoxedLetter));
      rehearsal = true;
    }
    return HostToUtf8(out);
  });
}

std::string JazzTextExtendedStrip(const std::string& text) {
  return Guarded("JazzTextExtendedStrip error ", text_failures::kJazzTextExtendedStrip, [&] {
    std::string out;
    for (unsigned char c : Utf8ToHost(text)) {
      if (InRanges(c, kLetters)) {
        out += static_cast<char>(c);
        continue;
      }
      for (const Recoded& recoded : kJazzTextExtended)
        if (recoded.Code == c) out += recoded.Text;
    }
    return out;
  });
}

} // namespace ostin
