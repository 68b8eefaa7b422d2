#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "scripted_user.h"
#include "shell/frm_about.h"
#include "shell/frm_export.h"
#include "shell/frm_import.h"
#include "shell/messages.h"
#include "shell/music_directory.h"
#include "shell/registry.h"
#include "temp_registry.h"

namespace ostin {
namespace {

using platform::kIdNo;
using platform::kIdYes;
using testing::kTestKeySection;

bool LeftWithOK(FileDialogForm& form) {
  if (auto* import = dynamic_cast<frmImport*>(&form)) return import->ImportOK();
  return dynamic_cast<frmExport&>(form).ExportOK();
}

std::string ChosenFile(FileDialogForm& form) {
  if (auto* import = dynamic_cast<frmImport*>(&form)) return import->InputFileName();
  return dynamic_cast<frmExport&>(form).OutputFileName();
}

// A dialog as Init loads it, on the host window 7.
template <class F> std::unique_ptr<F> Load() {
  auto form = std::make_unique<F>();
  form->FinaleHwnd = 7;
  form->Form_Load();
  return form;
}

class DialogTest : public testing::TempRegistryTest {
protected:
  void SetUp() override {
    TempRegistryTest::SetUp();
    Write(MachineFile(), std::string(kTestKeySection) + "DtdDir=sz:C:\\Ostin\\dtd\\\n");
    User.HostWindow = {100, 50, 900, 650};
  }
  void TearDown() override {
    FileSystemObject::SetAvailableForTests(true);
    TempRegistryTest::TearDown();
  }

  void WriteUser(const std::string& values) { Write(UserFile(), kTestKeySection + values); }
  static int32_t StoredNumber(const std::string& name) {
    return RegQueryValueNumber(RegOpenKey(kHkeyCurrentUser, kRegistryKey, kKeyRead), name);
  }
  static std::string StoredText(const std::string& name) {
    return RegQueryValueString(RegOpenKey(kHkeyCurrentUser, kRegistryKey, kKeyRead), name);
  }

