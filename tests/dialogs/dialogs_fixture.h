// The plug-in in the headless host on a fake terminal with the sample floor
// open and a settings file of the test's own; and runs of the real program.
#ifndef FLOORXPORT_TESTS_DIALOGS_DIALOGS_FIXTURE_H_
#define FLOORXPORT_TESTS_DIALOGS_DIALOGS_FIXTURE_H_

#include <memory>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "host/database.h"
#include "host/dialog.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "program_runner.h"
#include "test_folder.h"

namespace fx::dialogs_test {

std::string SampleFloor();  // examples/sample-floor.dxf
using fx::cli_test::ReadFile;

class DialogsTest : public fx::console::ConsoleTest {
 protected:
  DialogsTest();
  ~DialogsTest() override;

  AcDbDatabase* db() const { return session_->document()->database(); }
  // Adds a layer named `name` to the open drawing.
  void AddLayer(const char* name);
  // What the terminal got since the last call.
  std::string NewOutput();
  // Sets the field labelled `label` (as fields() has it); fails the test
  // when there is none or the value is refused.
  static void Set(fx::DialogModel& dialog, const std::string& label, const std::string& value);
  static std::string Value(const fx::DialogModel& dialog, const std::string& label);

  // The real floorxport with this test's settings file.
  fx::cli_test::ProgramResult RunProgram(std::vector<std::string> args);
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  fx::testing::TestFolder folder_{"fx-dialogs"};
  size_t seen_ = 0;
  fx::console::ModuleRegistry modules_;
  std::unique_ptr<fx::console::HostSession> session_;
};

}  // namespace fx::dialogs_test

#endif  // FLOORXPORT_TESTS_DIALOGS_DIALOGS_FIXTURE_H_
