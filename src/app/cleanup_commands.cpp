// The drawing clean-up shortcuts. Five run a host command with fixed
// answers through acedCommandS (every token a string, "" standing for
// Enter) and hand back its result; the host prints what its command prints.
// The lineweight shortcut edits the entities itself.
#include "app/cleanup_commands.h"

#include "host/database.h"
#include "host/editor.h"

namespace fx::app {
namespace {

// Sets one entity's lineweight to the default when it has another. An
// entity that cannot be opened (for write: on a locked layer) is skipped.
void NormaliseEntity(AcDbObjectId id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return;
  const bool is_default = entity->lineWeight() == AcDb::kLnWtByLwDefault;
  entity->close();
  if (is_default) return;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
  entity->setLineWeight(AcDb::kLnWtByLwDefault, true);
  entity->close();
}

// Every entity of every block table record: model space, the layouts and
// the block definitions. Returns the failure to open the block table as is.
Acad::ErrorStatus NormaliseLineweights(AcDbDatabase* database) {
  AcDbBlockTable* table = nullptr;
  Acad::ErrorStatus status = database->getBlockTable(table, AcDb::kForRead);
  if (status != Acad::eOk) return status;
  AcDbSymbolTableIterator* records = nullptr;
  if (table->newIterator(records) == Acad::eOk) {
    for (records->start(); !records->done(); records->step()) {
      AcDbObjectId record_id;
      AcDbBlockTableRecord* record = nullptr;
      if (records->getRecordId(record_id) != Acad::eOk ||
          acdbOpenObject(record, record_id, AcDb::kForRead) != Acad::eOk) {
        continue;
      }
      AcDbBlockTableRecordIterator* entities = nullptr;
      if (record->newIterator(entities) == Acad::eOk) {
        for (entities->start(); !entities->done(); entities->step()) {
          AcDbObjectId entity_id;
          if (entities->getEntityId(entity_id) == Acad::eOk) NormaliseEntity(entity_id);
        }
        delete entities;
      }
      record->close();
    }
    delete records;
  }
  table->close();
  return Acad::eOk;
}

// The host commands with their answers; each returns acedCommandS's result.
int Overkill() { return acedCommandS(RTSTR, "_-OVERKILL", RTSTR, "All", RTSTR, "", RTSTR, "Done", RTNONE); }
int Audit() { return acedCommandS(RTSTR, "_AUDIT", RTSTR, "Yes", RTNONE); }
int Purge() { return acedCommandS(RTSTR, "_-PURGE", RTSTR, "A", RTSTR, "*", RTSTR, "N", RTNONE); }
int Units() { return acedCommandS(RTSTR, "UNITS", RTSTR, "", RTNONE); }
int Extents() { return acedCommandS(RTSTR, "_ZOOM", RTSTR, "Extents", RTNONE); }

}  // namespace

// Commands return nothing to the host: the result ends here.
void DrawingOverkill() { Overkill(); }
void DrawingAudit() { Audit(); }
void DrawingPurge() { Purge(); }
void DrawingUnits() { Units(); }
void DrawingExtents() { Extents(); }

void DrawingLineweight() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  const Acad::ErrorStatus status =
      database != nullptr ? NormaliseLineweights(database) : Acad::eNullObjectPointer;
  if (status != Acad::eOk) acutPrintf("\ngetBlockTable = %s", Acad::acadErrorStatusText(status));
}

}  // namespace fx::app
