#pragma once
// Loads the plug-in's library at run time and makes its class, as the host does.
#include <memory>
#include <string>

#include "platform/finale_plugin.h"

namespace ostin::cli {

class PlugInLibrary {
public:
  // Loads the library; throws std::runtime_error with the loader's words on failure.
  explicit PlugInLibrary(const std::string& path);
  ~PlugInLibrary();
  PlugInLibrary(const PlugInLibrary&) = delete;
  PlugInLibrary& operator=(const PlugInLibrary&) = delete;

  std::unique_ptr<FinalePlugIn> CreateObject();

  // The plug-in beside this program: OSTIN_PLUGIN, else ../lib/libostinlight.so.
  static std::string DefaultPath();

private:
  void* handle_ = nullptr;
  decltype(&DllGetClassObject) getClassObject_ = nullptr;
};

} // namespace ostin::cli
