#include "host/name_text.h"

#include "host/text/caret.h"
#include "host/text/text_block.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr const char* kNameFont = "^font(Times New Roman,8192)^size(12)^efx(plain)";
}

std::string NameText::Get(int32_t version, int16_t block, const NameTextPlaces& places) {
  return Guarded("NameText Get error ", places.Get, [&] {
    if (cached_) return value_;
    TextBlock text;
    text.FinaleVersion = version;
    value_ = block != 0 && text.Load(block, 0) ? ParseCaretCommands(text.TextTag, text.Text)
                                               : std::string();
    cached_ = true;
    return value_;
  });
}

int16_t NameText::Let(int32_t version, int16_t block, const std::string& value,
                      const NameTextPlaces& places) {
  return Guarded("NameText Let error ", places.Let, [&]() -> int16_t {
    if (cached_ && value == value_) return block;
    cached_ = true;
    value_ = value;
    if (value.empty()) return 0;
    TextBlock text;
    text.FinaleVersion = version;
    text.Create(-1, 0);
    text.TextTag = kNameTextTag;
    text.TextID = -1;
    text.Text = kNameFont + value;
    text.Save();
    return text.Cmper();
  });
}

} // namespace ostin
