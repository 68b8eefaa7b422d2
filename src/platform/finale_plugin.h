#pragma once
// The interface through which the host drives a plug-in, and the component entry points
// that the host looks up in the plug-in's library.
#include <cstdint>
#include <string>

namespace ostin {

class FinalePlugIn {
public:
  virtual ~FinalePlugIn() = default;
  virtual bool FinalePlugIn_Enumerate(int32_t hwnd, int16_t Index, std::string& MenuItem,
                                      std::string& MessageString, std::string& UndoString,
                                      bool& NeedSelectedRegion, bool& UseGetMenuStatus,
                                      bool& Launchable, bool& CanTerminateAfterInvoke,
                                      bool& CanTerminateAfterLastDialog) = 0;
  virtual bool FinalePlugIn_GetMenuStatus(int16_t Index) = 0;
  virtual bool FinalePlugIn_Init(int32_t hwnd, int32_t& Flags) = 0;
  virtual bool FinalePlugIn_Invoke(int32_t hwnd, int16_t Index, int32_t SelectedRegion,
                                   int32_t DocumentRegion) = 0;
  virtual void FinalePlugIn_Terminate(int32_t hwnd) = 0;
  virtual int32_t FinalePlugIn_Version(int32_t HighestVersion) = 0;
};

} // namespace ostin

// Component entry points, with the results of the platform: 0 (S_OK) for success.
extern "C" {
// Gives a new object of the named class; the caller owns it and releases it with delete.
int32_t DllGetClassObject(const char* className, ostin::FinalePlugIn** object);
int32_t DllCanUnloadNow();
int32_t DllRegisterServer();
int32_t DllUnregisterServer();
}

inline constexpr const char* kPlugInClassName = "FinaleMusicXML";
inline constexpr int32_t kSOk = 0;
inline constexpr int32_t kSFalse = 1;
inline constexpr int32_t kClassNotAvailable = static_cast<int32_t>(0x80040111u);
