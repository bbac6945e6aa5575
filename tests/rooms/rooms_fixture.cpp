#include "rooms_fixture.h"

#include <gtest/gtest.h>

#include "app/floorxport_app.h"
#include "settings/duplicate_names_flag.h"
#include "settings/settings_path.h"

namespace fx::rooms_test {

std::string TestDrawing(const std::string& name) { return std::string(FX_ROOMS_TEST_DATA) + "/" + name; }
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
  // Never the user's own settings; the duplicate-name flag at its default.
  fx::settings::SetSettingsFilePath(dir_.path() + "/settings.reg");
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

}  // namespace fx::rooms_test
