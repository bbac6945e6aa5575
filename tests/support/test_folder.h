// A fresh folder for one test, under the system's temporary folder (TMPDIR)
// and named after the test and the process, so that test programs running
// at once never share one; removed with its contents when it goes.
#ifndef FLOORXPORT_TESTS_SUPPORT_TEST_FOLDER_H_
#define FLOORXPORT_TESTS_SUPPORT_TEST_FOLDER_H_

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace fx::testing {

class TestFolder {
 public:
  // The folder is PREFIX-TEST-PID; what an earlier run left there is removed.
  explicit TestFolder(const std::string& prefix) {
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    path_ = std::filesystem::temp_directory_path() /
            (prefix + "-" + (test != nullptr ? test->name() : "outside-a-test") + "-" +
             std::to_string(::getpid()));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_TEST_FOLDER_H_
