// A scratch folder of the running test's own, named after the test and this
// process (several checkouts may run the same test at once).
#ifndef FLOORXPORT_TESTS_SUPPORT_SCRATCH_DIR_H_
#define FLOORXPORT_TESTS_SUPPORT_SCRATCH_DIR_H_

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace fx::testing {

// PREFIX_SUITE_TEST_PID under the test temporary folder, made empty; the
// caller removes it.
inline std::string MakeScratchDir(const std::string& prefix) {
  const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::filesystem::path dir = std::filesystem::path(::testing::TempDir()) /
                                    (prefix + "_" + info->test_suite_name() + "_" + info->name() + "_" +
                                     std::to_string(getpid()));
  std::filesystem::remove_all(dir);
  std::filesystem::create_directories(dir);
  return dir.string();
}

// The same folder, removed with the object.
class ScratchDir {
 public:
  explicit ScratchDir(const std::string& prefix) : path_(MakeScratchDir(prefix)) {}
  ~ScratchDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_SCRATCH_DIR_H_
