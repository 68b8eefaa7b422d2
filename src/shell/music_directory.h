#pragma once
// The host's music folder, where the error log lives and where the dialogs start.
#include <string>

namespace ostin {

// Hosts before 2003: key "MusicDir" of section "Directories" of the host's settings file;
// 2003 and later: FxGetFinalePath(3).
std::string DefaultMusicDirectory();

// GetPrivateProfileString: the value of a key in a section of an ini file, or `fallback`.
std::string GetPrivateProfileString(const std::string& section, const std::string& key,
                                    const std::string& fallback, const std::string& file);

} // namespace ostin