  testing::ScriptedUser User;
};

// What tells the twins apart, as a user and the registry see it.
struct Twin {
  const char* Name;
  std::function<std::unique_ptr<FileDialogForm>(DialogTest&)> Make;
  int32_t TitleId;
  const char *LeftValue, *TopValue, *DirectoryValue;
  int32_t CentredLeft, CentredTop; // on the fixture's host window
  bool SaveDialog;
  int32_t BrowseTitleId, BrowseFlags;
  int32_t NoScriptingNumber;
  std::string NoScriptingDescription, NoScriptingLog;
};

class TwinTest : public DialogTest, public ::testing::WithParamInterface<Twin> {
protected:
  std::unique_ptr<FileDialogForm> Make() { return GetParam().Make(*this); }
};

TEST_P(TwinTest, FirstStartCentresOnTheHostAndStoresTheValues) {
  const Twin& twin = GetParam();
  auto form = Make();
  EXPECT_EQ(form->LoadErrorNumber(), 0);
  EXPECT_EQ(form->Caption(), MessageText(twin.TitleId));
  EXPECT_EQ(form->Left, twin.CentredLeft);
  EXPECT_EQ(form->Top, twin.CentredTop);
  EXPECT_EQ(form->DefaultDirectory(), DefaultMusicDirectory());
  EXPECT_EQ(form->ControlText("txtFileName"), DefaultMusicDirectory());
  EXPECT_EQ(form->SystemIdentifier(), "C:/Ostin/dtd/");
  EXPECT_EQ(StoredNumber(twin.LeftValue), twin.CentredLeft);
  EXPECT_EQ(StoredNumber(twin.TopValue), twin.CentredTop);
  EXPECT_EQ(StoredText(twin.DirectoryValue), DefaultMusicDirectory());
  EXPECT_NE(Log().find("Could not open registry key: The system cannot find the file specified."),
            std::string::npos);
}

TEST_P(TwinTest, SavedValuesComeBackUncheckedAndAnEmptyDirectoryFallsBack) {
  const Twin& twin = GetParam();
  for (std::string saved : {Path("gone"), std::string()}) {
    WriteUser(std::string(twin.LeftValue) + "=dword:4294966996\n" + twin.TopValue + "=dword:20\n" +
              twin.DirectoryValue + "=sz:" + saved + "\n");
    auto form = Make();
    EXPECT_EQ(form->Left, -300);
    EXPECT_EQ(form->Top, 20);
    EXPECT_EQ(form->DefaultDirectory(), saved.empty() ? DefaultMusicDirectory() : saved);
  }
}

TEST_P(TwinTest, WithoutTheMachineKeyEveryStartIsAFirstStart) {
  const Twin& twin = GetParam();
  std::filesystem::remove(MachineFile());
  WriteUser(std::string(twin.LeftValue) + "=dword:1\n" + twin.TopValue + "=dword:2\n" +
            twin.DirectoryValue + "=sz:" + Path("saved") + "\n");
  for (int start = 0; start < 2; ++start) {
    auto form = Make();
    EXPECT_EQ(form->SystemIdentifier(), "");
    EXPECT_EQ(form->Left, twin.CentredLeft);
    EXPECT_EQ(form->DefaultDirectory(), DefaultMusicDirectory());
    EXPECT_EQ(StoredNumber(twin.LeftValue), twin.CentredLeft);
  }
  EXPECT_NE(Log().find("Could not open registry key: The system cannot find the file specified."),
            std::string::npos);
}

TEST_P(TwinTest, AnUnwritableUserKeyDoesNotStopTheRun) {
  Write(Path("config"), "a file where the folder belongs");
  auto form = Make();
  EXPECT_EQ(form->LoadErrorNumber(), 0);
  EXPECT_NE(Log().find("Could not create registry key: "), std::string::npos);
  User.Type("txtFileName", "a.xml").Click("cmdOK");
  form->Show();
  EXPECT_TRUE(LeftWithOK(*form));
  EXPECT_FALSE(form->Visible());
}

TEST_P(TwinTest, ATypedNameInAMissingFolderKeepsTheDialogOpen) {
  auto form = Make();
  User.Type("txtFileName", Path("nowhere/a.xml")).Click("cmdOK").Check([&](auto& shown) {
    EXPECT_TRUE(shown.Visible());
    EXPECT_FALSE(LeftWithOK(*form));
  });
  User.Click("cmdCancel");
  form->Show();
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text, FormatResString(171, {Path("nowhere")}));
  EXPECT_EQ(User.Messages[0].Style, platform::kMbOk);
  EXPECT_TRUE(User.ScriptDone());
}

TEST_P(TwinTest, ABareFileNamePassesAndEmptiesTheDirectory) {
  auto form = Make();
  User.Type("txtFileName", "song.xml").Click("cmdOK");
  form->Show();
  EXPECT_TRUE(LeftWithOK(*form));
  EXPECT_EQ(ChosenFile(*form), "song.xml");
  EXPECT_EQ(form->DefaultDirectory(), "");
  EXPECT_EQ(StoredText(GetParam().DirectoryValue), "");
  EXPECT_EQ(Make()->DefaultDirectory(), DefaultMusicDirectory());
}

TEST_P(TwinTest, BrowseCancelChangesNothing) {
  const Twin& twin = GetParam();
  auto form = Make();
  User.Click("cmdBrowse").CancelDialog().Click("cmdCancel");
  form->Show();
  ASSERT_EQ(User.FileDialogs.size(), 1u);
  const platform::FileDialogRequest& request = User.FileDialogs[0];
  EXPECT_EQ(request.Save, twin.SaveDialog);
  EXPECT_EQ(request.Title, MessageText(twin.BrowseTitleId));
  EXPECT_EQ(request.Flags, twin.BrowseFlags);
  EXPECT_EQ(request.Filter, "XML (*.xml)|*.xml");
  EXPECT_EQ(request.DefaultExt, "xml");
  EXPECT_EQ(request.InitDir, DefaultMusicDirectory());
  EXPECT_EQ(form->ControlText("txtFileName"), DefaultMusicDirectory());
  EXPECT_EQ(form->DefaultDirectory(), DefaultMusicDirectory());
  EXPECT_TRUE(User.Messages.empty());
  EXPECT_FALSE(LeftWithOK(*form));
}

TEST_P(TwinTest, ABrowsedNameSkipsTheFolderTestAndTheQuestion) {
  Write(Path("old.xml"), "<old/>");
  for (std::string chosen : {Path("gone/x.xml"), Path("old.xml")}) {
    auto form = Make();
    User.Click("cmdBrowse").Choose(chosen).Click("cmdOK");
    form->Show();
    EXPECT_TRUE(LeftWithOK(*form));
    EXPECT_EQ(ChosenFile(*form), chosen);
    EXPECT_EQ(form->ControlText("txtFileName"), chosen);
    EXPECT_EQ(StoredText(GetParam().DirectoryValue), form->DefaultDirectory());
  }
  EXPECT_EQ(Make()->DefaultDirectory(), Root.string());
  EXPECT_TRUE(User.Messages.empty());
}

TEST_P(TwinTest, CancelSavesNothing) {
  auto form = Make();
  User.Type("txtFileName", Path("a.xml")).Click("cmdCancel");
  form->Show();
  EXPECT_FALSE(LeftWithOK(*form));
  EXPECT_EQ(StoredText(GetParam().DirectoryValue), DefaultMusicDirectory());
}

TEST_P(TwinTest, AFailureInAClickShowsMessage208) {
  auto form = Make();
  form->Terminate();
  User.Type("txtFileName", "a.xml").Click("cmdOK").Check([](auto& shown) {
    EXPECT_TRUE(shown.Visible());
  });
  form->Show();
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text,
            FormatResString(208, {"91", "Object variable or With block variable not set"}));
}

TEST_P(TwinTest, WithoutScriptingTheLoadStepReportsIt) {
  const Twin& twin = GetParam();
  FileSystemObject::SetAvailableForTests(false);
  auto form = Make();
  EXPECT_EQ(form->LoadErrorNumber(), twin.NoScriptingNumber);
  EXPECT_EQ(form->LoadErrorDescription(), twin.NoScriptingDescription);
  EXPECT_NE(Log().find(twin.NoScriptingLog), std::string::npos);
}

