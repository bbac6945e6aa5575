// The room report's code page and the conversion, and its default name. (Its
// rows and file as the user gets them: program_test.cpp, room_list_test.cpp.)
#include "rooms/report.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "host/code_page.h"
#include "program_runner.h"
#include "rooms_fixture.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::rooms_test {
namespace {

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

// The code page: the setting's if the host can write it, else the user's
// locale's (LC_ALL, LC_CTYPE, LANG; not its character set), else the drawing's.
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
      {"/plans/", "Report1"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fx::rooms::DefaultReportName(c.document), c.name) << c.document;
  }
}

}  // namespace
}  // namespace fx::rooms_test
