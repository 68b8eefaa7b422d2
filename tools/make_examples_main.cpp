// ostin-make-examples: writes the sample documents of data/examples.
#include <filesystem>
#include <iostream>
#include <string>

#include "sim/document.h"
#include "tools/examples.h"
#include "tools/score_builder.h"

namespace {
constexpr const char* kUsage = R"(Usage: ostin-make-examples [-o DIR]

Writes the sample documents (piano.json, transposing.json, percussion.json, repeats.json,
pickup.json) into DIR, data/examples by default.
)";
} // namespace

int main(int argc, char** argv) {
  std::string folder = "data/examples";
  for (int i = 1; i < argc; ++i) {
    std::string argument = argv[i];
    if ((argument == "-o" || argument == "--output") && i + 1 < argc) {
      folder = argv[++i];
    } else if (argument == "-h" || argument == "--help") {
      std::cout << kUsage;
      return 0;
    } else {
      std::cerr << "ostin-make-examples: unknown argument \"" << argument << "\"\n" << kUsage;
      return 2;
    }
  }
  try {
    std::filesystem::create_directories(folder);
    for (const ostin::tools::Example& example : ostin::tools::Examples()) {
      std::string path = (std::filesystem::path(folder) / example.FileName).string();
      example.Make().SaveFile(path);
      std::cout << "wrote " << path << " (" << example.Holds << ")\n";
    }
  } catch (const std::exception& e) {
    std::cerr << "ostin-make-examples: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
