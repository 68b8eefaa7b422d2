#pragma once
// Host tests with a document of the data folder open, and checks of what a call raised.
#include <functional>
#include <string>
#include <tuple>

#include "../support/host_test.h"
#include "platform/code_page.h"
#include "sim/document.h"
#include "sim/record_store.h"

namespace ostin::testing {

// Runs act and gives the number of the program's own failure it raises; 0 when it raises none.
inline int32_t FailureOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.IsOwn()) << failure.Source;
    EXPECT_EQ(failure.Description, kInternalError);
    return failure.Number;
  }
  return 0;
}

// Writes fields of a record straight into the open document, making the record if it is new:
// (field, element, value).
inline void Put(const char* className, sim::RecordKey key,
                std::initializer_list<std::tuple<const char*, int, int32_t>> fields) {
  sim::Document& doc = sim::Host::Instance().Doc();
  const sim::RecordShape& shape = sim::ShapeOf(className);
  sim::StoredRecord& row =
      doc.Table(shape).Rows.try_emplace(key, doc.NewRecord(shape)).first->second;
  for (const auto& [name, index, value] : fields)
    row.at(shape.FieldIndex(name)).Numbers.at(index) = value;
}

// What a document with this section is refused with; empty when it is taken.
inline std::string RefusalOf(const char* section, const std::string& json) {
  try {
    sim::Document::FromJson({{"format", "ostin-document"}, {section, nlohmann::json::parse(json)}});
  } catch (const sim::DocumentError& error) {
    return error.what();
  }
  return "";
}

// A record that makes the calls of that host year.
template <class R> R OfYear(int32_t year) {
  R record;
  if constexpr (requires { record.SetFinaleVersion(year); })
    record.SetFinaleVersion(year);
  else
    record.FinaleVersion = year;
  return record;
}

// UTF-8 text of host code page bytes, for characters given by their codes.
inline std::string FromCodes(std::initializer_list<unsigned char> codes) {
  return HostToUtf8(std::string(codes.begin(), codes.end()));
}

template <const char* kDocument> class OpenDocumentTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData(kDocument);
  }
  bool Logged(const std::string& text) const { return Log().find(text) != std::string::npos; }
  // Runs act on an empty error log; it must raise the program's own failure with that number
  // and log that text.
  void ExpectRaised(const std::function<void()>& act, int32_t number, const std::string& logged) {
    ResetLogForTests();
    std::filesystem::remove(Path("error.log"));
    SetLogPath(Path("error.log"));
    EXPECT_EQ(FailureOf(act), number) << logged;
    EXPECT_TRUE(Logged(logged)) << Log();
  }
};

// The sample score (staves 1 and 2 in slots 1 and 2, four measures of 4/4), and the default
// new document, which holds the default fonts.
inline constexpr char kSample[] = "sample.json";
inline constexpr char kDefaultDocument[] = "default-document.json";
using SampleTest = OpenDocumentTest<kSample>;
using DefaultDocumentTest = OpenDocumentTest<kDefaultDocument>;

} // namespace ostin::testing
