// The room report: no quoting, its code page and the conversion, the
// default name, the file write. (Its bytes as the user gets them:
// program_test.cpp and room_list_test.cpp.)
#include "rooms/report.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/code_page.h"
#include "program_runner.h"
#include "rooms_fixture.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::rooms_test {
namespace {

using namespace std::string_literals;
using fx::rooms::FormatReport;
using Cells = std::array<std::string, fx::rooms::kRoomListColumnCount>;

const std::string kHeader =
    "Name\0,Category\0,Description\0,Comment\0,Area\0,Error description\0\r\n"s;

// No quoting: a comma in a name shifts the rest of its row (read back as
// comma-separated, the row has seven fields and the area is the sixth).
TEST(ReportTest, RowsFollowWithoutTerminatorsOrQuotes) {
  EXPECT_EQ(FormatReport({{"Lab, wet", "Lab", "", "Window \"east\"", "12.5000", ""}}),
            kHeader + "Lab, wet,Lab,,Window \"east\",12.5000,\r\n");
}

TEST(ReportTest, Utf8ToWindows1252) {
  const struct {
    std::string utf8;
    std::string ansi;
  } cases[] = {
      {"\u00a0\u00ff", "\xA0\xFF"},                                // Latin-1 range as is
      {"\u20ac\u201a\u0192\u2122\u0178", "\x80\x82\x83\x99\x9F"},  // the 0x80..0x9F block
      {"\u0081\u008d\u008f\u0090\u009d", "\x81\x8D\x8F\x90\x9D"},  // unassigned bytes
      {"\u0080\u0085", "??"},                                      // other C1 controls
      {"\u03a9 \u4e2d \U0001F600", "? ? ?"},                       // not in the code page
      {"a\xFF"
       "b",
       "a?b"},                  // not UTF-8
      {"\xC0\xAF", "??"},       // overlong
      {"\xED\xA0\x80", "???"},  // a surrogate
      {"\xE2\x82\xAC\xE2", "\x80?"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fx::rooms::Utf8ToAnsi(c.utf8), c.ansi) << c.utf8;
  }
}

// Code page 936 and the warning of what it cannot hold: program_test.cpp.
TEST(ReportTest, Utf8ToTheOtherCodePagesCountingWhatTheyCannotHold) {
  fx::rooms::Unmappable unmappable;
  EXPECT_EQ(fx::rooms::Utf8ToAnsi("\u041a\u0430\u0431\u0438\u043d\u0435\u0442", 1251, &unmappable),
            "\xCA\xE0\xE1\xE8\xED\xE5\xF2");
  EXPECT_EQ(fx::rooms::Utf8ToAnsi("\u4f1a\u8b70\u5ba4", 932, &unmappable), "\x89\xEF\x8B\x63\x8E\xBA");
  EXPECT_EQ(fx::rooms::Utf8ToAnsi("\u03a9 \U0001F600", fx::kCodePageUtf8, &unmappable), "\u03a9 \U0001F600");
  EXPECT_EQ(unmappable.count, 0u);
  EXPECT_EQ(fx::rooms::Utf8ToAnsi("\u4e2d", 1252, &unmappable), "?");
  EXPECT_EQ(unmappable.count, 1u);
}

// The code page: the setting when it names one the host can write, else
// the one Windows takes for the user's locale (LC_ALL before LC_CTYPE
// before LANG; the locale's own character set does not count), else, where
// the locale names no language, the drawing's $DWGCODEPAGE.
TEST_F(RoomsTest, TheReportsCodePageIsTheSettingsTheLocalesOrTheDrawings) {
  std::string drawing = fx::cli_test::ReadFile(BaseDrawing());
  const size_t page = drawing.find("ANSI_1252");
  ASSERT_NE(page, std::string::npos);
  drawing.replace(page, 9, "ANSI_1251");
  std::ofstream(dir_ + "/cyrillic.dxf", std::ios::binary) << drawing;
  Open(dir_ + "/cyrillic.dxf");
  const fx::cli_test::ScopedEnvironmentVariable all("LC_ALL", nullptr), ctype("LC_CTYPE", nullptr),
      lang("LANG", nullptr);
  const struct {
    const char* lang;
    unsigned code_page;
  } cases[] = {
      {"zh_CN.UTF-8", 936}, {"zh_TW.Big5", 950},     {"ja_JP.eucJP", 932}, {"ru_RU.KOI8-R", 1251},
      {"sr_RS@latin", 1250}, {"de_DE.UTF-8", 1252}, {"C.UTF-8", 1251},    {"POSIX", 1251},
      {"", 1251},
  };
  for (const auto& c : cases) {
    setenv("LANG", c.lang, 1);
    EXPECT_EQ(fx::rooms::ReportCodePage(&db()), c.code_page) << c.lang;
  }
  EXPECT_EQ(fx::rooms::ReportCodePage(nullptr), 1252u);  // no locale, no drawing
  setenv("LANG", "de_DE.UTF-8", 1);
  setenv("LC_CTYPE", "el_GR.UTF-8", 1);
  EXPECT_EQ(fx::rooms::ReportCodePage(&db()), 1253u);
  setenv("LC_ALL", "tr_TR.UTF-8", 1);
  EXPECT_EQ(fx::rooms::ReportCodePage(&db()), 1254u);

  std::string warning;
  ASSERT_TRUE(fx::settings::SetSettingInt(fx::settings::kAnsiCodePage, 65001, 0));
  EXPECT_EQ(fx::rooms::ReportCodePage(&db(), &warning), fx::kCodePageUtf8);
  EXPECT_EQ(warning, "");
  ASSERT_TRUE(fx::settings::SetSettingInt(fx::settings::kAnsiCodePage, 12345, 0));
  EXPECT_EQ(fx::rooms::ReportCodePage(&db(), &warning), 1254u);
  EXPECT_EQ(warning,
            "the setting \"ANSI Code Page\" names code page 12345, which cannot be written: the user's "
            "code page is taken");
}

TEST(ReportTest, TheDefaultNameIsTheDrawingsNameWithoutFolderAndExtension) {
  const struct {
    const char* document;
    const char* name;
  } cases[] = {
      {"", "Report1"},
      {"/plans/floor-3.dxf", "floor-3"},
      {"/plans/floor.3.dxf", "floor.3"},
      {"floor", "floor"},
      {"/plans/", "Report1"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fx::rooms::DefaultReportName(c.document), c.name) << c.document;
  }
}

TEST(ReportTest, TheFileIsWrittenWholeOrNotAtAll) {
  const fx::testing::TestFolder scratch("rooms_ui");
  const std::string dir = scratch.path().string();
  const std::string path = dir + "/report.csv";
  EXPECT_TRUE(fx::rooms::WriteReportFile(path, kHeader));
  EXPECT_EQ(fx::cli_test::ReadFile(path), kHeader);
  EXPECT_TRUE(fx::rooms::WriteReportFile(path, "x"));
  EXPECT_EQ(fx::cli_test::ReadFile(path), "x");
  EXPECT_FALSE(fx::rooms::WriteReportFile(dir + "/missing/report.csv", kHeader));
  EXPECT_FALSE(std::filesystem::exists(dir + "/missing"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir),
                          std::filesystem::directory_iterator()),
            1);
}

TEST(ReportTest, ErrorDescriptionsInTheirOrder) {
  const struct {
    int32_t flags;
    const char* text;
  } cases[] = {
      {fx::rooms::kFlagMultipleIds | fx::rooms::kFlagIntersected, "Intersected contour; Multiple identifiers"},
      {31, "Area not found; Duplicate number; Intersected contour; Multiple identifiers"},
      {2, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(fx::rooms::ErrorDescription(c.flags), c.text) << c.flags;
}

}  // namespace
}  // namespace fx::rooms_test
