#pragma once
// The import dialog: which MusicXML file to read.
#include <string>

#include "shell/file_dialog_form.h"

namespace ostin {

class frmImport : public FileDialogForm {
public:
  frmImport();

  bool ImportOK() const { return LeftWithOK(); }
  const std::string& InputFileName() const { return ChosenFile(); }
  MusicFileType InputFileType() const { return mftMusicXML; }
};

} // namespace ostin
