// The export options dialog: what it writes at once, what only on saving,
// and what a run of floorxport answering it from a script stores.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "dialogs/export_dialog.h"
#include "dialogs_fixture.h"
#include "settings/duplicate_names_flag.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::dialogs_test {
namespace {

using fx::dialogs::CPvExportDialog;
namespace fs = fx::settings;

using ExportDialogTest = DialogsTest;

constexpr int32_t kAbsent = -7;
int32_t Stored(const char* name) { return fs::GetSettingInt(name, kAbsent, fs::kSectionExportOptions); }

TEST_F(ExportDialogTest, OkWithoutAChangeWritesNothing) {
  CPvExportDialog dialog(db());
  EXPECT_EQ(Value(dialog, "Send &Drawing Version"), "Current (AutoCAD 2018)");
  EXPECT_EQ(Value(dialog, "SVG Drawing Box"), "By drawing extents");
  EXPECT_EQ(Value(dialog, "Automatically delete duplicate identifiers"), "Yes");
  EXPECT_EQ(dialog.Press(CPvExportDialog::kOk), fx::DialogAction::kClose);
  for (const fs::KnownSetting& setting : fs::KnownSettings()) {
    if (setting.section != fs::kSectionExportOptions || setting.kind == fs::SettingKind::kString) continue;
    EXPECT_EQ(Stored(setting.name), kAbsent) << setting.name;
  }
}

TEST_F(ExportDialogTest, CancelKeepsTheDuplicateBoxAndTheVersion) {
  CPvExportDialog dialog(db());
  Set(dialog, "Automatically delete duplicate identifiers", "No");
  Set(dialog, "Send &Drawing Version", "autocad 2013");
  Set(dialog, "Approximate Ar&cs", "Yes");
  EXPECT_EQ(dialog.Press(CPvExportDialog::kCancel), fx::DialogAction::kClose);
  EXPECT_EQ(Stored(fs::kAutomaticallyResolveDuplicateNames), 0);
  EXPECT_FALSE(fs::AutoResolveDuplicateNames());
  EXPECT_EQ(Stored(fs::kVantoryDrawingVersion), 31);
  EXPECT_EQ(Stored(fs::kApproximateArc), kAbsent);
  fs::SetAutoResolveDuplicateNamesFlag(true);
}

// The editor's own system layers are not offered.
TEST_F(ExportDialogTest, TheExportedLayersAreKeptForTheDrawingUntilSetByDrawing) {
  AddLayer("*ADSK_CONSTRAINTS");
  const std::vector<std::string> every = fx::dialogs::ExportedLayers(db());
  CPvExportDialog dialog(db());
  Set(dialog, "Exported Layers", "FloorArea,RoomContours");
  EXPECT_EQ(dialog.Press(CPvExportDialog::kApply), fx::DialogAction::kStay);
  EXPECT_EQ(fx::dialogs::ExportedLayers(db()), (std::vector<std::string>{"FloorArea", "RoomContours"}));
  EXPECT_EQ(Stored(fs::kDrawingPosition), 0);
  EXPECT_EQ(dialog.Press(CPvExportDialog::kSetByDrawing), fx::DialogAction::kStay);
  EXPECT_EQ(fx::dialogs::ExportedLayers(db()), every);
  EXPECT_EQ(every.size(), 13u);
}

// The settings a run stores are those `floorxport settings` then lists; the
// export that follows in the same run draws only the layers chosen.
TEST_F(ExportDialogTest, TheCommandAnsweredByAScript) {
  std::ofstream(Path("answers.scr"), std::ios::binary)
      << "vantoryexpdlg\n\nYes\n\n\n\nYes\nBypolylineboundary\nRoomContours\nFloorArea,RoomContours\n"
         "AutoCAD 2010\nOK\nvantoryexport\n"
      << Path("chosen.svg") << "\nsvg\n";
  fx::cli_test::ProgramResult run = RunProgram({"run", SampleFloor(), "-s", Path("answers.scr")});
  EXPECT_EQ(run.exit_status, 0) << run.err << run.out;
  const std::string chosen = ReadFile(Path("chosen.svg"));
  EXPECT_NE(chosen.find("<path"), std::string::npos);
  EXPECT_EQ(chosen.find("<text"), std::string::npos) << "texts of the room name layers were drawn";
  fx::cli_test::ProgramResult shown = RunProgram({"settings"});
  EXPECT_EQ(shown.exit_status, 0) << shown.err;
  for (const char* row : {"Export in Old Format                   boolean  1 ",
                          "Hatch optimization                     boolean  1 ",
                          "Drawing Position                       integer  2 ",
                          "Viewbox poly_ext layer                 string   \"RoomContours\" ",
                          "Vantory Drawing Version                integer  29 "}) {
    EXPECT_NE(shown.out.find(row), std::string::npos) << row << "\n" << shown.out;
  }
}

}  // namespace
}  // namespace fx::dialogs_test
