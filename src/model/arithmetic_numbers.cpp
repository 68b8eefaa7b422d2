#include "model/arithmetic_numbers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace ostin {

int32_t RoundHalfEven(double value) {
  double whole = std::floor(value);
  double rest = value - whole;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
  return static_cast<int32_t>(whole);
}

std::optional<double> NumericValue(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
  if (text.front() == '+') text.remove_prefix(1);
  if (text.empty() || text.front() == '+') return std::nullopt;
  double value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

int16_t Integer16(std::string_view text) {
  std::optional<double> value = NumericValue(text);
  if (!value) throw std::invalid_argument("Type mismatch");
  if (*value < std::numeric_limits<int16_t>::min() - 0.5 ||
      *value >= std::numeric_limits<int16_t>::max() + 0.5)
    throw std::overflow_error("Overflow");
  return static_cast<int16_t>(RoundHalfEven(*value));
}

std::string TrimmedLower(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  std::string result(text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1));
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

xml::XmlNode ChildElement(const xml::XmlNode& element, std::string_view name) {
  return element.firstChildElement(name);
}

std::optional<std::string> ChildText(const xml::XmlNode& element, const std::string& name) {
  // A plain name is found among the children directly; a path goes through XPath.
  const bool plain = name.find_first_of("/[@:*|.()") == std::string::npos;
  xml::XmlNode child = plain ? ChildElement(element, name) : element.selectSingleNode(name);
  if (!child) return std::nullopt;
  return child.text();
}

} // namespace ostin
