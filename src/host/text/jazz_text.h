#pragma once
// The Jazz text fonts draw some letters and signs at codes of their own; these give the text
// they stand for.
#include <string>

namespace ostin {

// JazzText: letters, digits and a few signs are kept; the boxed letters (a text of one such
// character) give their letter and set rehearsal.
std::string JazzTextStrip(const std::string& text, bool& rehearsal);
// JazzTextExtended: letters are kept, accented letters re-coded.
std::string JazzTextExtendedStrip(const std::string& text);

} // namespace ostin
