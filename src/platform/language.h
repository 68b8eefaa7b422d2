#pragma once
// The running language of the system, by which string resources are looked up.
#include <cstdint>
#include <string>

namespace ostin {

inline constexpr int32_t kLanguageMain = 1033; // the main table: Russian and English rows
inline constexpr int32_t kLanguageGerman = 1031;
inline constexpr int32_t kLanguageItalian = 1040;

// The running language, as the system's resource lookup would take it.
void SetLanguage(int32_t language);
int32_t CurrentLanguage();
// The language named by LC_ALL, LC_MESSAGES or LANG: "de..." German, "it..." Italian, else main.
int32_t LanguageFromEnvironment();
// The language for a name given on the command line ("ru", "en", "de", "it" or a number).
// Gives 0 for a name it does not know.
int32_t LanguageFromName(const std::string& name);

} // namespace ostin
