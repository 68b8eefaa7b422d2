#pragma once
// A user who follows a script: types into and clicks on the shown form, answers questions
// and file dialogs, and keeps what the program showed. It stands in as the window system
// for as long as it lives.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/window_system.h"

namespace ostin::testing {

struct ShownMessage {
  std::string Text;
  std::string Title;
  int Style;
};

class ScriptedUser : public platform::WindowSystem {
public:
  using Look = std::function<void(platform::ModalForm&)>;

  ScriptedUser() { platform::SetWindows(this); }
  ~ScriptedUser() override { platform::SetWindows(nullptr); }

  // Steps on the shown form, in the user's order.
  ScriptedUser& Type(std::string control, std::string text) {
    return Add({Step::Type, std::move(control), std::move(text)});
  }
  ScriptedUser& Click(std::string control) { return Add({Step::Click, std::move(control)}); }
  // Looks at the shown form at this point of the script.
  ScriptedUser& Check(Look look) { return Add({Step::Check, {}, {}, 0, std::move(look)}); }
  // The answer to the next Yes/No question; plain boxes are dismissed with OK.
  ScriptedUser& Answer(int button) { return Add({Step::Answer, {}, {}, button}); }
  // The next file dialog: a chosen file, or cancel.
  ScriptedUser& Choose(std::string file) { return Add({Step::Choose, {}, std::move(file)}); }
  ScriptedUser& CancelDialog() { return Add({Step::Cancel}); }

  bool ScriptDone() const { return script_.empty(); }

  // What the program showed and asked for.
  std::vector<ShownMessage> Messages;
  std::vector<platform::FileDialogRequest> FileDialogs;
  std::vector<std::string> ShownForms; // captions
  std::vector<std::string> Opened;     // what ShellExecute was given
  // The host's window and what the system answers.
  platform::Rect HostWindow{};
  std::string HostTitle;
  int ShellResult = 42;

  int MessageBox(const std::string& text, const std::string& title, int style) override {
    Messages.push_back({text, title, style});
    if ((style & 0xF) != platform::kMbYesNo) return platform::kIdOk;
    if (!Front(Step::Answer)) return platform::kIdNo;
    return Pop().Button;
  }

  void ShowModal(platform::ModalForm& form) override {
    ShownForms.push_back(form.Caption());
    while (form.Visible() && !script_.empty()) {
      if (!Front(Step::Type) && !Front(Step::Click) && !Front(Step::Check)) return;
      Step step = Pop();
      if (step.What == Step::Type) form.TypeText(step.Control, step.Text);
      if (step.What == Step::Click) form.Click(step.Control);
      if (step.What == Step::Check) step.Inspect(form);
    }
  }

  std::optional<std::string> ShowFileDialog(const platform::FileDialogRequest& request) override {
    FileDialogs.push_back(request);
    if (!Front(Step::Choose) && !Front(Step::Cancel)) return std::nullopt;
    Step step = Pop();
    if (step.What == Step::Cancel) return std::nullopt;
    return step.Text;
  }

  platform::Rect GetWindowRect(int32_t) override { return HostWindow; }
  std::string GetWindowText(int32_t) override { return HostTitle; }
  int ShellExecute(int32_t, const std::string& verb, const std::string& file) override {
    EXPECT_EQ(verb, "open");
    Opened.push_back(file);
    return ShellResult;
  }

private:
  struct Step {
    enum Kind { Type, Click, Check, Answer, Choose, Cancel } What;
    std::string Control, Text;
    int Button;
    Look Inspect;

    Step(Kind what, std::string control = {}, std::string text = {}, int button = 0,
         Look inspect = {})
        : What(what), Control(std::move(control)), Text(std::move(text)), Button(button),
          Inspect(std::move(inspect)) {}
  };

  ScriptedUser& Add(Step step) {
    script_.push_back(std::move(step));
    return *this;
  }
  // Whether the next step is of this kind; a step of another kind waits for its turn.
  bool Front(Step::Kind kind) const { return !script_.empty() && script_.front().What == kind; }
  Step Pop() {
    Step step = std::move(script_.front());
    script_.pop_front();
    return step;
  }

  std::deque<Step> script_;
};

} // namespace ostin::testing
