// ZOOM on the console: Extents and Object (see host_commands.h).
#include <string>

#include "host/database.h"
#include "host/dxf/console/active_view.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/drawing_extents.h"
#include "host/dxf/console/host_commands.h"
#include "host/dxf/model_space_extents.h"
#include "host/editor.h"

namespace fx::console {
namespace {

void Zoom(AcDbDatabase& database, const AcDbExtents& extents) {
  Acad::ErrorStatus status = ZoomActiveView(database, extents);
  if (status == Acad::eKeyNotFound) {
    // Drawings from other programs may have no viewport table: there is
    // no view to change, and nothing wrong with the drawing.
    acutPrintf("\nThe drawing has no *ACTIVE viewport: no view to change.");
  } else if (status != Acad::eOk) {
    acutPrintf("\nZOOM: %s", Acad::acadErrorStatusText(status));
    CurrentRunner().FailCommand();
  }
}

void ZoomExtents(AcDbDatabase& database) {
  AcDbExtents extents;
  if (fx::dxf::ModelSpaceExtents(database, extents) == Acad::eOk && !extents.isEmpty()) {
    // The editor's zoom to extents brings the header's extents up to date;
    // later exports read them. Measured once: what updateExt() would
    // measure again.
    fx::dxf::SetHeaderExtents(database, extents);
  } else {
    extents = DrawingExtents(database);
  }
  if (extents.isEmpty()) {
    acutPrintf("\nThe drawing is empty: nothing to zoom to.");
    return;
  }
  Zoom(database, extents);
}

// The entity named by a handle in hexadecimal; the null id when none.
AcDbObjectId EntityByHandle(AcDbDatabase& database, const std::string& text) {
  AcDbHandle handle(text);
  AcDbObjectId id;
  if (handle.isNull() || database.getAcDbObjectId(id, false, handle) != Acad::eOk) return {};
  AcDbEntityPointer entity(id, AcDb::kForRead);
  return entity.openStatus() == Acad::eOk ? id : AcDbObjectId();
}

void ZoomObjects(AcDbDatabase& database) {
  AcDbExtents extents;
  int selected = 0;
  for (;;) {
    std::string answer;
    // Once something is selected, the end of the answers ends the selection.
    RunOut run_out = selected == 0 ? RunOut::kCancels : RunOut::kEndsList;
    if (CurrentRunner().ReadAnswer("\nSelect objects: ", TokenEnd::kBlank, answer, run_out) !=
        ReadStatus::kOk) {
      if (selected == 0) return;
      break;
    }
    if (answer.empty()) break;
    AcDbObjectId id = EntityByHandle(database, answer);
    if (id.isNull()) {
      acutPrintf("\nNo object has the handle \"%s\".", answer.c_str());
      continue;
    }
    AcDbEntityPointer entity(id, AcDb::kForRead);
    AcDbExtents entity_extents;
    if (entity.openStatus() == Acad::eOk && entity->getGeomExtents(entity_extents) == Acad::eOk) {
      extents.addExt(entity_extents);
    }
    ++selected;
    acutPrintf("\n1 found, %d total", selected);
  }
  if (selected == 0) {
    acutPrintf("\nNothing selected.");
  } else if (extents.isEmpty()) {
    acutPrintf("\nThe selected objects have no extents.");
  } else {
    Zoom(database, extents);
  }
}

}  // namespace

void ZoomCommand() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) {
    acutPrintf("\nNo drawing is open.");
    CurrentRunner().FailCommand();
    return;
  }
  acedInitGet(0, "Extents Object");
  char option[32];
  int status = acedGetKword("\nZoom [Extents/Object]: ", option, sizeof option);
  if (status != RTNORM) return;  // Enter does nothing; a cancel is already noted
  if (std::string(option) == "Extents") {
    ZoomExtents(*database);
  } else {
    ZoomObjects(*database);
  }
}

}  // namespace fx::console
