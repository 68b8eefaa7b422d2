#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <tuple>

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

bool LeftWithOK(FileDialogForm& form) {
  if (auto* import = dynamic_cast<frmImport*>(&form)) return import->ImportOK();
  return dynamic_cast<frmExport&>(form).ExportOK();
}

std::string ChosenFile(FileDialogForm& form) {
  if (auto* import = dynamic_cast<frmImport*>(&form)) return import->InputFileName();
  return dynamic_cast<frmExport&>(form).OutputFileName();
}

auto Fields(const platform::FileDialogRequest& r) {
  return std::tie(r.Save, r.Title, r.Filter, r.DefaultExt, r.InitDir, r.FileName, r.Flags);
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
    Write(MachineFile(), std::string(testing::kTestKeySection) + "DtdDir=sz:C:\\Ostin\\dtd\\\n");
    User.HostWindow = {100, 50, 900, 650};
  }
  void TearDown() override {
    FileSystemObject::SetAvailableForTests(true);
    TempRegistryTest::TearDown();
  }
  static RegKey UserKey() { return RegOpenKey(kHkeyCurrentUser, kRegistryKey, kKeyRead); }
  bool Logged(const std::string& text) { return Log().find(text) != std::string::npos; }

  testing::ScriptedUser User;
  const std::string Music = DefaultMusicDirectory();
};

// What tells the twins apart, as the user and the registry see it.
struct Twin {
  const char* Name;
  std::function<std::unique_ptr<FileDialogForm>()> Make;
  int32_t TitleId;
  const char* Values[3]; // left, top, directory
  int32_t CentredLeft, CentredTop;
  platform::FileDialogRequest Browse; // less the directories
  int32_t NoScriptingNumber;
  std::string NoScriptingDescription, NoScriptingLog;
};
void PrintTo(const Twin& twin, std::ostream* out) {
  *out << twin.Name;
}

class TwinTest : public DialogTest, public ::testing::WithParamInterface<Twin> {
protected:
  const Twin& T = GetParam();
  // The user's values under the twin's names.
  void WriteUser(int32_t left, int32_t top, const std::string& directory) {
    Write(UserFile(), testing::kTestKeySection + std::string(T.Values[0]) +
                          "=dword:" + std::to_string(static_cast<uint32_t>(left)) + "\n" +
                          T.Values[1] + "=dword:" + std::to_string(top) + "\n" + T.Values[2] +
                          "=sz:" + directory + "\n");
  }
  std::string StoredDirectory() { return RegQueryValueString(UserKey(), T.Values[2]); }
};

TEST_P(TwinTest, FirstStartCentresOnTheHostAndStoresTheValues) {
  auto form = T.Make();
  EXPECT_EQ(form->LoadErrorNumber(), 0);
  EXPECT_EQ(form->Caption(), MessageText(T.TitleId));
  auto shown = std::make_tuple(form->Left, form->Top, form->DefaultDirectory(),
                               form->ControlText("txtFileName"), form->SystemIdentifier());
  EXPECT_EQ(shown, std::make_tuple(T.CentredLeft, T.CentredTop, Music, Music, "C:/Ostin/dtd/"));
  auto stored = std::make_tuple(RegQueryValueNumber(UserKey(), T.Values[0]),
                                RegQueryValueNumber(UserKey(), T.Values[1]), StoredDirectory());
  EXPECT_EQ(stored, std::make_tuple(T.CentredLeft, T.CentredTop, Music));
  EXPECT_TRUE(Logged("Could not open registry key: The system cannot find the file specified."));
  // Without the machine key every start is a first start, whatever the user's values.
  std::filesystem::remove(MachineFile());
  std::filesystem::remove(Path("error.log"));
  WriteUser(1, 2, Path("saved"));
  for (int start = 0; start < 2; ++start) {
    form = T.Make();
    EXPECT_EQ(std::make_tuple(form->SystemIdentifier(), form->Left, form->DefaultDirectory()),
              std::make_tuple("", T.CentredLeft, Music));
    EXPECT_EQ(RegQueryValueNumber(UserKey(), T.Values[0]), T.CentredLeft);
  }
  EXPECT_TRUE(Logged("Could not open registry key: The system cannot find the file specified."));
}

