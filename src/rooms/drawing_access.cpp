// CDocData's drawing access: blocks, layers, attributes, handles, adding
// entities and zooming. Each failure prints its line and returns the status.
#include <cctype>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::rooms {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

// Attribute tags compare without regard to ASCII case, as the editor does.
bool SameTag(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

// A record of a symbol table by name; `open_table` opens the table.
template <class OpenTable>
Acad::ErrorStatus LookUp(OpenTable open_table, const char* name, AcDbObjectId& id) {
  AcDbDatabase* database = WorkingDatabase();
  if (database == nullptr) return Acad::eNullObjectPointer;
  AcDbSymbolTable* table = nullptr;
  Acad::ErrorStatus status = open_table(*database, table);
  if (status != Acad::eOk) return status;
  status = table->getAt(name, id);
  table->close();
  return status;
}

}  // namespace

Acad::ErrorStatus CDocData::GetBlockID(const char* name, AcDbObjectId& id) {
  const Acad::ErrorStatus status = LookUp(
      [](AcDbDatabase& database, AcDbSymbolTable*& table) {
        return database.getBlockTable(table, AcDb::kForRead);
      },
      name, id);
  if (status != Acad::eOk) acutPrintf("\nCDocData::GetBlockID = %s", Text(status));
  return status;
}

Acad::ErrorStatus CDocData::GetLayerTableID(const char* name, AcDbObjectId& id) {
  const Acad::ErrorStatus status = LookUp(
      [](AcDbDatabase& database, AcDbSymbolTable*& table) {
        return database.getLayerTable(table, AcDb::kForRead);
      },
      name, id);
  if (status != Acad::eOk) acutPrintf("\nCDocData::GetLayerTableID = %s", Text(status));
  return status;
}

Acad::ErrorStatus CDocData::HasAttribute(AcDbObjectId block, const char* tag, bool& has) {
  has = false;
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
  if (record.openStatus() != Acad::eOk) {
    acutPrintf("\nCDocData::HasAttribute = %s", Text(record.openStatus()));
    return record.openStatus();
  }
  for (AcDbObjectId id : record->entityIds()) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
    if (definition.openStatus() == Acad::eOk && SameTag(definition->tag(), tag)) {
      has = true;
      break;
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus CDocData::GetAttributeIdByName(AcDbObjectId insert, const char* tag, AcDbObjectId& id) {
  AcDbObjectPointer<AcDbBlockReference> reference(insert, AcDb::kForRead);
  if (reference.openStatus() != Acad::eOk) {
    acutPrintf("\nacdbOpenObject = %s", Text(reference.openStatus()));
    return reference.openStatus();
  }
  for (AcDbObjectId attribute_id : reference->attributeIds()) {
    AcDbAttribute* attribute = nullptr;
    Acad::ErrorStatus status = acdbOpenObject(attribute, attribute_id, AcDb::kForRead);
    if (status != Acad::eOk) {
      acutPrintf("\nacdbOpenObject = %s", Text(status));
      return status;
    }
    const bool found = SameTag(attribute->tag(), tag);
    status = attribute->close();
    if (status != Acad::eOk) {
      acutPrintf("\npAtt->close = %s", Text(status));
      return status;
    }
    if (found) {
      id = attribute_id;
      return Acad::eOk;
    }
  }
  acutPrintf("\nAttribute \"%s\" not found", tag);
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus CDocData::GetAttributeValue(AcDbObjectId insert, const char* tag, std::string& value) {
  AcDbObjectId attribute_id;
  Acad::ErrorStatus status = GetAttributeIdByName(insert, tag, attribute_id);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
  if (attribute.openStatus() != Acad::eOk) {
    acutPrintf("\nacdbOpenObject = %s", Text(attribute.openStatus()));
    return attribute.openStatus();
  }
  value = attribute->textString();
  return Acad::eOk;
}

Acad::ErrorStatus CDocData::GetEntityHandle(AcDbObjectId id, std::string& handle) {
  const AcDbHandle found = id.handle();
  if (found.isNull()) {
    acutPrintf("\nGetEntityHandle = ERROR");
    return Acad::eNullHandle;
  }
  handle = found.ascii();
  return Acad::eOk;
}

Acad::ErrorStatus CDocData::postToDwg(AcDbEntity* entity, AcDbObjectId& id, const char* block_name) {
  AcDbObjectId block_id;
  Acad::ErrorStatus status = GetBlockID(block_name, block_id);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbBlockTableRecord> block(block_id, AcDb::kForWrite);
  if (block.openStatus() != Acad::eOk) {
    acutPrintf("\nacdbOpenObject = %s", Text(block.openStatus()));
    return block.openStatus();
  }
  status = block->appendAcDbEntity(id, entity);
  if (status != Acad::eOk) acutPrintf("\nappendAcDbEntity = %s", Text(status));
  return status;
}

void CDocData::ZoomToObject(AcDbObjectId id) {
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, id) != Acad::eOk ||
      acedCommandS(RTSTR, "_ZOOM", RTSTR, "_O", RTENAME, name, RTSTR, "", RTNONE) != RTNORM) {
    acutPrintf("Can't zoom");
  }
}

}  // namespace fx::rooms
