// End-to-end runs of the real floorxport program: markers placed by a
// script (their prompts, texts and records) and listed by `floorxport
// rooms` with its report; an analysis
// followed by the room list, the report and the navigation commands.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "program_runner.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using namespace std::string_literals;
using fx::cli_test::ProgramResult;
using fx::cli_test::RunProgram;

const std::string kProgram = FX_FLOORXPORT;
const std::string kReportHeader =
    "Name\0,Category\0,Description\0,Comment\0,Area\0,Error description\0\r\n"s;
const std::string kConvertPlan =
    "_vantoryconvert \"FloorArea\" \"RoomContours\" B \"ROOMTAG\" \"NAME\" \"CATEGORY\" "
    "\"DESCRIPTION\" No";

class ProgramTest : public ::testing::Test {
 protected:
  // floorxport with a settings file of the test's own.
  ProgramResult Run(std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", Path("settings.reg")});
    return RunProgram(kProgram, args, dir_);
  }
  std::string Path(const std::string& name) const { return dir_ + "/" + name; }
  std::string WriteScript(const std::string& name, const std::string& text) {
    std::ofstream(Path(name), std::ios::binary) << text;
    return Path(name);
  }
  fx::testing::TestFolder scratch_{"rooms_ui"};
  const std::string dir_ = scratch_.path().string();
};

TEST_F(ProgramTest, MarkersPlacedByAScriptAreListedWithTheirReport) {
  const std::string script =
      WriteScript("markers.scr",
                  "_vantoryaddmarker 5,5\n1.01\nOffice\nWest, by the stairs\nNew carpet\n\nOK\n"
                  "_vantoryaddmarker 15,5\n\n\n\n\n\n\n"
                  "_vantoryaddmarker 25,5\nNot placed\n\n\n\n\ncancel\n");
  ProgramResult run = Run({"run", BaseDrawing(), "-s", script, "-o", Path("marked.dxf")});
  ASSERT_EQ(run.exit_status, 0) << run.err << run.out;
  EXPECT_TRUE(run.out.starts_with(
      "\nCommand: _vantoryaddmarker\nSpecify internal point: 5,5\nRoom Properties\n&Name: 1.01\n&Category: Office"
      "\n&Description: West, by the stairs\nCo&mment: New carpet\nArea <Area not found>: \n[OK/Cancel] <OK>: OK\n"))
      << run.out;
  EXPECT_NE(run.out.find("\n[OK/Cancel] <OK>: cancel\npPolyline.openStatus = eNullObjectId"),
            std::string::npos)
      << run.out;
  ProgramResult rooms = Run({"rooms", Path("marked.dxf"), "-o", Path("report.csv")});
  EXPECT_EQ(rooms.exit_status, 0) << rooms.err;
  EXPECT_EQ(rooms.err, "");
  EXPECT_EQ(rooms.out,
            "Drawing: " + Path("marked.dxf") +
                "\nRooms: 2"
                "\nName  Category  Description          Comment          Area  Error description"
                "\n1.01  Office    West, by the stairs  New carpet  Not found"
                "\n                                                 Not found"
                "\nFloor area: Not found"
                "\nReport: " +
                Path("report.csv") + "\n");
  EXPECT_EQ(fx::cli_test::ReadFile(Path("report.csv")),
            kReportHeader + "1.01,Office,West, by the stairs,New carpet,Not found,\r\n,,,,Not found,\r\n");
  // The markers are single-line texts in model space, read by another reader.
  const std::string check = Path("check.py");
  std::ofstream(check)
      << "import sys, ezdxf\n"
         "doc = ezdxf.readfile(sys.argv[1])\n"
         "for e in doc.modelspace().query('TEXT'):\n"
         "    xd = e.get_xdata('VantoryApp')\n"
         "    print(e.dxf.text, e.dxf.insert[0], e.dxf.insert[1], xd[0][1], xd[1][1])\n";
  ProgramResult ezdxf = RunProgram(FX_SYSTEM_PYTHON, {check, Path("marked.dxf")}, dir_);
  EXPECT_EQ(ezdxf.exit_status, 0) << ezdxf.err;
  EXPECT_EQ(ezdxf.out, "1.01 5.0 5.0 1.2 1.01\nUnknown Name 15.0 5.0 1.2 \n");
}

