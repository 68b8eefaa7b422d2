#include "plugin_loader.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace ostin::cli {

PlugInLibrary::PlugInLibrary(const std::string& path) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) throw std::runtime_error(std::string("cannot load the plug-in: ") + dlerror());
  getClassObject_ =
      reinterpret_cast<decltype(&DllGetClassObject)>(dlsym(handle_, "DllGetClassObject"));
  if (!getClassObject_) {
    dlclose(handle_);
    throw std::runtime_error(path + " is not a plug-in: it has no DllGetClassObject");
  }
}

PlugInLibrary::~PlugInLibrary() {
  auto canUnload = reinterpret_cast<decltype(&DllCanUnloadNow)>(dlsym(handle_, "DllCanUnloadNow"));
  if (!canUnload || canUnload() == kSOk) dlclose(handle_);
}

std::unique_ptr<FinalePlugIn> PlugInLibrary::CreateObject() {
  FinalePlugIn* object = nullptr;
  if (getClassObject_(kPlugInClassName, &object) != kSOk || !object)
    throw std::runtime_error("the plug-in does not offer the class FinaleMusicXML");
  return std::unique_ptr<FinalePlugIn>(object);
}

std::string PlugInLibrary::DefaultPath() {
  if (const char* path = std::getenv("OSTIN_PLUGIN"); path && *path) return path;
  std::error_code ec;
  std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
  return (self.parent_path().parent_path() / "lib" / "libostinlight.so").string();
}

} // namespace ostin::cli
