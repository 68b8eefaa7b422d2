#pragma once
// The user at the terminal, as the window system sees them: message boxes go to stderr,
// questions are answered from the options or asked on the terminal, and the file dialogs
// are filled in from the command line.
#include <string>

#include "platform/window_system.h"

namespace ostin::cli {

struct UserAnswers {
  std::string FileName;    // what the user types into a file dialog's text box
  bool YesToAll = false;   // answer Yes to every question
  std::string WindowTitle; // the host's main window title
};

class TerminalUser : public platform::WindowSystem {
public:
  explicit TerminalUser(UserAnswers answers) : answers_(std::move(answers)) {}

  int MessageBox(const std::string& text, const std::string& title, int style) override;
  void ShowModal(platform::ModalForm& form) override;
  std::optional<std::string> ShowFileDialog(const platform::FileDialogRequest& request) override;
  platform::Rect GetWindowRect(int32_t hwnd) override;
  std::string GetWindowText(int32_t hwnd) override;
  int ShellExecute(int32_t hwnd, const std::string& verb, const std::string& file) override;

  // A box that told of a failure or a refusal was shown.
  bool FailureShown() const { return failureShown_; }
  // The user left a dialog without OK.
  bool DialogCancelled() const { return dialogCancelled_; }

private:
  bool AskYesNo(const std::string& question);

  UserAnswers answers_;
  bool failureShown_ = false;
  bool dialogCancelled_ = false;
};

} // namespace ostin::cli
