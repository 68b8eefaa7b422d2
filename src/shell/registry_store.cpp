#include "shell/registry_store.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>
#include <vector>

namespace ostin {

namespace {
struct SystemText {
  int32_t Code;
  const char* Text;
};

// The texts of the system message table for the codes the registry files give.
constexpr SystemText kSystemTexts[] = {
    {0, "The operation completed successfully."},
    {2, "The system cannot find the file specified."},
    {3, "The system cannot find the path specified."},
    {5, "Access is denied."},
    {6, "The handle is invalid."},
    {13, "The data is invalid."},
    {29, "The system cannot write to the specified device."},
    {30, "The system cannot read from the specified device."},
    {87, "The parameter is incorrect."},
    {234, "More data is available."},
};
} // namespace

std::string FormatMessageSystem(int32_t code) {
  for (const SystemText& row : kSystemTexts)
    if (row.Code == code) return row.Text;
  return "System error " + std::to_string(code) + ".";
}

namespace regstore {

namespace {
namespace fs = std::filesystem;

constexpr uint32_t kWriteAccess = kKeySetValue | kKeyCreateSubKey;
constexpr std::string_view kSzTag = "sz:";
constexpr std::string_view kDwordTag = "dword:";

struct Value {
  std::string Name;
  std::string Typed; // the text after "=": type tag and data
};

struct Section {
  std::string Path;
  std::vector<Value> Values;
};
using Sections = std::vector<Section>;

struct OpenedKey {
  std::string File;
  std::string Path;
  uint32_t Access;
};

std::map<RegKey, OpenedKey>& Handles() {
  static std::map<RegKey, OpenedKey> handles;
  return handles;
}

RegKey NewHandle(OpenedKey opened) {
  static RegKey next = 1;
  Handles().emplace(next, std::move(opened));
  return next++;
}

const OpenedKey* FindHandle(RegKey key) {
  auto found = Handles().find(key);
  return found == Handles().end() ? nullptr : &found->second;
}

// Key and value names compare as the system's do: letters without regard to case.
bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

bool FitsOnLine(std::string_view text) {
  return text.find_first_of("\r\n") == std::string_view::npos;
}

bool ValidKeyPath(std::string_view path) {
  return !path.empty() && FitsOnLine(path) && path.find(']') == std::string_view::npos;
}

bool ValidValueName(std::string_view name) {
  return !name.empty() && FitsOnLine(name) && name.find('=') == std::string_view::npos &&
         std::string_view("[;#").find(name.front()) == std::string_view::npos;
}

int32_t FromErrno(int error, int32_t otherwise) {
  switch (error) {
  case ENOENT:
    return kErrorFileNotFound;
  case ENOTDIR:
    return kErrorPathNotFound;
  case EACCES:
  case EPERM:
  case EROFS:
  case EISDIR:
    return kErrorAccessDenied;
  default:
    return otherwise;
  }
}

void ParseLine(std::string line, Sections& sections) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
  if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
    sections.push_back({line.substr(1, line.size() - 2), {}});
    return;
  }
  size_t equals = line.find('=');
  // Blank lines, comments and values before the first section carry nothing.
  if (equals == std::string::npos || !ValidValueName(line.substr(0, equals)) || sections.empty())
    return;
  sections.back().Values.push_back({line.substr(0, equals), line.substr(equals + 1)});
}

int32_t ReadSections(const std::string& file, Sections& sections) {
  sections.clear();
  std::error_code ec;
  if (fs::is_directory(file, ec)) return kErrorAccessDenied;
  std::ifstream in(file, std::ios::binary);
  if (!in) return FromErrno(errno, kErrorReadFault);
  std::string line;
  while (std::getline(in, line))
    ParseLine(std::move(line), sections);
  return in.bad() ? kErrorReadFault : kErrorSuccess;
}

std::string Serialize(const Sections& sections) {
  std::string text;
  for (const Section& section : sections) {
    if (!text.empty()) text += '\n';
    text += '[' + section.Path + "]\n";
    for (const Value& value : section.Values)
      text += value.Name + '=' + value.Typed + '\n';
  }
  return text;
}

bool WriteAll(int fd, const std::string& text) {
  for (size_t done = 0; done < text.size();) {
    ssize_t written = write(fd, text.data() + done, text.size() - done);
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) done += static_cast<size_t>(written);
  }
  return true;
}

