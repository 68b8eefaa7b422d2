#pragma once
// A test with a fresh host stand-in: registry files, music folder and error log in a
// temporary folder, a scripted user, and a document opened from the data folder.
#include <filesystem>
#include <string>

#include "../shell/scripted_user.h"
#include "../shell/temp_registry.h"
#include <nlohmann/json.hpp>

#include "shell/failure.h"
#include "sim/host.h"

namespace ostin::testing {

class HostTest : public TempRegistryTest {
protected:
  void SetUp() override {
    TempRegistryTest::SetUp();
    setenv("OSTIN_MUSIC_DIR", Root.c_str(), 1);
    sim::Host::Instance().Reset();
  }
  void TearDown() override {
    sim::Host::Instance().Reset();
    TempRegistryTest::TearDown();
  }

  static std::string DataFile(const std::string& name) {
    return std::string(OSTIN_DATA_DIR) + "/" + name;
  }
  // Opens a document of the data folder as the host's open document.
  static sim::Document& OpenData(const std::string& name) {
    sim::Host::Instance().Open(sim::Document::LoadFile(DataFile(name)));
    return sim::Host::Instance().Doc();
  }
  static sim::Host& HostSim() { return sim::Host::Instance(); }

  ScriptedUser User;
};

} // namespace ostin::testing
