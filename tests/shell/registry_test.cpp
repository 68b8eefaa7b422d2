#include "shell/registry.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "temp_registry.h"

namespace ostin {
namespace {

using testing::kTestKeySection;

class RegistryTest : public testing::TempRegistryTest {
protected:
  static RegKey UserKey() { return RegOpenKey(kHkeyCurrentUser, kRegistryKey, kKeyRead); }
};

TEST_F(RegistryTest, SystemErrorsAreLoggedAndRaisedWithTheirOwnNumbers) {
  const std::tuple<std::function<void()>, int32_t, std::string> cases[] = {
      // clang-format off
      {[] { RegOpenKey(kHkeyCurrentUser, "Software\\Other", kKeyRead); }, kRegOpenKeyFailed, "Could not open registry key: The system cannot find the file specified."},
      {[] { RegCreateKey(kHkeyLocalMachine, kRegistryKey, kKeyWrite); }, kRegCreateKeyFailed, "Could not create registry key: The system cannot find the path specified."},
      {[] { RegCloseKey(999); }, kRegCloseKeyFailed, "Could not close registry key: The handle is invalid."},
      {[] { RegQueryValueNumber(UserKey(), "ImW"); }, kRegValueMissing, "Could not read missing registry value ImW"},
      {[] { RegQueryValueString(UserKey(), "ExOD"); }, kRegValueMissing, "Could not read missing registry value ExOD"},
      {[] { RegQueryValueNumber(UserKey(), "ImOD"); }, kRegQueryNumberFailed, "Could not read string registry key ImOD: The data is invalid."},
      {[] { RegQueryValueNumber(UserKey(), "Bad"); }, kRegQueryNumberFailed, "Could not read string registry key Bad: The data is invalid."},
      {[] { RegQueryValueString(UserKey(), "ImU"); }, kRegQueryStringFailed, "Could not read string registry value ImU: The data is invalid."},
      {[] { RegQueryValueString(UserKey(), "Long"); }, kRegQueryStringFailed, "Could not read string registry value Long: More data is available."},
      {[] { RegSetValueNumber(UserKey(), "ImU", 1); }, kRegSetNumberFailed, "Could not set numeric registry value ImU: Access is denied."},
      {[] { RegSetValueString(UserKey(), "ImOD", "y"); }, kRegSetStringFailed, "Could not set string registry value ImOD: Access is denied."},
      // clang-format on
  };
  Write(UserFile(), kTestKeySection + ("ImU=dword:5\nImOD=sz:x\nBad=dword:12ab\nLong=sz:" +
                                       std::string(1100, 'a')));
  setenv("OSTIN_MACHINE_REGISTRY", (UserFile() + "/machine.reg").c_str(), 1);
  for (const auto& [act, number, logged] : cases) {
    SCOPED_TRACE(logged);
    try {
      act();
      ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, number);
      EXPECT_EQ(failure.Source + "/" + failure.Description, "FinalePlugIn/MusicXML internal error");
    }
    std::string log = Log();
    EXPECT_EQ(log.substr(log.rfind(" Error: ") + 8), logged + "\n");
  }
}

TEST_F(RegistryTest, WritesReplaceTheFileKeepTheRestAndComeBackAsWritten) {
  const std::string other = "[Other\\Key]\nKeep=sz:yes\n\n" + std::string(kTestKeySection);
  Write(UserFile(), other + "imu=dword:1\n");
  RegKey key = RegCreateKey(kHkeyCurrentUser, kRegistryKey, kKeyWrite);
  RegSetValueNumber(key, "ImU", 7);
  RegSetValueString(key, "ImOD", "d");
  EXPECT_EQ(Read(UserFile()), other + "imu=dword:7\nImOD=sz:d\n");
  auto files = std::distance(std::filesystem::directory_iterator(Root / "config/ostinlight"), {});
  EXPECT_EQ(files, 1) << "a temporary file stayed behind";
  // Values come back as written, the extremes included.
  for (int32_t number : {0, 1234, -1, INT_MIN, INT_MAX}) {
    RegSetValueNumber(key, "N", number);
    EXPECT_EQ(RegQueryValueNumber(UserKey(), "N"), number);
  }
  for (std::string text : {"", "C:\\Music\\", "trailing blanks  ", "Ünïcode/Päth"}) {
    RegSetValueString(key, "S", text);
    EXPECT_EQ(RegQueryValueString(UserKey(), "S"), text);
  }
}

TEST_F(RegistryTest, MachineFileAsTheBuildWritesIt) {
  Write(MachineFile(), std::string(kTestKeySection) + "DtdDir=sz:/opt/ostin/data/\n");
  RegKey key =
      RegOpenKey(kHkeyLocalMachine, "software\\calvimora\\ostin light for finale 2004", kKeyRead);
  EXPECT_EQ(RegQueryValueString(key, "dtddir"), "/opt/ostin/data/");
  EXPECT_NO_THROW(RegOpenKey(kHkeyLocalMachine, "Software\\Calvimora", kKeyRead));
  EXPECT_THROW(RegOpenKey(kHkeyLocalMachine, "Software\\Calvi", kKeyRead), Failure);
}

TEST_F(RegistryTest, FilesFollowTheEnvironment) {
  std::filesystem::path binary = std::filesystem::canonical("/proc/self/exe");
  const std::tuple<const char*, const char*, RegKey, std::string> cases[] = {
      {"OSTIN_MACHINE_REGISTRY", "/m.reg", kHkeyLocalMachine, "/m.reg"},
      {"OSTIN_MACHINE_REGISTRY", nullptr, kHkeyLocalMachine,
       (binary.parent_path() / "../etc/ostinlight/machine.reg").lexically_normal()},
      {"XDG_CONFIG_HOME", "/cfg", kHkeyCurrentUser, "/cfg/ostinlight/user.reg"},
      {"XDG_CONFIG_HOME", "", kHkeyCurrentUser, "/home/u/.config/ostinlight/user.reg"},
      {"XDG_CONFIG_HOME", nullptr, kHkeyCurrentUser, "/home/u/.config/ostinlight/user.reg"},
  };
  std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
  setenv("HOME", "/home/u", 1);
  for (const auto& [name, value, root, expected] : cases) {
    value ? setenv(name, value, 1) : unsetenv(name);
    EXPECT_EQ(regstore::RegistryFile(root), expected);
  }
  setenv("HOME", home.c_str(), 1);
}

} // namespace
} // namespace ostin
