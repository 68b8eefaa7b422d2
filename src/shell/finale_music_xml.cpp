#include "shell/finale_music_xml.h"

#include <atomic>

#include "host/bridge.h"
#include "host/gfhold.h"
#include "platform/code_page.h"
#include "platform/window_system.h"
#include "shell/error_log.h"
#include "shell/failure.h"
#include "shell/file_system.h"
#include "shell/messages.h"
#include "shell/music_directory.h"

namespace ostin {

namespace {
constexpr int32_t kEnumerateNumber = 601;
constexpr int32_t kGetMenuStatusNumber = 602;
constexpr int32_t kInitNumber = 603;
constexpr int32_t kInvokeNumber = 604;
constexpr int32_t kTerminateNumber = 605;
constexpr int32_t kVersionNumber = 606;
constexpr int32_t kDocumentPathNotFound = Code(0x800406A8);
constexpr int16_t kImportCommand = 0;
constexpr int16_t kExportCommand = 1;

std::atomic<int> instances{0};

// The last line of defence: a failure becomes a critical message box, never more.
void ShowFailure(int32_t ownNumber) {
  Failure failure = CurrentFailure();
  Register(failure);
  if (Err().ErrNumber != 0)
    Err().ErrNumber =
        static_cast<int32_t>(static_cast<int64_t>(Err().ErrNumber) - kObjectErrorBase);
  std::string text;
  if (failure.IsOwn()) {
    text = FormatResString(151, {std::to_string(Err().ErrNumber)}) + "\r\n" + failure.Description;
  } else {
    Err().ErrNumber = ownNumber;
    text = FormatResString(153, {std::to_string(ownNumber)});
  }
  platform::Windows().MessageBox(text, "", platform::kMbOk | platform::kMbIconCritical);
}

// Runs one plug-in operation; whatever fails ends in a message box, and the result
// stands as the body left it.
template <class Result, class Body>
Result PlugInOperation(int32_t ownNumber, Result& result, Body&& body) {
  try {
    body();
  } catch (...) {
    try {
      ShowFailure(ownNumber);
    } catch (...) {
      // Nothing may cross into the host, not even a failure to show a failure.
    }
  }
  return result;
}

void ShowPlain(int32_t messageId) {
  platform::Windows().MessageBox(FormatResString(messageId), "", platform::kMbOk);
}

// Hands the dialog's choice to an engine and runs it; an empty file name is nothing to do.
template <class Engine>
bool RunEngine(Engine& engine, int32_t hwnd, const std::string& fileName, int32_t fileType,
               const std::string& systemIdentifier, int32_t selectedRegion,
               int32_t documentRegion) {
  engine.hwnd = hwnd;
  engine.FileName = fileName;
  engine.FileType = fileType;
  engine.SystemIdentifier = systemIdentifier;
  if (engine.FileName.empty()) return false;
  return engine.Invoke(selectedRegion, documentRegion);
}

bool StartsWith(const std::string& text, const std::string& head) {
  return text.compare(0, head.size(), head) == 0;
}
} // namespace

bool EmptyFile() {
  Gfhold holder;
  return !holder.GetNext(0, 0);
}

FinaleMusicXML::FinaleMusicXML()
    : import_(std::make_unique<frmImport>()), export_(std::make_unique<frmExport>()) {
  ++instances;
}

FinaleMusicXML::~FinaleMusicXML() {
  --instances;
}

int FinaleMusicXML::Instances() {
  return instances;
}

bool FinaleMusicXML::FinalePlugIn_Enumerate(int32_t newHwnd, int16_t Index, std::string& MenuItem,
                                            std::string& MessageString, std::string& UndoString,
                                            bool& NeedSelectedRegion, bool& UseGetMenuStatus,
                                            bool& Launchable, bool& CanTerminateAfterInvoke,
                                            bool& CanTerminateAfterLastDialog) {
  bool result = false;
  return PlugInOperation(kEnumerateNumber, result, [&] {
    hwnd = newHwnd;
    NeedSelectedRegion = Launchable = CanTerminateAfterInvoke = CanTerminateAfterLastDialog = false;
    UseGetMenuStatus = true;
    MenuItem = MessageString = UndoString = "";
    if (Index != kImportCommand && Index != kExportCommand) return;
    int32_t first = Index == kImportCommand ? 140 : 143;
    MenuItem = MessageText(first);
    MessageString = MessageText(first + 1);
    UndoString = MessageText(first + 2);
    result = true;
  });
}

bool FinaleMusicXML::FinalePlugIn_GetMenuStatus(int16_t Index) {
  bool result = false;
  return PlugInOperation(kGetMenuStatusNumber, result, [&] {
    if (Index == kImportCommand) result = EmptyFile();
    if (Index == kExportCommand) result = !EmptyFile();
  });
}

bool FinaleMusicXML::FinalePlugIn_Init(int32_t newHwnd, int32_t&) {
  bool result = false;
  return PlugInOperation(kInitNumber, result, [&] {
    hwnd = newHwnd;
    import_->FinaleHwnd = hwnd;
    export_->FinaleHwnd = hwnd;
    import_->Form_Load();
    if (import_->LoadErrorNumber() != 0)
      throw Failure(import_->LoadErrorNumber(), std::string(kPlugInSource),
                    import_->LoadErrorDescription());
    export_->Form_Load();
    if (export_->LoadErrorNumber() != 0)
      throw Failure(export_->LoadErrorNumber(), std::string(kPlugInSource),
                    export_->LoadErrorDescription());
    SetLogPath(FileSystemObject().BuildPath(DefaultMusicDirectory(), kErrorLogName));
    result = true;
  });
}

bool FinaleMusicXML::FinalePlugIn_Invoke(int32_t newHwnd, int16_t Index, int32_t SelectedRegion,
                                         int32_t DocumentRegion) {
  bool result = false;
  return PlugInOperation(kInvokeNumber, result, [&] {
    FinaleVersion = FtxFinaleVersion();
    hwnd = newHwnd;
    FileSystemObject fso;
    if (Index == kImportCommand) result = InvokeImport(SelectedRegion, DocumentRegion);
    if (Index == kExportCommand) result = InvokeExport(SelectedRegion, DocumentRegion);
  });
}

bool FinaleMusicXML::InvokeImport(int32_t selectedRegion, int32_t documentRegion) {
  if (!EmptyFile()) {
    ShowPlain(154);
    return false;
  }
  fromXml_ = std::make_unique<FromXml>();
  import_->Show();
  if (!import_->ImportOK()) return false;
  return RunEngine(*fromXml_, hwnd, import_->InputFileName(), import_->InputFileType(),
                   import_->SystemIdentifier(), selectedRegion, documentRegion);
}

// The document's name: behind the "[" of the window title before 2003, its path after.
std::string FinaleMusicXML::DocumentName() {
  if (FinaleVersion >= 2003) {
    std::string path;
    if (!FxGetDocumentPath(FxGetCurrentEnigmaDocument(), &path))
      RaiseLogged("Finale document path not found", kDocumentPathNotFound);
    return HostToUtf8(path);
  }
  std::string title = platform::Windows().GetWindowText(hwnd);
  size_t bracket = title.find('[');
  if (bracket == std::string::npos) return {};
  std::string name = title.substr(bracket + 1);
  if (!name.empty() && name.back() == ']') name.pop_back();
  return name;
}

bool FinaleMusicXML::InvokeExport(int32_t selectedRegion, int32_t documentRegion) {
  std::string name = DocumentName();
  if (EmptyFile()) {
    ShowPlain(155);
    return false;
  }
  toXml_ = std::make_unique<ToXml>();
  std::string untitled = MessageText(149);
  std::string suggested;
  if (!name.empty() && !StartsWith(name, untitled))
    suggested = FileSystemObject().GetBaseName(name) + ".xml";
  export_->SuggestedFileName(suggested);
  export_->Show();
  if (!export_->ExportOK()) return false;
  return RunEngine(*toXml_, hwnd, export_->OutputFileName(), export_->OutputFileType(),
                   export_->SystemIdentifier(), selectedRegion, documentRegion);
}

void FinaleMusicXML::FinalePlugIn_Terminate(int32_t) {
  int result = 0;
  PlugInOperation(kTerminateNumber, result, [&] {
    import_->Terminate();
    export_->Terminate();
    fromXml_.reset();
    toXml_.reset();
  });
}

int32_t FinaleMusicXML::FinalePlugIn_Version(int32_t) {
  int32_t result = 0;
  return PlugInOperation(kVersionNumber, result, [&] { result = kPlugInVersion; });
}

} // namespace ostin

extern "C" {

int32_t DllGetClassObject(const char* className, ostin::FinalePlugIn** object) {
  if (!object) return kClassNotAvailable;
  *object = nullptr;
  if (!className || std::string(className) != kPlugInClassName) return kClassNotAvailable;
  try {
    *object = new ostin::FinaleMusicXML();
  } catch (...) {
    return kClassNotAvailable;
  }
  return kSOk;
}

int32_t DllCanUnloadNow() {
  return ostin::FinaleMusicXML::Instances() == 0 ? kSOk : kSFalse;
}

// The host finds the class through DllGetClassObject: there is nothing to record.
int32_t DllRegisterServer() {
  return kSOk;
}
int32_t DllUnregisterServer() {
  return kSOk;
}
}
