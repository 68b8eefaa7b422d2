#pragma once
// The registry as the dialogs use it: strings and numbers in the program's own form, and
// every system error logged and raised as the program's own failure.
#include <cstdint>
#include <string>

#include "shell/failure.h"
#include "shell/registry_store.h"

namespace ostin {

using regstore::RegKey;
inline constexpr RegKey kHkeyLocalMachine = regstore::kHkeyLocalMachine;
inline constexpr RegKey kHkeyCurrentUser = regstore::kHkeyCurrentUser;

inline constexpr int32_t kKeyRead = 131097;  // 0x20019
inline constexpr int32_t kKeyWrite = 131078; // 0x20006

// The one key of the program, under both roots.
inline constexpr char kRegistryKey[] = "Software\\Calvimora\\Ostin Light for Finale 2004";

inline constexpr int32_t kRegOpenKeyFailed = Code(0x8004055E);
inline constexpr int32_t kRegCreateKeyFailed = Code(0x8004055D);
inline constexpr int32_t kRegCloseKeyFailed = Code(0x8004055C);
inline constexpr int32_t kRegValueMissing = Code(0x80040576);
inline constexpr int32_t kRegQueryNumberFailed = Code(0x80040560);
inline constexpr int32_t kRegQueryStringFailed = Code(0x80040561);
inline constexpr int32_t kRegSetNumberFailed = Code(0x80040562);
inline constexpr int32_t kRegSetStringFailed = Code(0x80040563);

RegKey RegOpenKey(RegKey root, const std::string& path, int32_t access);
// Opens the key, or creates it where it is missing.
RegKey RegCreateKey(RegKey root, const std::string& path, int32_t access);
void RegCloseKey(RegKey key);
int32_t RegQueryValueNumber(RegKey key, const std::string& name);
// Reads into a buffer of 1024 characters, cuts trailing blanks, then cuts at the first NUL.
std::string RegQueryValueString(RegKey key, const std::string& name);
void RegSetValueNumber(RegKey key, const std::string& name, int32_t value);
void RegSetValueString(RegKey key, const std::string& name, const std::string& value);

// An open key: Close() closes it with RegCloseKey; a failure that leaves before that
// closes it quietly.
class RegKeyScope {
public:
  explicit RegKeyScope(RegKey key) : key_(key) {}
  ~RegKeyScope();
  RegKeyScope(const RegKeyScope&) = delete;
  RegKeyScope& operator=(const RegKeyScope&) = delete;

  RegKey Get() const { return key_; }
  void Close();

private:
  RegKey key_;
  bool open_ = true;
};

} // namespace ostin
