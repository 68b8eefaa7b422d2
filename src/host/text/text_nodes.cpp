#include "host/text/text_nodes.h"

#include "host/text/text_failures.h"
#include "shell/failure.h"

namespace ostin {

namespace {
// The place after `count` UTF-8 characters from `from`.
size_t AfterCharacters(const std::string& text, size_t from, int count) {
  size_t i = from;
  for (int n = 0; n < count && i < text.size(); ++n) {
    ++i;
    while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80)
      ++i;
  }
  return i;
}
} // namespace

void AddTextNodes(const xml::XmlDocument& document, const xml::XmlNode& parent,
                  const std::string& text, int32_t locale) {
  Guarded("AddTextNodes error ", text_failures::kAddTextNodes, [&] {
    if (locale == 0) {
      parent.appendChild(document.createTextNode(text));
      return;
    }
    for (size_t i = 0; i < text.size();) {
      size_t end = AfterCharacters(text, i, 2);
      parent.appendChild(document.createTextNode(text.substr(i, end - i)));
      i = end;
    }
  });
}

} // namespace ostin