// Writes a temporary file beside the target and renames it over the target, so that a
// reader sees the old file or the new one, never a part.
int32_t WriteSections(const std::string& file, const Sections& sections) {
  std::string temp = file + ".XXXXXX";
  int fd = mkstemp(temp.data());
  if (fd < 0) return FromErrno(errno, kErrorWriteFault);
  struct stat old {};
  fchmod(fd, stat(file.c_str(), &old) == 0 ? old.st_mode & 07777 : 0644);
  bool written = WriteAll(fd, Serialize(sections)) && fsync(fd) == 0;
  written = close(fd) == 0 && written;
  if (written && rename(temp.c_str(), file.c_str()) == 0) return kErrorSuccess;
  int error = errno;
  unlink(temp.c_str());
  return FromErrno(error, kErrorWriteFault);
}

// Makes the file's folder and checks that the file can be replaced.
int32_t PrepareWrite(const std::string& file) {
  fs::path folder = fs::path(file).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code ec;
  fs::create_directories(folder, ec);
  if (ec) return FromErrno(ec.value(), kErrorWriteFault);
  if (access(folder.c_str(), W_OK) != 0) return FromErrno(errno, kErrorWriteFault);
  if (access(file.c_str(), F_OK) == 0 && access(file.c_str(), W_OK) != 0) return kErrorAccessDenied;
  return kErrorSuccess;
}

Section* FindSection(Sections& sections, std::string_view path) {
  auto found = std::find_if(sections.begin(), sections.end(),
                            [&](const Section& section) { return SameName(section.Path, path); });
  return found == sections.end() ? nullptr : &*found;
}

// A key exists with its own section or as the parent of another key's section.
bool KeyExists(Sections& sections, const std::string& path) {
  std::string prefix = path + '\\';
  return FindSection(sections, path) ||
         std::any_of(sections.begin(), sections.end(), [&](const Section& section) {
           return section.Path.size() > prefix.size() &&
                  SameName(std::string_view(section.Path).substr(0, prefix.size()), prefix);
         });
}

Value* FindValue(Section& section, std::string_view name) {
  auto found = std::find_if(section.Values.begin(), section.Values.end(),
                            [&](const Value& value) { return SameName(value.Name, name); });
  return found == section.Values.end() ? nullptr : &*found;
}

int32_t Decode(std::string_view typed, uint32_t& type, std::string& data) {
  if (typed.starts_with(kSzTag)) {
    type = kRegSz;
    data = std::string(typed.substr(kSzTag.size())) + '\0';
    return kErrorSuccess;
  }
  if (!typed.starts_with(kDwordTag)) return kErrorInvalidData;
  std::string_view digits = typed.substr(kDwordTag.size());
  uint32_t number = 0;
  auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return kErrorInvalidData;
  type = kRegDword;
  data = DwordBytes(number);
  return kErrorSuccess;
}

int32_t Encode(uint32_t type, const std::string& data, std::string& typed) {
  if (type == kRegSz) {
    std::string text = data.substr(0, data.find('\0'));
    if (!FitsOnLine(text)) return kErrorInvalidData;
    typed = std::string(kSzTag) + text;
    return kErrorSuccess;
  }
  if (type != kRegDword) return kErrorInvalidParameter;
  if (data.size() != 4) return kErrorInvalidData;
  typed = std::string(kDwordTag) + std::to_string(DwordFromBytes(data));
  return kErrorSuccess;
}

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string HomeFolder() {
  std::string home = Environment("HOME");
  if (!home.empty()) return home;
  const passwd* user = getpwuid(getuid());
  return user && user->pw_dir ? user->pw_dir : "";
}

// The folder of the binary that holds this code: the plug-in's library, or a test program.
fs::path LibraryFolder() {
  static const char anchor = 0;
  Dl_info info{};
  std::error_code ec;
  fs::path binary;
  if (dladdr(&anchor, &info) != 0 && info.dli_fname && *info.dli_fname)
    binary = fs::canonical(info.dli_fname, ec);
  if (binary.empty() || ec) binary = fs::read_symlink("/proc/self/exe", ec);
  return binary.parent_path();
}

