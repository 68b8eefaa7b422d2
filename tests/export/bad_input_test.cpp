// Documents whose records contradict each other: the export stops with a message that says
// where, logs the detail once, and writes no file.
#include <gtest/gtest.h>

#include "export_test_support.h"
#include "shell/messages.h"
#include "sim/record_store.h"

namespace ostin {
namespace {

using testing::ExportTest;

class BadInputTest : public ExportTest {};

TEST_F(BadInputTest, ContradictingRecordsEndTheRunWithThePlace) {
  struct Case {
    std::string Name;
    std::function<void(sim::Document&)> Spoil;
    int32_t Message;                // 157 with part and measure, or 159
    std::vector<std::string> Place; // the arguments of message 157
    std::string Logged;             // a piece of the one log line
  };
  const Case cases[] = {
      {"a frame whose entries overrun the measure",
       [](sim::Document& doc) {
         // Measure 2 shrinks to 2/4 under its four quarters.
         for (auto& [key, row] : doc.Table(sim::ShapeOf("MeasureSpec")).Rows)
           if (key.Cmper == 2) row[sim::ShapeOf("MeasureSpec").FieldIndex("Beats")].Numbers = {2};
       },
       157,
       {"1", "2"},
       "the entries of layer 1 of staff 1 last 4096 EDU in a measure of 2048"},
      {"a staff in the staff list without its record",
       [](sim::Document& doc) { doc.Table(sim::ShapeOf("StaffSpec")).Rows.clear(); },
       159,
       {},
       "has no StaffSpec"},
      {"a key number that names no key",
       [](sim::Document& doc) {
         for (auto& [key, row] : doc.Table(sim::ShapeOf("MeasureSpec")).Rows)
           if (key.Cmper == 3)
             row[sim::ShapeOf("MeasureSpec").FieldIndex("Key")].Numbers = {0x4005};
       },
       157,
       {"1", "3"},
       ""},
  };
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
    try {
      engine.Invoke(0, 0);
      ADD_FAILURE() << "the run went through";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Source, "FinalePlugIn");
      EXPECT_EQ(failure.Description, FormatResString(c.Message, c.Place));
    }
    EXPECT_FALSE(std::filesystem::exists(engine.FileName)) << "no file is written";
    std::string log = Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    EXPECT_NE(log.find(c.Logged), std::string::npos) << log;
    EXPECT_FALSE(sim::Host::Instance().InEdit());
  }
}

} // namespace
} // namespace ostin
