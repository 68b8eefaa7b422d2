#pragma once
// The one class the host sees: two menu commands, import (0) and export (1), their
// preconditions, the dialogs and the engines, and the last line of failure handling.
#include <memory>

#include "export/to_xml.h"
#include "import/from_xml.h"
#include "platform/finale_plugin.h"
#include "shell/frm_export.h"
#include "shell/frm_import.h"

namespace ostin {

inline constexpr int32_t kPlugInVersion = 0x09000000;

class FinaleMusicXML : public FinalePlugIn {
public:
  FinaleMusicXML();
  ~FinaleMusicXML() override;

  bool FinalePlugIn_Enumerate(int32_t hwnd, int16_t Index, std::string& MenuItem,
                              std::string& MessageString, std::string& UndoString,
                              bool& NeedSelectedRegion, bool& UseGetMenuStatus, bool& Launchable,
                              bool& CanTerminateAfterInvoke,
                              bool& CanTerminateAfterLastDialog) override;
  bool FinalePlugIn_GetMenuStatus(int16_t Index) override;
  bool FinalePlugIn_Init(int32_t hwnd, int32_t& Flags) override;
  bool FinalePlugIn_Invoke(int32_t hwnd, int16_t Index, int32_t SelectedRegion,
                           int32_t DocumentRegion) override;
  void FinalePlugIn_Terminate(int32_t hwnd) override;
  int32_t FinalePlugIn_Version(int32_t HighestVersion) override;

  int32_t FinaleVersion = 0;
  int32_t hwnd = 0;

  frmImport& ImportDialog() { return *import_; }
  frmExport& ExportDialog() { return *export_; }

  // Objects alive, for the component's unload test.
  static int Instances();

private:
  bool InvokeImport(int32_t selectedRegion, int32_t documentRegion);
  bool InvokeExport(int32_t selectedRegion, int32_t documentRegion);
  std::string DocumentName();

  std::unique_ptr<frmImport> import_;
  std::unique_ptr<frmExport> export_;
  std::unique_ptr<FromXml> fromXml_;
  std::unique_ptr<ToXml> toXml_;
};

// True when the document holds no frame at all: the one test of an empty document.
bool EmptyFile();

} // namespace ostin
