// A studio session on the sample floor, run on this thread as the host
// thread: commands that fail leave the drawing as it was, whether they
// changed it or not, and the drawing's file changes only when saved.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/floorxport_app.h"
#include "host/dxf/console/module_registry.h"
#include "program_runner.h"
#include "test_folder.h"
#include "settings/settings_path.h"
#include "studio/host_loop.h"
#include "studio/studio_session.h"
#include "studio/studio_state.h"

namespace fx::studio {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ReadFile;

constexpr const char* kAnalyse =
    R"(_vantoryconvert "FloorArea" "RoomContours" T "RoomNames" "RoomTypes" "RoomDescriptions")";

// Room records are extended data of "VantoryApp": one "1001" group each.
size_t RoomRecords(const std::string& dxf) {
  size_t count = 0;
  for (size_t at = dxf.find("1001\nVantoryApp"); at != std::string::npos; at = dxf.find("1001\nVantoryApp", at + 1)) {
    ++count;
  }
  return count;
}

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() {
    fx::settings::SetSettingsFilePath((dir_ / "settings.reg").string());
    fs::copy_file(fs::path(FX_EXAMPLES_DIR) / "sample-floor.dxf", drawing());
  }

  fs::path drawing() const { return dir_ / "floor.dxf"; }

  // Runs `lines` as the page would; whether they ran to their end.
  bool Run(StudioSession& session, const std::vector<std::string>& lines) {
    EXPECT_TRUE(session.Claim(lines.front()));
    EXPECT_FALSE(session.Claim("_UNITS")) << "one command at a time";
    session.Run(lines);
    return state_.Snapshot(0)["last"]["ok"].get<bool>();
  }

  // The room records of the open drawing, through a save to a scratch file
  // (which becomes the drawing's file).
  size_t RecordsNow(StudioSession& session, const char* name) {
    std::string error;
    EXPECT_TRUE(session.SaveAs((dir_ / name).string(), &error)) << error;
    return RoomRecords(ReadFile((dir_ / name).string()));
  }

  fx::testing::TestFolder folder_{"studio"};
  const fs::path& dir_ = folder_.path();
  StudioState state_;
  HostLoop loop_;
};

TEST_F(SessionTest, AFailedCommandLeavesTheDrawingAsItWas) {
  const std::string original = ReadFile(drawing().string());
  StudioSession session(loop_, state_, drawing().string(),
                        [](console::ModuleRegistry& modules) { modules.Register("FloorXport", acrxEntryPoint); });
  std::string error;
  ASSERT_TRUE(session.Open(&error)) << error;
  const uint64_t first_revision = state_.Snapshot(0)["drawing"]["revision"];

  // The analysis writes room records, then the line after it fails: all undone.
  EXPECT_FALSE(Run(session, {kAnalyse, "NOSUCHCOMMAND"}));
  EXPECT_EQ(state_.Snapshot(0)["last"]["problems"][0],
            "unknown command \"NOSUCHCOMMAND\"; the rest of the script was skipped");
  EXPECT_FALSE(state_.Snapshot(0)["drawing"]["modified"].get<bool>());
  EXPECT_EQ(ReadFile(drawing().string()), original);

  // The analysis alone changes the drawing and is kept.
  EXPECT_TRUE(Run(session, {kAnalyse}));
  nlohmann::json drawing_state = state_.Snapshot(0)["drawing"];
  EXPECT_TRUE(drawing_state["modified"].get<bool>());
  EXPECT_GT(drawing_state["revision"].get<uint64_t>(), first_revision);
  EXPECT_EQ(ReadFile(drawing().string()), original) << "only Save writes the drawing's file";
  EXPECT_EQ(session.Problems()["analysed"], true);
  const size_t analysed = RecordsNow(session, "analysed.dxf");
  EXPECT_GE(analysed, 24u);

  // A failing command that changed nothing keeps the analysis; one that
  // changed the drawing after a kept change goes back to that change (kept
  // in the session's temporary copy, not in any file of the user's).
  EXPECT_FALSE(Run(session, {"NOSUCHCOMMAND"}));
  EXPECT_EQ(session.Problems()["analysed"], true);
  EXPECT_TRUE(Run(session, {kAnalyse}));
  EXPECT_FALSE(Run(session, {R"(_vantoryconvert "FloorArea" "Walls" T "RoomNames" "" "")", "NOSUCHCOMMAND"}));
  EXPECT_EQ(session.Problems()["analysed"], false) << "the drawing was read back";
  EXPECT_EQ(RecordsNow(session, "after-failures.dxf"), analysed);
  EXPECT_EQ(ReadFile(drawing().string()), original);
  session.Close();
}

}  // namespace
}  // namespace fx::studio
