// The scratch folder of the running test (scratch_dir.h) held for the test's
// lifetime: made empty when it is made, removed with its contents when it goes.
#ifndef FLOORXPORT_TESTS_SUPPORT_TEST_FOLDER_H_
#define FLOORXPORT_TESTS_SUPPORT_TEST_FOLDER_H_

#include <filesystem>
#include <string>
#include <system_error>

#include "scratch_dir.h"

namespace fx::testing {

class TestFolder {
 public:
  explicit TestFolder(const std::string& prefix) : path_(MakeScratchDir(prefix)) {}
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
