// The commands vantoryexport and vantoryExportToFile on the console: their
// prompts, the keywords, the save dialog with its filters, the overwrite
// question and the remembered format.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "export/export_file_dialog.h"
#include "export_fixture.h"
#include "host/editor.h"
#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_key.h"

namespace fx::export_test {
namespace {

namespace s = fx::settings;

constexpr const char* kTypes =
    "Save as type [1 PlanVault v1 (*.xml)/2 PlanVault v2 (*.planvault)/3 PlanVault Drawing (*.drawing)/"
    "4 SVG (*.svg)/5 SVGZ (*.svgz)]";

// The root element's name of a file, gunzipped when it is gzip.
std::string RootOf(const std::string& path) {
  std::string text = GunzipFile(path);
  if (text.empty()) text = ReadFile(path);
  return Parse(text)->document_element().name();
}

bool IsGzip(const std::string& path) { return !GunzipFile(path).empty(); }

class ExportCommandsTest : public ExportTest {};

// A keyword in capitals is a wrong format; an empty path ends the command
// silently, and so does running out of answers.
TEST_F(ExportCommandsTest, WrongOrMissingAnswersWriteNothing) {
  Open();
  for (const char* keyword : {"XML", "Svg", "PLANVAULT", "pdf"}) {
    const std::string transcript = RunScript("_vantoryexport\n" + Path("wrong") + "\n" + keyword);
    EXPECT_EQ(transcript, "\nCommand: _vantoryexport\nEnter Export File Path: " + Path("wrong") +
                              "\nEnter Export File Format: " + keyword + "\nERROR : Wrong Export File Format.\n");
  }
  EXPECT_EQ(RunScript("_vantoryexport\n\nsvg"), "\nCommand: _vantoryexport\nEnter Export File Path: \nCommand: svg"
                                                 "\nUnknown command \"SVG\".\n");
  EXPECT_EQ(RunScript("_vantoryexport\n" + Path("x.svg")).find("Exported"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Path("wrong")));
  EXPECT_FALSE(std::filesystem::exists(Path("x.svg")));
}

// The dialog's answers: the file name, the filter index, Save.
std::string ExportToFileScript(const std::string& name, const std::string& filter) {
  return "_vantoryExportToFile\n" + name + "\n" + filter + "\nSave";
}

TEST_F(ExportCommandsTest, TheDialogPromptsThenSendsTheExportCommand) {
  Open();
  const std::string transcript = RunScript(ExportToFileScript(Path("plan"), "2"));
  const std::string initial = FloorDrawing().substr(0, FloorDrawing().size() - 4);
  EXPECT_EQ(transcript, "\nCommand: _vantoryExportToFile\nExport to File\nFile name <" + initial + ">: " +
                            Path("plan") + "\n" + kTypes + " <1>: 2\n[Save/Cancel] <Save>: Save" +
                            "\nCommand: _vantoryexport\nEnter Export File Path: " + Path("plan.planvault") +
                            "\nEnter Export File Format: planvault\nPlanVault: Exported " + Path("plan.planvault") + "\n");
  // The export's zoom to extents ran with CMDECHO 0 (no prompt of it shows), then set it back.
  resbuf echo{};
  ASSERT_EQ(acedGetVar("CMDECHO", &echo), RTNORM);
  EXPECT_EQ(echo.resval.rint, 1);
  EXPECT_EQ(s::GetSettingString(s::kExportFileFormat, s::kSectionExportOptions), "PlanVault v2");
}

// Each keyword writes its format whatever the name says (a path in quotes
// keeps its blanks); each filter index of the dialog gives its extension,
// format and remembered value.
TEST_F(ExportCommandsTest, KeywordsAndFilterIndexesCrossToFormats) {
  const struct {
    const char* index;
    const char* keyword;
    const char* root;
    bool gzip;
    const char* remembered;
  } kCases[] = {
      {"1", "xml", "FLOOR", false, "PlanVault v1"},  {"2", "planvault", "file", false, "PlanVault v2"},
      {"3", "drawing", "file", true, "PlanVault DRW"}, {"4", "svg", "svg", false, "SVG"},
      {"5", "svgz", "svg", true, "SVGZ"},
  };
  std::filesystem::create_directories(Path("my plans"));
  for (const auto& c : kCases) {
    Open();
    const std::string bin = Path(std::string("my plans/out ") + c.keyword + ".bin");
    RunScript("_vantoryexport\n\"" + bin + "\"\n" + c.keyword);
    EXPECT_EQ(RootOf(bin), c.root) << c.keyword;
    EXPECT_EQ(IsGzip(bin), c.gzip) << c.keyword;
    RunScript(ExportToFileScript(Path("plan"), c.index));
    EXPECT_EQ(RootOf(Path(std::string("plan.") + c.keyword)), c.root) << c.index;
    EXPECT_EQ(s::GetSettingString(s::kExportFileFormat, s::kSectionExportOptions), c.remembered);
  }
}

TEST_F(ExportCommandsTest, AnExistingFileIsReplacedOnlyAfterYes) {
  const std::string question = "plan.svg already exists.\\nDo you want to replace it?";
  for (const char* answer : {"No", "Yes"}) {
    Open(FloorDrawing(), Answers({question + "=" + answer}));
    std::ofstream(Path("plan.svg")) << "old";
    const std::string transcript = RunScript(ExportToFileScript(Path("plan"), "4"));
    EXPECT_NE(transcript.find("\n[Warning] plan.svg already exists.\nDo you want to replace it? [Yes/No] -> " +
                              std::string(answer)),
              std::string::npos)
        << transcript;
    EXPECT_EQ(ReadFile(Path("plan.svg")) == "old", std::string(answer) == "No");
    EXPECT_EQ(transcript.find("_vantoryexport") != std::string::npos, std::string(answer) == "Yes");
  }
}

TEST_F(ExportCommandsTest, CancelAndAnEmptyFileNameWriteNothing) {
  Open();
  EXPECT_EQ(RunScript("_vantoryExportToFile\n" + Path("plan") + "\n4\nCancel").find("_vantoryexport"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Path("plan.svg")));
  // A drawing's name is the default; an empty one must be typed first.
  fx::exports::CPvExportFileDialog dialog("", fx::exports::kSaveFilter, 4);
  EXPECT_EQ(dialog.Press(fx::exports::CPvExportFileDialog::kSave), DialogAction::kStay);
  EXPECT_EQ(dialog.SetField(0, "a"), "");
  EXPECT_EQ(dialog.Press(fx::exports::CPvExportFileDialog::kSave), DialogAction::kClose);
}

}  // namespace
}  // namespace fx::export_test
