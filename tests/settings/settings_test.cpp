// The five settings operations over the settings file: where it is,
// defaults, kinds, limits, sections, unknown content kept, the mirror of the
// duplicate-name flag. The exact text of each kind is checked through the
// settings command, in settings_command_test.cpp.
#include "settings/settings.h"

#include <gtest/gtest.h>

#include "settings/duplicate_names_flag.h"
#include "settings/known_settings.h"
#include "settings/reg_file_reader.h"
#include "settings/settings_path.h"
#include "settings_test_support.h"

namespace fx::settings {
namespace {

using fx::cli_test::ScopedEnvironmentVariable;
using testing::ReadFile;
using testing::RegText;
using testing::TextOfFile;
using testing::Utf16LeFile;
using testing::WriteFileBytes;

constexpr char kExportHeader[] =
    "[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ExportOptions]\r\n";

class SettingsTest : public testing::SettingsFixture {
 protected:
  std::string FileText() const { return TextOfFile(ReadFile(settings_path_)); }
  void WriteExportOptions(const std::string& values) {
    WriteFileBytes(settings_path_, Utf16LeFile(RegText(kExportHeader + values + "\r\n")));
  }
};

// Reads give the default for a missing file or section and write nothing;
// the first write creates the file with the one section it needs.
TEST_F(SettingsTest, AReadNeverWritesTheFirstWriteCreatesTheSection) {
  EXPECT_EQ(GetSettingInt(kVantoryDrawingVersion, 254, 0), 254);
  EXPECT_EQ(GetSettingString(kServerList, 2), "");
  EXPECT_FALSE(std::filesystem::exists(settings_path_));
  ASSERT_TRUE(SetSettingInt(kDrawBox, 1, 0));
  const std::string bytes = ReadFile(settings_path_);
  EXPECT_TRUE(bytes.starts_with("\xFF\xFE"));  // UTF-16LE with its byte order mark
  EXPECT_EQ(FileText(), RegText(std::string(kExportHeader) + "\"Draw Box\"=hex(0):01,00,00,00\r\n\r\n"));
  EXPECT_EQ(GetSettingString(kServerList, 2), "");
  EXPECT_EQ(ReadFile(settings_path_), bytes);
  EXPECT_TRUE(diagnostics_.empty());
}

TEST_F(SettingsTest, IntegersReadAnyTypeOfAtMostFourBytes) {
  WriteExportOptions(
      "\"Dword\"=dword:0000002a\r\n"
      "\"Minus\"=dword:ffffffff\r\n"
      "\"Typed\"=hex(4):07,00,00,00\r\n"
      "\"Short\"=hex(0):05,01\r\n"
      "\"Empty\"=hex(0):\r\n"
      "\"Eight\"=hex(0):01,00,00,00,00,00,00,00\r\n"
      "\"Qword\"=hex(b):01,00,00,00,00,00,00,00\r\n"
      "\"Text1\"=\"1\"\r\n"
      "\"Text22\"=\"22\"\r\n");
  const struct {
    const char* name;
    int32_t expected;
  } kCases[] = {
      {"Dword", 42},   {"Minus", -1}, {"Typed", 7},  {"Short", 0x105},
      {"Empty", 0},    {"Eight", -9}, {"Qword", -9},  // longer than 4 bytes: the default
      {"Text1", 0x31},                                // no type check: "1" and its zero, UTF-16
      {"Text22", -9},                                 // 6 bytes
      {"Missing", -9},
  };
  for (const auto& test : kCases)
    EXPECT_EQ(GetSettingInt(test.name, -9, 0), test.expected) << test.name;
  EXPECT_TRUE(diagnostics_.empty());
}

TEST_F(SettingsTest, AStringOf260OrMoreCharactersReadsEmpty) {
  const std::string s259(259, 'x');
  const std::string s260(260, 'x');
  std::string emoji129;
  for (int i = 0; i < 129; ++i) emoji129 += "😀";  // two UTF-16 units each
  ASSERT_TRUE(SetSettingString("s259", s259, 2));
  ASSERT_TRUE(SetSettingString("s260", s260, 2));
  ASSERT_TRUE(SetSettingString("e258", emoji129, 2));
  ASSERT_TRUE(SetSettingString("e259", emoji129 + "x", 2));
  ASSERT_TRUE(SetSettingString("e260", emoji129 + "😀", 2));
  EXPECT_EQ(GetSettingString("s259", 2), s259);
  EXPECT_EQ(GetSettingString("s260", 2), "");
  EXPECT_EQ(GetSettingString("e258", 2), emoji129);
  EXPECT_EQ(GetSettingString("e259", 2), emoji129 + "x");
  EXPECT_EQ(GetSettingString("e260", 2), "");
  EXPECT_NE(FileText().find("\"s260\"=\"" + s260 + "\""), std::string::npos);  // kept whole
}

TEST_F(SettingsTest, StringsReadAnyTypeUpToTheirFirstZero) {
  WriteExportOptions(
      "\"Expand\"=hex(2):41,00,42,00,00,00\r\n"
      "\"NoZero\"=hex(1):41,00,42,00\r\n"
      "\"Multi\"=hex(7):41,00,00,00,42,00,00,00,00,00\r\n"
      "\"Int\"=hex(0):41,00,00,00\r\n");
  EXPECT_EQ(GetSettingString("Expand", 0), "AB");
  EXPECT_EQ(GetSettingString("NoZero", 0), "AB");
  EXPECT_EQ(GetSettingString("Multi", 0), "A");
  EXPECT_EQ(GetSettingString("Int", 0), "A");
  EXPECT_FALSE(SetSettingString("Bad", "\xC3", 0));  // not UTF-8
}

TEST_F(SettingsTest, SectionsOtherThan0To2AddressTheApplicationKey) {
  ASSERT_TRUE(SetSettingInt("Three", 3, 3));
  EXPECT_EQ(GetSettingInt("Three", 0, 7), 3);
  EXPECT_EQ(GetSettingInt("Three", 0, -1), 3);
  EXPECT_EQ(GetSettingInt("Three", 0, 0), 0);  // ExportOptions, which is not there
  EXPECT_EQ(FileText(), RegText("[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp]\r\n"
                                "\"Three\"=hex(0):03,00,00,00\r\n\r\n"));
}

// A value set under another letter case keeps the file's spelling.
TEST_F(SettingsTest, UnknownKeysAndValuesAreKeptOnRewrite) {
  const std::string others =
      "[HKEY_LOCAL_MACHINE\\Software\\Other]\r\n"
      "\"Path\"=\"C:\\\\x\"\r\n"
      "\r\n";
  WriteFileBytes(settings_path_, Utf16LeFile(RegText(others + kExportHeader +
                                                     "\"Unknown\"=hex(7):41,00,00,00,00,00\r\n"
                                                     "\"Bin\"=hex:01,02\r\n"
                                                     "\"Hand\"=dword:00000005\r\n"
                                                     "\"draw box\"=dword:00000000\r\n\r\n")));
  ASSERT_TRUE(SetSettingInt(kDrawBox, 1, 0));
  EXPECT_EQ(FileText(), RegText(others + kExportHeader +
                                "\"Unknown\"=hex(7):41,00,00,00,00,00\r\n"
                                "\"Bin\"=hex:01,02\r\n"
                                "\"Hand\"=dword:00000005\r\n"
                                "\"draw box\"=hex(0):01,00,00,00\r\n\r\n"));
}

TEST_F(SettingsTest, AUtf8FileStaysUtf8) {
  WriteFileBytes(settings_path_, RegText(std::string(kExportHeader) + "\"Draw Box\"=dword:1\r\n"));
  ASSERT_TRUE(SetSettingString(kExportFileFormat, "Räume", 0));
  EXPECT_EQ(ReadFile(settings_path_),
            RegText(std::string(kExportHeader) +
                    "\"Draw Box\"=dword:00000001\r\n\"Export file format\"=\"Räume\"\r\n\r\n"));
}

TEST_F(SettingsTest, TheDuplicateNameFlagMirrorsTheValue) {
  EXPECT_TRUE(LoadAutoResolveDuplicateNames());  // absent: default 1
  WriteExportOptions("\"Automatically Resolve Duplicate Names\"=hex(0):00,00,00,00\r\n");
  EXPECT_TRUE(AutoResolveDuplicateNames());  // read at load only
  EXPECT_FALSE(LoadAutoResolveDuplicateNames());
  EXPECT_FALSE(AutoResolveDuplicateNames());
  ASSERT_TRUE(SetSettingInt(kAutomaticallyResolveDuplicateNames, 1, 0));
  EXPECT_TRUE(AutoResolveDuplicateNames());
  ASSERT_TRUE(SetSettingInt(kAutomaticallyResolveDuplicateNames, 0, 1));  // another section
  EXPECT_TRUE(AutoResolveDuplicateNames());
  SetAutoResolveDuplicateNamesFlag(false);
  EXPECT_FALSE(AutoResolveDuplicateNames());
  EXPECT_EQ(GetSettingInt(kAutomaticallyResolveDuplicateNames, 9, 0), 1);
  SetAutoResolveDuplicateNamesFlag(true);
}

// Where the settings file is: the override, the environment, the defaults.
TEST(SettingsPathTest, FollowsTheOverrideTheVariableThenTheConfigDirectory) {
  SetSettingsFilePath("");
  ScopedEnvironmentVariable variable("FLOORXPORT_SETTINGS", nullptr), home("HOME", "/home/planner");
  const std::string in_home = "/home/planner/.config/PlanVault/VantoryApp.reg";
  {
    ScopedEnvironmentVariable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(SettingsFilePath(), in_home);
  }
  for (const char* ignored : {"", "relative/config"}) {  // a relative one too, as the XDG rules ask
    ScopedEnvironmentVariable config("XDG_CONFIG_HOME", ignored);
    EXPECT_EQ(SettingsFilePath(), in_home) << ignored;
  }
  ScopedEnvironmentVariable config("XDG_CONFIG_HOME", "/srv/config");
  EXPECT_EQ(SettingsFilePath(), "/srv/config/PlanVault/VantoryApp.reg");
  ScopedEnvironmentVariable site("FLOORXPORT_SETTINGS", "/etc/floorxport/site.reg");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
  SetSettingsFilePath("/tmp/run.reg");
  EXPECT_EQ(SettingsFilePath(), "/tmp/run.reg");
  SetSettingsFilePath("");
  EXPECT_EQ(SettingsFilePath(), "/etc/floorxport/site.reg");
}

}  // namespace
}  // namespace fx::settings
