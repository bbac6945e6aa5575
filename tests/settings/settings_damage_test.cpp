// A damaged or unusable settings file: reported once, read as far as it is
// valid, never rewritten by a read; a failed write leaves the old file; two
// processes writing at once lose nothing (each write locks, re-reads,
// changes one value and replaces the file).
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "settings/known_settings.h"
#include "settings/reg_file_reader.h"
#include "settings/settings.h"
#include "settings_test_support.h"

namespace fx::settings {
namespace {

using testing::ReadFile;
using testing::RegText;
using testing::TextOfFile;
using testing::WriteFileBytes;

constexpr char kExportHeader[] =
    "[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ExportOptions]\r\n";

class SettingsDamageTest : public testing::SettingsFixture {};

TEST_F(SettingsDamageTest, ADamagedFileIsReportedOnceAndReadAsFarAsItIsValid) {
  const std::string damaged = RegText(std::string(kExportHeader) +
                                      "\"Draw Box\"=hex(0):01,00,00,00\r\n"
                                      "\"Approximate Arc\"=hex(0):01,zz,00,00\r\n"
                                      "garbage\r\n"
                                      "\"Hatch optimization\"=hex(0):01,00,00,00\r\n");
  WriteFileBytes(settings_path_, damaged);
  EXPECT_EQ(GetSettingInt(kDrawBox, 0, 0), 1);
  EXPECT_EQ(GetSettingInt(kApproximateArc, 0, 0), 0);  // the damaged value: its default
  EXPECT_EQ(GetSettingInt(kHatchOptimization, 0, 0), 1);
  EXPECT_EQ(GetSettingString(kServerList, 2), "");  // a missing section is not created
  EXPECT_EQ(ReadFile(settings_path_), damaged);
  EXPECT_EQ(diagnostics_,
            std::vector<std::string>{
                settings_path_ +
                ":5: bad hex data in value \"Approximate Arc\" (and 1 more damaged lines); the "
                "settings file is read as far as it is valid, and the next change rewrites it "
                "without the damaged lines"});

  ASSERT_TRUE(SetSettingInt(kBlockOptimization, 0, 0));  // rewrites what was valid + the change
  EXPECT_EQ(
      TextOfFile(ReadFile(settings_path_)),
      RegText(std::string(kExportHeader) + "\"Draw Box\"=hex(0):01,00,00,00\r\n"
                                           "\"Hatch optimization\"=hex(0):01,00,00,00\r\n"
                                           "\"Block optimization\"=hex(0):00,00,00,00\r\n\r\n"));
  EXPECT_EQ(diagnostics_.size(), 1u);
}

TEST_F(SettingsDamageTest, AnUnreadableFileGivesDefaultsAndIsNotReplaced) {
  std::filesystem::create_directories(settings_path_);  // a directory where the file should be
  EXPECT_EQ(GetSettingInt(kVantoryDrawingVersion, 254, 0), 254);
  EXPECT_EQ(GetSettingString(kExportFileFormat, 0), "");
  EXPECT_FALSE(SetSettingInt(kDrawBox, 1, 0));
  EXPECT_TRUE(std::filesystem::is_directory(settings_path_));
  EXPECT_EQ(diagnostics_,
            std::vector<std::string>{"cannot read the settings file: " + settings_path_ +
                                     ": not a regular file; defaults are used"});
}

TEST_F(SettingsDamageTest, AFailedWriteLeavesTheOldFileAndNoTemporaryFile) {
  ASSERT_TRUE(SetSettingString(kContourLayer, "walls", 1));
  const std::string before = ReadFile(settings_path_);
  // A child process may write at most a few bytes to any file: its write
  // fails half way, as on a full disk.
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{64, 64};
    setrlimit(RLIMIT_FSIZE, &limit);
    _exit(SetSettingString(kServerList, std::string(200, 's'), 2) ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "the write should have failed";
  EXPECT_EQ(ReadFile(settings_path_), before);
  size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(directory_ + "/PlanVault")) {
    EXPECT_TRUE(entry.path().filename() == "VantoryApp.reg" || entry.path().filename() == "VantoryApp.reg.lock");
    ++files;
  }
  EXPECT_EQ(files, 2u);
}

TEST_F(SettingsDamageTest, ANewFileIsPrivateAndAnOldOneKeepsItsPermissions) {
  ASSERT_TRUE(SetSettingInt(kDrawBox, 1, 0));
  struct stat info {};
  ASSERT_EQ(stat(settings_path_.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0600u);
  ASSERT_EQ(chmod(settings_path_.c_str(), 0644), 0);
  ASSERT_TRUE(SetSettingInt(kDrawBox, 0, 0));
  ASSERT_EQ(stat(settings_path_.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0644u);
}

TEST_F(SettingsDamageTest, AWriteThroughASymbolicLinkChangesItsTarget) {
  const std::string target = directory_ + "/dotfiles/VantoryApp.reg";
  ASSERT_TRUE(std::filesystem::create_directories(directory_ + "/dotfiles"));
  ASSERT_TRUE(std::filesystem::create_directories(directory_ + "/PlanVault"));
  std::filesystem::create_symlink(target, settings_path_);
  ASSERT_TRUE(SetSettingInt(kDrawBox, 1, 0));  // the target is created
  ASSERT_TRUE(SetSettingInt(kApproximateArc, 1, 0));
  EXPECT_TRUE(std::filesystem::is_symlink(settings_path_));
  EXPECT_EQ(GetSettingInt(kDrawBox, 0, 0), 1);
  EXPECT_NE(TextOfFile(ReadFile(target)).find("\"Approximate Arc\"=hex(0):01,00,00,00"),
            std::string::npos);
}

constexpr int kValuesPerWriter = 40;
constexpr int kSection = 0;  // one key for both: each write replaces what the other wrote

class SettingsConcurrencyTest : public testing::SettingsFixture {
 protected:
  // Starts a writer that waits until the parent closes the pipe, then writes
  // its values one by one; it exits 0 when every write succeeded.
  pid_t StartWriter(char id, const int (&pipe_ends)[2]) {
    const pid_t child = fork();
    if (child != 0) return child;
    close(pipe_ends[1]);  // else the pipe never reaches its end
    char ignored = 0;
    while (read(pipe_ends[0], &ignored, 1) > 0) {
    }
    int failures = 0;
    for (int i = 0; i < kValuesPerWriter; ++i) {
      const std::string name = std::string("Writer ") + id + " " + std::to_string(i);
      const bool written = i % 2 ? SetSettingInt(name, i * 1000 + id, kSection)
                                 : SetSettingString(name, name + " text", kSection);
      failures += written ? 0 : 1;
    }
    _exit(failures == 0 ? 0 : 1);
  }
};

TEST_F(SettingsConcurrencyTest, TwoProcessesWritingAtOnceLoseNoValue) {
  int pipe_ends[2];
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t writers[] = {StartWriter('A', pipe_ends), StartWriter('B', pipe_ends)};
  close(pipe_ends[0]);
  close(pipe_ends[1]);  // both start now
  for (const pid_t writer : writers) {
    ASSERT_GT(writer, 0);
    int status = 0;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "a write failed";
  }

  std::vector<RegFileProblem> problems;
  const RegFile file = ParseRegFile(ReadFile(settings_path_), &problems);
  EXPECT_TRUE(problems.empty());
  const RegKey* key = file.FindKey(SettingsFileKeyPath(kSection));
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(key->values.size(), 2u * kValuesPerWriter);
  // The writers did run at the same time: their values alternate in the file.
  int switches = 0;
  for (size_t i = 1; i < key->values.size(); ++i) {
    switches += key->values[i].name[7] != key->values[i - 1].name[7] ? 1 : 0;
  }
  EXPECT_GE(switches, 2);
  for (const char id : {'A', 'B'}) {
    for (int i = 0; i < kValuesPerWriter; ++i) {
      const std::string name = std::string("Writer ") + id + " " + std::to_string(i);
      EXPECT_TRUE(i % 2 ? GetSettingInt(name, -1, kSection) == i * 1000 + id
                        : GetSettingString(name, kSection) == name + " text") << name;
    }
  }
}

}  // namespace
}  // namespace fx::settings
