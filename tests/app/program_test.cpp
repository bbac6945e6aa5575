// End-to-end runs of the real floorxport program with the plug-in: menu
// items picked by path in order with command lines (the About box among
// them), every command name, the update check. (A linked drawing changed
// and closed: tests/exchange.)
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "app_test_support.h"
#include "program_runner.h"

namespace fx::app_test {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;

const std::string kProgram = FX_FLOORXPORT;
const std::string kAboutTitle = std::string("About FloorXport ") + FX_VERSION;

class ProgramTest : public ::testing::Test {
 protected:
  ~ProgramTest() override { unsetenv("FX_TEST_UPDATER_LOG"); }

  ProgramResult Run(const std::vector<std::string>& args, const std::string& program = kProgram) {
    return RunProgram(program, args, dir_);
  }
  std::string Path(const char* name) const { return dir_ + "/" + name; }

  fx::testing::TestFolder folder_{"app"};
  std::string dir_ = folder_.path().string();
};

TEST_F(ProgramTest, MenuItemsRunInOrderWithCommandLines) {
  const std::string out = Path("out.dxf");
  ProgramResult run = Run(
      {"run", SmallPlan(), "-c", "UNITS 5", "--menu", "&PlanVault/&Utils/&Shortcuts/&Units", "-c",
       "6", "--menu", "&PlanVault/Ab&out", "-c", "e", "-c", "", "--menu", "planvault/room list", "-c", "",
       "-c", "OK", "-o", out});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "\nCommand: UNITS\nInsertion units ($INSUNITS): 4 (Millimeters)"
            "\nEnter units (0-20) <4>: 5\nInsertion units set to 5 (Centimeters)."
            "\nCommand: _UNITS\nInsertion units ($INSUNITS): 5 (Centimeters)"
            "\nEnter units (0-20) <5>: 6\nInsertion units set to 6 (Meters)."
            "\nCommand: vantoryShowAbout\n" +
                kAboutTitle +
                "\n[OK/E-mailsupport] <OK>: e"
                "\nWrite to support@vantory.example: mailto:support@vantory.example"
                "\n[OK/E-mailsupport] <OK>: "
                "\nCommand: vantoryroomlistdlg\nRoom List"
                "\n   #  Name | Category | Description | Comment | Area | Error description"
                "\nFloor area: Not found\nRoom: "
                "\n[OK/Cancel/ZoomTo/Properties/DeleteAll/Save/Apply/Help] <OK>: OK\n");
  ProgramResult info = Run({"info", out});
  EXPECT_NE(info.out.find("\nUnits: 6 (Meters)\n"), std::string::npos) << info.out;
}

// A batch run never stalls in a dialog: when the script ends in one, its
// default button is pressed (tests/console checks the rule); Room
// identification's OK, once the layers are remembered, runs the analysis
// with them.
TEST_F(ProgramTest, AScriptThatEndsInADialogPressesItsDefaultButton) {
  const std::string settings = Path("settings.reg");
  const char* layers = "vantorconvertdlg FloorArea\nRoomContours\n\nROOMTAG\nNAME\n\n\n\nOK";
  ASSERT_EQ(Run({"--settings", settings, "run", SampleFloor(), "-c", layers}).exit_status, 0);
  const std::string out = Path("analysed.dxf");
  ProgramResult analysis = Run({"--settings", settings, "run", SampleFloor(), "-c", "vantorconvertdlg", "-o", out});
  EXPECT_EQ(analysis.exit_status, 0) << analysis.err;
  EXPECT_NE(analysis.out.find("<FloorArea>: \nNo more input: pressed OK, the default button of \"Room "
                              "Identification\".\nCommand: _vantoryconvert\nEnter FloorArea layer: FloorArea"),
            std::string::npos)
      << analysis.out;
  EXPECT_NE(ReadFile(out).find("\n1001\nVantoryApp\n1000\n1.2\n"), std::string::npos);  // room records
}

// (Every way a path can name no item is in menu_test.)
TEST_F(ProgramTest, AMenuPathThatNamesNoItemRunsNothing) {
  const std::string out = Path("out.dxf");
  ProgramResult run = Run({"run", SmallPlan(), "-c", "UNITS 5", "--menu", "&PlanVault/Frob", "-o", out});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "floorxport: --menu \"&PlanVault/Frob\": no item \"Frob\" in menu \"&PlanVault\"\n");
  EXPECT_FALSE(fs::exists(out));
}

