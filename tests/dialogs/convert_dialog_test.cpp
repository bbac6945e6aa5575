// The room identification dialog: its two modes, the stored choices, the
// command line it sends; and a run of floorxport that answers it from a
// script and analyses the drawing exactly as the line it composes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "dialogs/convert_dialog.h"
#include "dialogs_fixture.h"
#include "drawing_text.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::dialogs_test {
namespace {

using fx::dialogs::CPvConvertDialog;
using fx::settings::GetSettingString;
using fx::settings::kSectionConvertOptions;
using fx::testing::WithoutSaveTime;

using ConvertDialogTest = DialogsTest;

std::string StoredText(const char* name) { return GetSettingString(name, kSectionConvertOptions); }

TEST_F(ConvertDialogTest, SwitchingModesKeepsWhatWasChosenForEach) {
  CPvConvertDialog dialog(db());
  ASSERT_EQ(dialog.mode(), CPvConvertDialog::kBlockMode);
  Set(dialog, "&Block Name", "roomtag");
  EXPECT_EQ(Value(dialog, "&Block Name"), "ROOMTAG");
  Set(dialog, "&Name Attribute", "NAME");
  Set(dialog, "&Type Attribute", "CATEGORY");
  EXPECT_NE(dialog.SetField(5, "RoomNames"), "");  // a layer is no attribute of the block

  Set(dialog, "Identification", "Text Entities");
  EXPECT_EQ(dialog.fieldTexts(), (std::array<std::string, 3>{"(None)", "(None)", "(None)"}));
  Set(dialog, "&Name Attribute", "RoomNames");
  Set(dialog, "&Description", "RoomDescriptions");

  Set(dialog, "Identification", "Block Inserts");
  EXPECT_EQ(dialog.fieldTexts(), (std::array<std::string, 3>{"NAME", "CATEGORY", "(None)"}));
  dialog.SetMode(CPvConvertDialog::kTextMode);
  EXPECT_EQ(dialog.fieldTexts(), (std::array<std::string, 3>{"RoomNames", "(None)", "RoomDescriptions"}));
}

// OK stores the current mode's three texts and no others, and sends the line.
TEST_F(ConvertDialogTest, OkChecksTheLayersThenStoresAndSendsTheLine) {
  fx::settings::SetSettingString(fx::settings::kAttributeName, "OLD", kSectionConvertOptions);
  CPvConvertDialog dialog(db());
  dialog.SetMode(CPvConvertDialog::kTextMode);
  EXPECT_EQ(dialog.Press(CPvConvertDialog::kOk), fx::DialogAction::kStay);
  EXPECT_NE(NewOutput().find("Please, select Floor Area Layer."), std::string::npos);
  Set(dialog, "Floor &Area Layer", "FloorArea");
  EXPECT_EQ(dialog.Press(CPvConvertDialog::kOk), fx::DialogAction::kStay);
  EXPECT_NE(NewOutput().find("Please, select Room Contours Layer."), std::string::npos);
  EXPECT_EQ(StoredText(fx::settings::kContourFloorAreaLayer), "");

  Set(dialog, "Room Contours &Layer", "RoomContours");
  Set(dialog, "&Name Attribute", "RoomNames");
  EXPECT_EQ(dialog.Press(CPvConvertDialog::kOk), fx::DialogAction::kClose);
  EXPECT_EQ(StoredText(fx::settings::kContourFloorAreaLayer), "FloorArea");
  EXPECT_EQ(StoredText(fx::settings::kLayerAttributeName), "RoomNames");
  EXPECT_EQ(StoredText(fx::settings::kLayerAttributeType), "(None)");
  EXPECT_EQ(StoredText(fx::settings::kAttributeName), "OLD");
  EXPECT_EQ(fx::settings::GetSettingInt(fx::settings::kIdentificationType, -1, kSectionConvertOptions), 1);
  // The sent line runs once the (test's) command ends: here, at once.
  Run("");
  EXPECT_NE(NewOutput().find("\nCommand: _vantoryconvert\nEnter FloorArea layer: FloorArea\n"),
            std::string::npos);
}

// Any stored type but 0 is text mode; "(None)" is an empty string on the
// line; a double quote in a layer name is passed as it is.
TEST_F(ConvertDialogTest, TheCommandLineOfEachMode) {
  fx::settings::SetSettingInt(fx::settings::kIdentificationType, 7, kSectionConvertOptions);
  fx::settings::SetSettingString(fx::settings::kContourFloorAreaLayer, "FloorArea", kSectionConvertOptions);
  fx::settings::SetSettingString(fx::settings::kContourLayer, "RoomContours", kSectionConvertOptions);
  CPvConvertDialog text(db());
  EXPECT_EQ(Value(text, "Identification"), "Text Entities");
  EXPECT_EQ(text.CommandLine(), "_vantoryconvert \"FloorArea\" \"RoomContours\" T \"\" \"\" \"\"\n");

  AddLayer("Floor \"A\"");
  fx::settings::SetSettingInt(fx::settings::kIdentificationType, 0, kSectionConvertOptions);
  CPvConvertDialog blocks(db());
  Set(blocks, "Floor &Area Layer", "Floor \"A\"");
  Set(blocks, "&Block Name", "ROOMTAG");
  Set(blocks, "&Remove Block Inserts", "Yes");
  EXPECT_EQ(blocks.CommandLine(),
            "_vantoryconvert \"Floor \"A\"\" \"RoomContours\" B \"ROOMTAG\" \"\" \"\" \"\" Yes\n");
}

// floorxport answers the dialog from a script; the drawing it saves is the
// one the composed line gives: on the sample floor in both modes, and on
// corpus floors (skipped when absent) with their own names and layers.
TEST_F(DialogsTest, TheDialogAnalysesADrawingAsTheLineItComposes) {
  struct Case {
    std::string file;
    const char* answers;
    const char* line;
  };
  const std::string corpus = std::string(FX_CORPUS_DIR) + "/";
  const Case cases[] = {
      {SampleFloor(), "FloorArea\nRoomContours\nBlockInserts\nROOMTAG\nNAME\nCATEGORY\nDESCRIPTION\nNo\nOK\n",
       "_vantoryconvert \"FloorArea\" \"RoomContours\" B \"ROOMTAG\" \"NAME\" \"CATEGORY\" \"DESCRIPTION\" No"},
      {SampleFloor(), "FloorArea\nRoomContours\nTextEntities\nRoomNames\nRoomTypes\nRoomDescriptions\nOK\n",
       "_vantoryconvert \"FloorArea\" \"RoomContours\" T \"RoomNames\" \"RoomTypes\" \"RoomDescriptions\""},
      {corpus + "pms-app/building001-0_floor3.dxf",
       "AREA-GROSS\nAREA-ASSIGN\nTextEntities\nA-IDEN-RNUM\nRooms-Information\nAREA-TEXT\nOK\n",
       "_vantoryconvert \"AREA-GROSS\" \"AREA-ASSIGN\" T \"A-IDEN-RNUM\" \"Rooms-Information\" \"AREA-TEXT\""},
      {corpus + "openindoor6/plan.dxf",
       "ABY_Contour_Facade\nABY_Zone_ZIND\nTextEntities\nTexte_Pi\xc3\xa8" "ces\n(None)\n(None)\nOK\n",
       "_vantoryconvert \"ABY_Contour_Facade\" \"ABY_Zone_ZIND\" T \"Texte_Pi\xc3\xa8" "ces\" \"\" \"\""},
      {corpus + "wentcad/WATT_0a_PARTER.dxf",
       "OBRYS_ZEWN\nROOM\nBlockInserts\n2da_pok06c_zs1fkav\nNR\nNAME\nFLOOR_MAT\nNo\nOK\n",
       "_vantoryconvert \"OBRYS_ZEWN\" \"ROOM\" B \"2da_pok06c_zs1fkav\" \"NR\" \"NAME\" \"FLOOR_MAT\" No"},
      {corpus + "constructiq/house_plan.dxf", "WALL\n3X4F\nBlockInserts\nWC3\nFIXT_CODE\nFU_COLD\n(None)\nYes\nOK\n",
       "_vantoryconvert \"WALL\" \"3X4F\" B \"WC3\" \"FIXT_CODE\" \"FU_COLD\" \"\" Yes"},
  };
  for (const Case& c : cases) {
    if (!std::filesystem::exists(c.file)) continue;
    SCOPED_TRACE(c.file + ": " + c.line);
    std::ofstream(Path("answers.scr"), std::ios::binary) << "vantorconvertdlg\n" << c.answers;
    const fx::cli_test::ProgramResult by_dialog =
        RunProgram({"run", c.file, "-s", Path("answers.scr"), "-o", Path("dialog.dxf")});
    ASSERT_EQ(by_dialog.exit_status, 0) << by_dialog.err << by_dialog.out;
    EXPECT_NE(by_dialog.out.find("\n[OK/Cancel] <OK>: OK\nCommand: _vantoryconvert\n"), std::string::npos)
        << by_dialog.out;
    std::filesystem::remove(Path("program.reg"));
    const fx::cli_test::ProgramResult by_line = RunProgram({"run", c.file, "-c", c.line, "-o", Path("line.dxf")});
    ASSERT_EQ(by_line.exit_status, 0) << by_line.err << by_line.out;
    const std::string analysed = WithoutSaveTime(ReadFile(Path("dialog.dxf")));
    EXPECT_NE(analysed.find("VantoryApp"), std::string::npos);
    EXPECT_TRUE(analysed == WithoutSaveTime(ReadFile(Path("line.dxf"))));
  }
}

}  // namespace
}  // namespace fx::dialogs_test
