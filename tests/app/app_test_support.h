// The plug-in in the headless host on a fake terminal, and the drawings its
// tests work on.
#ifndef FLOORXPORT_TESTS_APP_APP_TEST_SUPPORT_H_
#define FLOORXPORT_TESTS_APP_APP_TEST_SUPPORT_H_

#include <string>

#include "app/floorxport_app.h"
#include "console_fixture.h"
#include "host/dxf/console/module_registry.h"
#include "test_folder.h"

namespace fx::app_test {

// The bundled sample floor (R2018, with a named-object dictionary and
// $TDUUPDATE) and a drawing before R13 (no dictionaries, no $TDUUPDATE).
std::string SampleFloor();
std::string SmallPlan();

// The menu bar with the plug-in loaded, as floorxport menu prints it.
extern const char kPlanVaultMenuTree[];

// Copies `source` to `target` with the server floor association added (the
// dictionary PLANVAULT_DICT_3287 with the entry PLANVAULT_SERVER_DATA). False,
// with a test failure, when that fails.
bool WriteLinkedDrawing(const std::string& source, const std::string& target);

// A console editor with the plug-in module registered (not loaded: a
// HostSession loads it). A test that loads the module by its entry point
// leaves it unloaded even when it fails half way.
class AppTest : public fx::console::ConsoleTest {
 protected:
  AppTest() { modules_.Register("FloorXport", acrxEntryPoint); }
  ~AppTest() override {
    if (fx::app::TheApp().drawingReactor() != nullptr) {
      acrxEntryPoint(AcRx::kUnloadAppMsg, &packet_);
    }
  }

  fx::console::ModuleRegistry modules_;
  int packet_ = 0;  // stands for the module's packet when a test calls the entry point
};

}  // namespace fx::app_test

#endif  // FLOORXPORT_TESTS_APP_APP_TEST_SUPPORT_H_
