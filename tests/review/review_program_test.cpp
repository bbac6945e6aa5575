// floorxport review and analyze --report, the real program: findings.json
// of a made floor with every kind of problem, the exit statuses of
// --fail-on, a failed run that leaves the atlas folder alone, and
// fingerprints that survive saving, purging and new handles on a corpus
// floor.
#include <gtest/gtest.h>


#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "program_runner.h"
#include "test_folder.h"

namespace fx::review {
namespace {

using fx::cli_test::ProgramResult;
using fx::cli_test::ReadFile;
using fx::cli_test::RunProgram;
using json = nlohmann::ordered_json;

const std::vector<std::string> kProblemsBlock = {"--floor-layer", "Floor", "--contour-layer", "Contours",
                                                 "--block", "ROOMTAG", "--name-tag", "NAME",
                                                 "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION"};

class ReviewProgramTest : public ::testing::Test {
 protected:

  // floorxport with its own settings file, then `args`.
  ProgramResult Floorxport(std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", dir_ + "/settings.reg"});
    return RunProgram(FX_FLOORXPORT, args, dir_);
  }
  ProgramResult Review(const std::string& drawing, std::vector<std::string> args) {
    args.insert(args.begin(), {"review", drawing});
    return Floorxport(args);
  }
  json Findings(const std::string& atlas) { return json::parse(ReadFile(atlas + "/findings.json")); }

  fx::testing::TestFolder folder_{"review"};
  std::string dir_ = folder_.path().string();
};

// Through analyze --report, which also saves the analysed drawing and
// exits 3 for a kind --fail-on names.
TEST_F(ReviewProgramTest, FindingsOfEveryKind) {
  std::vector<std::string> args = {"analyze", FX_ROOMS_TEST_DATA "/problems.dxf"};
  args.insert(args.end(), kProblemsBlock.begin(), kProblemsBlock.end());
  args.insert(args.end(), {"--report", dir_ + "/atlas", "--fail-on", "multiple-ids", "-o", dir_ + "/out.dxf"});
  const ProgramResult result = Floorxport(args);
  ASSERT_EQ(result.exit_status, 3) << result.err;
  EXPECT_TRUE(std::filesystem::exists(dir_ + "/out.dxf"));
  EXPECT_NE(result.out.find("\nReview atlas: " + dir_ + "/atlas/index.html (9 findings)\n"), std::string::npos);
  const json findings = Findings(dir_ + "/atlas");
  EXPECT_EQ(findings["drawing"], "problems.dxf");
  EXPECT_EQ(findings["rooms_identified"], 7);
  EXPECT_EQ(findings["counts"].dump(), R"({"area-not-found":3,"duplicate-number":1,"intersected-contour":2,)"
                                       R"("empty-contour":2,"multiple-ids":1})");
  // kind, handle, layer, room, point, contour, area: the three inserts
  // outside a contour (801's contour has an arc), the later 601, both
  // overlapping contours, the empty one and the one with an arc, and 202
  // that shares 201's contour.
  const json expected = json::parse(R"([
    ["area-not-found", "96", "Stamps", "801", [35, 25], null, null],
    ["area-not-found", "9E", "Stamps", "999", [100, 100], null, null],
    ["area-not-found", "A6", "Stamps", "150", [10, 5], null, null],
    ["duplicate-number", "7C", "Stamps", "601", [15, 25], "7B", 100],
    ["intersected-contour", "5F", "Contours", "301", [35, 5], "5F", 100],
    ["intersected-contour", "68", "Contours", "401", [43, 13], "68", 100],
    ["empty-contour", "71", "Contours", null, [55, 5], "71", 100],
    ["empty-contour", "95", "Contours", null, [35.5, 25], "95", 106.7196992292597],
    ["multiple-ids", "57", "Stamps", "202", [17, 5], "4E", 100]])");
  ASSERT_EQ(findings["findings"].size(), expected.size());
  std::vector<std::string> fingerprints;
  for (size_t i = 0; i < expected.size(); ++i) {
    const json& finding = findings["findings"][i];
    EXPECT_EQ(finding["number"], i + 1);
    EXPECT_EQ(json::array({finding["kind"], finding["handle"], finding["layer"], finding["room"], finding["point"],
                           finding["contour"], finding["area"]}),
              expected[i]);
    fingerprints.push_back(finding["fingerprint"]);
    EXPECT_EQ(fingerprints.back().size(), 16u);
  }
  // Outlines: a contour's box, the box of an arc contour with its arc
  // (its chord at x 40 bulges to 41), an insert's box around its stamp.
  EXPECT_EQ(findings["findings"][4]["box"], json::parse("[30, 0, 40, 10]"));
  EXPECT_EQ(findings["findings"][7]["box"], json::parse("[30, 20, 41, 30]"));
  const json stamp = findings["findings"][0]["box"];
  EXPECT_TRUE(stamp[0] == 34 && stamp[1] == 24.5 && stamp[2] >= 36 && stamp[3] == 25.5) << stamp;
  std::sort(fingerprints.begin(), fingerprints.end());
  EXPECT_EQ(std::unique(fingerprints.begin(), fingerprints.end()), fingerprints.end());
  const std::string page = ReadFile(dir_ + "/atlas/index.html");
  EXPECT_NE(page.find("<title>problems.dxf: 9 problems</title>"), std::string::npos);
  EXPECT_NE(page.find("content=\"default-src 'none';"), std::string::npos);
}

TEST_F(ReviewProgramTest, FailOnAndUsage) {
  struct Case {
    std::vector<std::string> args;
    int status;
    std::string err;
  };
  const std::string atlas = dir_ + "/atlas";
  const Case cases[] = {
      {{"-o", atlas, "--fail-on", "any"}, 3, ""},
      {{"-o", atlas, "--fail-on", "duplicate-number,empty-contour"}, 3, ""},
      {{}, 2, "floorxport: review needs -o DIR, the atlas folder\n"},
      {{"-o", atlas, "--fail-on", "rooms"},
       2,
       "floorxport: --fail-on: unknown kind of finding \"rooms\" (give any, area-not-found, duplicate-number, "
       "intersected-contour, empty-contour, multiple-ids)\n"},
  };
  for (const Case& c : cases) {
    std::vector<std::string> args = kProblemsBlock;
    args.insert(args.end(), c.args.begin(), c.args.end());
    const ProgramResult result = Review(FX_ROOMS_TEST_DATA "/problems.dxf", args);
    EXPECT_EQ(result.exit_status, c.status) << ::testing::PrintToString(c.args) << result.err;
    if (!c.err.empty()) {
      EXPECT_EQ(result.err.substr(0, result.err.find("Run ")), c.err);
    }
  }
}

TEST_F(ReviewProgramTest, FailedRunLeavesTheAtlasAlone) {
  const std::string atlas = dir_ + "/atlas";
  std::filesystem::create_directories(atlas);
  for (const char* file : {"/findings.json", "/index.html"}) std::ofstream(atlas + file) << "earlier";
  std::vector<std::string> args = kProblemsBlock;
  args[3] = "NoSuchLayer";
  args.insert(args.end(), {"-o", atlas});
  const ProgramResult result = Review(FX_ROOMS_TEST_DATA "/problems.dxf", args);
  EXPECT_EQ(result.exit_status, 1);
  EXPECT_EQ(ReadFile(atlas + "/findings.json"), "earlier");
  EXPECT_EQ(ReadFile(atlas + "/index.html"), "earlier");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(atlas), {}), 2);
  // A folder that cannot be made: a file is in its way.
  args.back() = atlas + "/index.html/sub";
  args[3] = "Contours";
  const ProgramResult blocked = Review(FX_ROOMS_TEST_DATA "/problems.dxf", args);
  EXPECT_EQ(blocked.exit_status, 1);
  EXPECT_NE(blocked.err.find("floorxport: the review atlas was not written: " + atlas +
                             "/index.html/sub: cannot make the folder"),
            std::string::npos)
      << blocked.err;
}

