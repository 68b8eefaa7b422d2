#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <optional>

#include "../host/host_fixture.h"
#include "host/text/caret.h"
#include "sim/document_text.h"
#include "sim/text_store.h"

namespace ostin::sim {
namespace {

using DocumentTest = testing::HostTest;

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
  EXPECT_EQ(Document::FromJson(doc.ToJson()).Title, "Étude für Ŝ");
}

// Each message starts with the file; a case without text is a file that is not there.
TEST_F(DocumentTest, DocumentsThatDoNotFitAreRefusedWithWhatAndWhere) {
  const std::string head = R"({"format":"ostin-document","records":)";
  const std::pair<std::optional<std::string>, std::string> cases[] = {
      {std::nullopt, "cannot open the document"},
      {"{ not json", "not a document"},
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
  for (const auto& [json, says] : cases) {
    std::string file = Path(json ? "bad.json" : "missing.json");
    if (json) Write(file, *json);
    if (says.empty()) {
      EXPECT_NO_THROW(Document::LoadFile(file)) << *json; // a 32-bit field takes it
      continue;
    }
    try {
      Document::LoadFile(file);
      ADD_FAILURE() << "accepted: " << json.value_or(file);
    } catch (const DocumentError& e) {
      EXPECT_EQ(std::string(e.what()).rfind(file, 0), 0u) << e.what();
      EXPECT_NE(std::string(e.what()).find(says), std::string::npos) << e.what();
    }
  }
}

TEST_F(DocumentTest, TextsSectionRoundTripsReadably) {
  TextStore texts = Document::LoadFile(DataFile("default-document.json")).Texts;
  texts.RawTexts[{kLineTextTag, 2}] = Utf8ToHost("Rit. – poco «più»");
  texts.FontNumber(Utf8ToHost("Café Sans"), 0x2000);
  nlohmann::json json = texts.ToJson();
  EXPECT_EQ(json["rawTexts"][0]["text"], "Rit. – poco «più»");
  EXPECT_EQ(json["fonts"][16]["name"], "Café Sans");
  EXPECT_EQ(TextStore::FromJson(json), texts);
  EXPECT_EQ(TextStore::FromJson(nlohmann::json::object()), TextStore{});
}

TEST_F(DocumentTest, BadTextsSectionIsRefusedNamingTheItem) {
  const std::pair<std::string, std::string> cases[] = {
      {R"([])", "texts: an object expected"},
      {R"({"colours":[]})", "texts: unknown part \"colours\""},
      {R"({"fonts":{}})", "texts: \"fonts\" must be a list"},
      {R"({"fonts":[7]})", "texts: fonts, item 1: an object expected"},
      {R"({"fonts":[{"name":"A"}]})", "texts: fonts, item 1: \"number\" missing"},
      {R"({"fonts":[{"number":0,"name":"A"}]})", "\"number\" must be a number from 1"},
      {R"({"fonts":[{"number":3,"name":5}]})", "texts: font 3: \"name\" must be text"},
      {R"({"fonts":[{"number":3,"name":""}]})", "texts: font 3: \"name\" must not be empty"},
      {R"({"fonts":[{"number":3,"name":"A","charsetAndOS":70000}]})",
       "texts: font 3: \"charsetAndOS\" must be a number"},
      {R"({"fonts":[{"number":3,"name":"A","colour":1}]})", "unknown field \"colour\""},
      {R"({"fonts":[{"number":3,"name":"A"},{"number":3,"name":"B"}]})",
       "texts: font 3: number given twice"},
      {R"({"rawTexts":[{"tag":29555,"id":0,"text":"x"}]})", "texts: rawTexts, item 1: \"id\""},
      {R"({"rawTexts":[{"tag":29555,"id":1}]})", "texts: raw text 29555, 1: \"text\" must be"},
      {R"({"rawTexts":[{"tag":1,"id":1,"text":"a"},{"tag":1,"id":1,"text":"b"}]})",
       "texts: raw text 1, 1: given twice"},
  };
  for (const auto& [json, says] : cases)
    EXPECT_THAT(testing::RefusalOf("texts", json), ::testing::HasSubstr(says)) << json;
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
