#include "shell/frm_import.h"

namespace ostin {

namespace {
const FileDialogTraits kImportTraits = {
    .TitleId = 118,
    .LabelId = 107,
    .Width = 4224,
    .Height = 1572,
    .LeftValue = "ImU",
    .TopValue = "ImW",
    .DirectoryValue = "ImOD",
    .RegGet = {"ImportRegGet error ", Code(0x8004056D)},
    .RegSet = {"ImportRegSet error ", Code(0x8004056E)},
    .RegSave = {"ImportRegSave error ", Code(0x8004057F)},
    .Load = {"Importer form load error ", Code(0x80040570)},
    .Unload = {"Importer form unload error ", Code(0x80040572)},
    .Terminate = {"ImportFormTerminate error ", Code(0x80040694)},
    .GuardScripting = true,
    .SaveDialog = false,
    .BrowseTitleId = 134,
    .BrowseFlags = 6148, // file and path must exist, hide read-only
};
} // namespace

frmImport::frmImport() : FileDialogForm(kImportTraits) {}

} // namespace ostin
