// floorxport batch end to end: a folder of real and broken drawings analysed
// and resumed, a list with drawings that crash and hang, stopped at its time
// limit and by Ctrl-C, the batch resumed each time.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

#include "program_runner.h"
#include "test_folder.h"

namespace fx::cli_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const std::string kProgram = FX_FLOORXPORT;
const std::string kSample = std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf";
const std::string kSmallPlan = std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf";
const std::string kCorpus = FX_CORPUS_DIR;

// The manifest's lines by drawing file name; each line must be JSON, but
// for `cut_first` lines left by an earlier crash of the batch.
std::map<std::string, json> ReadManifest(const fs::path& path, size_t* lines = nullptr, size_t cut_first = 0) {
  std::map<std::string, json> records;
  std::istringstream text(ReadFile(path.string()));
  size_t count = 0;
  for (std::string line; std::getline(text, line); ++count) {
    if (count < cut_first) continue;
    json record = json::parse(line);  // throws, failing the test, on a cut line
    records[fs::path(record["drawing"].get<std::string>()).filename().string()] = record;
  }
  if (lines != nullptr) *lines = count;
  return records;
}

class BatchTest : public ::testing::Test {
 protected:
  BatchTest() { fs::create_directories(work_ / "plans"); }

  ProgramResult Batch(const std::vector<std::string>& args) { return RunProgram(kProgram, args, work_.string()); }
  void Link(const std::string& drawing, const std::string& name) {
    fs::create_directories((work_ / "plans" / name).parent_path());
    fs::create_symlink(drawing, work_ / "plans" / name);
  }

  fx::testing::TestFolder folder_{"floorxport-batch"};
  const fs::path& work_ = folder_.path();
};

std::vector<std::string> AnalyzeCommand() {
  return {"--",          "analyze",         "{drawing}",       "--floor-layer", "FloorArea", "--contour-layer",
          "RoomContours", "--block",        "ROOMTAG",         "--name-tag",    "NAME",      "--category-tag",
          "CATEGORY",     "--description-tag", "DESCRIPTION", "-o",            "{out}/{stem}.dxf"};
}

// A folder with the sample floor, a small plan, a broken drawing and a few
// corpus floors (two of them named alike in different folders).
TEST_F(BatchTest, FolderAnalysedThenResumed) {
  Link(kSample, "sample-floor.dxf");
  Link(kSmallPlan, "small/plan.dxf");
  const std::string sample_text = ReadFile(kSample);
  std::ofstream(work_ / "plans" / "broken.dxf") << sample_text.substr(0, sample_text.size() / 2);
  size_t corpus_floors = 0;
  for (const char* floor : {"openindoor6/plan.dxf", "daoshi/floor1.dxf"}) {
    if (!fs::exists(kCorpus + "/" + floor)) continue;
    Link(kCorpus + "/" + floor, floor);
    ++corpus_floors;
  }
  const size_t total = 3 + corpus_floors;
  std::vector<std::string> args = {"batch", (work_ / "plans").string(), "--jobs", "2", "--out-dir",
                                   (work_ / "out").string()};
  for (const std::string& arg : AnalyzeCommand()) args.push_back(arg);

  ProgramResult first = Batch(args);
  EXPECT_EQ(first.exit_status, 1) << first.err;
  EXPECT_NE(first.out.find("Batch: " + std::to_string(total) + " drawings in "), std::string::npos) << first.out;
  size_t lines = 0;
  std::map<std::string, json> records = ReadManifest(work_ / "out" / "batch-manifest.jsonl", &lines);
  ASSERT_EQ(lines, total);
  const json& sample = records["sample-floor.dxf"];
  EXPECT_EQ(sample["status"], "ok");
  EXPECT_EQ(sample["exit_code"], 0);
  EXPECT_GT(sample["peak_rss_kb"].get<long>(), 1000);
  EXPECT_EQ(sample["summary"]["rooms_identified"], 24);
  EXPECT_EQ(sample["summary"]["duplicate_numbers"], 0);
  const std::string analysed = (work_ / "out" / "sample-floor" / "sample-floor.dxf").string();
  EXPECT_EQ(sample["outputs"], json::array({analysed}));
  EXPECT_EQ(Batch({"info", analysed}).exit_status, 0);
  const json& broken = records["broken.dxf"];
  EXPECT_EQ(broken["status"], "failed");
  EXPECT_EQ(broken["exit_code"], 1);
  EXPECT_TRUE(broken["message"].get<std::string>().starts_with("floorxport: " + (work_ / "plans" / "broken.dxf").string() + ":"))
      << broken;
  EXPECT_EQ(broken["outputs"], json::array());
  for (const auto& [name, record] : records) {
    EXPECT_TRUE(record["status"] == "ok" || record["status"] == "failed") << record;
    EXPECT_TRUE(fs::exists(record["log"].get<std::string>())) << record;
  }
  if (corpus_floors == 2) {  // plan.dxf twice: each has a folder of its own
    EXPECT_TRUE(fs::exists(work_ / "out" / "small" / "plan" / "floorxport.log"));
    EXPECT_TRUE(fs::exists(work_ / "out" / "openindoor6" / "plan" / "floorxport.log"));
  }

  // Mended, the broken drawing runs again; what ended ok is skipped.
  std::ofstream(work_ / "plans" / "broken.dxf") << sample_text;
  ProgramResult second = Batch(args);
  std::map<std::string, json> resumed = ReadManifest(work_ / "out" / "batch-manifest.jsonl", &lines);
  EXPECT_EQ(lines, 2 * total);
  EXPECT_EQ(resumed["sample-floor.dxf"]["status"], "skipped");
  EXPECT_EQ(resumed["sample-floor.dxf"]["summary"], sample["summary"]);
  EXPECT_EQ(resumed["broken.dxf"]["status"], "ok");
  EXPECT_EQ(resumed["broken.dxf"]["summary"]["rooms_identified"], 24);
}

