#include "rooms_fixture.h"

#include <gtest/gtest.h>

#include "app/floorxport_app.h"
#include "host/documents.h"
#include "rooms/navigation.h"
#include "settings/duplicate_names_flag.h"
#include "settings/settings_path.h"

namespace fx::rooms_test {

std::string TestDrawing(const std::string& name) { return std::string(FX_TEST_DATA_DIR) + "/rooms/" + name; }
std::string BaseDrawing() { return std::string(FX_TEST_DATA_DIR) + "/rooms_ui/rooms_base.dxf"; }
std::string PlanDrawing() { return std::string(FX_TEST_DATA_DIR) + "/rooms_ui/rooms_plan.dxf"; }
std::string SampleFloor() { return std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf"; }

std::string BlockModeLine(const char* remove_inserts) {
  return std::string(R"(_vantoryconvert "Floor" "Contours" B "ROOMTAG" "NAME" "CATEGORY" "DESCRIPTION" )") +
         remove_inserts;
}

std::string TextModeLine() {
  return R"(_vantoryconvert "Floor" "Contours" T "Names" "Types" "Descriptions")";
}

RoomsTest::RoomsTest() {
  modules_.Register("FloorXport", acrxEntryPoint);
  fx::rooms::Cursors().Reset();
  // Never the user's own settings; the duplicate-name flag at its default.
  fx::settings::SetSettingsFilePath(dir_ + "/settings.reg");
  fx::settings::SetAutoResolveDuplicateNamesFlag(true);
}

RoomsTest::~RoomsTest() {
  session_.reset();
  fx::settings::SetAutoResolveDuplicateNamesFlag(true);
  fx::settings::SetSettingsFilePath("");
}

void RoomsTest::Open(const std::string& path) {
  session_ = std::make_unique<fx::console::HostSession>(runner(), modules_);
  std::string error;
  ASSERT_TRUE(session_->OpenDrawing(path, &error)) << error;
}

AcDbDatabase& RoomsTest::db() const { return *session_->document()->database(); }

fx::rooms::CDocData& RoomsTest::docData() const { return fx::rooms::DocVars().docData(session_->document()); }

std::string RoomsTest::RunScript(const std::string& script) {
  const size_t before = terminal_.out.size();
  Run(script);
  return terminal_.out.substr(before);
}

std::vector<AcDbObjectId> RoomsTest::ModelSpace() const {
  AcDbObjectPointer<AcDbBlockTableRecord> model_space(db().modelSpaceId(), AcDb::kForRead);
  return model_space.openStatus() == Acad::eOk ? model_space->entityIds() : std::vector<AcDbObjectId>();
}

std::vector<AcDbObjectId> RoomsTest::StampsNamed(const std::string& name) const {
  std::vector<AcDbObjectId> found;
  for (AcDbObjectId id : ModelSpace()) {
    AcDbObjectPointer<AcDbBlockReference> insert(id, AcDb::kForRead);
    if (insert.openStatus() != Acad::eOk) continue;
    for (AcDbObjectId attribute_id : insert->attributeIds()) {
      AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
      if (attribute.openStatus() == Acad::eOk && attribute->tag() == "NAME" &&
          attribute->textString() == name) {
        found.push_back(id);
      }
    }
  }
  return found;
}

std::vector<AcDbObjectId> RoomsTest::NamesShowing(const std::string& name) const {
  std::vector<AcDbObjectId> found;
  for (AcDbObjectId id : ModelSpace()) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->layer() != "Names") continue;
    const auto* text = dynamic_cast<const AcDbText*>(entity.object());
    const auto* mtext = dynamic_cast<const AcDbMText*>(entity.object());
    if ((text != nullptr && text->textString() == name) || (mtext != nullptr && mtext->text() == name)) {
      found.push_back(id);
    }
  }
  return found;
}

AcDbObjectId RoomsTest::ContourAt(double x, double y, const char* layer) const {
  for (AcDbObjectId id : ModelSpace()) {
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    AcGePoint2d first;
    if (polyline.openStatus() == Acad::eOk && polyline->layer() == layer &&
        polyline->getPointAt(0, first) == Acad::eOk && first == AcGePoint2d(x, y)) {
      return id;
    }
  }
  return AcDbObjectId::kNull;
}

fx::rooms::RoomRecord RoomsTest::Record(AcDbObjectId id) const {
  fx::rooms::RoomRecord record;
  if (!fx::rooms::ReadRoomRecord(id, &record)) record.name = "(none)";
  return record;
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

AcDbObjectId RoomsTest::AddRectangle(const char* layer, double x0, double y0, double x1,
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

AcDbObjectId RoomsTest::AddText(const char* text, double x, double y) {
  auto* entity = new AcDbText(AcGePoint3d(x, y, 0), text, AcDbObjectId::kNull, 0.5);
  const AcDbObjectId id = AppendToModelSpace(db(), entity);
  entity->close();
  return id;
}

AcDbObjectId RoomsTest::AddInsert(const char* block, double x, double y,
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

void RoomsTest::WriteRecord(AcDbObjectId id, const std::string& name, AcDbObjectId contour,
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

}  // namespace fx::rooms_test
