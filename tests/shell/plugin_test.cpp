#include <gtest/gtest.h>

#include "../support/host_test.h"
#include "shell/file_system.h"
#include "shell/finale_music_xml.h"
#include "shell/messages.h"
#include "shell/music_directory.h"

namespace ostin {
namespace {

using testing::HostTest;

constexpr int32_t kHwnd = 77;

class PlugInTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    SetLanguage(kLanguageMain);
    User.HostWindow = {0, 0, 1000, 700};
  }
  void TearDown() override {
    FileSystemObject::SetAvailableForTests(true);
    HostTest::TearDown();
  }
  void Init() {
    int32_t flags = 5;
    ASSERT_TRUE(PlugIn.FinalePlugIn_Init(kHwnd, flags));
    EXPECT_EQ(flags, 5);
  }
  // Runs the export command with a user who only reads the suggested name and cancels.
  std::string SuggestedText() {
    std::string shown;
    User.Check([&](platform::ModalForm& form) { shown = form.ControlText("txtFileName"); })
        .Click("cmdCancel");
    EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 1, 0, 0));
    return shown;
  }

  FinaleMusicXML PlugIn;
};

TEST_F(PlugInTest, MenuOffersTwoCommands) {
  // Index, whether the command exists, the id of its menu text (then status text, undo text).
  const std::tuple<int16_t, bool, int32_t> cases[] = {
      {0, true, 140}, {1, true, 143}, {2, false, 0}, {-1, false, 0}};
  for (const auto& [index, exists, first] : cases) {
    std::string item = "x", message = "x", undo = "x";
    bool need = true, useStatus = false, launchable = true, afterInvoke = true, afterDialog = true;
    EXPECT_EQ(PlugIn.FinalePlugIn_Enumerate(kHwnd, index, item, message, undo, need, useStatus,
                                            launchable, afterInvoke, afterDialog),
              exists);
    auto text = [&](int32_t id) { return exists ? MessageText(id) : ""; };
    EXPECT_EQ(std::tie(item, message, undo),
              std::make_tuple(text(first), text(first + 1), text(first + 2)));
    EXPECT_TRUE(useStatus);
    EXPECT_FALSE(need || launchable || afterInvoke || afterDialog);
  }
  EXPECT_EQ(PlugIn.hwnd, kHwnd);
  EXPECT_EQ(PlugIn.FinalePlugIn_Version(0), 0x09000000);
  EXPECT_EQ(PlugIn.FinalePlugIn_Version(0x7FFFFFFF), 0x09000000);
}

TEST_F(PlugInTest, MenuStatusFollowsWhetherTheDocumentHoldsAFrame) {
  OpenData("default-document.json");
  auto status = [&](int16_t index) { return PlugIn.FinalePlugIn_GetMenuStatus(index); };
  EXPECT_EQ(std::make_pair(status(0), status(1)), std::make_pair(true, false));
  OpenData("sample.json");
  EXPECT_EQ(std::make_tuple(status(0), status(1), status(2)), std::make_tuple(false, true, false));
  EXPECT_TRUE(User.Messages.empty());
}

TEST_F(PlugInTest, ExportOfAnEmptyDocumentIsRefused) {
  OpenData("default-document.json");
  Init();
  EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 1, 0, 0));
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(std::tie(User.Messages[0].Text, User.Messages[0].Style),
            std::make_tuple(MessageText(155), platform::kMbOk));
  EXPECT_TRUE(User.ShownForms.empty());
  EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 2, 0, 0));
  EXPECT_EQ(User.Messages.size(), 1u);
}

TEST_F(PlugInTest, SuggestedFileNameComesFromTheDocumentsName) {
  OpenData("sample.json");
  Init();
  // Host year, window title, suggested name (empty: the text box holds the directory alone).
  const std::tuple<int32_t, std::string, std::string> cases[] = {
      // clang-format off
      {2002, "Finale 2002 - [Song.mus]", "Song.xml"}, {2002, "Finale 2002 - [Song]", "Song.xml"},
      {2002, "Finale 2002", ""}, {2002, "Finale 2002 - [Untitled 3]", ""},
      {2004, "ignored", "sample.xml"}, {2004, "untitled", ""}, // the last: a later host's untitled
      // clang-format on
  };
  for (const auto& [year, title, suggested] : cases) {
    HostSim().VersionOption = year;
    User.HostTitle = title;
    if (title == "untitled") {
      HostSim().Doc().Path.clear();
      HostSim().Doc().Title = "Untitled 1";
    }
    const std::string directory = PlugIn.ExportDialog().DefaultDirectory();
    EXPECT_EQ(SuggestedText(),
              suggested.empty() ? directory : FileSystemObject().BuildPath(directory, suggested))
        << title;
  }
}

TEST_F(PlugInTest, AnEmptyNameRunsNothingAndFailuresEndInACriticalMessageBox) {
  OpenData("sample.json");
  Init();
  User.Type("txtFileName", "").Click("cmdOK");
  EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 1, 0, 0));
  EXPECT_TRUE(User.Messages.empty());
  EXPECT_TRUE(HostSim().CallLog.empty()) << "no engine opened an edit";
  // A foreign failure that reaches the operation shows only its own number.
  FileSystemObject::SetAvailableForTests(false);
  EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 1, 0, 0));
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(std::tie(User.Messages[0].Text, User.Messages[0].Style),
            std::make_tuple(FormatResString(153, {"604"}), platform::kMbIconCritical));
  EXPECT_EQ(Err().ErrNumber, 604);

  // The program's own failure shows its number less the base, and its words.
  FileSystemObject::SetAvailableForTests(true);
  HostSim().Faults = {{"FxGetDocumentPath", sim::Host::Fault::Refuse}};
  EXPECT_FALSE(PlugIn.FinalePlugIn_Invoke(kHwnd, 1, 0, 0));
  ASSERT_EQ(User.Messages.size(), 2u);
  EXPECT_EQ(User.Messages[1].Text,
            FormatResString(151, {std::to_string(0x6A8)}) + "\r\nMusicXML internal error");
  EXPECT_NE(Log().find("Finale document path not found"), std::string::npos);
}

TEST_F(PlugInTest, InitFailsWithoutTheScriptingService) {
  FileSystemObject::SetAvailableForTests(false);
  int32_t flags = 0;
  EXPECT_FALSE(PlugIn.FinalePlugIn_Init(kHwnd, flags));
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text,
            FormatResString(151, {std::to_string(0x733)}) + "\r\n" + MessageText(215));
}

TEST_F(PlugInTest, InitSetsTheLogPathInTheMusicFolder) {
  ResetLogForTests();
  SetLogPath("");
  Init();
  EXPECT_EQ(LogPath(), Path("OstinLightError.log"));
  HostSim().VersionOption = 2002; // the settings file names the music folder
  EXPECT_EQ(DefaultMusicDirectory(), Root.string());
}

} // namespace
} // namespace ostin
