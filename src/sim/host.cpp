#include "sim/host.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ostin::sim {

namespace {
std::string EnvOr(const char* name, const std::string& fallback) {
  const char* value = std::getenv(name);
  return value && *value ? std::string(value) : fallback;
}
} // namespace

Host& Host::Instance() {
  static Host host;
  return host;
}

void Host::Open(Document document) {
  document_ = std::move(document);
  snapshot_.reset();
  FretTuningBlocks.clear();
}

std::string Host::DefaultDocumentPath() {
  return EnvOr("OSTIN_DATA_DIR", OSTIN_DATA_DIR) + "/default-document.json";
}

Document Host::NewDocument() {
  Document doc = Document::LoadFile(DefaultDocumentPath());
  doc.Path.clear();
  return doc;
}

int32_t Host::Version() const {
  return VersionOption.value_or(document_.FinaleVersion);
}

bool Host::StartEdit(const std::string& title) {
  CallLog.push_back("FxStartFinaleEdit " + title);
  if (snapshot_) return false;
  snapshot_ = document_;
  return true;
}

bool Host::EndEdit() {
  CallLog.push_back("FxEndFinaleEdit");
  if (!snapshot_) return false;
  snapshot_.reset();
  return true;
}

bool Host::CancelEdit() {
  CallLog.push_back("FxCancelFinaleEdit");
  if (!snapshot_) return false;
  document_ = std::move(*snapshot_);
  snapshot_.reset();
  FretTuningBlocks.clear();
  return true;
}

int32_t Host::StartMassEdit(int32_t region, int32_t jobSize) {
  CallLog.push_back("FxStartMassEdit " + std::to_string(jobSize));
  massEditHandle_ = 1;
  massEditDone_ = 0;
  massEditJob_ = jobSize;
  progressCalls_ = 0;
  CancelRequested = false;
  if (ProgressListener) ProgressListener(0, jobSize);
  return massEditHandle_;
}

bool Host::MassEditProgress(int32_t handle, int16_t increment) {
  CallLog.push_back("FxMassEditProgress " + std::to_string(increment));
  if (handle == 0 || handle != massEditHandle_) return false;
  massEditDone_ += increment;
  ++progressCalls_;
  if (ProgressListener) ProgressListener(massEditDone_, massEditJob_);
  if (CancelAtProgressCall > 0 && progressCalls_ >= CancelAtProgressCall) CancelRequested = true;
  return !CancelRequested;
}

bool Host::EndMassEdit(int32_t handle, bool cancel) {
  CallLog.push_back(std::string("FxEndMassEdit ") + (cancel ? "1" : "0"));
  if (handle == 0 || handle != massEditHandle_) return false;
  massEditHandle_ = 0;
  return true;
}

std::string Host::MusicFolder() const {
  return EnvOr("OSTIN_MUSIC_DIR", EnvOr("HOME", "/tmp"));
}

std::string Host::IniFileName() const {
  std::string config = EnvOr("XDG_CONFIG_HOME", EnvOr("HOME", "/tmp") + "/.config");
  std::filesystem::path ini = std::filesystem::path(config) / "ostinlight" / "finale.ini";
  std::error_code ec;
  if (!std::filesystem::exists(ini, ec)) {
    // The host's settings file names the music folder in section Directories.
    std::filesystem::create_directories(ini.parent_path(), ec);
    std::ofstream out(ini);
    out << "[Directories]\nMusicDir=" << MusicFolder() << "\n";
  }
  return ini.string();
}

bool Host::Refuses(const char* call) const {
  if (Faults.empty()) return false;
  auto it = Faults.find(call);
  if (it == Faults.end()) return false;
  if (it->second == Fault::Throw) throw std::runtime_error(std::string(call) + " broke down");
  return true;
}

void Host::Reset() {
  Faults.clear();
  document_ = Document{};
  snapshot_.reset();
  FretTuningBlocks.clear();
  VersionOption.reset();
  massEditHandle_ = 0;
  massEditDone_ = 0;
  massEditJob_ = 0;
  progressCalls_ = 0;
  CancelRequested = false;
  CancelAtProgressCall = 0;
  ProgressListener = nullptr;
  CallLog.clear();
}

} // namespace ostin::sim
