// Dictionaries (named references to objects) and xrecords (lists of typed
// values), the containers in which a plug-in keeps data in a drawing.
#ifndef FLOORXPORT_HOST_DB_DICTIONARY_H_
#define FLOORXPORT_HOST_DB_DICTIONARY_H_

#include <string>
#include <utility>
#include <vector>

#include "host/db_object.h"

class AcDbDictionary : public AcDbObject {
 public:
  using AcDbObject::AcDbObject;
  AcDbDictionary();
  // eKeyNotFound when absent. Names compare without regard to case.
  Acad::ErrorStatus getAt(const char* name, AcDbObjectId& id) const;
  bool has(const char* name) const;
  // Adds (or replaces) an entry; `object` is a new object, owned by the
  // dictionary afterwards; the caller closes it. The dictionary must be
  // write-open and in a database.
  Acad::ErrorStatus setAt(const char* name, AcDbObject* object, AcDbObjectId& id);
  // Removes the entry and erases the object it named.
  Acad::ErrorStatus remove(const char* name);
  unsigned numEntries() const;
  std::vector<std::pair<std::string, AcDbObjectId>> entries() const;
};

class AcDbXrecord : public AcDbObject {
 public:
  using AcDbObject::AcDbObject;
  AcDbXrecord();
  // The values as a chain of group codes; the caller releases it.
  Acad::ErrorStatus rbChain(resbuf** chain) const;
  Acad::ErrorStatus setFromRbChain(const resbuf& chain);
};

#endif  // FLOORXPORT_HOST_DB_DICTIONARY_H_
