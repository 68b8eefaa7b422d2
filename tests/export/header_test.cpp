#include <gtest/gtest.h>

#include "export_test_support.h"
#include "host/record_places.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using testing::ElementTest;
using testing::ExportTest;
using Fault = sim::Host::Fault;

class HeaderTest : public ExportTest {
protected:
  void SetUp() override {
    ExportTest::SetUp();
    OneStaff();
  }
  void OneStaff() {
    Builder.AddStaff({});
    AddMeasures(1);
  }
  void SetHeaderText(const char* field, const std::string& text) {
    Builder.SetText("Header", {0, 0, 0}, field, text);
  }
};

TEST_F(HeaderTest, IdentificationFromTheHeader) {
  struct Case {
    std::string Name;
    std::string Title, Composer, Copyright;
    int16_t Year, Month, Day;
    std::string Expected; // the children of the root before the part list
  } cases[] = {
      {"nothing but the date", "", "", "", 2026, 11, 22,
       "<identification><encoding><software>Finale 2004 for Windows</software>"
       "<encoding-date>2026-11-22</encoding-date></encoding></identification>"},
      {"everything", "Sonata", "Anna Bell", "(c) 2026", 2026, 1, 2,
       "<movement-title>Sonata</movement-title><identification>"
       "<creator type=\"composer\">Anna Bell</creator><rights>(c) 2026</rights>"
       "<encoding><software>Finale 2004 for Windows</software>"
       "<encoding-date>2026-01-02</encoding-date></encoding></identification>"},
      // Letters beyond ASCII reach the host in its code page and come back as they were.
      {"letters of the code page", "Étude für Anna", "Dvoøák", "", 2026, 11, 22,
       "<movement-title>Étude für Anna</movement-title><identification>"
       "<creator type=\"composer\">Dvoøák</creator><encoding>"
       "<software>Finale 2004 for Windows</software><encoding-date>2026-11-22</encoding-date>"
       "</encoding></identification>"},
      {"date padded", "", "Bach", "", 987, 3, 7,
       "<identification><creator type=\"composer\">Bach</creator><encoding>"
       "<software>Finale 2004 for Windows</software><encoding-date>0987-03-07</encoding-date>"
       "</encoding></identification>"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    OneStaff();
    SetHeaderText("Title", c.Title);
    SetHeaderText("Composer", c.Composer);
    SetHeaderText("UserCopyright", c.Copyright);
    SetRecord("Header", 0, 0,
              {{"ModifiedYear", c.Year}, {"ModifiedMonth", c.Month}, {"ModifiedDay", c.Day}});
    ExportOk();
    std::string head;
    for (xml::XmlNode node = Score->documentElement().firstChild();
         node && node.nodeName() != "part-list"; node = node.nextSibling())
      if (node.nodeType() == 1) head += testing::Flat(node);
    EXPECT_EQ(head, c.Expected);
  }
}

// Blanks are kept as they stand and count as a value.
TEST_F(HeaderTest, BlankValuesAreWritten) {
  SetHeaderText("Title", "  ");
  SetHeaderText("Composer", " ");
  ExportOk();
  EXPECT_NE(Written.find("<movement-title>  </movement-title>"), std::string::npos) << Written;
  EXPECT_NE(Written.find("<creator type=\"composer\"> </creator>"), std::string::npos);
}

TEST_F(HeaderTest, SoftwareAndDateByHostYear) {
  struct Case {
    int32_t Year;
    std::string Software;
    int Dates;
    std::string Title;
  } cases[] = {{2000, "Finale 2000 for Windows", 0, "(none)"},
               {2001, "Finale 2001 for Windows", 1, "Etude"},
               {2003, "Finale 2003 for Windows", 1, "Etude"},
               {2005, "Finale for Windows", 1, "Etude"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Year);
    StartScore();
    OneStaff();
    SetHeaderText("Title", "Etude");
    HostSim().VersionOption = c.Year;
    ExportOk();
    EXPECT_EQ(Text("identification/encoding/software"), c.Software);
    EXPECT_EQ(Count("identification/encoding/encoding-date"), c.Dates);
    // A host of 2000 has no header for the program: no title even when the document has one.
    EXPECT_EQ(Text("movement-title"), c.Title);
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
  EXPECT_EQ(Children("identification"), std::vector<std::string>{"encoding"});
  EXPECT_EQ(Text("identification/encoding/encoding-date"), "0000-00-00");
}

TEST_F(HeaderTest, UnsavedDocumentAnsweredNoIsACancel) {
  Saved = false;
  User.Answer(platform::kIdNo);
  EXPECT_FALSE(Export());
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
  EXPECT_EQ(User.Messages.size(), 1u) << "only the question";
  EXPECT_FALSE(HostSim().InEdit());
}

TEST_F(HeaderTest, UnsavedDocumentInAHostOf2000AsksNothing) {
  Saved = false;
  HostSim().VersionOption = 2000;
  ExportOk();
  EXPECT_TRUE(User.Messages.empty());
  EXPECT_EQ(Children("identification/encoding"), std::vector<std::string>{"software"});
}

// A header that breaks down is a failure, not an unsaved document.
TEST_F(HeaderTest, BrokenHeaderIsNoQuestion) {
  HostSim().Faults = {{"LoadHeader", Fault::Throw}};
  std::optional<Failure> failure = Export();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->Number, kHeaderPlaces.LoadHandler);
  EXPECT_TRUE(User.Messages.empty());
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
}

TEST(LanguageCheckWestern, ByLetters) {
  struct Case {
    const char* Text;
    const char* Language;
  } cases[] = {{"Grüße", "de"}, {"ÄRGER", "de"}, {"Straße", "de"},     {"schön", "de"},
               {"élan", "fr"},  {"ÉTÉ", "fr"},   {"Ça va", "fr"},      {"crème", "fr"},
               {"año", "es"},   {"AÑO", "es"},   {"Dvořák", ""},       {"Noël", ""},
               {"plain", ""},   {"", ""},        {"Müller été", "de"}, {"niño à la crème", "fr"},
               {"×÷", ""},      {"ÀÁÂ", ""}};
  for (const Case& c : cases)
    EXPECT_EQ(ToXml::LanguageCheckWestern(c.Text), c.Language) << c.Text;
}

class LocalesTest : public ElementTest {};

TEST_F(LocalesTest, TablesGrowWithTheFontsAndLoseNone) {
  struct Case {
    int16_t First, Last;
    size_t Size;
  } cases[] = {{0, 0, 1},
               {0, 100, 101},
               {0, 101, 102},
               {0, 149, 150},
               {0, 250, 251},
               // The stand-in numbers its fonts from 1.
               {1, 16, 17},
               {1, 120, 121}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.First) + ".." + std::to_string(c.Last));
    sim::Document document = sim::Host::NewDocument();
    document.Texts.Fonts.clear();
    for (int16_t number = c.First; number <= c.Last; ++number)
      document.Texts.Fonts[number] = {"Font " + std::to_string(number)};
    HostSim().Open(std::move(document));
    Access.InitializeLocales();
    EXPECT_EQ(Access.FontLocales().size(), c.Size);
    EXPECT_EQ(Access.FontLanguages().size(), c.Size);
    for (int32_t locale : Access.FontLocales())
      EXPECT_EQ(locale, 0);
  }
}

} // namespace
} // namespace ostin
