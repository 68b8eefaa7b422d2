// Whole runs of the export: the file's head, the edit the run opens and cancels, its progress
// budget, cancels, failures and documents that contradict themselves.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "export_test_support.h"
#include "host/record_places.h"
#include "shell/messages.h"
#include "sim/record_store.h"

namespace ostin {
namespace {

using Fault = sim::Host::Fault;

class ToXmlTest : public testing::HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    SetLanguage(kLanguageMain);
    OpenData("sample.json");
  }
  std::vector<std::string> Calls(const std::string& prefix) const {
    std::vector<std::string> calls;
    for (const std::string& call : HostSim().CallLog)
      if (call.rfind(prefix, 0) == 0) calls.push_back(call);
    return calls;
  }
};

TEST_F(ToXmlTest, DocumentTypeText) {
  EXPECT_EQ(ToXml::DocumentTypeText(true, ""),
            "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
            "<!DOCTYPE score-partwise PUBLIC \r\n"
            "\t\"-//Calvimora//DTD MusicXML 0.7b Partwise//EN\"\r\n"
            "\t\"//C:/musicxml/partwise.dtd\">\r\n<score-partwise>\r\n</score-partwise>\r\n");
  EXPECT_EQ(ToXml::DocumentTypeText(false, "D:/dtd/"),
            "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
            "<!DOCTYPE score-timewise PUBLIC \r\n"
            "\t\"-//Calvimora//DTD MusicXML 0.7b Timewise//EN\"\r\n"
            "\t\"//D:/dtd/timewise.dtd\">\r\n<score-timewise>\r\n</score-timewise>\r\n");
}

TEST_F(ToXmlTest, AddNewLinesPutsALineBreakBetweenAdjacentTags) {
  auto doc = xml::XmlDocument::Create();
  doc->preserveWhiteSpace = false;
  ASSERT_TRUE(doc->loadXML("<a><b x=\"1\">t</b><c/></a>"));
  ToXml::AddNewLines(*doc);
  EXPECT_EQ(doc->xml(), "<a>\r\n<b x=\"1\">t</b>\r\n<c/>\r\n</a>\r\n");
  EXPECT_EQ(doc->documentElement().selectNodes("*").length(), 2);
}

// The file names the folder of the document types, the host's document stays as it was, and
// the progress budget is spent exactly: the part list, each measure from the second, the end
// of the skeleton, then each measure of each part by its staves.
TEST_F(ToXmlTest, RunWritesTheFileInsideAnEditThatItCancels) {
  nlohmann::json before = HostSim().Doc().ToJson();
  ToXml engine;
  engine.FileName = Path("out.xml");
  engine.SystemIdentifier = "/usr/share/ostinlight/";
  EXPECT_FALSE(engine.Invoke(0, 0));
  const std::string head = "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
                           "<!DOCTYPE score-partwise PUBLIC \r\n"
                           "\t\"-//Calvimora//DTD MusicXML 0.7b Partwise//EN\"\r\n"
                           "\t\"///usr/share/ostinlight/partwise.dtd\">\r\n<score-partwise";
  EXPECT_EQ(Read(Path("out.xml")).substr(0, head.size()), head);
  EXPECT_EQ(HostSim().Doc().ToJson(), before);
  EXPECT_EQ(Calls("FxStartFinaleEdit"),
            std::vector<std::string>{"FxStartFinaleEdit Update Layout"});
  EXPECT_EQ(Calls("FxCancelFinaleEdit").size(), 1u);
  EXPECT_EQ(Calls("FxEndMassEdit"), std::vector<std::string>{"FxEndMassEdit 0"});
  EXPECT_FALSE(HostSim().InEdit());
  const int staves = 2, measures = 4;
  EXPECT_EQ(Calls("FxStartMassEdit"),
            std::vector<std::string>{"FxStartMassEdit " +
                                     std::to_string(measures * staves + measures + staves)});
  std::vector<std::string> progress = {"FxMassEditProgress 2"};
  progress.insert(progress.end(), measures + measures * staves, "FxMassEditProgress 1");
  EXPECT_EQ(Calls("FxMassEditProgress"), progress);
}

TEST_F(ToXmlTest, HostBefore2003OpensNoEdit) {
  HostSim().VersionOption = 2002;
  ToXml engine;
  engine.FileName = Path("out.xml");
  EXPECT_FALSE(engine.Invoke(0, 0));
  EXPECT_TRUE(Calls("FxStartFinaleEdit").empty());
  EXPECT_TRUE(Calls("FxCancelFinaleEdit").empty());
  EXPECT_TRUE(std::filesystem::exists(Path("out.xml")));
}

