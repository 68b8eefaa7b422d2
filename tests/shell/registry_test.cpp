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
  void WriteUserValues() {
    Write(UserFile(), std::string(kTestKeySection) + "ImU=dword:5\nImOD=sz:x\nBad=dword:12ab\n" +
                          "Long=sz:" + std::string(1100, 'a') + "\n");
  }
  static RegKey OpenUser(int32_t access) {
    return RegOpenKey(kHkeyCurrentUser, kRegistryKey, access);
  }
};

struct WrapperFailure {
  const char* Case;
  std::function<void()> Act;
  int32_t Number;
  std::string Logged;
};

TEST_F(RegistryTest, SystemErrorsAreLoggedAndRaisedWithTheirOwnNumbers) {
  const WrapperFailure cases[] = {
      {"missing key", [] { RegOpenKey(kHkeyLocalMachine, kRegistryKey, kKeyRead); },
       kRegOpenKeyFailed,
       "Could not open registry key: The system cannot find the file specified."},
      {"missing number", [] { RegQueryValueNumber(OpenUser(kKeyRead), "ImW"); }, kRegValueMissing,
       "Could not read missing registry value ImW"},
      {"missing string", [] { RegQueryValueString(OpenUser(kKeyRead), "ExOD"); }, kRegValueMissing,
       "Could not read missing registry value ExOD"},
      {"number of a string", [] { RegQueryValueNumber(OpenUser(kKeyRead), "ImOD"); },
       kRegQueryNumberFailed, "Could not read string registry key ImOD: The data is invalid."},
      {"broken number", [] { RegQueryValueNumber(OpenUser(kKeyRead), "Bad"); },
       kRegQueryNumberFailed, "Could not read string registry key Bad: The data is invalid."},
      {"string of a number", [] { RegQueryValueString(OpenUser(kKeyRead), "ImU"); },
       kRegQueryStringFailed, "Could not read string registry value ImU: The data is invalid."},
      {"string over 1024", [] { RegQueryValueString(OpenUser(kKeyRead), "Long"); },
       kRegQueryStringFailed, "Could not read string registry value Long: More data is available."},
      {"number into a read key", [] { RegSetValueNumber(OpenUser(kKeyRead), "ImU", 1); },
       kRegSetNumberFailed, "Could not set numeric registry value ImU: Access is denied."},
      {"string into a read key", [] { RegSetValueString(OpenUser(kKeyRead), "ImOD", "y"); },
       kRegSetStringFailed, "Could not set string registry value ImOD: Access is denied."},
      {"closed twice",
       [] {
         RegKey key = OpenUser(kKeyRead);
         RegCloseKey(key);
         RegCloseKey(key);
       },
       kRegCloseKeyFailed, "Could not close registry key: The handle is invalid."},
  };
  WriteUserValues();
  for (const WrapperFailure& c : cases) {
    SCOPED_TRACE(c.Case);
    try {
      c.Act();
      ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, c.Number);
      EXPECT_EQ(failure.Source, "FinalePlugIn");
      EXPECT_EQ(failure.Description, "MusicXML internal error");
    }
    std::string log = Log();
    EXPECT_EQ(log.substr(log.rfind(" Error: ") + 8), c.Logged + "\n");
  }
}

TEST_F(RegistryTest, KeyCannotBeCreatedWhereTheFolderCannotBe) {
  Write(Path("config"), "a file where the folder belongs");
  try {
    RegCreateKey(kHkeyCurrentUser, kRegistryKey, kKeyWrite);
    ADD_FAILURE() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, kRegCreateKeyFailed);
  }
  EXPECT_NE(Log().find("Could not create registry key: The system cannot find the path"),
            std::string::npos);
}

TEST_F(RegistryTest, ValuesComeBackAsWritten) {
  const int32_t numbers[] = {0, 1234, -1, INT_MIN, INT_MAX};
  const std::string strings[] = {"", "C:\\Music\\", "trailing blanks  ", "Ünïcode/Päth"};
  RegKey key = RegCreateKey(kHkeyCurrentUser, kRegistryKey, kKeyWrite);
  RegKey reader = OpenUser(kKeyRead);
  for (int32_t number : numbers) {
    RegSetValueNumber(key, "N", number);
    EXPECT_EQ(RegQueryValueNumber(reader, "N"), number);
  }
  for (const std::string& text : strings) {
    RegSetValueString(key, "S", text);
    EXPECT_EQ(RegQueryValueString(reader, "S"), text);
  }
}

TEST_F(RegistryTest, WritesReplaceTheFileAndKeepEverythingElse) {
  Write(UserFile(), "[Other\\Key]\nKeep=sz:yes\n\n" + std::string(kTestKeySection) +
                        "imu=dword:1\n; a comment\n");
  RegKey key = RegCreateKey(kHkeyCurrentUser, kRegistryKey, kKeyWrite);
  RegSetValueNumber(key, "ImU", 7);
  RegSetValueString(key, "ImOD", "d");
  RegCloseKey(key);
  EXPECT_EQ(Read(UserFile()), "[Other\\Key]\nKeep=sz:yes\n\n" + std::string(kTestKeySection) +
                                  "imu=dword:7\nImOD=sz:d\n");
  auto files = std::distance(std::filesystem::directory_iterator(Root / "config/ostinlight"), {});
  EXPECT_EQ(files, 1) << "a temporary file stayed behind";
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
  namespace fs = std::filesystem;
  std::string beside =
      (fs::canonical("/proc/self/exe").parent_path() / "../etc/ostinlight/machine.reg")
          .lexically_normal();
  struct Case {
    const char* Name;
    const char* Value; // nullptr: unset
    RegKey Root;
    std::string Expected;
  };
  const Case cases[] = {
      {"OSTIN_MACHINE_REGISTRY", "/m/machine.reg", kHkeyLocalMachine, "/m/machine.reg"},
      {"OSTIN_MACHINE_REGISTRY", nullptr, kHkeyLocalMachine, beside},
      {"XDG_CONFIG_HOME", "/cfg", kHkeyCurrentUser, "/cfg/ostinlight/user.reg"},
      {"XDG_CONFIG_HOME", "", kHkeyCurrentUser, "/home/u/.config/ostinlight/user.reg"},
      {"XDG_CONFIG_HOME", nullptr, kHkeyCurrentUser, "/home/u/.config/ostinlight/user.reg"},
  };
  std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
  setenv("HOME", "/home/u", 1);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Expected);
    c.Value ? setenv(c.Name, c.Value, 1) : unsetenv(c.Name);
    EXPECT_EQ(regstore::RegistryFile(c.Root), c.Expected);
  }
  setenv("HOME", home.c_str(), 1);
}

TEST(FormatMessageSystem, GivesTheSystemText) {
  EXPECT_EQ(FormatMessageSystem(2), "The system cannot find the file specified.");
  EXPECT_EQ(FormatMessageSystem(5), "Access is denied.");
  EXPECT_EQ(FormatMessageSystem(9999), "System error 9999.");
}

} // namespace
} // namespace ostin