void PrintTo(const Twin& twin, std::ostream* out) {
  *out << twin.Name;
}

const std::string kNoObject = "ActiveX component can't create object";

INSTANTIATE_TEST_SUITE_P(
    Twins, TwinTest,
    ::testing::Values(
        Twin{"Import",
             [](DialogTest&) -> std::unique_ptr<FileDialogForm> { return Load<frmImport>(); }, 118,
             "ImU", "ImW", "ImOD", 5388, 4464, false, 134, 6148, Code(0x80040733), MessageText(215),
             "Error 429 starting Windows Scripting: " + kNoObject},
        Twin{"Export",
             [](DialogTest&) -> std::unique_ptr<FileDialogForm> { return Load<frmExport>(); }, 119,
             "ExU", "ExW", "ExOD", 5394, 4458, true, 136, 32774, Code(0x80040571),
             "MusicXML internal error", "Exporter form load error 429: " + kNoObject}),
    [](const auto& twin) { return twin.param.Name; });

TEST_F(DialogTest, ImportOKWithoutAnEntryGivesNoFile) {
  auto form = Load<frmImport>();
  User.Click("cmdOK");
  form->Show();
  EXPECT_TRUE(form->ImportOK());
  EXPECT_EQ(form->InputFileName(), "");
  EXPECT_TRUE(User.Messages.empty());
}

TEST_F(DialogTest, OverwritingAnExistingFileNeedsYes) {
  Write(Path("old.xml"), "<old/>");
  auto form = Load<frmExport>();
  User.Type("txtFileName", Path("old.xml")).Click("cmdOK").Answer(kIdNo);
  User.Check([&](auto& shown) { EXPECT_TRUE(shown.Visible() && !form->ExportOK()); });
  User.Click("cmdOK").Answer(kIdYes);
  form->Show();
  ASSERT_EQ(User.Messages.size(), 2u);
  for (const testing::ShownMessage& question : User.Messages) {
    EXPECT_EQ(question.Text, FormatResString(172, {Path("old.xml")}) + "\r\n" + MessageText(173));
    EXPECT_EQ(question.Title, MessageText(136));
    EXPECT_EQ(question.Style, 52);
  }
  EXPECT_TRUE(form->ExportOK());
  EXPECT_EQ(form->OutputFileName(), Path("old.xml"));
  EXPECT_TRUE(User.ScriptDone());
}

TEST_F(DialogTest, ASuggestedNameIsCheckedLikeATypedOne) {
  Write(Path("Song.xml"), "<old/>");
  WriteUser("ExU=dword:0\nExW=dword:0\nExOD=sz:" + Root.string() + "\n");
  auto form = Load<frmExport>();
  form->SuggestedFileName("Song.xml");
  EXPECT_EQ(form->ControlText("txtFileName"), Path("Song.xml"));
  User.Click("cmdBrowse").CancelDialog().Click("cmdOK").Answer(kIdYes);
  form->Show();
  EXPECT_EQ(User.FileDialogs.at(0).FileName, Path("Song"));
  EXPECT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(form->OutputFileName(), Path("Song.xml"));

  WriteUser("ExU=dword:0\nExW=dword:0\nExOD=sz:" + Path("gone") + "\n");
  auto moved = Load<frmExport>();
  moved->SuggestedFileName("Song.xml");
  User.Click("cmdOK").Click("cmdCancel");
  moved->Show();
  EXPECT_EQ(User.Messages.back().Text, FormatResString(171, {Path("gone")}));
}

TEST_F(DialogTest, CenterFormKeepsTheFormOnTheScreen) {
  struct Case {
    platform::Rect Host;
    int32_t Left, Top;
  };
  const Case cases[] = {{{100, 50, 900, 650}, 5388, 4464},
                        {{0, 0, 100, 50}, 0, 0},
                        {{-200, 300, 300, 500}, 0, 4500 + 714}};
  frmImport form;
  for (const Case& c : cases) {
    User.HostWindow = c.Host;
    CenterForm(form, 7);
    EXPECT_EQ(form.Left, c.Left);
    EXPECT_EQ(form.Top, c.Top);
  }
}

TEST_F(DialogTest, AboutShowsTheVersionAndOpensTheWebPage) {
  auto form = Load<frmImport>();
  User.ShellResult = 2;
  User.Click("cmdAbout").Check([](auto& about) {
    EXPECT_EQ(about.ControlText("lblVersion"), FormatResString(139, {"1", "2", "0"}));
  });
  User.Click("cmdUrl").Click("cmdOK").Click("cmdCancel");
  form->Show();
  EXPECT_EQ(User.ShownForms, (std::vector<std::string>{MessageText(118), MessageText(123)}));
  EXPECT_EQ(User.Opened, std::vector<std::string>{kProductWebPage});
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text, MessageText(209));
  EXPECT_FALSE(AboutForm().Loaded());
  EXPECT_TRUE(User.ScriptDone());
}

} // namespace
} // namespace ostin
