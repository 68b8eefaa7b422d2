#include "shell/frm_export.h"

#include "shell/messages.h"

namespace ostin {

namespace {
const FileDialogTraits kExportTraits = {
    .TitleId = 119,
    .LabelId = 112,
    .Width = 4212,
    .Height = 1584,
    .LeftValue = "ExU",
    .TopValue = "ExW",
    .DirectoryValue = "ExOD",
    .RegGet = {"ExportRegGet error ", Code(0x8004056B)},
    .RegSet = {"ExportRegSet error ", Code(0x8004056C)},
    .RegSave = {"ExportRegSave error ", Code(0x80040580)},
    .Load = {"Exporter form load error ", Code(0x80040571)},
    .Unload = {"Exporter form unload error ", Code(0x80040573)},
    .Terminate = {"ExportFormTerminate error ", Code(0x80040695)},
    .GuardScripting = false,
    .SaveDialog = true,
    .BrowseTitleId = 136,
    .BrowseFlags = 32774, // ask before overwriting, hide read-only, no read-only return
};

constexpr int32_t kSetTextError = Code(0x80040574);
constexpr int32_t kSuggestedFileNameError = Code(0x80040575);
constexpr int32_t kMessageExists = 172;
constexpr int32_t kMessageReplace = 173;
constexpr int32_t kMessageSaveAs = 136;
} // namespace

frmExport::frmExport() : FileDialogForm(kExportTraits) {}

void frmExport::SuggestedFileName(const std::string& name) {
  Guarded("ExportSuggestedFileName error ", kSuggestedFileNameError, [&] {
    suggestedFileName_ = name;
    SetText(Fso().BuildPath(DefaultDirectory(), name));
  });
}

void frmExport::SetText(const std::string& newFile) {
  Guarded("ExportSetText error ", kSetTextError, [&] { FillTextBox(newFile, true); });
}

// A typed or suggested name of an existing file needs the user's yes.
bool frmExport::ConfirmChoice() {
  if (!Fso().FileExists(ChosenFile())) return true;
  std::string question =
      FormatResString(kMessageExists, {ChosenFile()}) + "\r\n" + MessageText(kMessageReplace);
  int style = platform::kMbYesNo | platform::kMbIconExclamation;
  return platform::Windows().MessageBox(question, MessageText(kMessageSaveAs), style) ==
         platform::kIdYes;
}

std::string frmExport::BrowseFileName() {
  if (suggestedFileName_.empty()) return {};
  return Fso().BuildPath(DefaultDirectory(), Fso().GetBaseName(suggestedFileName_));
}

} // namespace ostin
