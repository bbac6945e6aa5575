#include "rooms_ui_fixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/floorxport_app.h"
#include "host/documents.h"
#include "rooms/navigation.h"
#include "settings/settings_path.h"

namespace fx::rooms_test {

std::string BaseDrawing() { return std::string(FX_ROOMS_UI_DATA) + "/rooms_base.dxf"; }
std::string PlanDrawing() { return std::string(FX_ROOMS_UI_DATA) + "/rooms_plan.dxf"; }

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

RoomsUiTest::RoomsUiTest() {
  modules_.Register("FloorXport", acrxEntryPoint);
  fx::rooms::Cursors().Reset();
  // Never the user's own settings.
  fx::settings::SetSettingsFilePath(dir_ + "/settings.reg");
}

RoomsUiTest::~RoomsUiTest() {
  session_.reset();
  fx::settings::SetSettingsFilePath("");
}

void RoomsUiTest::Open(const std::string& path) {
  session_ = std::make_unique<fx::console::HostSession>(runner(), modules_);
  std::string error;
  ASSERT_TRUE(session_->OpenDrawing(path, &error)) << error;
}

AcDbDatabase& RoomsUiTest::db() const { return *session_->document()->database(); }

fx::rooms::CDocData& RoomsUiTest::docData() const {
  return fx::rooms::DocVars().docData(session_->document());
}

std::string RoomsUiTest::RunScript(const std::string& script) {
  const size_t before = terminal_.out.size();
  Run(script);
  return terminal_.out.substr(before);
}

namespace {

AcDbObjectId AppendToModelSpace(AcDbDatabase& database, AcDbEntity* entity) {
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(database.modelSpaceId(), AcDb::kForWrite);
  EXPECT_EQ(model_space.openStatus(), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(model_space->appendAcDbEntity(id, entity), Acad::eOk);
  return id;
}

}  // namespace

AcDbObjectId RoomsUiTest::AddRectangle(const char* layer, double x0, double y0, double x1,
                                       double y1) {
  auto* polyline = new AcDbPolyline();
  const AcGePoint2d corners[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  for (unsigned i = 0; i < 4; ++i) polyline->addVertexAt(i, corners[i]);
  polyline->setClosed(true);
  const AcDbObjectId id = AppendToModelSpace(db(), polyline);
  EXPECT_EQ(polyline->setLayer(layer), Acad::eOk);
  polyline->close();
  return id;
}

AcDbObjectId RoomsUiTest::AddText(const char* text, double x, double y) {
  auto* entity = new AcDbText(AcGePoint3d(x, y, 0), text, AcDbObjectId::kNull, 0.5);
  const AcDbObjectId id = AppendToModelSpace(db(), entity);
  entity->close();
  return id;
}

AcDbObjectId RoomsUiTest::AddInsert(const char* block, double x, double y,
                                    const std::vector<std::string>& values, double scale) {
  AcDbObjectId block_id;
  {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db().getBlockTable(table, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(table->getAt(block, block_id), Acad::eOk) << block;
    table->close();
  }
  auto* insert = new AcDbBlockReference(AcGePoint3d(x, y, 0), block_id);
  insert->setScaleFactors({scale, scale, scale});
  const AcDbObjectId id = AppendToModelSpace(db(), insert);
  insert->setLayer("RoomTags");
  const AcGeMatrix3d transform = insert->blockTransform();
  AcDbObjectPointer<AcDbBlockTableRecord> definition(block_id, AcDb::kForRead);
  size_t next_value = 0;
  for (AcDbObjectId entity_id : definition->entityIds()) {
    AcDbObjectPointer<AcDbAttributeDefinition> attdef(entity_id, AcDb::kForRead);
    if (attdef.openStatus() != Acad::eOk) continue;
    auto* attribute = new AcDbAttribute();
    AcDbObjectId attribute_id;
    EXPECT_EQ(insert->appendAttribute(attribute_id, attribute), Acad::eOk);
    attribute->setTag(attdef->tag().c_str());
    attribute->setPosition(transform * attdef->position());
    attribute->setHeight(attdef->height() * scale);
    const std::string value = next_value < values.size() ? values[next_value] : "";
    ++next_value;
    attribute->setTextString(value.c_str());
    attribute->close();
  }
  insert->close();
  return id;
}

void RoomsUiTest::WriteRecord(AcDbObjectId id, const std::string& name, AcDbObjectId contour,
                              int32_t flags, const std::string& category,
                              const std::string& description, const std::string& comment) {
  fx::rooms::RoomRecord record;
  record.name = name;
  record.category = category;
  record.description = description;
  record.comment = comment;
  record.linked = contour;
  record.flags = flags;
  record.extents.set(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
  ASSERT_EQ(fx::rooms::SetXData(id, record), Acad::eOk);
}

std::vector<AcDbObjectId> RoomsUiTest::ModelSpace() const {
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(db().modelSpaceId(), AcDb::kForRead);
  return model_space->entityIds();
}

}  // namespace fx::rooms_test
