#include "host/text/raw_text.h"

#include "host/bridge.h"
#include "host/text/text_failures.h"
#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

std::string ReadRawText(int32_t tag, int16_t id) {
  return Guarded("ReadRawText error ", text_failures::kReadRawText, [&] {
    std::string bytes;
    GetRawText(tag, id, &bytes);
    return HostToUtf8(bytes);
  });
}

void WriteRawText(int32_t tag, int16_t id, const std::string& text) {
  Guarded("WriteRawText error ", text_failures::kWriteRawText, [&] {
    if (!SetRawText(tag, id, Utf8ToHost(text)))
      RaiseLogged("Finale SetRawText function call failed", text_failures::kSetRawTextRefused);
  });
}

} // namespace ostin
