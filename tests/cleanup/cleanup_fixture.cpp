#include "cleanup_fixture.h"

#include "host/dxf/dxf_values.h"

namespace fx::cleanup_test {

CleanupTest::~CleanupTest() { session_.CloseDrawing(); }

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
