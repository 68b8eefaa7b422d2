#pragma once
// The message table in its three languages, and the two text services on it.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/language.h"

namespace ostin {

// The product web page: the about box opens it, messages 125 and 209 name it.
inline constexpr char kProductWebPage[] = "http://www.calvimora.com/ostinlight";

// Row `id` of the message table in the running language.
std::string MessageText(int32_t id);

// The message in the running language with its placeholders filled; args[0] is "%1".
std::string FormatResString(int32_t id, const std::vector<std::string>& args = {});

// Fills "%1", "%2", ... in turn; stops at the first placeholder the text does not hold.
std::string FormatString(const std::string& text, const std::vector<std::string>& args);

} // namespace ostin