TEST_P(TwinTest, SavedValuesComeBackUncheckedAndAnEmptyDirectoryFallsBack) {
  for (std::string saved : {Path("gone"), std::string()}) {
    WriteUser(-300, 20, saved);
    auto form = T.Make();
    EXPECT_EQ(std::make_tuple(form->Left, form->Top), std::make_tuple(-300, 20));
    EXPECT_EQ(form->DefaultDirectory(), saved.empty() ? Music : saved);
  }
}

TEST_P(TwinTest, ATypedNameInAMissingFolderKeepsTheDialogOpen) {
  auto form = T.Make();
  User.Type("txtFileName", Path("nowhere/a.xml")).Click("cmdOK").Check([&](auto& shown) {
    EXPECT_TRUE(shown.Visible() && !LeftWithOK(*form));
  });
  form->Show();
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(std::tie(User.Messages[0].Text, User.Messages[0].Style),
            std::make_tuple(FormatResString(171, {Path("nowhere")}), platform::kMbOk));
  EXPECT_TRUE(User.ScriptDone());
}

TEST_P(TwinTest, ABareFileNamePassesAndEmptiesTheDirectory) {
  auto form = T.Make();
  User.Click("cmdOK"); // OK without an entry gives no file
  form->Show();
  EXPECT_TRUE(LeftWithOK(*form) && ChosenFile(*form).empty() && User.Messages.empty());
  form = T.Make();
  User.Type("txtFileName", "song.xml").Click("cmdOK");
  form->Show();
  EXPECT_EQ(std::make_tuple(LeftWithOK(*form), form->Visible(), ChosenFile(*form),
                            form->DefaultDirectory(), StoredDirectory()),
            std::make_tuple(true, false, "song.xml", "", ""));
  EXPECT_EQ(T.Make()->DefaultDirectory(), Music);
}

TEST_P(TwinTest, BrowseCancelAndCancelChangeNothing) {
  auto form = T.Make();
  User.Click("cmdBrowse").CancelDialog().Check([&](auto& shown) {
    EXPECT_EQ(std::make_tuple(shown.ControlText("txtFileName"), form->DefaultDirectory()),
              std::tie(Music, Music));
  });
  User.Click("cmdBrowse").Choose(Path("a.xml")).Click("cmdCancel");
  form->Show();
  platform::FileDialogRequest expected = T.Browse;
  expected.InitDir = Music;
  ASSERT_EQ(User.FileDialogs.size(), 2u);
  EXPECT_EQ(Fields(User.FileDialogs[0]), Fields(expected));
  EXPECT_TRUE(User.Messages.empty() && !LeftWithOK(*form));
  EXPECT_EQ(StoredDirectory(), Music);
}

TEST_P(TwinTest, ABrowsedNameSkipsTheFolderTestAndTheQuestion) {
  Write(Path("old.xml"), "<old/>");
  for (std::string chosen : {Path("gone/x.xml"), Path("old.xml")}) {
    auto form = T.Make();
    User.Click("cmdBrowse").Choose(chosen).Click("cmdOK");
    form->Show();
    EXPECT_EQ(
        std::make_tuple(LeftWithOK(*form), ChosenFile(*form), form->ControlText("txtFileName")),
        std::make_tuple(true, chosen, chosen));
  }
  EXPECT_EQ(T.Make()->DefaultDirectory(), Root.string());
  EXPECT_TRUE(User.Messages.empty());
}

