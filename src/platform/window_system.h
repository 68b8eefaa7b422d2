#pragma once
// The window system that the host process offers the plug-in: message boxes, modal
// dialogs, the common file dialog, window rectangles and titles, the web browser.
// The command-line host puts the terminal behind it; tests put a scripted user.
#include <cstdint>
#include <optional>
#include <string>

namespace ostin::platform {

// Message box styles and answers, with the values of the window system.
inline constexpr int kMbOk = 0x0;
inline constexpr int kMbYesNo = 0x4;
inline constexpr int kMbIconCritical = 0x10;
inline constexpr int kMbIconExclamation = 0x30;
inline constexpr int kIdOk = 1;
inline constexpr int kIdYes = 6;
inline constexpr int kIdNo = 7;

inline constexpr int kTwipsPerPixel = 15;

struct Rect {
  int32_t Left = 0, Top = 0, Right = 0, Bottom = 0;
};

// A form that the user works with while it is shown as a modal window.
class ModalForm {
public:
  virtual ~ModalForm() = default;
  virtual std::string Caption() const = 0;
  // True while the form is shown; OK and Cancel hide it.
  virtual bool Visible() const = 0;
  // What a control shows (a caption or the text of a text box).
  virtual std::string ControlText(const std::string& control) const = 0;
  // The user types into a text box: the text replaces what it held, by key presses.
  virtual void TypeText(const std::string& control, const std::string& text) = 0;
  // The user clicks a button.
  virtual void Click(const std::string& control) = 0;
};

struct FileDialogRequest {
  bool Save = false; // the save dialog, else the open dialog
  std::string Title;
  std::string Filter;
  std::string DefaultExt;
  std::string InitDir;
  std::string FileName;
  int32_t Flags = 0;
};

class WindowSystem {
public:
  virtual ~WindowSystem() = default;
  // Shows a message box and gives the button pressed (kIdOk, kIdYes, kIdNo).
  virtual int MessageBox(const std::string& text, const std::string& title, int style) = 0;
  // Lets the user work with the form until it hides.
  virtual void ShowModal(ModalForm& form) = 0;
  // The common file dialog: the chosen file, or nothing when the user cancels.
  virtual std::optional<std::string> ShowFileDialog(const FileDialogRequest& request) = 0;
  virtual Rect GetWindowRect(int32_t hwnd) = 0;
  virtual std::string GetWindowText(int32_t hwnd) = 0;
  // Opens a document or address; a result below 33 means failure.
  virtual int ShellExecute(int32_t hwnd, const std::string& verb, const std::string& file) = 0;
  // Lets pending window events run.
  virtual void DoEvents() {}
};

// The window system in force; a quiet one that answers every question with No
// until the host sets its own.
WindowSystem& Windows();
void SetWindows(WindowSystem* windows);

} // namespace ostin::platform
