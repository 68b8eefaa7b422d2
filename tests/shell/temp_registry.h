#pragma once
// A test fixture whose registry files and error log live in a fresh temporary folder.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "shell/error_log.h"

namespace ostin::testing {

inline const char kTestKeySection[] = "[Software\\Calvimora\\Ostin Light for Finale 2004]\n";

class TempRegistryTest : public ::testing::Test {
protected:
  void SetUp() override {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + "_" + test->name();
    std::replace(name.begin(), name.end(), '/', '_');
    Root =
        std::filesystem::temp_directory_path() / ("ostin_" + std::to_string(getpid()) + "_" + name);
    std::filesystem::remove_all(Root);
    std::filesystem::create_directories(Root);
    setenv("XDG_CONFIG_HOME", Path("config").c_str(), 1);
    setenv("OSTIN_MACHINE_REGISTRY", MachineFile().c_str(), 1);
    ResetLogForTests();
    SetLogPath(Path("error.log"));
  }
  void TearDown() override {
    ResetLogForTests();
    std::filesystem::remove_all(Root);
  }

  std::string Path(const std::string& name) const { return (Root / name).string(); }
  std::string MachineFile() const { return Path("machine.reg"); }
  std::string UserFile() const { return Path("config/ostinlight/user.reg"); }

  static void Write(const std::string& file, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << text;
  }
  static std::string Read(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::string Log() const { return Read(Path("error.log")); }

  std::filesystem::path Root;
};

} // namespace ostin::testing
