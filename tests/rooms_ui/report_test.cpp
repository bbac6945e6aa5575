// The room report: its bytes (NUL after each header field, CRLF, no
// quoting, Windows-1252), the default name, the conversion, the file write.
#include "rooms/report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "rooms_ui_fixture.h"

namespace fx::rooms_test {
namespace {

using namespace std::string_literals;
using fx::rooms::FormatReport;
using Cells = std::array<std::string, fx::rooms::kRoomListColumnCount>;

const std::string kHeader =
    "Name\0,Category\0,Description\0,Comment\0,Area\0,Error description\0\r\n"s;

TEST(ReportTest, AReportOfNoRowsIsTheHeaderWithANulAfterEachField) {
  EXPECT_EQ(FormatReport({}), kHeader);
  EXPECT_EQ(FormatReport({}).size(), 64u);
}

TEST(ReportTest, RowsFollowWithoutTerminatorsOrQuotes) {
  const std::vector<Cells> rows = {
      {"101", "Office", "Open office", "", "24.0000", ""},
      {"102", "Meeting", "", "Window \"east\"", "Not found", "Area not found; Duplicate number"},
  };
  EXPECT_EQ(FormatReport(rows),
            kHeader +
                "101,Office,Open office,,24.0000,\r\n"
                "102,Meeting,,Window \"east\",Not found,Area not found; Duplicate number\r\n");
}

TEST(ReportTest, ACommaInANameShiftsTheRestOfItsRow) {
  const std::string report = FormatReport({{"Lab, wet", "Lab", "", "", "12.5000", ""}});
  EXPECT_EQ(report, kHeader + "Lab, wet,Lab,,,12.5000,\r\n");
  // Read back as comma-separated, the row has seven fields and the area is
  // the sixth.
  const std::string row = report.substr(kHeader.size());
  EXPECT_EQ(std::count(row.begin(), row.end(), ','), 6);
}

TEST(ReportTest, CellsAreWrittenInWindows1252) {
  const std::string report = FormatReport({{"Caf\u00e9", "\u20ac", "Stra\u00dfe", "", "", ""}});
  EXPECT_EQ(report.substr(kHeader.size()),
            "Caf\xE9,\x80,Stra\xDF"
            "e,,,\r\n");
}

TEST(ReportTest, Utf8ToWindows1252) {
  const struct {
    std::string utf8;
    std::string ansi;
  } cases[] = {
      {"", ""},
      {"Room 1.01", "Room 1.01"},
      {"\u00a0\u00ff", "\xA0\xFF"},                                // Latin-1 range as is
      {"\u20ac\u201a\u0192\u2122\u0178", "\x80\x82\x83\x99\x9F"},  // the 0x80..0x9F block
      {"\u017d\u017e\u0152\u0153", "\x8E\x9E\x8C\x9C"},
      {"\u0081\u008d\u008f\u0090\u009d", "\x81\x8D\x8F\x90\x9D"},  // unassigned bytes
      {"\u0080\u0085", "??"},                                      // other C1 controls
      {"\u03a9 \u4e2d \U0001F600", "? ? ?"},                       // not in the code page
      {"a\xFF"
       "b",
       "a?b"},                  // not UTF-8
      {"\xC0\xAF", "??"},       // overlong
      {"\xED\xA0\x80", "???"},  // a surrogate
      {"\xE2\x82", "??"},       // cut short
      {"\xE2\x82\xAC\xE2", "\x80?"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fx::rooms::Utf8ToAnsi(c.utf8), c.ansi) << c.utf8;
  }
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
  const std::string dir = ScratchDir();
  const std::string path = dir + "/report.csv";
  EXPECT_TRUE(fx::rooms::WriteReportFile(path, kHeader));
  EXPECT_EQ(ReadBytes(path), kHeader);
  EXPECT_TRUE(fx::rooms::WriteReportFile(path, "x"));
  EXPECT_EQ(ReadBytes(path), "x");
  EXPECT_FALSE(fx::rooms::WriteReportFile(dir + "/missing/report.csv", kHeader));
  EXPECT_FALSE(std::filesystem::exists(dir + "/missing"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir),
                          std::filesystem::directory_iterator()),
            1);
  std::filesystem::remove_all(dir);
}

TEST(ReportTest, AreaAndErrorCells) {
  EXPECT_EQ(fx::rooms::AreaCell(std::nullopt), "Not found");
  EXPECT_EQ(fx::rooms::AreaCell(0.0), "0.0000");
  EXPECT_EQ(fx::rooms::AreaCell(1234.56789), "1234.5679");
  const struct {
    int32_t flags;
    const char* text;
  } cases[] = {
      {0, ""},
      {fx::rooms::kFlagAreaNotFound, "Area not found"},
      {fx::rooms::kFlagMultipleIds | fx::rooms::kFlagIntersected,
       "Intersected contour; Multiple identifiers"},
      {31, "Area not found; Duplicate number; Intersected contour; Multiple identifiers"},
      {2, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fx::rooms::ErrorDescription(c.flags), c.text) << c.flags;
  }
}

}  // namespace
}  // namespace fx::rooms_test
