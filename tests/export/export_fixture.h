// The plug-in in the headless host on a fake terminal, with a drawing open
// and a settings file and scratch directory of the test's own; reading back
// what an export wrote.
#ifndef FLOORXPORT_TESTS_EXPORT_EXPORT_FIXTURE_H_
#define FLOORXPORT_TESTS_EXPORT_EXPORT_FIXTURE_H_

#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "console_fixture.h"
#include "gzip_file.h"
#include "host/database.h"
#include "host/dxf/console/answer_policy.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "program_runner.h"
#include "test_folder.h"

namespace fx::export_test {

std::string FloorDrawing();  // tests/data/export/floor.dxf
std::string SampleFloor();   // examples/sample-floor.dxf

using fx::cli_test::ReadFile;
using fx::testing::GunzipFile;

// The XML text parsed; fails the test when it is not well formed.
std::unique_ptr<pugi::xml_document> Parse(const std::string& text);

// "QUESTION=ANSWER" answers for a run.
fx::console::AnswerPolicy Answers(const std::vector<std::string>& answers);

class ExportTest : public fx::console::ConsoleTest {
 protected:
  ExportTest();
  ~ExportTest() override;

  // Opens `path` with the plug-in loaded; message boxes answered by `answers`.
  void Open(const std::string& path = FloorDrawing(), fx::console::AnswerPolicy answers = {});
  AcDbDatabase& db() const;
  // Runs `script` and returns what this run printed.
  std::string RunScript(const std::string& script);
  std::string Path(const std::string& name) const { return dir_ + "/" + name; }

  // The first model-space entity whose room record is named `name`.
  AcDbObjectId RecordNamed(const std::string& name) const;

  fx::testing::TestFolder folder_{"export"};
  std::string dir_ = folder_.path().string();
  fx::console::ModuleRegistry modules_;
  std::unique_ptr<fx::console::HostSession> session_;
};

}  // namespace fx::export_test

#endif  // FLOORXPORT_TESTS_EXPORT_EXPORT_FIXTURE_H_
