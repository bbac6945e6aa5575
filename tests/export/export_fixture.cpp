#include "export_fixture.h"

#include <filesystem>

#include "app/floorxport_app.h"
#include "host/documents.h"
#include "rooms/room_record.h"
#include "settings/settings_path.h"

namespace fx::export_test {

std::string FloorDrawing() { return std::string(FX_EXPORT_TEST_DATA) + "/floor.dxf"; }
std::string SampleFloor() { return std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf"; }

std::unique_ptr<pugi::xml_document> Parse(const std::string& text) {
  auto document = std::make_unique<pugi::xml_document>();
  const pugi::xml_parse_result result = document->load_string(text.c_str(), pugi::parse_default | pugi::parse_declaration);
  EXPECT_TRUE(result) << result.description() << " at " << result.offset;
  return document;
}

fx::console::AnswerPolicy Answers(const std::vector<std::string>& answers) {
  fx::console::AnswerPolicy policy;
  for (const std::string& answer : answers) {
    std::string error;
    EXPECT_TRUE(policy.AddAnswer(answer, &error)) << error;
  }
  return policy;
}

ExportTest::ExportTest() {
  modules_.Register("FloorXport", acrxEntryPoint);
  // Never the user's own settings.
  fx::settings::SetSettingsFilePath(dir_ + "/settings.reg");
}

ExportTest::~ExportTest() {
  session_.reset();
  fx::settings::SetSettingsFilePath("");
}

void ExportTest::Open(const std::string& path, fx::console::AnswerPolicy answers) {
  session_.reset();
  Restart(std::move(answers));
  session_ = std::make_unique<fx::console::HostSession>(runner(), modules_);
  std::string error;
  ASSERT_TRUE(session_->OpenDrawing(path, &error)) << error;
}

AcDbDatabase& ExportTest::db() const { return *session_->document()->database(); }

std::string ExportTest::RunScript(const std::string& script) {
  const size_t before = terminal_.out.size();
  Run(script);
  return terminal_.out.substr(before);
}

AcDbObjectId ExportTest::RecordNamed(const std::string& name) const {
  AcDbObjectPointer<AcDbBlockTableRecord> model(db().modelSpaceId(), AcDb::kForRead);
  if (model.openStatus() != Acad::eOk) return {};
  for (AcDbObjectId id : model->entityIds()) {
    fx::rooms::RoomRecord record;
    if (fx::rooms::ReadRoomRecord(id, &record) && record.name == name) return id;
  }
  return {};
}

}  // namespace fx::export_test
