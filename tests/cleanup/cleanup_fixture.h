// A console with the host commands and a drawing open, for the clean-up
// tests: run command lines, look at the drawing's tables and model space,
// save the drawing.
#ifndef FLOORXPORT_TESTS_CLEANUP_CLEANUP_FIXTURE_H_
#define FLOORXPORT_TESTS_CLEANUP_CLEANUP_FIXTURE_H_

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "test_folder.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/imp_database.h"
#include "test_drawing.h"

namespace fx::cleanup_test {

class CleanupTest : public fx::console::ConsoleTest {
 protected:
  ~CleanupTest() override;

  // A file in this test's own temporary directory.
  std::string TempPath(const std::string& name) const { return (dir_ / name).string(); }
  void Open(const std::string& path);
  // Writes `drawing` to a temporary file and opens it.
  void Open(const TestDrawing& drawing);
  void SaveAs(const std::string& path);
  // Runs `script` and returns what it printed (the transcript so far is cleared first).
  std::string RunCommands(const std::string& script);

  AcDbDatabase& database() { return *session_.document()->database(); }
  AcDbImpDatabase& imp() { return *database().impl(); }
  // Names in a table ("LAYER", "LTYPE", "STYLE", "BLOCK_RECORD").
  std::set<std::string> Names(const char* table);
  // Handles of the model-space entities, in order.
  std::vector<std::string> ModelSpace();
  // The tags of the record with `handle`, or empty.
  fx::dxf::TagList RecordTags(const std::string& handle);

  fx::console::ModuleRegistry modules_;
  fx::console::HostSession session_{runner(), modules_};

 private:
  fx::testing::TestFolder dir_{"fx_cleanup"};
};

}  // namespace fx::cleanup_test

#endif  // FLOORXPORT_TESTS_CLEANUP_CLEANUP_FIXTURE_H_
