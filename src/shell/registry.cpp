#include "shell/registry.h"

namespace ostin {

namespace {
constexpr size_t kStringBuffer = 1024;

// The system's words for a code, after the wrapper's own.
std::string Explained(const std::string& text, int32_t error) {
  return text + FormatMessageSystem(error);
}

[[noreturn]] void FailQuery(int32_t error, const std::string& name, const std::string& text,
                            int32_t number) {
  if (error == regstore::kErrorFileNotFound)
    RaiseLogged("Could not read missing registry value " + name, kRegValueMissing);
  RaiseLogged(Explained(text + name + ": ", error), number);
}

// Reads a value of one type; a value of another type is invalid data.
std::string QueryTyped(RegKey key, const std::string& name, uint32_t type, size_t capacity,
                       const std::string& text, int32_t number) {
  uint32_t found = regstore::kRegNone;
  std::string data;
  int32_t error = regstore::QueryValue(key, name, capacity, found, data);
  if (!error && found != type) error = regstore::kErrorInvalidData;
  if (error) FailQuery(error, name, text, number);
  return data;
}
} // namespace

RegKey RegOpenKey(RegKey root, const std::string& path, int32_t access) {
  RegKey key = 0;
  if (int32_t error = regstore::OpenKey(root, path, static_cast<uint32_t>(access), key))
    RaiseLogged(Explained("Could not open registry key: ", error), kRegOpenKeyFailed);
  return key;
}

RegKey RegCreateKey(RegKey root, const std::string& path, int32_t access) {
  RegKey key = 0;
  if (int32_t error = regstore::CreateKey(root, path, static_cast<uint32_t>(access), key))
    RaiseLogged(Explained("Could not create registry key: ", error), kRegCreateKeyFailed);
  return key;
}

void RegCloseKey(RegKey key) {
  if (int32_t error = regstore::CloseKey(key))
    RaiseLogged(Explained("Could not close registry key: ", error), kRegCloseKeyFailed);
}

int32_t RegQueryValueNumber(RegKey key, const std::string& name) {
  std::string data = QueryTyped(key, name, regstore::kRegDword, 4,
                                "Could not read string registry key ", kRegQueryNumberFailed);
  return static_cast<int32_t>(regstore::DwordFromBytes(data));
}

std::string RegQueryValueString(RegKey key, const std::string& name) {
  std::string data = QueryTyped(key, name, regstore::kRegSz, kStringBuffer,
                                "Could not read string registry value ", kRegQueryStringFailed);
  // The system fills the start of a buffer of blanks.
  std::string buffer(kStringBuffer, ' ');
  buffer.replace(0, data.size(), data);
  buffer.erase(buffer.find_last_not_of(' ') + 1);
  return buffer.substr(0, buffer.find('\0'));
}

void RegSetValueNumber(RegKey key, const std::string& name, int32_t value) {
  std::string data = regstore::DwordBytes(static_cast<uint32_t>(value));
  if (int32_t error = regstore::SetValue(key, name, regstore::kRegDword, data))
    RaiseLogged(Explained("Could not set numeric registry value " + name + ": ", error),
                kRegSetNumberFailed);
}

void RegSetValueString(RegKey key, const std::string& name, const std::string& value) {
  if (int32_t error = regstore::SetValue(key, name, regstore::kRegSz, value + '\0'))
    RaiseLogged(Explained("Could not set string registry value " + name + ": ", error),
                kRegSetStringFailed);
}

RegKeyScope::~RegKeyScope() {
  if (open_) regstore::CloseKey(key_);
}

void RegKeyScope::Close() {
  open_ = false;
  RegCloseKey(key_);
}

} // namespace ostin
