#pragma once
// The export dialog: which MusicXML file to write.
#include <string>

#include "shell/file_dialog_form.h"

namespace ostin {

class frmExport : public FileDialogForm {
public:
  frmExport();

  bool ExportOK() const { return LeftWithOK(); }
  const std::string& OutputFileName() const { return ChosenFile(); }
  MusicFileType OutputFileType() const { return outputFileType_; }

  const std::string& SuggestedFileName() const { return suggestedFileName_; }
  // Stores the name and puts it, in the dialog's directory, in the text box.
  void SuggestedFileName(const std::string& name);
  // Puts newFile in the text box as if the user had typed it.
  void SetText(const std::string& newFile);

protected:
  void OnFirstStart() override { outputFileType_ = mftMusicXML; }
  bool ConfirmChoice() override;
  std::string BrowseFileName() override;

private:
  MusicFileType outputFileType_ = mftMusicXML;
  std::string suggestedFileName_;
};

} // namespace ostin
