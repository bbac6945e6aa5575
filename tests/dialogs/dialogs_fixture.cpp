#include "dialogs_fixture.h"

#include <gtest/gtest.h>

#include "app/floorxport_app.h"
#include "host/documents.h"
#include "settings/settings_path.h"

namespace fx::dialogs_test {

std::string SampleFloor() { return std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf"; }

DialogsTest::DialogsTest() {
  fx::settings::SetSettingsFilePath(Path("settings.reg"));
  modules_.Register("FloorXport", acrxEntryPoint);
  session_ = std::make_unique<fx::console::HostSession>(runner(), modules_);
  std::string error;
  EXPECT_TRUE(session_->OpenDrawing(SampleFloor(), &error)) << error;
  NewOutput();
}

DialogsTest::~DialogsTest() {
  session_.reset();
  fx::settings::SetSettingsFilePath("");
}

void DialogsTest::AddLayer(const char* name) {
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db()->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord();
  ASSERT_EQ(layer->setName(name), Acad::eOk);
  AcDbObjectId id;
  ASSERT_EQ(layers->add(id, layer), Acad::eOk);
  layer->close();
  layers->close();
}

std::string DialogsTest::NewOutput() {
  std::string text = terminal_.out.substr(seen_);
  seen_ = terminal_.out.size();
  return text;
}

void DialogsTest::Set(fx::DialogModel& dialog, const std::string& label, const std::string& value) {
  const std::vector<DialogField> fields = dialog.fields();
  for (size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].label == label) {
      EXPECT_EQ(dialog.SetField(i, value), "") << label << " = " << value;
      return;
    }
  }
  ADD_FAILURE() << "no field " << label;
}

std::string DialogsTest::Value(const fx::DialogModel& dialog, const std::string& label) {
  for (const DialogField& field : dialog.fields()) {
    if (field.label == label) return field.value;
  }
  ADD_FAILURE() << "no field " << label;
  return {};
}

fx::cli_test::ProgramResult DialogsTest::RunProgram(std::vector<std::string> args) {
  args.insert(args.begin(), {"--settings", Path("program.reg")});
  return fx::cli_test::RunProgram(FX_FLOORXPORT, args, folder_.path().string());
}

}  // namespace fx::dialogs_test
