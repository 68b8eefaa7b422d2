// The identification before the part list, the unsaved document question and the font
// locale tables.
#include <gtest/gtest.h>

#include "export_test_support.h"
#include "host/record_places.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using testing::ExportTest;

class HeaderTest : public ExportTest {
protected:
  void SetUp() override {
    ExportTest::SetUp();
    StartScore(1, 1);
  }
  void SetHeaderText(const char* field, const std::string& text) {
    Builder.SetText("Header", {0, 0, 0}, field, text);
  }
};

// The children of the root before the part list, in their order. Letters beyond ASCII reach
// the host in its code page and come back as they were; blanks are kept and count as a value.
TEST_F(HeaderTest, IdentificationFromTheHeader) {
  struct Case {
    std::string Title, Composer, Copyright;
    int16_t Year, Month, Day;
    std::string Date;
  } cases[] = {{"", "", "", 2026, 11, 22, "2026-11-22"},
               {"Sonata", "Anna Bell", "(c) 2026", 2026, 1, 2, "2026-01-02"},
               {"Étude für Anna", "Dvoøák", "", 2026, 11, 22, "2026-11-22"},
               {"", "Bach", "", 987, 3, 7, "0987-03-07"},
               {"  ", " ", "", 2026, 11, 22, "2026-11-22"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Title + "/" + c.Composer);
    StartScore(1, 1);
    SetHeaderText("Title", c.Title);
    SetHeaderText("Composer", c.Composer);
    SetHeaderText("UserCopyright", c.Copyright);
    SetRecord("Header", 0, 0,
              {{"ModifiedYear", c.Year}, {"ModifiedMonth", c.Month}, {"ModifiedDay", c.Day}});
    ExportOk();
    // Read from the file itself: the parsed tree drops texts of blanks.
    std::string head = Written.substr(Written.find("<score-partwise>") + 16);
    EXPECT_EQ(
        testing::Unbroken(head.substr(0, head.find("<part-list>"))),
        (c.Title.empty() ? "" : "<movement-title>" + c.Title + "</movement-title>") +
            "<identification>" +
            (c.Composer.empty() ? "" : "<creator type=\"composer\">" + c.Composer + "</creator>") +
            (c.Copyright.empty() ? "" : "<rights>" + c.Copyright + "</rights>") +
            "<encoding><software>Finale 2004 for Windows</software><encoding-date>" + c.Date +
            "</encoding-date></encoding></identification>");
  }
}

// A host of 2000 has no header for the program: no title even when the document has one, and
// no question when it has none.
TEST_F(HeaderTest, SoftwareAndDateByHostYear) {
  struct Case {
    int32_t Year;
    bool Saved;
    std::string Expected; // the title, the software and the date
  } cases[] = {{2000, true, "Finale 2000 for Windows"},
               {2000, false, "Finale 2000 for Windows"},
               {2001, true, "Etude, Finale 2001 for Windows, 2026-11-22"},
               {2003, true, "Etude, Finale 2003 for Windows, 2026-11-22"},
               {2005, true, "Etude, Finale for Windows, 2026-11-22"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.Year) + (c.Saved ? " saved" : " unsaved"));
    StartScore(1, 1);
    SetHeaderText("Title", "Etude");
    Saved = c.Saved;
    HostSim().VersionOption = c.Year;
    ExportOk();
    EXPECT_EQ(testing::Joined(Score->documentElement(), "movement-title|identification/encoding/*"),
              c.Expected);
    EXPECT_TRUE(User.Messages.empty());
  }
}

TEST_F(HeaderTest, UnsavedDocumentAnsweredYesGoesOnWithoutTheHeader) {
  Saved = false;
  User.Answer(platform::kIdYes);
  ExportOk();
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Style, 36);
  EXPECT_EQ(User.Messages[0].Title, MessageText(181));
  EXPECT_EQ(User.Messages[0].Text,
            MessageText(182) + "\r\n" + MessageText(183) + "\r\n" + MessageText(184));
  EXPECT_EQ(Count("movement-title"), 0);
  EXPECT_EQ(FlatNode("identification"),
            "<identification><encoding><software>Finale 2004 for Windows</software>"
            "<encoding-date>0000-00-00</encoding-date></encoding></identification>");
}

TEST_F(HeaderTest, UnsavedDocumentAnsweredNoIsACancel) {
  Saved = false;
  User.Answer(platform::kIdNo);
  EXPECT_FALSE(Export());
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
  EXPECT_EQ(User.Messages.size(), 1u) << "only the question";
  EXPECT_FALSE(HostSim().InEdit());
}

// A header that breaks down is a failure, not an unsaved document.
TEST_F(HeaderTest, BrokenHeaderIsNoQuestion) {
  HostSim().Faults = {{"LoadHeader", sim::Host::Fault::Throw}};
  std::optional<Failure> failure = Export();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number, kHeaderPlaces.LoadHandler);
  EXPECT_TRUE(User.Messages.empty());
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
}

class LocalesTest : public testing::ElementTest {};

// The stand-in numbers its fonts from 1; the tables run from font 0 to the last.
TEST_F(LocalesTest, TablesGrowWithTheFontsAndLoseNone) {
  const std::pair<int16_t, int16_t> cases[] = {{0, 0}, {0, 100}, {0, 101}, {0, 250}, {1, 120}};
  for (const auto& [first, last] : cases) {
    SCOPED_TRACE(std::to_string(first) + ".." + std::to_string(last));
    sim::Document document = sim::Host::NewDocument();
    document.Texts.Fonts.clear();
    for (int16_t number = first; number <= last; ++number)
      document.Texts.Fonts[number] = {"Font " + std::to_string(number)};
    HostSim().Open(std::move(document));
    Access.InitializeLocales();
    EXPECT_EQ(Access.FontLocales(), std::vector<int32_t>(last + 1, 0));
    EXPECT_EQ(Access.FontLanguages().size(), static_cast<size_t>(last + 1));
  }
}

} // namespace
} // namespace ostin