// The handle of the model-space reference whose attribute NAME is `name`.
std::string InsertNamed(const std::string& path, const std::string& name) {
  std::string error;
  std::unique_ptr<AcDbDatabase> database = fx::dxf::ReadDrawing(path, &error);
  EXPECT_NE(database, nullptr) << error;
  if (database == nullptr) return {};
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database->modelSpaceId(), AcDb::kForRead);
  for (AcDbObjectId id : model_space->entityIds()) {
    AcDbObjectPointer<AcDbBlockReference> insert(id, AcDb::kForRead);
    if (insert.openStatus() != Acad::eOk) continue;
    for (AcDbObjectId attribute_id : insert->attributeIds()) {
      AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
      if (attribute->tag() == "NAME" && attribute->textString() == name) return id.handle().ascii();
    }
  }
  return {};
}

TEST_F(ProgramTest, AnalysisThenRoomListReportAndNavigation) {
  ProgramResult run = Run({"run", PlanDrawing(),
                           "-c",  kConvertPlan,
                           "-c",  "vantoryZoomToNextDuplicateNumber",
                           "-c",  "vantoryZoomToNextMultiIDs",
                           "-c",  "vantoryroomlistdlg",
                           "-c",  "",
                           "-c",  "save",
                           "-c",  Path("dialog.csv"),
                           "-c",  "",
                           "-c",  "",
                           "-c",  "OK",
                           "-o",  Path("analysed.dxf")});
  ASSERT_EQ(run.exit_status, 0) << run.err << run.out;
  // The analysis's problem lists in the same run: the later " 101 " is the
  // duplicate, "102b" the second identifier in its room.
  const std::string zoom = "\nCommand: _ZOOM\nZoom [Extents/Object]: _O\nSelect objects: ";
  EXPECT_NE(run.out.find("\nCommand: vantoryZoomToNextDuplicateNumber" + zoom +
                         InsertNamed(Path("analysed.dxf"), " 101 ") + "\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("\nCommand: vantoryZoomToNextMultiIDs" + zoom +
                         InsertNamed(Path("analysed.dxf"), "102b") + "\n"),
            std::string::npos)
      << run.out;
  ProgramResult rooms = Run({"rooms", Path("analysed.dxf"), "-o", Path("report.csv")});
  EXPECT_EQ(rooms.exit_status, 0) << rooms.err;
  EXPECT_EQ(rooms.out,
            "Drawing: " + Path("analysed.dxf") +
                "\nRooms: 6"
                "\nName   Category  Description    Comment       Area  Error description"
                "\n101    Office    Corner, north            100.0000"
                "\n102    Meeting   Small                    100.0000"
                "\n102b   Meeting   Second tag               100.0000  Multiple identifiers"
                "\n 101   Office    Twin                     100.0000  Duplicate number; "
                "Intersected contour"
                "\n104    Storage                            100.0000  Intersected contour"
                "\n103    Office    Caf\u00e9                    Not found  Area not found"
                "\nFloor area: 1000.0000\nReport: " +
                Path("report.csv") + "\n");
  // The report of the dialog's Save and of `rooms -o` are the same bytes.
  EXPECT_EQ(fx::cli_test::ReadFile(Path("report.csv")), fx::cli_test::ReadFile(Path("dialog.csv")));
  EXPECT_NE(fx::cli_test::ReadFile(Path("report.csv")).find("\r\n101,Office,Corner, north,,100.0000,\r\n"),
            std::string::npos);
}

// The report is in the code page Windows takes for the user's locale, GBK
// (936) for zh_CN, whatever the locale's own character set. The Korean name
// cannot be written in it: its characters become "?", and that is said once.
TEST_F(ProgramTest, TheReportIsInTheCodePageOfTheUsersLocale) {
  const fx::cli_test::ScopedEnvironmentVariable locale("LC_ALL", "zh_CN.UTF-8");
  const std::string drawing = std::string(FX_TEST_DATA_DIR) + "/rooms_ui/rooms_cjk.dxf";
  ProgramResult run = Run({"run", drawing, "-c", kConvertPlan, "-o", Path("analysed.dxf")});
  ASSERT_EQ(run.exit_status, 0) << run.err << run.out;
  ProgramResult rooms = Run({"rooms", Path("analysed.dxf"), "-o", Path("report.csv")});
  EXPECT_EQ(rooms.exit_status, 0) << rooms.err;
  EXPECT_EQ(fx::cli_test::ReadFile(Path("report.csv")),
            kReportHeader +
                "\xBB\xE1\xD2\xE9\xCA\xD2,\xB0\xEC\xB9\xAB,\xB1\xB1\xC2\xA5,,100.0000,\r\n"
                "???,\xB0\xEC\xB9\xAB,Caf\xA8\xA6,,100.0000,\r\n");
  EXPECT_EQ(rooms.err,
            "floorxport: warning: the report is written in code page 936, which cannot hold 3 characters "
            "(the first is U+D68C \"\ud68c\"): they are written as \"?\"\n");
}

}  // namespace
}  // namespace fx::rooms_test
