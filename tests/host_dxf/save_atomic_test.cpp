// Atomic save: the target is replaced whole or not at all, and no temporary file is left.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "host/dxf/dxf_writer.h"
#include "program_runner.h"
#include "test_folder.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::ParseOrFail;
using testing::TestData;

std::vector<std::string> Entries(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

void WriteFile(const std::string& path, std::string_view bytes) {
  FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

TEST(SaveAtomic, ReplacesTheTargetKeepingItsPermissions) {
  const fx::testing::TestFolder folder("fx_host_dxf");
  const std::string directory = folder.path().string();
  const std::string target = directory + "/plan.dxf";
  WriteFile(target, "old");
  chmod(target.c_str(), 0640);
  const std::string original = TestData("minimal.dxf");
  const std::unique_ptr<Document> doc = ParseOrFail(original, "minimal.dxf");
  ASSERT_TRUE(doc);

  const Status saved = SaveAtomic(*doc, target);
  ASSERT_TRUE(saved.ok()) << saved.message();
  EXPECT_EQ(fx::cli_test::ReadFile(target), original);
  struct stat info {};
  ASSERT_EQ(stat(target.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);
  EXPECT_EQ(Entries(directory), std::vector<std::string>{"plan.dxf"});

  ASSERT_TRUE(SaveAtomic(*doc, target, {.as_encoding = Encoding::kBinary}).ok());
  LoadError error;
  const std::unique_ptr<Document> binary = Document::Load(target, &error);
  ASSERT_TRUE(binary) << error.message;
  EXPECT_EQ(binary->encoding(), Encoding::kBinary);
}

TEST(SaveAtomic, AFailedSaveLeavesTheTargetAndNoTemporaryFile) {
  const fx::testing::TestFolder folder("fx_host_dxf");
  const std::string directory = folder.path().string();
  const std::string target = directory + "/plan.dxf";
  WriteFile(target, "old");
  const std::unique_ptr<Document> doc = ParseOrFail(TestData("minimal.dxf"), "m.dxf");
  ASSERT_TRUE(doc);
  RecordId line = doc->first();
  while (doc->type(line) != "LINE") line = doc->next(line);
  std::vector<Tag> tags(doc->tags(line).begin(), doc->tags(line).end());
  tags[3].value = "not a number";  // 10: fine as ASCII text, impossible in binary
  ASSERT_TRUE(doc->ReplaceTags(line, tags));

  const Status saved = SaveAtomic(*doc, target, {.as_encoding = Encoding::kBinary});
  EXPECT_FALSE(saved.ok());
  EXPECT_EQ(saved.message(), target +
                                 ": not saved: m.dxf:23: cannot write as binary: group code 10 "
                                 "value 'not a number' is not a number");
  EXPECT_EQ(fx::cli_test::ReadFile(target), "old");
  EXPECT_EQ(Entries(directory), std::vector<std::string>{"plan.dxf"});

  const Status no_directory = SaveAtomic(*doc, directory + "/missing/plan.dxf");
  EXPECT_FALSE(no_directory.ok());
  EXPECT_NE(no_directory.message().find("cannot create a temporary file"), std::string::npos);
  EXPECT_FALSE(SaveAtomic(*doc, directory).ok());  // a directory is not replaced
  EXPECT_EQ(Entries(directory), std::vector<std::string>{"plan.dxf"});
}

}  // namespace
}  // namespace fx::dxf
