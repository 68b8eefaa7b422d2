#pragma once
// The about box: the product's title, version and copyright, and a way to its web page.
#include <string>

#include "shell/file_dialog_form.h"

namespace ostin {

class frmAbout : public Form {
public:
  frmAbout();

  // Fills the title, the captions and the version line.
  void Form_Load();
  void Click(const std::string& control) override;
  bool Loaded() const { return loaded_; }

protected:
  void OnShow() override;
  void OnClose() override { Unload(); }

private:
  void Unload();
  void OnUrl();

  bool loaded_ = false;
};

// The one about box, made at its first use.
frmAbout& AboutForm();

} // namespace ostin
