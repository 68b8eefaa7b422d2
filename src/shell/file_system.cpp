#include "shell/file_system.h"

#include <filesystem>

#include "shell/failure.h"

namespace ostin {

namespace {
bool& Available() {
  static bool available = true;
  return available;
}
constexpr int32_t kCannotCreateObject = 429;
} // namespace

FileSystemObject::FileSystemObject() {
  if (!Available())
    throw Failure(kCannotCreateObject, "Microsoft VBScript runtime error",
                  "ActiveX component can't create object");
}

void FileSystemObject::SetAvailableForTests(bool available) {
  Available() = available;
}

std::string FileSystemObject::BuildPath(const std::string& path, const std::string& name) const {
  if (path.empty()) return name;
  if (name.empty()) return path;
  bool pathEnds = path.back() == '/';
  bool nameStarts = name.front() == '/';
  if (pathEnds && nameStarts) return path + name.substr(1);
  if (pathEnds || nameStarts) return path + name;
  return path + "/" + name;
}

std::string FileSystemObject::GetParentFolderName(const std::string& path) const {
  std::string trimmed = path;
  while (trimmed.size() > 1 && trimmed.back() == '/')
    trimmed.pop_back();
  size_t slash = trimmed.rfind('/');
  if (slash == std::string::npos) return {};
  if (slash == 0) return "/";
  return trimmed.substr(0, slash);
}

std::string FileSystemObject::GetBaseName(const std::string& path) const {
  std::string trimmed = path;
  while (!trimmed.empty() && trimmed.back() == '/')
    trimmed.pop_back();
  size_t slash = trimmed.rfind('/');
  std::string name = slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
  size_t dot = name.rfind('.');
  return dot == std::string::npos ? name : name.substr(0, dot);
}

bool FileSystemObject::FolderExists(const std::string& path) const {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_directory(path, ec);
}

bool FileSystemObject::FileExists(const std::string& path) const {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_regular_file(path, ec);
}

} // namespace ostin
