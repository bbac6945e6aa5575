// What the end-to-end tests of the exchange share: floorxport run with the
// settings file of a folder, the sample floor analysed for sending, floors
// looked up in a listing, and a test fixture with a folder of its own.
#ifndef FLOORXPORT_TESTS_EXCHANGE_EXCHANGE_PROGRAM_H_
#define FLOORXPORT_TESTS_EXCHANGE_EXCHANGE_PROGRAM_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program_runner.h"
#include "test_folder.h"

namespace fx::exchange_test {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::ScopedEnvironmentVariable;

// floorxport with the settings file `folder`/settings.reg, its output kept
// in `folder`; a run still going after 90 s has hung: it is killed and fails.
ProgramResult Floorxport(const fs::path& folder, std::vector<std::string> args);

// The sample floor analysed into `target`: a floor is sent with its floor
// document, which needs the floor outline.
std::string AnalysedSample(const fs::path& folder, const fs::path& target);

// The id of the floor `floor_name` in `server`'s listing (floors --json with
// `extra` options), or -1.
int FloorId(const fs::path& folder, const std::string& server, const std::string& floor_name,
            const std::vector<std::string>& extra = {});

// A folder of the test's own holds the settings file, the drawings and the
// temporary folder (TEMP) floorxport uses; no log-in in the environment.
class ExchangeProgramTest : public ::testing::Test {
 protected:
  ExchangeProgramTest();

  ProgramResult Floorxport(std::vector<std::string> args) {
    return exchange_test::Floorxport(folder_.path(), std::move(args));
  }
  std::string AnalysedSample() { return exchange_test::AnalysedSample(folder_.path(), folder_ / "plan.dxf"); }
  int FloorId(const std::string& server, const std::string& floor_name,
              const std::vector<std::string>& extra = {}) {
    return exchange_test::FloorId(folder_.path(), server, floor_name, extra);
  }
  bool TempIsEmpty() const { return fs::is_empty(folder_ / "temp"); }

  fx::testing::TestFolder folder_{"fx-exchange"};
  ScopedEnvironmentVariable temp_;
  ScopedEnvironmentVariable user_{"FLOORXPORT_USER", nullptr};
  ScopedEnvironmentVariable password_{"FLOORXPORT_PASSWORD", nullptr};
};

}  // namespace fx::exchange_test

#endif  // FLOORXPORT_TESTS_EXCHANGE_EXCHANGE_PROGRAM_H_
