#pragma once
// Shared set-up of the score model tests: a host with a data document open, scores of one
// part built from text, and files of the public test suite.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"

namespace ostin::model_test {

using xml::test_support::Loaded;
using xml::test_support::Raised;

// Values of any integral kinds as one list, to compare several results at once.
template <class... T> std::vector<int> V(T... values) {
  return {static_cast<int>(values)...};
}

// Values as one text, spaced: "1 0 -3".
inline std::string Joined(const std::vector<int>& values) {
  std::string text;
  for (int value : values)
    text += (text.empty() ? "" : " ") + std::to_string(value);
  return text;
}

// The root element of a text, or an empty node for an empty text.
inline xml::XmlNode Element(const std::string& text) {
  return text.empty() ? xml::XmlNode() : Loaded(text)->documentElement();
}

// A score of one part P1 from its score-part content and its measures.
inline std::shared_ptr<xml::XmlDocument> OnePart(const std::string& scorePart,
                                                 const std::string& measures) {
  return Loaded("<score-partwise><part-list><score-part id='P1'>" + scorePart +
                "</score-part></part-list><part id='P1'>" + measures + "</part></score-partwise>");
}

// A file of the test suite, or null when the suite is not there.
inline std::shared_ptr<xml::XmlDocument> Corpus(const std::string& name) {
  const std::filesystem::path file = std::filesystem::path(OSTIN_CORPUS_DIR) / name;
  if (!std::filesystem::exists(file)) return nullptr;
  return Loaded(xml::test_support::TempFolder::Read(file.string()));
}

// A record made, or loaded, at cmper and inci, changed and saved.
template <class Record, class Change> Record Make(int16_t cmper, int16_t inci, Change change) {
  Record record;
  record.Create(cmper, inci);
  change(record);
  record.Save();
  return record;
}
template <class Record, class Change> void Rewrite(int16_t cmper, int16_t inci, Change change) {
  Record record;
  ASSERT_TRUE(record.Load(cmper, inci)) << cmper;
  change(record);
  record.Save();
}

#define OSTIN_NEED_CORPUS(doc, name)                                                               \
  auto doc = Corpus(name);                                                                         \
  if (!doc) GTEST_SKIP() << "corpus file " << name << " not found in " OSTIN_CORPUS_DIR

// A host test with a document of the data folder open; Reopen starts again on a fresh host.
class ModelTest : public testing::HostTest {
protected:
  explicit ModelTest(std::string data = "default-document.json") : data_(std::move(data)) {}
  void SetUp() override {
    HostTest::SetUp();
    OpenData(data_);
  }
  void Reopen() {
    HostSim().Reset();
    OpenData(data_);
  }

private:
  std::string data_;
};

} // namespace ostin::model_test
