#include "terminal_user.h"

#include <iostream>
#include <unistd.h>

namespace ostin::cli {

namespace {
// Message texts use CR LF between lines; the terminal wants LF.
std::string TerminalText(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i)
    if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')) out += text[i];
  return out;
}
} // namespace

int TerminalUser::MessageBox(const std::string& text, const std::string& title, int style) {
  std::string heading = title.empty() ? "ostin" : "ostin: " + title;
  std::cerr << heading << ": " << TerminalText(text) << std::endl;
  if ((style & 0xF) != platform::kMbYesNo) {
    failureShown_ = true;
    return platform::kIdOk;
  }
  return AskYesNo("") ? platform::kIdYes : platform::kIdNo;
}

bool TerminalUser::AskYesNo(const std::string&) {
  if (answers_.YesToAll) {
    std::cerr << "  answered Yes (--yes)" << std::endl;
    return true;
  }
  if (!isatty(STDIN_FILENO)) {
    std::cerr << "  answered No (no terminal to ask; --yes answers Yes)" << std::endl;
    return false;
  }
  std::cerr << "  [y/N] " << std::flush;
  std::string line;
  std::getline(std::cin, line);
  return !line.empty() && (line[0] == 'y' || line[0] == 'Y');
}

void TerminalUser::ShowModal(platform::ModalForm& form) {
  // The user types the file name from the command line and presses OK; when the dialog
  // stays open (a missing folder, a file not to be replaced), they give up with Cancel.
  if (form.Visible() && !answers_.FileName.empty()) {
    form.TypeText("txtFileName", answers_.FileName);
    form.Click("cmdOK");
  }
  if (form.Visible()) {
    form.Click("cmdCancel");
    dialogCancelled_ = true;
  }
}

std::optional<std::string> TerminalUser::ShowFileDialog(const platform::FileDialogRequest&) {
  if (answers_.FileName.empty()) return std::nullopt;
  return answers_.FileName;
}

platform::Rect TerminalUser::GetWindowRect(int32_t) {
  return {0, 0, 1280, 800};
}

std::string TerminalUser::GetWindowText(int32_t) {
  return answers_.WindowTitle;
}

int TerminalUser::ShellExecute(int32_t, const std::string&, const std::string& file) {
  std::cerr << "ostin: open " << file << std::endl;
  return 42;
}

} // namespace ostin::cli
