// The head of the exported score: movement title and identification, and the font tables.
#include <algorithm>
#include <cctype>

#include "export/to_xml.h"
#include "host/bridge.h"
#include "host/handmade_records.h"
#include "host/text/fonts.h"
#include "platform/window_system.h"
#include "shell/failure.h"
#include "shell/messages.h"

namespace ostin {

namespace {
constexpr int32_t kUserCancelled = Code(0x80040343);
constexpr int32_t kInitializeHeaderHandler = Code(0x80040507);
constexpr int32_t kInitializeLocalesHandler = Code(0x800407C0);
constexpr int kQuestionYesNo = 36;
constexpr size_t kFontTableStep = 100;

std::string Padded(int value, size_t width) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return value < 0 ? "-" + digits : digits;
}

std::string SoftwareName(int32_t year) {
  if (year >= 2000 && year <= 2004) return "Finale " + std::to_string(year) + " for Windows";
  return "Finale for Windows";
}
} // namespace

void ToXml::InitializeHeader() {
  Guarded("ToXml InitializeHeader error ", kInitializeHeaderHandler, [&] {
    xml::XmlNode identification = Element("identification");
    Header header;
    bool found = FinaleVersion > 2000 && LoadHeader(header);
    if (FinaleVersion > 2000 && !found) AskForUnsavedDocument();
    if (found) {
      if (!header.Title.empty()) root_.appendChild(Element("movement-title", header.Title));
      if (!header.Composer.empty()) {
        xml::XmlNode creator = identification.appendChild(Element("creator", header.Composer));
        creator.setAttribute("type", "composer");
      }
      if (!header.UserCopyright.empty())
        identification.appendChild(Element("rights", header.UserCopyright));
    }
    xml::XmlNode encoding = Element("encoding");
    encoding.appendChild(Element("software", SoftwareName(FinaleVersion)));
    if (FinaleVersion > 2000) {
      int16_t year = found ? header.ModifiedYear : 0;
      int16_t month = found ? header.ModifiedMonth : 0;
      int16_t day = found ? header.ModifiedDay : 0;
      encoding.appendChild(Element("encoding-date", Padded(year, 4) + "-" + Padded(month, 2) + "-" +
                                                        Padded(day, 2)));
    }
    identification.appendChild(encoding);
    root_.appendChild(identification);
  });
}

// A document that was never saved has no header for the program.
bool ToXml::LoadHeader(Header& header) {
  return header.Load();
}

// Asks whether to go on without title, composer and copyright; No ends the run as a cancel.
void ToXml::AskForUnsavedDocument() {
  std::string text =
      FormatResString(182) + "\r\n" + FormatResString(183) + "\r\n" + FormatResString(184);
  int answer = platform::Windows().MessageBox(text, FormatResString(181), kQuestionYesNo);
  if (answer != platform::kIdYes)
    throw Failure(kUserCancelled, std::string(kPlugInSource), FormatResString(185));
}

void ToXml::InitializeLocales() {
  Guarded("ToXml InitializeLocales error ", kInitializeLocalesHandler, [&] {
    FontLocales.assign(kFontTableStep + 1, 0);
    FontLanguages.assign(kFontTableStep + 1, std::string());
    int16_t last = 0;
    FontName font;
    for (int16_t number = 0;; ++number) {
      // A document may number its fonts from 1: only a gap after font 0 ends the walk.
      if (!font.Load(number, 0)) {
        if (number == 0) continue;
        break;
      }
      if (static_cast<size_t>(number) >= FontLocales.size()) {
        FontLocales.resize(FontLocales.size() + kFontTableStep, 0);
        FontLanguages.resize(FontLanguages.size() + kFontTableStep);
      }
      FontLocales[number] = font.Locale;
      FontLanguages[number] = font.Language;
      last = number;
    }
    FontLocales.resize(last + 1);
    FontLanguages.resize(last + 1);
  });
}

} // namespace ostin
