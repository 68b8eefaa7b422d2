#pragma once
// A scratch folder and a document loader shared by the XML service tests.
#include "shell/failure.h"
#include "xml/xml_document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <tuple>

namespace ostin::xml::test_support {

// A fresh folder under the system's temporary folder, removed with everything in it.
class TempFolder {
public:
  TempFolder() { std::filesystem::create_directories(path_); }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string Write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
  }
  static std::string Read(const std::string& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
  }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

private:
  std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                ("ostin-xml-" + std::to_string(std::random_device{}()));
};

// A document with the settings given, after loadXML of text (which must succeed).
inline std::shared_ptr<XmlDocument> Loaded(const std::string& text, bool preserveWhiteSpace = false,
                                           bool resolveExternals = false) {
  auto doc = XmlDocument::Create();
  doc->preserveWhiteSpace = preserveWhiteSpace;
  doc->resolveExternals = resolveExternals;
  EXPECT_TRUE(doc->loadXML(text)) << doc->parseError().reason;
  return doc;
}

// Runs body and returns the Failure it raised (number 0 when it raised none).
template <class Body> Failure Raised(Body body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  return Failure(0, "", "");
}

// Number, source and description of a failure, to compare as one.
inline std::tuple<int32_t, std::string, std::string> Said(const Failure& failure) {
  return {failure.Number, failure.Source, failure.Description};
}

} // namespace ostin::xml::test_support
