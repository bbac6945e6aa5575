#include "cleanup_fixture.h"

#include <unistd.h>

#include "host/dxf/dxf_values.h"

namespace fx::cleanup_test {

CleanupTest::CleanupTest() {
  const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
  dir_ = std::filesystem::path(::testing::TempDir()) /
         ("fx_cleanup_" + std::string(info->test_suite_name()) + "_" + info->name() + "_" +
          std::to_string(getpid()));
  std::filesystem::remove_all(dir_);
  std::filesystem::create_directories(dir_);
}

CleanupTest::~CleanupTest() {
  session_.CloseDrawing();
  std::error_code ignored;
  std::filesystem::remove_all(dir_, ignored);
}

void CleanupTest::Open(const std::string& path) {
  std::string error;
  ASSERT_TRUE(session_.OpenDrawing(path, &error)) << error;
  terminal_.out.clear();
}

void CleanupTest::Open(const TestDrawing& drawing) {
  const std::string path = TempPath("drawing.dxf");
  ASSERT_TRUE(drawing.Save(path));
  Open(path);
}

void CleanupTest::SaveAs(const std::string& path) {
  std::string error;
  ASSERT_TRUE(session_.Save(path, &error)) << error;
}

void CleanupTest::SaveAndReopen() {
  const std::string path = TempPath("saved" + std::to_string(++saves_) + ".dxf");
  SaveAs(path);
  session_.CloseDrawing();
  Open(path);
}

std::string CleanupTest::RunCommands(const std::string& script) {
  terminal_.out.clear();
  return Run(script);
}

std::set<std::string> CleanupTest::Names(const char* table) {
  std::set<std::string> names;
  if (fx::dxf::SymbolTable* symbols = imp().FindTable(table)) {
    for (AcDbStub* entry : symbols->entries) {
      if (entry->erased) continue;
      fx::dxf::TagList tags = imp().TagsOf(entry);
      names.insert(std::string(fx::dxf::TrimBlanks(tags.GetString(2, tags.Body()))));
    }
  }
  return names;
}

std::vector<std::string> CleanupTest::ModelSpace() {
  std::vector<std::string> handles;
  if (fx::dxf::BlockContents* block = imp().BlockOf(imp().model_space()))
    for (AcDbStub* entity : block->entities)
      if (!entity->erased) handles.push_back(entity->handle.ascii());
  return handles;
}

fx::dxf::TagList CleanupTest::RecordTags(const std::string& handle) {
  AcDbStub* stub = imp().FindHandle(AcDbHandle(handle));
  return stub == nullptr || stub->erased ? fx::dxf::TagList() : imp().TagsOf(stub);
}

}  // namespace fx::cleanup_test
