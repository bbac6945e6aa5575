// End-to-end runs of the real floorxport program: usage, a batch run with
// commands, script files and saves, failures and their exit statuses. Every
// corpus drawing is loaded and saved again in tests/host_db.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "program_runner.h"
#include "test_folder.h"

namespace fx::cli_test {
namespace {

namespace fs = std::filesystem;

const std::string kProgram = FX_FLOORXPORT;
const std::string kSmallPlan = std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf";

class CliTest : public ::testing::Test {
 protected:
  CliTest() {
    fs::create_directories(folder_ / "drawings");
    fs::copy_file(kSmallPlan, plan_);
  }

  ProgramResult Run(const std::vector<std::string>& args) {
    return RunProgram(kProgram, args, folder_.path().string());
  }
  std::string Path(const char* name) { return (folder_ / "drawings" / name).string(); }
  std::string Write(const char* name, const std::string& text) {
    std::ofstream(Path(name), std::ios::binary) << text;
    return Path(name);
  }

  fx::testing::TestFolder folder_{"floorxport-cli"};
  const std::string plan_ = (folder_ / "drawings" / "plan.dxf").string();  // a copy of the small plan
};

TEST_F(CliTest, HelpAndVersion) {
  struct Case {
    std::vector<std::string> args;
    const char* out_start;
  };
  const Case cases[] = {
      {{"-h"}, "Usage: floorxport COMMAND [arguments]\n"},
      {{"run", "--help"}, "Usage: floorxport run DRAWING [options]\n"},
      {{"run", "x.dxf", "-c", "ZOOM", "-h"}, "Usage: floorxport run DRAWING [options]\n"},
      {{"--version"}, "floorxport "},
  };
  for (const Case& c : cases) {
    ProgramResult result = Run(c.args);
    EXPECT_EQ(result.exit_status, 0) << c.args[0];
    EXPECT_TRUE(result.out.starts_with(c.out_start)) << result.out;
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(CliTest, WrongUsageExitsWithTwo) {
  const std::string run_hint = "\nRun \"floorxport run --help\" for usage.\n";
  struct Case {
    std::vector<std::string> args;
    std::string err;
  };
  const Case cases[] = {
      {{"frobnicate"},
       "floorxport: unknown command \"frobnicate\"\nRun \"floorxport --help\" for usage.\n"},
      {{"run"}, "floorxport: run needs a DRAWING" + run_hint},
      {{"run", plan_, "--yes", "--no"}, "floorxport: give either --yes or --no" + run_hint},
      {{"run", plan_, "-o", Path("out.dxf"), "--save"},
       "floorxport: give either -o or --save" + run_hint},
      {{"run", plan_, "-o", plan_},
       "floorxport: -o names the input drawing; use --save to write over it" + run_hint},
      {{"run", plan_, "--answer=Continue?=Perhaps"},  // the other faults of --answer: in tests/console
       "floorxport: --answer \"Continue?=Perhaps\": the answer must be Yes, No, OK or Cancel" +
           run_hint},
      {{"run", plan_, "-x"}, "floorxport: unknown option -x" + run_hint},
      {{"run", plan_, "-c"}, "floorxport: option -c needs a value" + run_hint},
      {{"info"}, "floorxport: info takes one DRAWING\nRun \"floorxport info --help\" for usage.\n"},
  };
  for (const Case& c : cases) {
    ProgramResult result = Run(c.args);
    EXPECT_EQ(result.exit_status, 2) << c.err;
    EXPECT_EQ(result.err, c.err);
    EXPECT_EQ(result.out, "");
  }
  ProgramResult bare = Run({});
  EXPECT_EQ(bare.exit_status, 2);
  EXPECT_TRUE(bare.err.starts_with("Usage: floorxport COMMAND")) << bare.err;
}

// The whole path: -c lines and a script file (a byte order mark, a comment,
// CR LF line ends, a quoted answer) in order, host commands, the transcript, a copy saved, the
// input untouched, and the copy read back.
TEST_F(CliTest, ABatchRunSavesACopyAndLeavesTheInput) {
  const std::string before = ReadFile(plan_);
  const std::string script = Write("units.scr", "\xEF\xBB\xBF; set the units to metres\r\nUNITS\r\n\"6\"\r\n");
  const std::string out = Path("out.dxf");
  ProgramResult run =
      Run({"run", plan_, "-c", "ZOOM E", "-s", script, "-c", "_ZOOM _O 999 102 ", "-o", out});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(
      run.out,
      "\nCommand: ZOOM\nZoom [Extents/Object]: E"
      "\nCommand: UNITS\nInsertion units ($INSUNITS): 4 (Millimeters)\nEnter units (0-20) <4>: 6"
      "\nInsertion units set to 6 (Meters)."
      "\nCommand: _ZOOM\nZoom [Extents/Object]: _O"
      "\nSelect objects: 999\nNo object has the handle \"999\"."
      "\nSelect objects: 102\n1 found, 1 total\nSelect objects: \n");
  EXPECT_EQ(ReadFile(plan_), before);

  ProgramResult info = Run({"info", out});
  EXPECT_EQ(info.exit_status, 0) << info.err;
  EXPECT_EQ(info.out, "Drawing: " + out +
                          "\nVersion: AC1009"
                          "\nUnits: 6 (Meters)"
                          "\nExtents: (0, 0) - (160, 50)"
                          "\nHeader extents: (0, 0) - (160, 50)"
                          "\nView: centre (15, 20), height 20, width 40"
                          "\nLayers: 2\n  0      2\n  WALLS  2"
                          "\nEntities in model space: 4\n  CIRCLE  1\n  LINE    3\n");
}

TEST_F(CliTest, SaveWritesOverTheInputAndLeavesNoTemporaryFiles) {
  ProgramResult run = Run({"run", plan_, "--save", "-c", "UNITS 20"});
  EXPECT_EQ(run.exit_status, 0) << run.err;
  ProgramResult info = Run({"info", plan_});
  EXPECT_NE(info.out.find("\nUnits: 20 (Parsecs)\n"), std::string::npos) << info.out;
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder_ / "drawings")) {
    files.push_back(entry.path().filename().string());
  }
  EXPECT_EQ(files, std::vector<std::string>{"plan.dxf"});
}

TEST_F(CliTest, AnUnknownCommandStopsTheRunAndNothingIsSaved) {
  const std::string out = Path("out.dxf");
  ProgramResult run =
      Run({"run", plan_, "-c", "UNITS 6", "-c", "FROB 1", "-c", "UNITS 5", "-o", out});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(
      run.out,
      "\nCommand: UNITS\nInsertion units ($INSUNITS): 4 (Millimeters)\nEnter units (0-20) <4>: 6"
      "\nInsertion units set to 6 (Meters).\nCommand: FROB\nUnknown command \"FROB\".\n");
  EXPECT_EQ(run.err,
            "floorxport: unknown command \"FROB\"; the rest of the script was skipped\n"
            "floorxport: the drawing was not saved because the run failed\n");
  EXPECT_FALSE(fs::exists(out));
}

TEST_F(CliTest, RunningOutOfInputCancelsTheCommand) {
  ProgramResult run = Run({"run", plan_, "-c", "ZOOM"});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_EQ(run.out, "\nCommand: ZOOM\nZoom [Extents/Object]: *Cancel*\n");
  EXPECT_EQ(
      run.err,
      "floorxport: command ZOOM was cancelled: the input ran out while it waited for an answer\n");
}

TEST_F(CliTest, FailuresToReadOrWriteExitWithOne) {
  ProgramResult missing_script = Run({"run", plan_, "-s", Path("none.scr")});
  EXPECT_EQ(missing_script.exit_status, 1);
  EXPECT_EQ(missing_script.err,
            "floorxport: cannot read script " + Path("none.scr") + ": No such file or directory\n");

  ProgramResult missing_drawing = Run({"run", Path("none.dxf"), "-c", "UNITS "});
  EXPECT_EQ(missing_drawing.exit_status, 1);
  EXPECT_TRUE(missing_drawing.err.starts_with("floorxport: ")) << missing_drawing.err;
  EXPECT_NE(missing_drawing.err.find(Path("none.dxf")), std::string::npos) << missing_drawing.err;
  EXPECT_EQ(missing_drawing.out, "");

  const std::string nowhere = (folder_ / "no" / "such" / "dir" / "out.dxf").string();
  ProgramResult unwritable = Run({"run", plan_, "-c", "UNITS ", "-o", nowhere});
  EXPECT_EQ(unwritable.exit_status, 1);
  EXPECT_TRUE(unwritable.err.starts_with("floorxport: cannot save " + nowhere + ": e"))
      << unwritable.err;

  ProgramResult info_missing = Run({"info", Path("none.dxf")});
  EXPECT_EQ(info_missing.exit_status, 1);
}

TEST_F(CliTest, AClosedOutputPipeDoesNotKillTheProgram) {
  ProgramResult result =
      RunProgram(kProgram, {"info", kSmallPlan}, folder_.path().string(), /*close_output=*/true);
  EXPECT_EQ(result.signal, 0);
  EXPECT_EQ(result.exit_status, 0);
}

// On a terminal without -c or -s, the user types the commands: prompts come
// first, typed answers are not echoed again, a mistake does not end the run.
TEST_F(CliTest, OnATerminalTheUserTypesTheCommands) {
  const std::string out = Path("out.dxf");
  ProgramResult run = RunInTerminal(kProgram, {"run", plan_, "-o", out}, "UNITS\n6\nFROB\n");
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(run.out,
            "UNITS\r\n6\r\nFROB\r\n"  // the terminal echoes what was typed ahead
            "\r\nCommand: Insertion units ($INSUNITS): 4 (Millimeters)\r\nEnter units (0-20) <4>: "
            "Insertion units set to 6 (Meters).\r\nCommand: Unknown command \"FROB\"."
            "\r\nCommand: \r\n");
  EXPECT_NE(ReadFile(out).find("$INSUNITS\n 70\n6\n"), std::string::npos);
}

// The four numbers of the line of `info`'s output that starts with `label`.
std::array<double, 4> InfoNumbers(const std::string& info, const std::string& label, const char* format) {
  std::array<double, 4> numbers{};
  const size_t at = info.find("\n" + label);
  EXPECT_NE(at, std::string::npos) << info;
  EXPECT_EQ(std::sscanf(info.c_str() + at + 1 + label.size(), format, &numbers[0], &numbers[1], &numbers[2],
                        &numbers[3]), 4) << info;
  return numbers;
}

// The bundled sample floor: after ZOOM Extents the view shows the drawing's
// extents whole, with the aspect ratio it had, one side fitting exactly.
TEST_F(CliTest, TheSampleFloorZoomsToItsExtents) {
  const std::string sample = FX_EXAMPLES_DIR "/sample-floor.dxf";
  const std::string out = Path("zoomed.dxf");
  ProgramResult run = Run({"run", sample, "-c", "ZOOM E", "-o", out});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  const std::string before = Run({"info", sample}).out, after = Run({"info", out}).out;
  const char* kView = "centre (%lf, %lf), height %lf, width %lf";
  const auto [x0, y0, x1, y1] = InfoNumbers(after, "Extents: ", "(%lf, %lf) - (%lf, %lf)");
  const auto [old_x, old_y, old_height, old_width] = InfoNumbers(before, "View: ", kView);
  const auto [x, y, height, width] = InfoNumbers(after, "View: ", kView);
  const double tolerance = 1e-3;  // info rounds to four decimals
  EXPECT_NEAR(width / height, old_width / old_height, 1e-6);
  EXPECT_NEAR(x, (x0 + x1) / 2, tolerance);
  EXPECT_NEAR(y, (y0 + y1) / 2, tolerance);
  EXPECT_GE(width, x1 - x0 - tolerance);
  EXPECT_GE(height, y1 - y0 - tolerance);
  EXPECT_TRUE(std::abs(width - (x1 - x0)) < tolerance || std::abs(height - (y1 - y0)) < tolerance);
}

// A drawing cut off in its ENTITIES section fails the run and nothing is
// written; --recover loads what was read, says so, and lets the run go on.
TEST_F(CliTest, ATruncatedDrawingFailsUnlessRecovered) {
  const std::string whole = ReadFile(kSmallPlan);
  const size_t cut = whole.find("\nCIRCLE\n", whole.find("ENTITIES")) + 20;
  const std::string drawing = Write("cut.dxf", whole.substr(0, whole.find('\n', cut) + 1));
  const ProgramResult refused = Run({"run", drawing, "-c", "ZOOM E", "-o", Path("out.dxf")});
  EXPECT_EQ(refused.exit_status, 1);
  EXPECT_NE(refused.err.find("the file ends inside the ENTITIES section"), std::string::npos) << refused.err;
  EXPECT_FALSE(fs::exists(Path("out.dxf")));

  const ProgramResult recovered = Run({"run", drawing, "--recover", "-c", "ZOOM E", "-o", Path("out.dxf")});
  EXPECT_EQ(recovered.exit_status, 0);
  EXPECT_NE(recovered.err.find("recovered: dropped the last record read, CIRCLE"), std::string::npos)
      << recovered.err;
  EXPECT_TRUE(fs::exists(Path("out.dxf"))) << recovered.err << recovered.out;
  EXPECT_EQ(Run({"info", Path("out.dxf")}).exit_status, 0);
}

}  // namespace
}  // namespace fx::cli_test
