// Whole-file writes: the temporary file's name, and which leftovers the next write removes.
#include "host/whole_file.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace fx {
namespace {

namespace fs = std::filesystem;

std::set<std::string> Names(const fs::path& dir) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir)) names.insert(entry.path().filename().string());
  return names;
}

// The PID of a process that has ended and been reaped.
long EndedProcess() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  return child;
}

TEST(WholeFileTest, OnlyNamesOfTheTemporaryFormHaveAnOwner) {
  EXPECT_EQ(TemporaryFileOwner(TemporaryFileName("plan.dxf", 4321, "0badcafe")), 4321);
  EXPECT_EQ(TemporaryFileOwner(".a.fxtmp-1-x.fxtmp-77-0123abcd"), 77);  // the name holds the marker
  for (const char* name : {"plan.dxf", ".plan.dxf.fxtmp-12-0123abc", ".plan.dxf.fxtmp-12-0123ABCD",
                           ".plan.dxf.fxtmp--12-0123abcd", ".plan.dxf.fxtmp-x-0123abcd",
                           "plan.dxf.fxtmp-12-0123abcd", ".plan.dxf.fxtmp-12-0123abcde"}) {
    EXPECT_EQ(TemporaryFileOwner(name), 0) << name;
  }
}

TEST(WholeFileTest, TheNextWriteRemovesOnlyLeftoversOfEndedProcesses) {
  const fs::path dir = fs::path(::testing::TempDir()) / ("whole_file_" + std::to_string(getpid()));
  fs::remove_all(dir);
  fs::create_directories(dir);
  const std::string dead = TemporaryFileName("a.svg", EndedProcess(), "00000001");
  const std::string alive = TemporaryFileName("a.svg", getpid(), "00000002");
  for (const std::string& name : {dead, alive, std::string(".a.svg.tmp")}) std::ofstream(dir / name) << "x";

  std::string error;
  ASSERT_TRUE(WriteWholeFile((dir / "b.svg").string(), "new", &error)) << error;
  EXPECT_EQ(Names(dir), (std::set<std::string>{alive, ".a.svg.tmp", "b.svg"}));

  {
    WholeFile abandoned((dir / "b.svg").string());
    ASSERT_TRUE(abandoned.ok());
    EXPECT_TRUE(abandoned.Write("never committed"));
  }
  std::ifstream in(dir / "b.svg");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "new");
  EXPECT_EQ(Names(dir).size(), 3u);
  fs::remove_all(dir);
}

}  // namespace
}  // namespace fx
