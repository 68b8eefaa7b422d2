#pragma once
// The host's code page, Windows-1252: the plug-in keeps UTF-8, the bridge carries bytes.
#include <string>

namespace ostin {

// UTF-8 to Windows-1252; a character the code page lacks becomes "?".
std::string Utf8ToHost(const std::string& utf8);
// Windows-1252 to UTF-8.
std::string HostToUtf8(const std::string& bytes);

} // namespace ostin