TEST_F(ToXmlTest, CancelAtAnyCheckWritesNothingAndShowsNothing) {
  for (int check = 1; check <= 5; ++check) {
    HostSim().CallLog.clear();
    HostSim().CancelAtProgressCall = check;
    ToXml engine;
    engine.FileName = Path("cancelled.xml");
    EXPECT_NO_THROW(EXPECT_FALSE(engine.Invoke(0, 0))) << check;
    EXPECT_FALSE(std::filesystem::exists(Path("cancelled.xml"))) << check;
    EXPECT_EQ(Calls("FxEndMassEdit"), std::vector<std::string>{"FxEndMassEdit 1"}) << check;
    EXPECT_EQ(Calls("FxCancelFinaleEdit").size(), 1u) << check;
    EXPECT_FALSE(HostSim().InEdit());
  }
  EXPECT_TRUE(User.Messages.empty());
}

TEST_F(ToXmlTest, FailureTable) {
  struct Case {
    std::string Name;
    std::function<void(ToXml&)> Arrange;
    int32_t Number;
    int32_t Message;
  };
  // clang-format off
  const Case cases[] = {
      {"a read-only file refuses the save",
       [&](ToXml& e) { Write(e.FileName, "old"); chmod(e.FileName.c_str(), 0444); }, Code(0x8004058A), 163},
      {"a missing folder is a foreign failure",
       [&](ToXml& e) { e.FileName = Path("missing/out.xml"); }, Code(0x8004031B), 159},
      {"an internal error gets the general words",
       [](ToXml&) { HostSim().Faults = {{"FxStartMassEdit", Fault::Refuse}}; }, Code(0x800402CD), 159},
      {"a foreign failure is logged and numbered by the deepest handler",
       [](ToXml&) { HostSim().Faults = {{"LoadSettings41", Fault::Throw}}; }, kSettings41Places.LoadHandler, 159}};
  // clang-format on
  for (const Case& c : cases) {
    HostSim().Faults.clear();
    HostSim().CallLog.clear();
    ToXml engine;
    engine.FileName = Path("out.xml");
    std::filesystem::remove(engine.FileName);
    c.Arrange(engine);
    std::string before = Read(engine.FileName);
    EXPECT_EQ(testing::Raised([&] { engine.Invoke(0, 0); }),
              testing::Said(c.Number, MessageText(c.Message)))
        << c.Name;
    EXPECT_EQ(Read(engine.FileName), before) << c.Name << ": the file stays as it was";
    EXPECT_FALSE(HostSim().InEdit()) << c.Name;
  }
  EXPECT_THAT(Log(), ::testing::HasSubstr(
                         "Finale LoadSettings41 error -2147467259: LoadSettings41 broke down"));
}

class BadInputTest : public testing::ExportTest {};

// Documents whose records contradict each other: the export stops with a message that says
// where, logs the detail once, and writes no file.
TEST_F(BadInputTest, ContradictingRecordsEndTheRunWithThePlace) {
  struct Case {
    std::string Name;
    std::function<void(sim::Document&)> Spoil;
    int32_t Message;                // 157 with part and measure, or 159
    std::vector<std::string> Place; // the arguments of message 157
    std::string Logged;             // a piece of the one log line
  };
  // Sets a field of the record of a measure in the built document.
  const auto measureField = [](int32_t cmper, const char* field, int32_t value) {
    return [=](sim::Document& doc) {
      for (auto& [key, row] : doc.Table(sim::ShapeOf("MeasureSpec")).Rows)
        if (key.Cmper == cmper)
          row[sim::ShapeOf("MeasureSpec").FieldIndex(field)].Numbers = {value};
    };
  };
  // clang-format off
  const Case cases[] = {
      // Measure 2 shrinks to 2/4 under its four quarters.
      {"a frame whose entries overrun the measure", measureField(2, "Beats", 2), 157, {"1", "2"},
       "the entries of layer 1 of staff 1 last 4096 EDU in a measure of 2048"},
      {"a staff in the staff list without its record",
       [](sim::Document& doc) { doc.Table(sim::ShapeOf("StaffSpec")).Rows.clear(); }, 159, {}, "has no StaffSpec"},
      {"a key number that names no key", measureField(3, "Key", 0x4005), 157, {"1", "3"}, ""}};
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    int16_t staff = Builder.AddStaff({});
    AddMeasures(3);
    for (int16_t measure = 1; measure <= 3; ++measure)
      Builder.SetLayer(staff, measure, 0,
                       {tools::Notes(tools::kQuarter, "C4"), tools::Notes(tools::kQuarter, "D4"),
                        tools::Notes(tools::kQuarter, "E4"), tools::Notes(tools::kQuarter, "F4")});
    sim::Document document = Builder.Build();
    c.Spoil(document);
    sim::Host::Instance().Open(std::move(document));
    std::filesystem::remove(Path("error.log"));
    ToXml engine;
    engine.FileName = Path("bad.xml");
    const std::string raised = testing::Raised([&] { engine.Invoke(0, 0); });
    EXPECT_THAT(raised,
                ::testing::EndsWith(" FinalePlugIn: " + FormatResString(c.Message, c.Place)));
    EXPECT_FALSE(std::filesystem::exists(engine.FileName)) << "no file is written";
    std::string log = Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    EXPECT_THAT(log, ::testing::HasSubstr(c.Logged));
    EXPECT_FALSE(sim::Host::Instance().InEdit());
  }
}

} // namespace
} // namespace ostin
