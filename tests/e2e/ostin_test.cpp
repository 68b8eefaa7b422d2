#include <gtest/gtest.h>

#include <sys/stat.h>

#include "../shell/temp_registry.h"

namespace ostin {
namespace {

using testing::TempRegistryTest;

struct RunResult {
  int Status;
  std::string Out;
  std::string Err;
};

class OstinTest : public TempRegistryTest {
protected:
  void SetUp() override {
    TempRegistryTest::SetUp();
    setenv("OSTIN_MUSIC_DIR", Root.c_str(), 1);
  }
  void TearDown() override {
    unsetenv("OSTIN_TEST_CANCEL_AT");
    TempRegistryTest::TearDown();
  }

  // Runs ostin with no terminal on either side.
  RunResult Ostin(const std::string& arguments) {
    std::string command = "cd '" + Root.string() + "' && LANG=C '" + std::string(OSTIN_BIN_DIR) +
                          "/ostin' " + arguments + " </dev/null >out.txt 2>err.txt";
    int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read(Path("out.txt")),
            Read(Path("err.txt"))};
  }
  static std::string Sample() { return std::string(OSTIN_DATA_DIR) + "/sample.json"; }
  static std::string Empty() { return std::string(OSTIN_DATA_DIR) + "/default-document.json"; }
};

TEST_F(OstinTest, ExportsTheSampleToAScorePartwiseFile) {
  RunResult run = Ostin("export '" + Sample() + "' -o score.xml");
  ASSERT_EQ(run.Status, 0) << run.Err;
  std::string written = Read(Path("score.xml"));
  std::string head = "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
                     "<!DOCTYPE score-partwise PUBLIC \r\n"
                     "\t\"-//Calvimora//DTD MusicXML 0.7b Partwise//EN\"\r\n"
                     "\t\"//";
  EXPECT_EQ(written.substr(0, head.size()), head);
  EXPECT_NE(written.find("partwise.dtd\">\r\n<score-partwise"), std::string::npos) << written;
  EXPECT_EQ(run.Err, "");
}

TEST_F(OstinTest, RefusalsAndFailuresAreShownAndChangeNothing) {
  Write(Path("kept.xml"), "old content");
  chmod(Path("kept.xml").c_str(), 0444);
  Write(Path("notes.txt"), "hello");
  struct Case {
    std::string Arguments;
    std::string Says;
    std::string Untouched; // file that must stay as it was, or must not appear
  } cases[] = {
      {"export '" + Empty() + "' -o empty.xml", "MusicXML экспорт нельзя выполнить с пустым файлом",
       "empty.xml"},
      {"export kept.json -o x.xml", "kept.json: cannot open the document", "x.xml"},
      {"export notes.txt -o x.xml", "notes.txt: not a document", "x.xml"},
      {"export '" + Sample() + "' -o missing/x.xml", "Папка " + Path("missing") + " отсутствует",
       "missing"},
      {"export '" + Sample() + "' -o kept.xml --yes", "файл только для чтения", "kept.xml"},
      {"export '" + Sample() + "' -o notes.txt", "notes.txt уже есть", "notes.txt"},
  };
  for (const Case& c : cases) {
    std::string before = Read(Path(c.Untouched));
    bool existed = std::filesystem::exists(Path(c.Untouched));
    RunResult run = Ostin(c.Arguments);
    EXPECT_EQ(run.Status, 1) << c.Arguments << "\n" << run.Err;
    EXPECT_NE(run.Err.find(c.Says), std::string::npos) << c.Arguments << "\n" << run.Err;
    EXPECT_EQ(std::filesystem::exists(Path(c.Untouched)), existed) << c.Arguments;
    EXPECT_EQ(Read(Path(c.Untouched)), before) << c.Arguments;
  }
}

TEST_F(OstinTest, YesReplacesAnExistingFile) {
  Write(Path("old.xml"), "old");
  RunResult run = Ostin("export '" + Sample() + "' -o old.xml --yes");
  EXPECT_EQ(run.Status, 0) << run.Err;
  EXPECT_NE(Read(Path("old.xml")).find("<score-partwise"), std::string::npos);
}

TEST_F(OstinTest, CancelLeavesNoFileAndShowsNothing) {
  setenv("OSTIN_TEST_CANCEL_AT", "2", 1);
  RunResult run = Ostin("export '" + Sample() + "' -o cancelled.xml");
  EXPECT_EQ(run.Status, 130);
  EXPECT_EQ(run.Err, "");
  EXPECT_FALSE(std::filesystem::exists(Path("cancelled.xml")));
}

TEST_F(OstinTest, LanguageOptionChoosesTheMessageTable) {
  RunResult run = Ostin("export '" + Empty() + "' -o empty.xml --lang de");
  EXPECT_NE(run.Err.find("MusicXML-Export aus einer leeren Datei ist nicht möglich."),
            std::string::npos)
      << run.Err;
}

TEST_F(OstinTest, NewWritesADocumentThatShowLists) {
  ASSERT_EQ(Ostin("new -o fresh.json --host-year 2002").Status, 0);
  RunResult run = Ostin("show fresh.json");
  EXPECT_EQ(run.Status, 0) << run.Err;
  EXPECT_NE(run.Out.find("host year 2002"), std::string::npos) << run.Out;
  EXPECT_NE(run.Out.find("MeasureSpec (4)"), std::string::npos) << run.Out;
  EXPECT_NE(run.Out.find("InstrumentUsed (1)"), std::string::npos) << run.Out;
  RunResult sample = Ostin("show '" + Sample() + "'");
  EXPECT_NE(sample.Out.find("  frame 8\n    entry 18: Dura=4096 Ef=0xc0000000\n      note "
                            "Flag=0x80000000 NoteID=1 Tcd=-7"),
            std::string::npos)
      << sample.Out;
}

TEST_F(OstinTest, UsageAndHelp) {
  RunResult help = Ostin("--help");
  EXPECT_EQ(help.Status, 0);
  for (const char* word : {"new", "export", "show", "import", "convert", "--host-year", "--lang",
                           "--yes", "Ctrl-C", "Exit status"})
    EXPECT_NE(help.Out.find(word), std::string::npos) << word;
  struct Case {
    std::string Arguments;
    int Status;
  } cases[] = {{"", 2},
               {"frobnicate", 2},
               {"export", 2},
               {"export a.json", 2},
               {"export a.json -o b.xml --host-year 1999", 2},
               {"export a.json -o b.xml --lang xx", 2},
               {"import a.xml -o b.json", 1},
               {"convert a.xml -o b.xml", 1}};
  for (const Case& c : cases)
    EXPECT_EQ(Ostin(c.Arguments).Status, c.Status) << c.Arguments;
  EXPECT_NE(Ostin("import a.xml -o b.json").Err.find("not built yet"), std::string::npos);
}

} // namespace
} // namespace ostin