TEST_F(ReviewProgramTest, FingerprintsSurviveSavePurgeAndNewHandles) {
  const std::string plan = FX_CORPUS_DIR "/openindoor6/plan.dxf";
  if (!std::filesystem::exists(plan)) GTEST_SKIP() << "no corpus floor " << plan;
  const std::vector<std::string> layers = {
      "--floor-layer", "ABY_Contour_Facade", "--contour-layer", "ABY_Zone_ZIND", "--name-layer", "Texte_Pièces",
      "--type-layer",  "Texte_Pièces",       "--description-layer", "Texte_Pièces", "--yes"};
  auto fingerprints = [&](const std::string& drawing, std::vector<std::string>* handles) {
    std::vector<std::string> args = layers;
    args.insert(args.end(), {"-o", dir_ + "/atlas"});
    const ProgramResult result = Review(drawing, args);
    EXPECT_EQ(result.exit_status, 0) << drawing << result.err;
    std::vector<std::string> list;
    const json findings = Findings(dir_ + "/atlas");
    for (const json& finding : findings["findings"]) {
      list.push_back(finding["fingerprint"]);
      handles->push_back(finding["handle"]);
    }
    std::sort(list.begin(), list.end());
    return list;
  };
  std::vector<std::string> handles, purged_handles, new_handles;
  const std::vector<std::string> original = fingerprints(plan, &handles);
  ASSERT_EQ(original.size(), 51u);

  // Analysed and saved (records on its entities), then purged of its unused
  // blocks, layers, linetypes and styles, and loaded again.
  std::vector<std::string> analyze = {"analyze", plan};
  analyze.insert(analyze.end(), layers.begin(), layers.end());
  analyze.insert(analyze.end(), {"-o", dir_ + "/saved.dxf"});
  ASSERT_EQ(Floorxport(analyze).exit_status, 0);
  const ProgramResult purge = Floorxport({"run", dir_ + "/saved.dxf", "-c", "-PURGE A * N", "-o", dir_ + "/purged.dxf"});
  ASSERT_EQ(purge.exit_status, 0) << purge.err;
  ASSERT_NE(purge.out.find("blocks deleted."), std::string::npos);
  EXPECT_EQ(fingerprints(dir_ + "/purged.dxf", &purged_handles), original);
  EXPECT_EQ(purged_handles, handles);

  // Copied by another program into a drawing where every handle is new.
  const ProgramResult copy =
      RunProgram(FX_SYSTEM_PYTHON, {FX_RENUMBER, plan, dir_ + "/renumbered.dxf"}, dir_);
  ASSERT_EQ(copy.exit_status, 0) << copy.err;
  EXPECT_EQ(fingerprints(dir_ + "/renumbered.dxf", &new_handles), original);
  ASSERT_EQ(new_handles.size(), handles.size());
  for (size_t i = 0; i < handles.size(); ++i) EXPECT_NE(new_handles[i], handles[i]);
}

}  // namespace
}  // namespace fx::review
