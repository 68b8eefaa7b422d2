#pragma once
// A user who follows a script: types into and clicks on the shown form, answers questions
// and file dialogs, and keeps what the program showed. It is the window system while it lives.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/window_system.h"

namespace ostin::testing {

struct ShownMessage {
  std::string Text, Title;
  int Style;
};

class ScriptedUser : public platform::WindowSystem {
public:
  using Look = std::function<void(platform::ModalForm&)>;

  ScriptedUser() { platform::SetWindows(this); }
  ~ScriptedUser() override { platform::SetWindows(nullptr); }

  // Steps in the user's order. Check looks at the shown form; Answer is for the next Yes/No
  // question (plain boxes get OK); Choose and CancelDialog are for the next file dialog.
  ScriptedUser& Type(std::string control, std::string text) { return Add({kType, control, text}); }
  ScriptedUser& Click(std::string control) { return Add({kClick, control}); }
  ScriptedUser& Check(Look look) { return Add({kCheck, {}, {}, 0, look}); }
  ScriptedUser& Answer(int button) { return Add({kAnswer, {}, {}, button}); }
  ScriptedUser& Choose(std::string file) { return Add({kChoose, {}, file}); }
  ScriptedUser& CancelDialog() { return Add({kCancel}); }
  bool ScriptDone() const { return script_.empty(); }

  // What the program showed: boxes, file dialogs, form captions, ShellExecute's files.
  std::vector<ShownMessage> Messages;
  std::vector<platform::FileDialogRequest> FileDialogs;
  std::vector<std::string> ShownForms, Opened;
  // What the system answers.
  platform::Rect HostWindow{};
  std::string HostTitle;
  int ShellResult = 42;

  int MessageBox(const std::string& text, const std::string& title, int style) override {
    Messages.push_back({text, title, style});
    if ((style & 0xF) != platform::kMbYesNo) return platform::kIdOk;
    return Next(kAnswer) ? Pop().Button : platform::kIdNo;
  }
  // Works on the form until it hides, or until the next step is not for a form.
  void ShowModal(platform::ModalForm& form) override {
    ShownForms.push_back(form.Caption());
    while (form.Visible() && (Next(kType) || Next(kClick) || Next(kCheck))) {
      Step step = Pop();
      if (step.What == kType) form.TypeText(step.Control, step.Text);
      if (step.What == kClick) form.Click(step.Control);
      if (step.What == kCheck) step.Inspect(form);
    }
  }
  std::optional<std::string> ShowFileDialog(const platform::FileDialogRequest& request) override {
    FileDialogs.push_back(request);
    if (!Next(kChoose) && !Next(kCancel)) return std::nullopt;
    Step step = Pop();
    return step.What == kChoose ? std::optional(step.Text) : std::nullopt;
  }
  platform::Rect GetWindowRect(int32_t) override { return HostWindow; }
  std::string GetWindowText(int32_t) override { return HostTitle; }
  int ShellExecute(int32_t, const std::string& verb, const std::string& file) override {
    EXPECT_EQ(verb, "open");
    Opened.push_back(file);
    return ShellResult;
  }

private:
  enum Kind { kType, kClick, kCheck, kAnswer, kChoose, kCancel };
  struct Step {
    Kind What;
    std::string Control = {}, Text = {};
    int Button = 0;
    Look Inspect = {};
  };

  ScriptedUser& Add(Step step) {
    script_.push_back(std::move(step));
    return *this;
  }
  bool Next(Kind kind) const { return !script_.empty() && script_.front().What == kind; }
  Step Pop() {
    Step step = std::move(script_.front());
    script_.pop_front();
    return step;
  }

  std::deque<Step> script_;
};

} // namespace ostin::testing
