#pragma once
// Number helpers shared by the arithmetic: rounding and reading numbers from element text.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "xml/xml_node.h"

namespace ostin {

// Nearest integer, halves to the even neighbour.
int32_t RoundHalfEven(double value);

// The value of a numeric text (blanks around it allowed), or nothing when it is not a number.
std::optional<double> NumericValue(std::string_view text);

// A numeric text as a 16-bit integer, rounded halves to even; a text that is not a number or
// a value out of range raises a foreign failure, for the caller's handler.
int16_t Integer16(std::string_view text);

// A text without blanks around it, in lower case.
std::string TrimmedLower(std::string_view text);

// The first child element of that name, or an empty node.
xml::XmlNode ChildElement(const xml::XmlNode& element, std::string_view name);

// The text of the first child element of that name, or nothing when there is none.
std::optional<std::string> ChildText(const xml::XmlNode& element, const std::string& name);

} // namespace ostin