TEST_F(BatchTest, WrongUsageExitsWithTwo) {
  const std::string plans = (work_ / "plans").string();
  const std::string hint = "\nRun \"floorxport batch --help\" for usage.\n";
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"batch", plans}, "floorxport: batch needs the subcommand after --" + hint},
      {{"batch", "--", "info", "{drawing}"}, "floorxport: batch needs a DIR or LIST" + hint},
      {{"batch", plans, "--", "info", "x.dxf"}, "floorxport: the subcommand's arguments need {drawing}" + hint},
      {{"batch", plans, "--", "export", "{drawing}", "{out}/{stem}.svg"}, "floorxport: {out} needs --out-dir" + hint},
      {{"batch", plans, "--jobs", "0", "--", "info", "{drawing}"},
       "floorxport: --jobs needs a whole number of 1 or more, not \"0\"" + hint},
  };
  for (const auto& [args, err] : cases) {
    ProgramResult result = Batch(args);
    EXPECT_EQ(result.exit_status, 2) << err;
    EXPECT_EQ(result.err, err);
  }
}

// Starts the program; its output goes to files in `dir`.
pid_t Start(const std::vector<std::string>& args, const fs::path& dir) {
  const pid_t pid = fork();
  if (pid == 0) {
    const int out = open((dir / "batch-out.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int in = open("/dev/null", O_RDONLY);
    dup2(in, 0);
    dup2(out, 1);
    dup2(out, 2);
    std::vector<char*> argv = {const_cast<char*>(kProgram.c_str())};
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(kProgram.c_str(), argv.data());
    _exit(127);
  }
  return pid;
}

// The process whose command line holds `text`, or 0.
pid_t FindProcess(const std::string& text) {
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
    std::string command = ReadFile((entry.path() / "cmdline").string());
    std::replace(command.begin(), command.end(), '\0', ' ');
    if (command.find(text) != std::string::npos) return std::stoi(entry.path().filename().string());
  }
  return 0;
}

// `run` with a script per drawing; the scripts of two are named pipes that
// nobody writes, so those drawings' runs wait for ever. One of them is
// killed by a signal the batch did not send: a crash. The manifest starts
// with a line cut by an earlier crash of the batch: it is ignored, and new
// lines stand alone.
TEST_F(BatchTest, CrashedAndHangingRunsRecordedAndTheInterruptedBatchResumed) {
  const fs::path scripts = work_ / "scripts";
  fs::create_directories(scripts);
  std::ofstream list(work_ / "drawings.txt");
  list << "# the drawings\n";
  for (const char* name : {"a", "b", "c", "crashes", "hangs"}) {
    fs::copy_file(kSmallPlan, work_ / "plans" / (std::string(name) + ".dxf"));
    list << (work_ / "plans" / name).string() << ".dxf\n";
    std::ofstream(scripts / (std::string(name) + ".scr")) << "ZOOM E\n";
  }
  list.close();
  for (const char* fifo : {"crashes.scr", "hangs.scr"}) {
    fs::remove(scripts / fifo);
    ASSERT_EQ(mkfifo((scripts / fifo).c_str(), 0600), 0);
  }
  const fs::path manifest = work_ / "manifest.jsonl";
  std::ofstream(manifest) << "{\"drawing\":\"/plans/old.dxf\",\"sta";
  std::vector<std::string> args = {"batch", (work_ / "drawings.txt").string(), "--jobs", "2", "--manifest",
                                   manifest.string(), "--", "run", "{drawing}", "-s",
                                   (scripts / "{stem}.scr").string()};

  // The two waiting runs start once the others have ended; one crashes,
  // then the batch is interrupted: the others are recorded, no run is left.
  const pid_t batch = Start(args, work_);
  pid_t crashes = 0;
  for (int i = 0; i < 600 && ((crashes = FindProcess((scripts / "crashes.scr").string())) == 0 ||
                              FindProcess((scripts / "hangs.scr").string()) == 0);
       ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  ASSERT_NE(crashes, 0);
  // SIGKILL, as the kernel's out-of-memory killer sends it: a sanitizer build
  // would turn a SIGSEGV into an exit status of its own.
  kill(crashes, SIGKILL);
  for (int i = 0; i < 600 && ReadFile(manifest.string()).find("SIGKILL") == std::string::npos; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  kill(batch, SIGINT);
  int status = 0;
  ASSERT_EQ(waitpid(batch, &status, 0), batch);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 128 + SIGINT) << status;
  const std::string out = ReadFile((work_ / "batch-out.txt").string());
  EXPECT_NE(out.find("interrupted by SIGINT"), std::string::npos) << out;
  EXPECT_NE(out.find("floorxport: warning: " + manifest.string() + ":1: not a manifest line, ignored\n"),
            std::string::npos) << out;
  EXPECT_TRUE(ReadFile(manifest.string()).starts_with("{\"drawing\":\"/plans/old.dxf\",\"sta\n"));
  std::map<std::string, json> records = ReadManifest(manifest, nullptr, 1);
  EXPECT_EQ(records.size(), 4u);
  for (const char* name : {"a.dxf", "b.dxf", "c.dxf"}) EXPECT_EQ(records[name]["status"], "ok") << name;
  EXPECT_EQ(records["crashes.dxf"]["status"], "crashed");
  EXPECT_EQ(records["crashes.dxf"]["signal"], "SIGKILL");
  EXPECT_TRUE(records["crashes.dxf"]["exit_code"].is_null());
  EXPECT_EQ(records.count("hangs.dxf"), 0u);
  EXPECT_EQ(open((scripts / "hangs.scr").c_str(), O_WRONLY | O_NONBLOCK), -1) << "the hanging run still reads its script";
  EXPECT_EQ(errno, ENXIO);

  // Resumed with a time limit: what ended ok is skipped, the crashed one
  // runs again (its script now ends), the hanging one is stopped.
  fs::remove(scripts / "crashes.scr");
  std::ofstream(scripts / "crashes.scr") << "ZOOM E\n";
  args.insert(args.begin() + 2, {"--time-limit", "1"});
  ProgramResult limited = Batch(args);
  EXPECT_EQ(limited.exit_status, 1) << limited.out << limited.err;
  records = ReadManifest(manifest, nullptr, 1);
  for (const char* name : {"a.dxf", "b.dxf", "c.dxf"}) EXPECT_EQ(records[name]["status"], "skipped") << name;
  EXPECT_EQ(records["crashes.dxf"]["status"], "ok");
  EXPECT_EQ(records["hangs.dxf"]["status"], "timeout");
  EXPECT_EQ(records["hangs.dxf"]["signal"], "SIGTERM");
  EXPECT_GE(records["hangs.dxf"]["wall_seconds"].get<double>(), 1.0);
  EXPECT_NE(limited.out.find("5 drawings in "), std::string::npos) << limited.out;
  EXPECT_NE(limited.out.find(": 1 ok, 3 skipped, 0 failed, 1 timeout, 0 crashed"), std::string::npos) << limited.out;

  // With a script that ends, the last drawing runs and the batch succeeds.
  fs::remove(scripts / "hangs.scr");
  std::ofstream(scripts / "hangs.scr") << "ZOOM E\n";
  ProgramResult done = Batch(args);
  EXPECT_EQ(done.exit_status, 0) << done.out << done.err;
  EXPECT_EQ(ReadManifest(manifest, nullptr, 1)["hangs.dxf"]["status"], "ok");
}

}  // namespace
}  // namespace fx::cli_test
