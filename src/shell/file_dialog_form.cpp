#include "shell/file_dialog_form.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <utility>

#include "shell/error_log.h"
#include "shell/frm_about.h"
#include "shell/messages.h"
#include "shell/music_directory.h"
#include "shell/registry.h"

namespace ostin {

namespace {
constexpr int32_t kCenterFormError = Code(0x8004056F);
constexpr int32_t kScriptingMissing = Code(0x80040733);
constexpr int32_t kMessageScriptingMissing = 215;
constexpr int32_t kMessageClickFailure = 208;
constexpr int32_t kMessageNoFolder = 171;
constexpr int32_t kObjectNotSet = 91;
constexpr int32_t kCommonDialogCancel = 32755;
constexpr const char* kCommonDialogSource = "CommonDialog";
constexpr const char* kXmlFilter = "XML (*.xml)|*.xml";
constexpr const char* kXmlExtension = "xml";

// Failures that say that the key or a value is missing: a first start, not a fault.
constexpr std::initializer_list<int32_t> kRegistryMissing = {kRegOpenKeyFailed, Code(0x80040556),
                                                             kRegValueMissing};
// Failures that say that the user's key cannot be made: the run goes on without saving.
constexpr std::initializer_list<int32_t> kRegistryNotCreated = {kRegCreateKeyFailed,
                                                                Code(0x80040555)};

// Runs body under the operation's standard handler; the failures `expected` give false.
template <class Body>
bool GuardedUnless(const Operation& operation, std::initializer_list<int32_t> expected,
                   Body&& body) {
  try {
    return body();
  } catch (...) {
    Failure failure = CurrentFailure();
    if (std::find(expected.begin(), expected.end(), failure.Number) == expected.end())
      StandardHandler(operation.LogText, operation.Number);
    Register(failure);
    return false;
  }
}

// The system's common dialog: the chosen file; its cancel button raises a failure.
std::string ShowCommonDialog(const platform::FileDialogRequest& request) {
  std::optional<std::string> chosen = platform::Windows().ShowFileDialog(request);
  if (!chosen) throw Failure(kCommonDialogCancel, kCommonDialogSource, "Cancel was selected.");
  return *chosen;
}

bool IsCommonDialogCancel(const Failure& failure) {
  return failure.Number == kCommonDialogCancel && failure.Source == kCommonDialogSource;
}

std::string Slashed(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}
} // namespace

Form::Form(int32_t width, int32_t height, std::vector<FormControl> controls)
    : width_(width), height_(height), controls_(std::move(controls)) {}

const FormControl& Form::Control(const std::string& name) const {
  auto found = std::find_if(controls_.begin(), controls_.end(),
                            [&](const FormControl& control) { return control.Name == name; });
  if (found == controls_.end()) throw std::invalid_argument("no control " + name);
  return *found;
}

FormControl& Form::Control(const std::string& name) {
  return const_cast<FormControl&>(std::as_const(*this).Control(name));
}

std::string Form::ControlText(const std::string& control) const {
  return Control(control).Text;
}

void Form::TypeText(const std::string& control, const std::string& text) {
  FormControl& box = Control(control);
  if (box.Kind != ControlKind::TextBox) throw std::invalid_argument(control + " takes no text");
  box.Text = text;
  OnKeyPress(control);
}

void Form::Show() {
  OnShow();
  visible_ = true;
  platform::Windows().ShowModal(*this);
  if (visible_) OnClose();
  platform::Windows().DoEvents();
}

void Form::LoadCaptions(int32_t titleId) {
  caption_ = MessageText(titleId);
  for (FormControl& control : controls_)
    if (control.CaptionId != 0) control.Text = MessageText(control.CaptionId);
}

void Form::ReportClickFailure() {
  Failure failure = CurrentFailure();
  Register(failure);
  platform::Windows().MessageBox(
      FormatResString(kMessageClickFailure, {std::to_string(failure.Number), failure.Description}),
      "", platform::kMbOk);
}

void CenterForm(Form& form, int32_t hwnd) {
  Guarded("CenterForm error ", kCenterFormError, [&] {
    constexpr int32_t kTwips = platform::kTwipsPerPixel;
    platform::Rect host = platform::Windows().GetWindowRect(hwnd);
    int32_t width = (host.Right - host.Left) * kTwips;
    int32_t height = (host.Bottom - host.Top) * kTwips;
    form.Left = std::max(0, (width - form.Width()) / 2 + host.Left * kTwips);
    form.Top = std::max(0, (height - form.Height()) / 2 + host.Top * kTwips);
  });
}

namespace {
// Both dialogs have this layout; only the label's caption differs.
std::vector<FormControl> DialogControls(int32_t labelId) {
  return {
      {"lblFileName", ControlKind::Label, 120, 240, 948, 192, 0, labelId, {}},
      {"txtFileName", ControlKind::TextBox, 120, 600, 3972, 288, 1, 0, {}},
      {"cmdOK", ControlKind::Button, 120, 1080, 972, 372, 2, 103, {}},
      {"cmdCancel", ControlKind::Button, 1320, 1080, 972, 372, 3, 104, {}},
      {"cmdBrowse", ControlKind::Button, 2880, 120, 1212, 372, 4, 106, {}},
      {"cmdAbout", ControlKind::Button, 2520, 1080, 1572, 372, 5, 105, {}},
  };
}
} // namespace

FileDialogForm::FileDialogForm(const FileDialogTraits& traits)
    : Form(traits.Width, traits.Height, DialogControls(traits.LabelId)), traits_(traits) {}

FileSystemObject& FileDialogForm::Fso() {
  if (!fso_)
    throw Failure(kObjectNotSet, "OstinConvLt", "Object variable or With block variable not set");
  return *fso_;
}

void FileDialogForm::FillTextBox(const std::string& text, bool edited) {
  Control("txtFileName").Text = text;
  fileNameEdited_ = edited;
}

void FileDialogForm::OnKeyPress(const std::string& control) {
  if (control == "txtFileName") fileNameEdited_ = true;
}

void FileDialogForm::Form_Load() {
  loadErrorNumber_ = 0;
  loadErrorDescription_.clear();
  try {
    LoadSteps();
  } catch (...) {
    RecordLoadFailure();
  }
}

void FileDialogForm::LoadSteps() {
  LoadCaptions(traits_.TitleId);
  if (!StartScripting()) return;
  if (RegGet()) {
    Left = savedLeft_;
    Top = savedTop_;
    defaultDirectory_ = savedDirectory_.empty() ? DefaultMusicDirectory() : savedDirectory_;
  } else {
    FirstStart();
  }
  commonDialog_.InitDir = defaultDirectory_;
  Control("txtFileName").Text = defaultDirectory_;
}

bool FileDialogForm::StartScripting() {
  try {
    fso_ = std::make_unique<FileSystemObject>();
    return true;
  } catch (const Failure& failure) {
    if (!traits_.GuardScripting || (failure.Number != 429 && failure.Number != 430)) throw;
    Register(failure);
    WriteLog("Error " + std::to_string(failure.Number) +
             " starting Windows Scripting: " + failure.Description);
    loadErrorNumber_ = kScriptingMissing;
    loadErrorDescription_ = MessageText(kMessageScriptingMissing);
    return false;
  }
}

// The first start for this user: centred on the host, in the music folder, saved at once.
void FileDialogForm::FirstStart() {
  if (FinaleHwnd != 0) CenterForm(*this, FinaleHwnd);
  OnFirstStart();
  defaultDirectory_ = DefaultMusicDirectory();
  RegSave();
}

void FileDialogForm::RecordLoadFailure() {
  Failure failure = CurrentFailure();
  Register(failure);
  if (failure.IsOwn()) {
    loadErrorNumber_ = failure.Number;
    loadErrorDescription_ = failure.Description;
    return;
  }
  WriteLog(traits_.Load.LogText + std::to_string(failure.Number) + ": " + failure.Description);
  loadErrorNumber_ = traits_.Load.Number;
  loadErrorDescription_ = kInternalError;
}

bool FileDialogForm::RegGet() {
  return GuardedUnless(traits_.RegGet, kRegistryMissing, [&] {
    ReadMachineValues();
    ReadUserValues();
    return true;
  });
}

void FileDialogForm::ReadMachineValues() {
  RegKeyScope key(RegOpenKey(kHkeyLocalMachine, kRegistryKey, kKeyRead));
  systemIdentifier_ = Slashed(RegQueryValueString(key.Get(), "DtdDir"));
  key.Close();
}

void FileDialogForm::ReadUserValues() {
  RegKeyScope key(RegOpenKey(kHkeyCurrentUser, kRegistryKey, kKeyRead));
  savedLeft_ = RegQueryValueNumber(key.Get(), traits_.LeftValue);
  savedTop_ = RegQueryValueNumber(key.Get(), traits_.TopValue);
  savedDirectory_ = RegQueryValueString(key.Get(), traits_.DirectoryValue);
  key.Close();
}

bool FileDialogForm::RegSave() {
  return GuardedUnless(traits_.RegSave, kRegistryNotCreated, [&] {
    savedLeft_ = Left;
    savedTop_ = Top;
    savedDirectory_ = defaultDirectory_;
    return RegSet();
  });
}

bool FileDialogForm::RegSet() {
  return Guarded(traits_.RegSet.LogText, traits_.RegSet.Number, [&] {
    RegKeyScope key(RegCreateKey(kHkeyCurrentUser, kRegistryKey, kKeyWrite));
    RegSetValueNumber(key.Get(), traits_.LeftValue, savedLeft_);
    RegSetValueNumber(key.Get(), traits_.TopValue, savedTop_);
    RegSetValueString(key.Get(), traits_.DirectoryValue, savedDirectory_);
    key.Close();
    return true;
  });
}

void FileDialogForm::ReleaseScripting(const Operation& operation) {
  Guarded(operation.LogText, operation.Number, [&] { fso_.reset(); });
}

void FileDialogForm::Form_Unload() {
  ReleaseScripting(traits_.Unload);
}

void FileDialogForm::Terminate() {
  ReleaseScripting(traits_.Terminate);
}

void FileDialogForm::Click(const std::string& control) {
  if (control == "cmdOK") return RunClick([&] { OnOK(); });
  if (control == "cmdCancel") return OnCancel();
  if (control == "cmdBrowse") return RunClick([&] { OnBrowse(); });
  if (control == "cmdAbout") return RunClick([] { AboutForm().Show(); });
  Control(control); // labels and the text box take clicks without effect
}

void FileDialogForm::OnOK() {
  ok_ = true;
  if (fileNameEdited_) {
    fileName_ = Control("txtFileName").Text;
    std::string folder = Fso().GetParentFolderName(fileName_);
    if (!folder.empty() && !Fso().FolderExists(folder)) {
      platform::Windows().MessageBox(FormatResString(kMessageNoFolder, {folder}), "",
                                     platform::kMbOk);
      ok_ = false;
      return;
    }
    defaultDirectory_ = folder;
    if (!ConfirmChoice()) {
      ok_ = false;
      return;
    }
  }
  RegSave();
  Hide();
}

void FileDialogForm::OnCancel() {
  ok_ = false;
  Hide();
}

void FileDialogForm::OnBrowse() {
  commonDialog_.Save = traits_.SaveDialog;
  commonDialog_.Title = MessageText(traits_.BrowseTitleId);
  commonDialog_.Filter = kXmlFilter;
  commonDialog_.DefaultExt = kXmlExtension;
  commonDialog_.FileName = BrowseFileName();
  commonDialog_.Flags = traits_.BrowseFlags;
  commonDialog_.InitDir = defaultDirectory_;
  try {
    TakeChoice(ShowCommonDialog(commonDialog_));
  } catch (const Failure& failure) {
    if (!IsCommonDialogCancel(failure)) throw;
  }
}

void FileDialogForm::TakeChoice(const std::string& chosen) {
  commonDialog_.FileName = chosen;
  fileName_ = chosen;
  defaultDirectory_ = Fso().GetParentFolderName(chosen);
  FillTextBox(chosen, false);
}

} // namespace ostin
