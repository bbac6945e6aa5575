// An empty directory of the running test's own, removed with the object.
#ifndef FLOORXPORT_TESTS_SUPPORT_SCRATCH_DIR_H_
#define FLOORXPORT_TESTS_SUPPORT_SCRATCH_DIR_H_

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace fx::testing {

class ScratchDir {
 public:
  // Under the test temporary directory, named `prefix`, the test and this process.
  explicit ScratchDir(const std::string& prefix) {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    path_ = (std::filesystem::path(::testing::TempDir()) /
             (prefix + "_" + info->test_suite_name() + "_" + info->name() + "_" + std::to_string(getpid())))
                .string();
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
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
