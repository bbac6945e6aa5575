#include "server/server_data.h"

#include "host/database.h"
#include "host/resbuf.h"
#include "rooms/doc_data.h"

namespace fx::server {
namespace {

using rooms::kServerDataEntry;
using rooms::kServerDictionary;

// The id of the entry `name` of the dictionary `dictionary_id`; null when absent.
AcDbObjectId EntryOf(AcDbObjectId dictionary_id, const char* name) {
  AcDbObjectPointer<AcDbDictionary> dictionary(dictionary_id, AcDb::kForRead);
  AcDbObjectId id;
  if (dictionary.openStatus() != Acad::eOk || dictionary->getAt(name, id) != Acad::eOk) return {};
  return id;
}

bool ReadInt(const resbuf& item, int32_t& value) {
  switch (ResbufKindOf(item.restype)) {
    case ResbufValueKind::kLong: value = item.resval.rlong; return true;
    case ResbufValueKind::kShort: value = item.resval.rint; return true;
    default: return false;
  }
}

}  // namespace

ServerData ReadServerData(AcDbDatabase* database) {
  ServerData data;
  if (database == nullptr) return data;
  const AcDbObjectId xrecord_id =
      EntryOf(EntryOf(database->namedObjectsDictionaryId(), kServerDictionary), kServerDataEntry);
  AcDbObjectPointer<AcDbXrecord> xrecord(xrecord_id, AcDb::kForRead);
  if (xrecord.openStatus() != Acad::eOk) return data;
  resbuf* chain = nullptr;
  if (xrecord->rbChain(&chain) != Acad::eOk) return data;
  const ResbufPtr values(chain);
  data.read = true;
  const resbuf* item = values.get();
  if (item != nullptr) item = item->rbnext;  // the version
  if (item != nullptr) {
    if (ResbufKindOf(item->restype) == ResbufValueKind::kString && item->resval.rstring != nullptr)
      data.server = item->resval.rstring;
    item = item->rbnext;
  }
  if (item != nullptr) {
    ReadInt(*item, data.first_id);
    item = item->rbnext;
  }
  if (item != nullptr) ReadInt(*item, data.floor_id);
  return data;
}

Acad::ErrorStatus WriteServerData(const ServerData& data, AcDbDatabase* database) {
  if (database == nullptr) return Acad::eInvalidInput;
  const ServerData stored = ReadServerData(database);
  if (stored.first_id == data.first_id && stored.floor_id == data.floor_id &&
      stored.server == data.server) {
    return Acad::eOk;
  }

  AcDbObjectId dictionary_id;
  {
    AcDbDictionary* named_objects = nullptr;
    Acad::ErrorStatus status = database->getNamedObjectsDictionary(named_objects, AcDb::kForWrite);
    if (status != Acad::eOk) return status;
    if (named_objects->getAt(kServerDictionary, dictionary_id) != Acad::eOk) {
      auto* created = new AcDbDictionary();
      status = named_objects->setAt(kServerDictionary, created, dictionary_id);
      if (status == Acad::eOk) created->close();
      else delete created;
    }
    named_objects->close();
    if (status != Acad::eOk) return status;
  }

  AcDbObjectPointer<AcDbDictionary> dictionary(dictionary_id, AcDb::kForWrite);
  if (dictionary.openStatus() != Acad::eOk) return dictionary.openStatus();
  // Added first, then filled: strings are encoded for the drawing it is in.
  auto* xrecord = new AcDbXrecord();
  AcDbObjectId xrecord_id;
  Acad::ErrorStatus status = dictionary->setAt(kServerDataEntry, xrecord, xrecord_id);
  if (status != Acad::eOk) {
    delete xrecord;
    return status;
  }
  const ResbufPtr values(acutBuildList(1000, kServerDataVersion, 1000, data.server.c_str(),
                                       1071, static_cast<int>(data.first_id),
                                       1071, static_cast<int>(data.floor_id), RTNONE));
  status = values ? xrecord->setFromRbChain(*values) : Acad::eOutOfMemory;
  xrecord->close();
  if (status != Acad::eOk) dictionary->remove(kServerDataEntry);  // no half-made record
  return status;
}

}  // namespace fx::server