TEST_P(TwinTest, AFailureInAClickShowsMessage208) {
  auto form = T.Make();
  form->Terminate();
  User.Type("txtFileName", "a.xml").Click("cmdOK").Check([](auto& shown) {
    EXPECT_TRUE(shown.Visible());
  });
  form->Show();
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text,
            FormatResString(208, {"91", "Object variable or With block variable not set"}));
}

// An unwritable user key does not stop the load; missing scripting does, and says so.
TEST_P(TwinTest, OnlyMissingScriptingStopsTheLoadStep) {
  Write(Path("config"), "a file where the folder belongs");
  EXPECT_EQ(T.Make()->LoadErrorNumber(), 0);
  EXPECT_TRUE(Logged("Could not create registry key: "));
  FileSystemObject::SetAvailableForTests(false);
  auto form = T.Make();
  EXPECT_EQ(std::make_tuple(form->LoadErrorNumber(), form->LoadErrorDescription()),
            std::tie(T.NoScriptingNumber, T.NoScriptingDescription));
  EXPECT_TRUE(Logged(T.NoScriptingLog));
}

const std::string kNoObject = "ActiveX component can't create object";

template <class F> std::unique_ptr<FileDialogForm> Make() {
  return Load<F>();
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Twins, TwinTest, ::testing::Values(
    Twin{"Import", Make<frmImport>, 118, {"ImU", "ImW", "ImOD"}, 5388, 4464,
         {false, MessageText(134), "XML (*.xml)|*.xml", "xml", "", "", 6148},
         Code(0x80040733), MessageText(215), "Error 429 starting Windows Scripting: " + kNoObject},
    Twin{"Export", Make<frmExport>, 119, {"ExU", "ExW", "ExOD"}, 5394, 4458,
         {true, MessageText(136), "XML (*.xml)|*.xml", "xml", "", "", 32774},
         Code(0x80040571), "MusicXML internal error", "Exporter form load error 429: " + kNoObject}),
    [](const auto& twin) { return twin.param.Name; });
// clang-format on

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
    EXPECT_EQ(std::make_tuple(question.Title, question.Style),
              std::make_tuple(MessageText(136), 52));
  }
  EXPECT_TRUE(form->ExportOK() && !form->Visible() && form->OutputFileName() == Path("old.xml"));
}

TEST_F(DialogTest, ASuggestedNameIsCheckedLikeATypedOne) {
  Write(Path("Song.xml"), "<old/>");
  for (std::string directory : {Root.string(), Path("gone")}) {
    Write(UserFile(),
          testing::kTestKeySection + ("ExU=dword:0\nExW=dword:0\nExOD=sz:" + directory));
    auto form = Load<frmExport>();
    form->SuggestedFileName("Song.xml");
    EXPECT_EQ(form->ControlText("txtFileName"), directory + "/Song.xml");
    User.Click("cmdBrowse").CancelDialog().Click("cmdOK");
    directory == Root.string() ? User.Answer(kIdYes) : User.Click("cmdCancel");
    form->Show();
    EXPECT_EQ(User.FileDialogs.back().FileName, directory + "/Song");
  }
  ASSERT_EQ(User.Messages.size(), 2u);
  EXPECT_EQ(std::tie(User.Messages[0].Title, User.Messages[1].Text),
            std::make_tuple(MessageText(136), FormatResString(171, {Path("gone")})));
}

TEST_F(DialogTest, CenterFormKeepsTheFormOnTheScreen) {
  const std::tuple<platform::Rect, int32_t, int32_t> cases[] = {
      {{0, 0, 100, 50}, 0, 0}, {{-200, 300, 300, 500}, 0, 4500 + 714}};
  frmImport form;
  for (const auto& [host, left, top] : cases) {
    User.HostWindow = host;
    CenterForm(form, 7);
    EXPECT_EQ(std::make_tuple(form.Left, form.Top), std::make_tuple(left, top));
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
  EXPECT_TRUE(!AboutForm().Loaded() && User.ScriptDone());
}

} // namespace
} // namespace ostin
