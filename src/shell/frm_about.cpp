#include "shell/frm_about.h"

#include "shell/messages.h"

#ifndef OSTIN_VERSION_MAJOR
#define OSTIN_VERSION_MAJOR 1
#define OSTIN_VERSION_MINOR 2
#define OSTIN_VERSION_PATCH 0
#endif

namespace ostin {

namespace {
constexpr int32_t kAboutLoadError = Code(0x800405B1);
constexpr int32_t kMessageTitle = 123;
constexpr int32_t kMessageVersion = 139;
constexpr int32_t kMessageNoWebPage = 209;
constexpr int kShellExecuteFailed = 33; // results below it are failures

std::vector<FormControl> AboutControls() {
  return {
      {"lblTitle", ControlKind::Label, 1440, 240, 3552, 300, 0, 121, {}},
      {"lblVersion", ControlKind::Label, 1440, 660, 3552, 240, 1, 0, {}},
      {"lblCopyright", ControlKind::Label, 1440, 1080, 3552, 720, 2, 129, {}},
      {"imgLogo", ControlKind::Image, 240, 240, 960, 960, 3, 0, {}},
      {"cmdUrl", ControlKind::Button, 240, 2040, 4752, 372, 4, 138, {}},
      {"cmdOK", ControlKind::Button, 3840, 3120, 1152, 372, 5, 103, {}},
  };
}
} // namespace

frmAbout::frmAbout() : Form(5232, 3744, AboutControls()) {}

frmAbout& AboutForm() {
  static frmAbout about;
  return about;
}

void frmAbout::Form_Load() {
  Guarded("About form load error ", kAboutLoadError, [&] {
    LoadCaptions(kMessageTitle);
    Control("lblVersion").Text = FormatResString(
        kMessageVersion, {std::to_string(OSTIN_VERSION_MAJOR), std::to_string(OSTIN_VERSION_MINOR),
                          std::to_string(OSTIN_VERSION_PATCH)});
    loaded_ = true;
  });
}

// Showing an unloaded form loads it first.
void frmAbout::OnShow() {
  if (!loaded_) Form_Load();
}

void frmAbout::Unload() {
  Hide();
  loaded_ = false;
}

void frmAbout::Click(const std::string& control) {
  if (control == "cmdOK") return Unload();
  if (control == "cmdUrl") return RunClick([&] { OnUrl(); });
  Control(control); // labels and the logo take clicks without effect
}

// A headless form has no window of its own to hand over.
void frmAbout::OnUrl() {
  int result = platform::Windows().ShellExecute(0, "open", kProductWebPage);
  if (result < kShellExecuteFailed)
    platform::Windows().MessageBox(MessageText(kMessageNoWebPage), "", platform::kMbOk);
}

} // namespace ostin
