#include "shell/music_directory.h"

#include <fstream>

#include "host/bridge.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr const char* kMissingDirectory = "CannotFindTheDirectory";
constexpr size_t kProfileBuffer = 260;
constexpr int32_t kFinalePathNotFound = Code(0x800402D3);
constexpr int32_t kMusicDirectoryHandler = Code(0x800402D4);

std::string Trim(const std::string& text) {
  size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  size_t last = text.find_last_not_of(" \t\r");
  return text.substr(first, last - first + 1);
}

// Cuts trailing blanks and one trailing NUL, as the buffer comes back from the system.
std::string CutBuffer(std::string text) {
  while (!text.empty() && text.back() == ' ')
    text.pop_back();
  if (!text.empty() && text.back() == '\0') text.pop_back();
  return text;
}
} // namespace

std::string GetPrivateProfileString(const std::string& section, const std::string& key,
                                    const std::string& fallback, const std::string& file) {
  std::ifstream in(file);
  std::string line;
  bool inSection = false;
  while (std::getline(in, line)) {
    std::string trimmed = Trim(line);
    if (!trimmed.empty() && trimmed.front() == '[') {
      inSection = trimmed == "[" + section + "]";
      continue;
    }
    size_t equals = trimmed.find('=');
    if (inSection && equals != std::string::npos && Trim(trimmed.substr(0, equals)) == key)
      return Trim(trimmed.substr(equals + 1)).substr(0, kProfileBuffer - 1);
  }
  return fallback;
}

std::string DefaultMusicDirectory() {
  return Guarded("DefaultMusicDirectory error ", kMusicDirectoryHandler, [] {
    if (FtxFinaleVersion() < 2003) {
      std::string ini;
      FtxGetIniFileName(&ini);
      std::string dir =
          CutBuffer(GetPrivateProfileString("Directories", "MusicDir", kMissingDirectory, ini));
      return dir == kMissingDirectory ? std::string() : dir;
    }
    std::string path;
    if (!FxGetFinalePath(3, &path)) RaiseLogged("Finale path not found", kFinalePathNotFound);
    return path;
  });
}

} // namespace ostin
