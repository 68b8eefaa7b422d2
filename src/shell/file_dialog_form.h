#pragma once
// What the three forms share (window, controls, modal display, click failures), and the
// base of the twin file dialogs frmImport and frmExport.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/window_system.h"
#include "shell/failure.h"
#include "shell/file_system.h"

namespace ostin {

enum MusicFileType : int32_t { mftMusicXML = 0, mftMuseData = 1 };

enum class ControlKind { Label, TextBox, Button, Image };

struct FormControl {
  std::string Name;
  ControlKind Kind;
  int32_t Left, Top, Width, Height; // twips
  int32_t TabIndex;
  int32_t CaptionId; // row of the message table, 0 for none
  std::string Text;  // the caption, or what a text box holds
};

// A headless form: a window with controls that the window system shows as a modal window.
class Form : public platform::ModalForm {
public:
  std::string Caption() const override { return caption_; }
  bool Visible() const override { return visible_; }
  std::string ControlText(const std::string& control) const override;
  void TypeText(const std::string& control, const std::string& text) override;

  // Makes the form visible, lets the user work with it until it hides, then lets pending
  // window events run.
  void Show();

  const std::vector<FormControl>& Controls() const { return controls_; }
  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }

  int32_t Left = 0; // window position, twips
  int32_t Top = 0;

protected:
  Form(int32_t width, int32_t height, std::vector<FormControl> controls);

  // A control by name; a name the form does not have is a mistake of the caller.
  FormControl& Control(const std::string& name);
  const FormControl& Control(const std::string& name) const;
  // Sets the window title and every control's caption from the message table.
  void LoadCaptions(int32_t titleId);
  void Hide() { visible_ = false; }

  virtual void OnShow() {}
  // The user closed the window without a button of the form.
  virtual void OnClose() { Hide(); }
  virtual void OnKeyPress(const std::string& /*control*/) {}

  // Runs a click handler: a failure shows message 208 with number and description.
  template <class Body> static void RunClick(Body&& body) {
    try {
      body();
    } catch (...) {
      ReportClickFailure();
    }
  }

private:
  static void ReportClickFailure();

  int32_t width_, height_;
  std::vector<FormControl> controls_;
  std::string caption_;
  bool visible_ = false;
};

// Moves the form to the middle of the host's window; a negative left or top becomes 0.
void CenterForm(Form& form, int32_t hwnd);

// One operation's log text and own number for the standard handler.
struct Operation {
  const char* LogText;
  int32_t Number;
};

// What tells the twin dialogs apart.
struct FileDialogTraits {
  int32_t TitleId;
  int32_t LabelId;
  int32_t Width, Height; // client area, twips
  const char* LeftValue; // the user's registry values
  const char* TopValue;
  const char* DirectoryValue;
  Operation RegGet, RegSet, RegSave, Load, Unload, Terminate;
  bool GuardScripting; // the load step reports a missing scripting service itself
  bool SaveDialog;     // the browse window saves, else opens
  int32_t BrowseTitleId;
  int32_t BrowseFlags;
};

// The file dialog: a text box for the file name, OK, Cancel, Browse and About. It keeps the
// user's last directory and window position in the registry.
class FileDialogForm : public Form {
public:
  // The load step, run once: captions, scripting service, registry, position, directory.
  // Failures end up in LoadErrorNumber and LoadErrorDescription.
  void Form_Load();
  void Form_Unload();
  // Releases the file-system object.
  void Terminate();

  void Click(const std::string& control) override;

  const std::string& DefaultDirectory() const { return defaultDirectory_; }
  int32_t LoadErrorNumber() const { return loadErrorNumber_; }
  const std::string& LoadErrorDescription() const { return loadErrorDescription_; }
  const std::string& SystemIdentifier() const { return systemIdentifier_; }

  int32_t FinaleHwnd = 0; // the host's window

protected:
  explicit FileDialogForm(const FileDialogTraits& traits);

  bool LeftWithOK() const { return ok_; }
  const std::string& ChosenFile() const { return fileName_; }
  FileSystemObject& Fso();
  // Puts a text in the text box, marked as the user's entry or not.
  void FillTextBox(const std::string& text, bool edited);

  virtual void OnFirstStart() {}
  // Last word on a typed or suggested name before the dialog hides.
  virtual bool ConfirmChoice() { return true; }
  // The name the browse window starts with.
  virtual std::string BrowseFileName() { return commonDialog_.FileName; }

  void OnClose() override { OnCancel(); }
  void OnKeyPress(const std::string& control) override;

private:
  void LoadSteps();
  bool StartScripting();
  void FirstStart();
  void RecordLoadFailure();
  bool RegGet();
  void ReadMachineValues();
  void ReadUserValues();
  bool RegSave();
  bool RegSet();
  void ReleaseScripting(const Operation& operation);

  void OnOK();
  void OnCancel();
  void OnBrowse();
  void TakeChoice(const std::string& chosen);

  const FileDialogTraits& traits_;
  std::unique_ptr<FileSystemObject> fso_;
  platform::FileDialogRequest commonDialog_; // the common dialog control keeps its settings
  std::string defaultDirectory_;
  std::string systemIdentifier_;
  std::string fileName_;
  bool ok_ = false;
  bool fileNameEdited_ = false;
  int32_t loadErrorNumber_ = 0;
  std::string loadErrorDescription_;
  int32_t savedLeft_ = 0;
  int32_t savedTop_ = 0;
  std::string savedDirectory_;
};

} // namespace ostin
