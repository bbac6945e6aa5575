#include "rooms/doc_data.h"

#include "host/database.h"

namespace fx::rooms {

AcApDataManager<CDocData>& DocVars() {
  static AcApDataManager<CDocData> doc_vars;
  return doc_vars;
}

bool HasServerFloorAssociation(AcDbDatabase* database) {
  if (database == nullptr) return false;
  AcDbObjectId server_dictionary_id;
  {
    AcDbDictionary* named_objects = nullptr;
    if (database->getNamedObjectsDictionary(named_objects, AcDb::kForRead) != Acad::eOk) {
      return false;
    }
    const Acad::ErrorStatus found = named_objects->getAt(kServerDictionary, server_dictionary_id);
    named_objects->close();
    if (found != Acad::eOk) return false;
  }
  AcDbObjectPointer<AcDbDictionary> server_dictionary(server_dictionary_id, AcDb::kForRead);
  return server_dictionary.openStatus() == Acad::eOk && server_dictionary->has(kServerDataEntry);
}

}  // namespace fx::rooms
