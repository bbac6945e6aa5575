// Shared helpers of the settings tests: a scratch settings file per test,
// file bytes, and the text of a file whatever its encoding.
#ifndef FLOORXPORT_TESTS_SETTINGS_SETTINGS_TEST_SUPPORT_H_
#define FLOORXPORT_TESTS_SETTINGS_SETTINGS_TEST_SUPPORT_H_

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "program_runner.h"
#include "settings/reg_file.h"
#include "test_folder.h"

namespace fx::settings::testing {

using fx::cli_test::ReadFile;
void WriteFileBytes(const std::string& path, std::string_view bytes);

// `text` (UTF-8) as a UTF-16LE file with its byte order mark.
std::string Utf16LeFile(std::string_view text);
// The file's text as UTF-8, byte order mark removed; UTF-16LE when the
// bytes start with FF FE, else taken as UTF-8.
std::string TextOfFile(std::string_view bytes);

// "Windows Registry Editor Version 5.00\r\n\r\n" + `body`.
std::string RegText(std::string_view body);

// The keys and values as readable text, for comparisons.
std::string Describe(const RegFile& file);

// Each test gets its own settings file (FOLDER/PlanVault/VantoryApp.reg,
// not yet created) as the process-wide override, and collects the
// diagnostics.
class SettingsFixture : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  fx::testing::TestFolder folder_{"fx-settings"};
  const std::string directory_ = folder_.path().string();
  const std::string settings_path_ = directory_ + "/PlanVault/VantoryApp.reg";
  std::vector<std::string> diagnostics_;
};

}  // namespace fx::settings::testing

#endif  // FLOORXPORT_TESTS_SETTINGS_SETTINGS_TEST_SUPPORT_H_
