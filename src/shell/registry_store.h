#pragma once
// The registry as two key-value files: the machine's and the current user's. The calls
// follow the system's registry API and answer with its error codes (0 is success).
//
// File format: a section per key path, one typed value per line.
//   [Software\Calvimora\Ostin Light for Finale 2004]
//   DtdDir=sz:/usr/share/ostinlight/
//   ImU=dword:1234
#include <cstddef>
#include <cstdint>
#include <string>

namespace ostin {

// The system's text for an error code, as FormatMessage gives it from the system table.
std::string FormatMessageSystem(int32_t code);

namespace regstore {

using RegKey = uint32_t;

// The two roots, with the values of the system's predefined keys.
inline constexpr RegKey kHkeyCurrentUser = 0x80000001u;
inline constexpr RegKey kHkeyLocalMachine = 0x80000002u;

// Value types.
inline constexpr uint32_t kRegNone = 0;
inline constexpr uint32_t kRegSz = 1;
inline constexpr uint32_t kRegDword = 4;

// Access rights that the files honour.
inline constexpr uint32_t kKeyQueryValue = 0x1;
inline constexpr uint32_t kKeySetValue = 0x2;
inline constexpr uint32_t kKeyCreateSubKey = 0x4;

// System error codes.
inline constexpr int32_t kErrorSuccess = 0;
inline constexpr int32_t kErrorFileNotFound = 2;
inline constexpr int32_t kErrorPathNotFound = 3;
inline constexpr int32_t kErrorAccessDenied = 5;
inline constexpr int32_t kErrorInvalidHandle = 6;
inline constexpr int32_t kErrorInvalidData = 13;
inline constexpr int32_t kErrorWriteFault = 29;
inline constexpr int32_t kErrorReadFault = 30;
inline constexpr int32_t kErrorInvalidParameter = 87;
inline constexpr int32_t kErrorMoreData = 234;

// The file behind a root: the machine's from OSTIN_MACHINE_REGISTRY, else beside the
// plug-in's library in ../etc/ostinlight/machine.reg; the user's in
// $XDG_CONFIG_HOME/ostinlight/user.reg. Empty for any other root.
std::string RegistryFile(RegKey root);

// A number as the 4 bytes of a registry value, low byte first, and back.
std::string DwordBytes(uint32_t number);
uint32_t DwordFromBytes(const std::string& bytes);

// RegOpenKeyEx: opens an existing key.
int32_t OpenKey(RegKey root, const std::string& path, uint32_t access, RegKey& key);
// RegCreateKeyEx: opens a key, making the file's folder and the key where they are missing.
int32_t CreateKey(RegKey root, const std::string& path, uint32_t access, RegKey& key);
// RegCloseKey.
int32_t CloseKey(RegKey key);
// RegQueryValueEx: a string comes with its closing NUL, a number as 4 bytes, low byte
// first. Data longer than `capacity` bytes gives kErrorMoreData.
int32_t QueryValue(RegKey key, const std::string& name, size_t capacity, uint32_t& type,
                   std::string& data);
// RegSetValueEx: data in the form QueryValue gives it. The file is replaced at once.
int32_t SetValue(RegKey key, const std::string& name, uint32_t type, const std::string& data);

} // namespace regstore
} // namespace ostin
