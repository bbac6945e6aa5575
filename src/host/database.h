// A drawing database, and opening its objects.
#ifndef FLOORXPORT_HOST_DATABASE_H_
#define FLOORXPORT_HOST_DATABASE_H_

#include <memory>
#include <string>
#include <typeinfo>
#include <utility>

#include "host/db_dictionary.h"
#include "host/db_entities.h"
#include "host/db_tables.h"

class AcDbImpDatabase;  // the host's drawing

class AcDbDatabase {
 public:
  // For the host: wraps a drawing it loaded or made.
  explicit AcDbDatabase(std::unique_ptr<AcDbImpDatabase> imp);
  ~AcDbDatabase();
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;

  // The file the drawing was read from; empty for a new drawing.
  std::string filename() const;
  // Writes the drawing to `path` whole or not at all, in its own format and
  // version; the file on disk is untouched when saving fails.
  Acad::ErrorStatus saveAs(const char* path);

  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                              AcDb::OpenMode mode = AcDb::kForRead);
  AcDbObjectId blockTableId() const;
  AcDbObjectId layerTableId() const;
  AcDbObjectId namedObjectsDictionaryId() const;
  AcDbObjectId modelSpaceId() const;

  // The id of the object with `handle`; eKeyNotFound when the drawing has
  // none (a new id is never made up: the create flag is accepted and ignored).
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool create_if_not_found,
                                    const AcDbHandle& handle);

  // Header values.
  std::string version() const;       // $ACADVER, e.g. "AC1032"
  std::string dwgcodepage() const;   // $DWGCODEPAGE as stored, e.g. "ANSI_1252"; empty when absent
  AcDbDate tduupdate() const;        // last update, universal time
  AcDbDate tdupdate() const;         // last update, local time
  AcDb::UnitsValue insunits() const;
  Acad::ErrorStatus setInsunits(AcDb::UnitsValue units);
  AcGePoint3d extmin() const;
  AcGePoint3d extmax() const;
  // Recomputes $EXTMIN/$EXTMAX from model space (empty drawing: unchanged).
  Acad::ErrorStatus updateExt();
  AcDbHandle handseed() const;
  double ltscale() const;  // $LTSCALE, the drawing-wide linetype scale (1 when unset)
  AcDbObjectId clayer() const;
  size_t approxNumObjects() const;

  AcDbImpDatabase* impl() const { return imp_.get(); }

 private:
  std::unique_ptr<AcDbImpDatabase> imp_;
};

// Opens an object for the span of one operation; release it with close().
// eWasErased for an erased object unless `open_erased`; eNullObjectId;
// eWasOpenForWrite when it is already open for write and eWasOpenForRead
// when asking for write while it is open for read elsewhere.
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool open_erased = false);

// Opens and checks the type: eNotThatKindOfClass when the object is not a T.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool open_erased = false) {
  object = nullptr;
  AcDbObject* opened = nullptr;
  Acad::ErrorStatus status = acdbOpenAcDbObject(opened, id, mode, open_erased);
  if (status != Acad::eOk) return status;
  // An object of exactly class T (most opens) needs no walk up the class tree.
  object = &typeid(*opened) == &typeid(T) ? static_cast<T*>(opened) : dynamic_cast<T*>(opened);
  if (object == nullptr) {
    opened->close();
    return Acad::eNotThatKindOfClass;
  }
  return Acad::eOk;
}

// Holds an opened object and closes it when it goes out of scope.
template <class T>
class AcDbObjectPointer {
 public:
  AcDbObjectPointer() = default;
  AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool open_erased = false) {
    status_ = acdbOpenObject(object_, id, mode, open_erased);
  }
  // Takes a new object (made with `new`): it is deleted unless appended.
  explicit AcDbObjectPointer(T* created) : object_(created), status_(Acad::eOk) {}
  ~AcDbObjectPointer() { reset(); }
  AcDbObjectPointer(const AcDbObjectPointer&) = delete;
  AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

  Acad::ErrorStatus openStatus() const { return status_; }
  T* operator->() const { return object_; }
  T* object() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  Acad::ErrorStatus close() {
    if (object_ == nullptr) return Acad::eNullObjectPointer;
    Acad::ErrorStatus status = Acad::eOk;
    if (object_->isNewObject()) delete object_;
    else status = object_->close();
    object_ = nullptr;
    return status;
  }
  T* release() { return std::exchange(object_, nullptr); }

 private:
  void reset() { if (object_ != nullptr) close(); }
  T* object_ = nullptr;
  Acad::ErrorStatus status_ = Acad::eNullObjectId;
};
using AcDbEntityPointer = AcDbObjectPointer<AcDbEntity>;

// Registers an application name for extended data in the working database;
// true when it is registered afterwards (also when it already was).
bool acdbRegApp(const char* name);

// The working database: the current document's drawing.
class AcDbHostApplicationServices {
 public:
  virtual ~AcDbHostApplicationServices() = default;
  virtual AcDbDatabase* workingDatabase() const = 0;
};
AcDbHostApplicationServices* acdbHostApplicationServices();

// An entity name as the editor's C interface passes it: the object id.
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);

#endif  // FLOORXPORT_HOST_DATABASE_H_
