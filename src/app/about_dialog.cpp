#include "app/about_dialog.h"

#include "host/editor.h"

namespace fx::app {

std::string CAboutDialog::title() const {
  return std::string("About ") + kProductName + " " + FX_VERSION;
}

std::string CAboutDialog::SetField(size_t, const std::string&) { return "The box has no fields."; }

std::vector<std::string> CAboutDialog::buttons() const { return {"OK", "&E-mail support"}; }

// The plug-in starts no other program: the address and its link go to the
// command line, where the user takes them to a mail program.
DialogAction CAboutDialog::Press(size_t index) {
  if (index != 1) return DialogAction::kClose;
  acutPrintf("\nWrite to %s: %s", kSupportEmail, supportLink().c_str());
  return DialogAction::kStay;
}

std::string CAboutDialog::supportLink() { return std::string("mailto:") + kSupportEmail; }

void ShowAbout() {
  CAboutDialog dialog;
  fx::ShowDialog(dialog);
}

}  // namespace fx::app