std::string MachineFile() {
  std::string file = Environment("OSTIN_MACHINE_REGISTRY");
  if (!file.empty()) return file;
  return (LibraryFolder() / ".." / "etc" / "ostinlight" / "machine.reg").lexically_normal();
}

std::string UserFile() {
  std::string config = Environment("XDG_CONFIG_HOME");
  if (config.empty()) config = HomeFolder() + "/.config";
  return config + "/ostinlight/user.reg";
}
} // namespace

std::string DwordBytes(uint32_t number) {
  std::string bytes(4, '\0');
  for (int i = 0; i < 4; ++i)
    bytes[i] = static_cast<char>((number >> (8 * i)) & 0xFF);
  return bytes;
}

uint32_t DwordFromBytes(const std::string& bytes) {
  uint32_t number = 0;
  for (size_t i = std::min<size_t>(bytes.size(), 4); i-- > 0;)
    number = (number << 8) | static_cast<unsigned char>(bytes[i]);
  return number;
}

std::string RegistryFile(RegKey root) {
  if (root == kHkeyLocalMachine) return MachineFile();
  if (root == kHkeyCurrentUser) return UserFile();
  return {};
}

int32_t OpenKey(RegKey root, const std::string& path, uint32_t access, RegKey& key) {
  std::string file = RegistryFile(root);
  if (file.empty()) return kErrorInvalidHandle;
  if (!ValidKeyPath(path)) return kErrorInvalidParameter;
  Sections sections;
  if (int32_t error = ReadSections(file, sections)) return error;
  if (!KeyExists(sections, path)) return kErrorFileNotFound;
  if (access & kWriteAccess)
    if (int32_t error = PrepareWrite(file)) return error;
  key = NewHandle({file, path, access});
  return kErrorSuccess;
}

int32_t CreateKey(RegKey root, const std::string& path, uint32_t access, RegKey& key) {
  std::string file = RegistryFile(root);
  if (file.empty()) return kErrorInvalidHandle;
  if (!ValidKeyPath(path)) return kErrorInvalidParameter;
  Sections sections;
  int32_t error = ReadSections(file, sections);
  if (error == kErrorFileNotFound) error = kErrorSuccess; // the new key brings the file
  bool missing = !KeyExists(sections, path);
  if (!error && (missing || (access & kWriteAccess))) error = PrepareWrite(file);
  if (!error && missing) {
    sections.push_back({path, {}});
    error = WriteSections(file, sections);
  }
  if (!error) key = NewHandle({file, path, access});
  return error;
}

int32_t CloseKey(RegKey key) {
  return Handles().erase(key) ? kErrorSuccess : kErrorInvalidHandle;
}

int32_t QueryValue(RegKey key, const std::string& name, size_t capacity, uint32_t& type,
                   std::string& data) {
  const OpenedKey* opened = FindHandle(key);
  if (!opened) return kErrorInvalidHandle;
  if (!(opened->Access & kKeyQueryValue)) return kErrorAccessDenied;
  Sections sections;
  if (int32_t error = ReadSections(opened->File, sections)) return error;
  Section* section = FindSection(sections, opened->Path);
  const Value* value = section ? FindValue(*section, name) : nullptr;
  if (!value) return kErrorFileNotFound;
  if (int32_t error = Decode(value->Typed, type, data)) return error;
  return data.size() > capacity ? kErrorMoreData : kErrorSuccess;
}

int32_t SetValue(RegKey key, const std::string& name, uint32_t type, const std::string& data) {
  const OpenedKey* opened = FindHandle(key);
  if (!opened) return kErrorInvalidHandle;
  if (!(opened->Access & kKeySetValue)) return kErrorAccessDenied;
  if (!ValidValueName(name)) return kErrorInvalidParameter;
  std::string typed;
  if (int32_t error = Encode(type, data, typed)) return error;
  Sections sections;
  int32_t error = ReadSections(opened->File, sections);
  if (error && error != kErrorFileNotFound) return error;
  Section* section = FindSection(sections, opened->Path);
  if (!section) section = &sections.emplace_back(Section{opened->Path, {}});
  if (Value* value = FindValue(*section, name))
    value->Typed = typed;
  else
    section->Values.push_back({name, typed});
  return WriteSections(opened->File, sections);
}

} // namespace regstore
} // namespace ostin