// Answers that end a room command on a drawing without rooms: the room
// list's OK, a marker cancelled, the replacement cancelled, no contour layer.
std::vector<const char*> RoomCommandAnswers(const std::string& local) {
  if (local == "vantoryroomlistdlg") return {"", "OK"};
  if (local == "vantoryaddmarker") return {"0,0", "", "", "", "", "", "cancel"};
  if (local == "vantoryReplaceBlock") return {"", "", "", "", "", "cancel"};
  if (local == "vantoryZoomToNextEmptyContour") return {""};
  if (local == "vantorconvertdlg") return {"", "", "", "", "", "", "", "", "Cancel"};  // eight fields
  if (local == "vantoryexpdlg") return {"", "", "", "", "", "", "", "", "", "Cancel"};  // nine fields
  if (local == "vantoryexport") return {""};  // no path: ends without a word
  if (local == "vantoryExportToFile") return {"", "", "Cancel"};  // the save dialog cancelled
  if (local == "vantoryOpenFrom" || local == "vantorySendTo") return {"", "Cancel"};  // no site
  return {};
}

TEST_F(ProgramTest, EveryOtherCommandNameRunsAndAnUnknownOneFails) {
  std::vector<std::string> args = {"run", SmallPlan()};
  int commands = 0;
  for (const AcRxCommandEntry& entry : fx::app::CommandTable()) {
    const std::string local = entry.local_name;
    if (local.starts_with("vantoryDrawing")) continue;
    const std::string global = entry.global_name;
    for (const std::string& typed : {global, "_" + global, local, "_" + local}) {
      std::string line = local == "vantoryShowAbout" ? typed + " " : typed;
      // Room identification reads its answers; an empty floor layer ends it.
      if (local == "vantoryconvert") line += R"( "" "" T "" "" "")";
      args.insert(args.end(), {"-c", line});
      // The room commands read their answers one per line; each ends
      // without changing the drawing.
      for (const char* answer : RoomCommandAnswers(local)) args.insert(args.end(), {"-c", answer});
      ++commands;
    }
  }
  ProgramResult run = Run(args);
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out.find("Unknown command"), std::string::npos) << run.out;
  size_t count = 0;
  for (size_t at = run.out.find("\nCommand: "); at != std::string::npos;
       at = run.out.find("\nCommand: ", at + 1)) {
    ++count;
  }
  EXPECT_EQ(count, static_cast<size_t>(commands));
  EXPECT_EQ(commands, 17 * 4);

  ProgramResult unknown = Run({"run", SmallPlan(), "-c", "_vantoryFrob", "-c", "UNITS 5"});
  EXPECT_EQ(unknown.exit_status, 1);
  EXPECT_EQ(unknown.out, "\nCommand: _vantoryFrob\nUnknown command \"_VANTORYFROB\".\n");
  EXPECT_EQ(unknown.err,
            "floorxport: unknown command \"_VANTORYFROB\"; the rest of the script was skipped\n");
}

// The update check library beside (a copy of) the program: CheckUpdate is
// called once; a library without it, or no library, is reported and the run
// goes on; without the library nothing is said.
TEST_F(ProgramTest, TheUpdateCheckLibraryBesideTheProgram) {
  fs::create_directories(dir_ + "/bin");
  const std::string program = dir_ + "/bin/floorxport", library = dir_ + "/bin/libUpdater.so";
  fs::copy_file(kProgram, program);
  fs::copy_file(FX_TEST_UPDATER, library);
  const std::string log = Path("updater.log");
  setenv("FX_TEST_UPDATER_LOG", log.c_str(), 1);
  ProgramResult result = Run({"menu"}, program);
  EXPECT_EQ(result.exit_status, 0) << result.err;
  EXPECT_EQ(result.out, kPlanVaultMenuTree);
  EXPECT_EQ(ReadFile(log), "CheckUpdate\n");

  fs::remove(library);
  fs::copy_file(FX_TEST_UPDATER_WITHOUT_CHECK, library);
  result = Run({"menu"}, program);
  EXPECT_EQ(result.exit_status, 0) << result.err;
  EXPECT_EQ(result.out, "\nUpdate check skipped: " + library + " has no CheckUpdate.\n" + kPlanVaultMenuTree);

  fs::remove(library);
  std::ofstream(library) << "not a library\n";
  result = Run({"menu"}, program);
  EXPECT_EQ(result.exit_status, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with("\nUpdate check skipped: " + library)) << result.out;
  EXPECT_TRUE(result.out.ends_with(kPlanVaultMenuTree)) << result.out;

  fs::remove(library);
  result = Run({"run", SmallPlan(), "-c", "UNITS 5"}, program);
  EXPECT_EQ(result.exit_status, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with("\nCommand: UNITS\n")) << result.out;
  EXPECT_EQ(result.err, "");
}

}  // namespace
}  // namespace fx::app_test
