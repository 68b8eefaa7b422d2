#include "platform/code_page.h"

#include <array>
#include <cstdint>

namespace ostin {

namespace {
// Code points of bytes 0x80 to 0x9F; 0 where the code page has no character.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t ByteToCodePoint(unsigned char b) {
  if (b >= 0x80 && b < 0xA0) return kHigh[b - 0x80] ? kHigh[b - 0x80] : b;
  return b;
}

int CodePointToByte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
  // The five bytes the code page leaves undefined stand for themselves.
  if (c >= 0x80 && c < 0xA0 && kHigh[c - 0x80] == 0) return static_cast<int>(c);
  for (size_t i = 0; i < kHigh.size(); ++i)
    if (kHigh[i] == c) return static_cast<int>(0x80 + i);
  return '?';
}

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// Decodes one UTF-8 character at `i` and moves past it; a broken sequence gives one byte.
char32_t NextCodePoint(const std::string& s, size_t& i) {
  unsigned char b = static_cast<unsigned char>(s[i]);
  int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : 0;
  if (extra == 0 || i + extra >= s.size()) {
    ++i;
    return extra == 0 ? b : U'?';
  }
  char32_t c = b & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) {
    unsigned char n = static_cast<unsigned char>(s[i + k]);
    if ((n & 0xC0) != 0x80) {
      ++i;
      return U'?';
    }
    c = (c << 6) | (n & 0x3F);
  }
  i += extra + 1;
  return c;
}
} // namespace

std::string Utf8ToHost(const std::string& utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();)
    out += static_cast<char>(CodePointToByte(NextCodePoint(utf8, i)));
  return out;
}

std::string HostToUtf8(const std::string& bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (unsigned char b : bytes)
    AppendUtf8(out, ByteToCodePoint(b));
  return out;
}

} // namespace ostin
