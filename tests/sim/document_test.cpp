#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "../support/host_test.h"
#include "sim/document.h"
#include "sim/document_text.h"

namespace ostin::sim {
namespace {

using testing::HostTest;

class DocumentTest : public HostTest {};

TEST_F(DocumentTest, SavedAndLoadedDocumentIsTheSameByteForByte) {
  Document first = Document::LoadFile(DataFile("sample.json"));
  first.SaveFile(Path("one.json"));
  Document second = Document::LoadFile(Path("one.json"));
  second.SaveFile(Path("two.json"));
  EXPECT_EQ(Read(Path("one.json")), Read(Path("two.json")));
  EXPECT_EQ(first.ToJson(), second.ToJson());
  EXPECT_FALSE(std::filesystem::exists(Path("one.json.tmp-ostin")));
}

TEST_F(DocumentTest, TextKeepsItsCharactersThroughTheHostCodePage) {
  Document doc = Document::LoadFile(DataFile("default-document.json"));
  doc.Title = "Étude für Ŝ";
  nlohmann::json json = doc.ToJson();
  EXPECT_EQ(Document::FromJson(json).Title, "Étude für Ŝ");
}

TEST_F(DocumentTest, DocumentsThatDoNotFitAreRefusedWithWhatAndWhere) {
  struct Case {
    std::string Json;
    std::string Says;
  };
  const std::string head = R"({"format":"ostin-document","records":)";
  const Case cases[] = {
      {R"({"format":"something else"})", "not a document of Ostin Light"},
      {R"({"format":"ostin-document","finaleVersion":1999})", "finaleVersion"},
      {head + R"({"Nonsense":[]}})", "unknown record type \"Nonsense\""},
      {head + R"({"Settings12":[{"key":[-2,0],"Colour":1}]}})",
       "record Settings12 [-2, 0]: unknown field \"Colour\""},
      {head + R"({"Settings12":[{"key":[-2,0],"Symbol8va":40000}]}})",
       "field Symbol8va: not a 16-bit number"},
      {head + R"({"InstrumentUsed":[{"key":[0,0],"Separ":40000}]}})", ""},
      {head + R"({"Gfhold":[{"key":[1,1],"Frame":[1,2,3,4,5]}]}})",
       "field Frame: a list of at most 4 numbers"},
      {head + R"({"Settings12":[{"key":[70000,0]}]}})", "key must be 2 numbers"},
      {head + R"({"Settings12":[{"key":[-2,0]},{"key":[-2,0]}]}})", "key given twice"},
  };
  for (const Case& c : cases) {
    std::string file = Path("bad.json");
    Write(file, c.Json);
    if (c.Says.empty()) {
      EXPECT_NO_THROW(Document::LoadFile(file)) << c.Json; // a 32-bit field takes it
      continue;
    }
    try {
      Document::LoadFile(file);
      ADD_FAILURE() << "accepted: " << c.Json;
    } catch (const DocumentError& e) {
      EXPECT_NE(std::string(e.what()).find(file), std::string::npos) << e.what();
      EXPECT_NE(std::string(e.what()).find(c.Says), std::string::npos) << e.what();
    }
  }
}

TEST_F(DocumentTest, MissingOrBrokenFileIsRefusedNamingTheFile) {
  for (const std::string& file : {Path("missing.json"), Path("broken.json")}) {
    if (file == Path("broken.json")) Write(file, "{ not json");
    try {
      Document::LoadFile(file);
      ADD_FAILURE() << file;
    } catch (const DocumentError& e) {
      EXPECT_EQ(std::string(e.what()).rfind(file, 0), 0u) << e.what();
    }
  }
}

TEST_F(DocumentTest, ListingShowsRecordsByTypeAndKey) {
  std::string text = DescribeDocument(Document::LoadFile(DataFile("sample.json")));
  EXPECT_NE(text.find("Gfhold (8)"), std::string::npos) << text;
  EXPECT_NE(text.find("  [2, 4] Clef=3 Flag=0 ClefPercent=0 Carried1=0 Frame=[8 0 0 0]"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("Settings39 (1)\n  [-2, 0]"), std::string::npos) << text;
}

} // namespace
} // namespace ostin::sim
