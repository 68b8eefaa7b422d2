#include "platform/window_system.h"

namespace ostin::platform {

namespace {
// Answers as a user who is not there: OK to notices, No to questions, cancel to dialogs.
class AbsentUser : public WindowSystem {
public:
  int MessageBox(const std::string&, const std::string&, int style) override {
    return (style & 0xF) == kMbYesNo ? kIdNo : kIdOk;
  }
  void ShowModal(ModalForm&) override {}
  std::optional<std::string> ShowFileDialog(const FileDialogRequest&) override {
    return std::nullopt;
  }
  Rect GetWindowRect(int32_t) override { return {}; }
  std::string GetWindowText(int32_t) override { return {}; }
  int ShellExecute(int32_t, const std::string&, const std::string&) override { return 2; }
};

WindowSystem*& Current() {
  static AbsentUser absent;
  static WindowSystem* current = &absent;
  return current;
}
} // namespace

WindowSystem& Windows() {
  return *Current();
}

void SetWindows(WindowSystem* windows) {
  static AbsentUser absent;
  Current() = windows ? windows : &absent;
}

} // namespace ostin::platform
