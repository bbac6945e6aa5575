// The real floorxport program runs the six shortcuts, from the command line
// and from the menu, and saves a drawing it reads back clean.
#include <gtest/gtest.h>

#include "cleanup_fixture.h"
#include "corpus.h"
#include "program_runner.h"

namespace fx::cleanup_test {
namespace {

class ProgramTest : public CleanupTest {};

TEST_F(ProgramTest, AllShortcutsInOneRun) {
  const std::string drawing = (fx::testing::CorpusDir() / "hal9kspace/floorplan.dxf").string();
  if (!std::filesystem::exists(drawing)) GTEST_SKIP() << "no corpus drawing " << drawing;
  const std::string saved = TempPath("all.dxf");
  const fx::cli_test::ProgramResult run = fx::cli_test::RunProgram(
      FX_FLOORXPORT,
      {"run", drawing, "-c", "vantoryDrawingAudit", "-c", "vantoryDrawingOverkill", "--menu",
       "&PlanVault/&Utils/&Shortcuts/&Purge", "-c", "vantoryDrawingLineweight", "-c", "vantoryDrawingUnits", "-c",
       "vantoryDrawingExtents", "-o", saved},
      TempPath(""));
  ASSERT_EQ(run.exit_status, 0) << run.out << run.err;
  // The answers each shortcut gives its host command, and what they did.
  for (const char* line :
       {"\nFix any errors detected? [Yes/No] <N>: Yes\n", "\n6 errors found, 6 fixed.\n",
        "\nSelect objects: All\n120 found\nSelect objects: \nEnter an option [Tolerance/Done] <Done>: Done"
        "\n0 duplicate(s) deleted, 1 overlapping object(s) or segment(s) deleted\n",
        "/All]: A\nEnter name(s) to purge <*>: *"
        "\nVerify each name to be purged? [Yes/No] <Y>: N\n",
        "\n24 linetypes deleted.\n", "\nCommand: UNITS\nInsertion units ($INSUNITS): 5 (Centimeters)"
        "\nEnter units (0-20) <5>: \n", "\nZoom [Extents/Object]: Extents\n"})
    EXPECT_NE(run.out.find(line), std::string::npos) << line << "\n" << run.out;
  Open(saved);
  EXPECT_EQ(RunCommands("_AUDIT N"), "\nCommand: _AUDIT\nFix any errors detected? [Yes/No] <N>: N\n0 errors found, 0 fixed.\n");
  EXPECT_NE(RunCommands("_-PURGE A * N").find("\nNo unreferenced objects to purge.\n"), std::string::npos);
}

}  // namespace
}  // namespace fx::cleanup_test
