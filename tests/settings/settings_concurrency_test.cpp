// Two processes writing the settings file at once lose nothing: each write
// locks, re-reads, changes one value and replaces the file.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "settings/reg_file_reader.h"
#include "settings/settings.h"
#include "settings_test_support.h"

namespace fx::settings {
namespace {

using testing::ReadFile;

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
