// The "settings" subcommand: the listing, and writing one value.
#include "settings/settings_command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_path.h"
#include "settings_test_support.h"

namespace fx::settings {
namespace {

using testing::ReadFile;
using testing::RegText;
using testing::TextOfFile;
using testing::WriteFileBytes;

class SettingsCommandTest : public testing::SettingsFixture {
 protected:
  int Run(std::vector<std::string> args) {
    out_.str("");
    err_.str("");
    return RunSettingsCommand(args, out_, err_);
  }
  std::vector<std::string> OutLines() const {
    std::vector<std::string> lines;
    std::istringstream in(out_.str());
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  std::ostringstream out_;
  std::ostringstream err_;
};

// The listing reads every section and writes nothing: a file without some
// of the sections stays as it was, and no file is made where there was none.
TEST_F(SettingsCommandTest, ListsEveryKnownValueWithSectionKindValueAndDefault) {
  ASSERT_TRUE(SetSettingString(kExportFileFormat, "SVG", 0));
  ASSERT_TRUE(SetSettingInt(kVantoryDrawingVersion, 31, 0));
  const std::string one_section = ReadFile(settings_path_);
  ASSERT_EQ(Run({}), 0) << err_.str();
  EXPECT_EQ(ReadFile(settings_path_), one_section);
  const std::vector<std::string> lines = OutLines();
  ASSERT_EQ(lines.size(), 3 + KnownSettings().size());
  EXPECT_EQ(lines[0], "Settings file: " + settings_path_);
  EXPECT_EQ(lines[1], "");
  EXPECT_EQ(lines[2],
            "Section         Name                                   Kind     Value      Default");
  EXPECT_EQ(lines[3],
            "ExportOptions   Export file format                     string   \"SVG\"      \"\"");
  EXPECT_EQ(lines[4],
            "ExportOptions   Export in Old Format                   boolean  (not set)  none");
  EXPECT_EQ(lines[13],
            "ExportOptions   Vantory Drawing Version                integer  31         254");
  EXPECT_EQ(lines.back(),
            "Server          Server CA File                         string   (not set)  \"\"");
  EXPECT_EQ(err_.str(), "");
  ASSERT_TRUE(std::filesystem::remove(settings_path_));
  ASSERT_EQ(Run({}), 0) << err_.str();
  EXPECT_FALSE(std::filesystem::exists(settings_path_));
}

// The exact text of each kind of value in the file, a value set again
// replaced in place.
TEST_F(SettingsCommandTest, SetTakesTheKindAndSectionOfAKnownName) {
  EXPECT_EQ(Run({"set", "Draw Box", "1"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "Export file format", "SVG"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "contour layer", "A\\B \"C\" Räume"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "Vantory Drawing Version", "-7", "--section", "0"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "Draw Box", "0"}), 0) << err_.str();
  EXPECT_EQ(TextOfFile(ReadFile(settings_path_)),
            RegText("[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ExportOptions]\r\n"
                    "\"Draw Box\"=hex(0):00,00,00,00\r\n"
                    "\"Export file format\"=\"SVG\"\r\n"
                    "\"Vantory Drawing Version\"=hex(0):f9,ff,ff,ff\r\n\r\n"
                    "[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ConvertOptions]\r\n"
                    "\"Contour Layer\"=\"A\\\\B \\\"C\\\" Räume\"\r\n\r\n"));
  EXPECT_EQ(GetSettingString(kContourLayer, 1), "A\\B \"C\" Räume");
  EXPECT_EQ(out_.str(), "");
}

TEST_F(SettingsCommandTest, AnUnknownNameNeedsASectionAndIsAStringUnlessInt) {
  EXPECT_EQ(Run({"set", "Proxy", "host:8080"}), 2);
  EXPECT_EQ(err_.str(),
            "floorxport settings: unknown setting \"Proxy\": give its --section (and --int for an "
            "integer)\nRun \"floorxport settings --help\" for usage.\n");
  EXPECT_EQ(Run({"set", "Proxy", "host:8080", "--section", "2"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "Retries", "3", "--section=Server", "--int"}), 0) << err_.str();
  EXPECT_EQ(Run({"set", "Draw Box", "yes", "--section", "1"}), 0)
      << err_.str();  // not the known one
  EXPECT_EQ(GetSettingString("Proxy", 2), "host:8080");
  EXPECT_EQ(GetSettingInt("Retries", 0, 2), 3);
  EXPECT_EQ(GetSettingString("Draw Box", 1), "yes");
}

TEST_F(SettingsCommandTest, WrongCommandLinesAreUsageErrors) {
  const struct {
    std::vector<std::string> args;
    const char* message;
  } kCases[] = {
      {{"set", "Draw Box", "2"}, "\"Draw Box\" takes 0 or 1, not \"2\""},
      {{"set", "Drawing Position", "x"}, "\"Drawing Position\" takes an integer, not \"x\""},
      {{"set", "Drawing Position", "99999999999"},
       "\"Drawing Position\" takes an integer, not \"99999999999\""},
      {{"set", "Draw Box", "1", "--string"}, "\"Draw Box\" is a boolean setting"},
      {{"set", "Block name", "1", "--int"}, "\"Block name\" is a string setting"},
      {{"set", "Proxy", "x", "--section", "Nowhere"}, "bad section \"Nowhere\""},
      {{"set", "Draw Box"}, "set takes a NAME and a VALUE"},
      {{"get", "Draw Box"}, "unknown word \"get\""},
      {{"--bogus"}, "unknown option --bogus"},
      {{"set", "x", "1", "--section"}, "option --section needs a value"},
      {{"--int"}, "--section, --int and --string go with set"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(Run(test.args), 2) << test.message;
    EXPECT_EQ(err_.str(), std::string("floorxport settings: ") + test.message +
                              "\nRun \"floorxport settings --help\" for usage.\n");
  }
  EXPECT_FALSE(std::filesystem::exists(settings_path_));  // nothing was written
}

TEST_F(SettingsCommandTest, AnotherSettingsFileAndFailures) {
  const std::string other = directory_ + "/other.reg";
  EXPECT_EQ(Run({"set", "Draw Box", "1", "--settings", other}), 0) << err_.str();
  EXPECT_EQ(SettingsFilePath(), other);
  EXPECT_EQ(GetSettingInt(kDrawBox, 0, 0), 1);

  WriteFileBytes(directory_ + "/blocked", "a file");
  EXPECT_EQ(Run({"set", "Draw Box", "1", "--settings", directory_ + "/blocked/x.reg"}), 1);
  EXPECT_TRUE(err_.str().starts_with("floorxport settings: cannot change the settings file: "))
      << err_.str();
  EXPECT_TRUE(err_.str().ends_with("floorxport settings: cannot write \"Draw Box\" to " +
                                   directory_ + "/blocked/x.reg\n"))
      << err_.str();

  SetSettingsFilePath(settings_path_);
  EXPECT_EQ(Run({"set", "Server list", std::string(260, 's')}), 0);
  EXPECT_EQ(err_.str(),
            "floorxport settings: note: a string of 260 or more characters reads back as empty\n");
}

}  // namespace
}  // namespace fx::settings
