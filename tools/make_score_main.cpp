// ostin-make-score: writes a generated score of any size as a document of the stand-in.
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>

#include "sim/document.h"
#include "tools/score_builder.h"
#include "tools/score_generator.h"

namespace {
constexpr const char* kUsage = R"(Usage: ostin-make-score --staves N --measures M [--seed S] -o FILE

Writes a generated score of N staves and M measures (chords, rests, ties, two layers on
every third staff, a second voice on others, clef and transposition by staff, key and
time changes) to FILE. The
same arguments always give the same file. Defaults: 4 staves, 16 measures, seed 1.
)";

[[noreturn]] void Usage(const std::string& text) {
  std::cerr << "ostin-make-score: " << text << "\n" << kUsage;
  std::exit(2);
}

long Number(const std::string& option, const char* text, long low, long high) {
  long value = 0;
  std::string_view view(text);
  auto [end, error] = std::from_chars(view.data(), view.data() + view.size(), value);
  if (error != std::errc() || end != view.data() + view.size() || value < low || value > high)
    Usage(option + " needs a number from " + std::to_string(low) + " to " + std::to_string(high));
  return value;
}
} // namespace

int main(int argc, char** argv) {
  ostin::tools::ScoreSize size;
  std::string output;
  constexpr long kMost = std::numeric_limits<int16_t>::max();
  for (int i = 1; i < argc; ++i) {
    std::string option = argv[i];
    if (option == "-h" || option == "--help") {
      std::cout << kUsage;
      return 0;
    }
    if (i + 1 >= argc) Usage("unknown argument or missing value: \"" + option + "\"");
    const char* value = argv[++i];
    if (option == "--staves")
      size.Staves = static_cast<int16_t>(Number(option, value, 1, kMost));
    else if (option == "--measures")
      size.Measures = static_cast<int16_t>(Number(option, value, 1, kMost));
    else if (option == "--seed")
      size.Seed =
          static_cast<uint32_t>(Number(option, value, 0, std::numeric_limits<int32_t>::max()));
    else if (option == "-o" || option == "--output")
      output = value;
    else
      Usage("unknown option \"" + option + "\"");
  }
  if (output.empty()) Usage("-o FILE is needed");
  try {
    ostin::tools::GenerateScore(size).SaveFile(output);
  } catch (const std::exception& e) {
    std::cerr << "ostin-make-score: " << e.what() << "\n";
    return 1;
  }
  std::cout << "wrote " << output << "\n";
  return 0;
}
