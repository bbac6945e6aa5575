// The About box: the product's name and version, and a button that opens a
// message to support. The vantoryShowAbout command shows it, modal.
#ifndef FLOORXPORT_APP_ABOUT_DIALOG_H_
#define FLOORXPORT_APP_ABOUT_DIALOG_H_

#include <string>
#include <vector>

#include "host/dialog.h"

namespace fx::app {

inline constexpr const char* kProductName = "FloorXport";
inline constexpr const char* kSupportEmail = "support@vantory.example";

class CAboutDialog : public fx::DialogModel {
 public:
  // "About FloorXport 0.1.0"
  std::string title() const override;
  std::vector<DialogField> fields() const override { return {}; }
  std::string SetField(size_t index, const std::string& value) override;
  // "OK" closes the box; "&E-mail support" opens a message to support
  // (mailto:) and keeps the box open.
  std::vector<std::string> buttons() const override;
  DialogAction Press(size_t index) override;

  static std::string supportLink();  // "mailto:support@vantory.example"
};

// The command vantoryShowAbout.
void ShowAbout();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_ABOUT_DIALOG_H_
