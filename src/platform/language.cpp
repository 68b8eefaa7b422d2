#include "platform/language.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace ostin {

namespace {

// 0 until set: the first question takes the environment's language.
int32_t gLanguage = 0;

struct NamedLanguage {
  std::string_view Name;
  int32_t Language;
};

// Names a user may give on the command line.
constexpr NamedLanguage kLanguageNames[] = {
    {"ru", kLanguageMain},    {"en", kLanguageMain},      {"main", kLanguageMain},
    {"1033", kLanguageMain},  {"de", kLanguageGerman},    {"1031", kLanguageGerman},
    {"it", kLanguageItalian}, {"1040", kLanguageItalian},
};

// Locale prefixes that choose a table other than the main one.
constexpr NamedLanguage kLocalePrefixes[] = {
    {"de", kLanguageGerman},
    {"it", kLanguageItalian},
};

// The locale variables in the order the C library consults them.
constexpr const char* kLocaleVariables[] = {"LC_ALL", "LC_MESSAGES", "LANG"};

} // namespace

void SetLanguage(int32_t language) {
  gLanguage = language;
}

int32_t CurrentLanguage() {
  if (gLanguage == 0) gLanguage = LanguageFromEnvironment();
  return gLanguage;
}

int32_t LanguageFromEnvironment() {
  std::string_view locale;
  for (const char* variable : kLocaleVariables) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') {
      locale = value;
      break;
    }
  }
  for (const auto& prefix : kLocalePrefixes) {
    if (locale.starts_with(prefix.Name)) return prefix.Language;
  }
  return kLanguageMain;
}

int32_t LanguageFromName(const std::string& name) {
  const auto* named = std::ranges::find(kLanguageNames, name, &NamedLanguage::Name);
  return named != std::end(kLanguageNames) ? named->Language : 0;
}

} // namespace ostin
