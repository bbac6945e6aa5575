// Symbol tables (layers, blocks, viewports, registered applications,
// linetypes, text styles) and their records. Names compare without regard
// to case, as the editor does.
#ifndef FLOORXPORT_HOST_DB_TABLES_H_
#define FLOORXPORT_HOST_DB_TABLES_H_

#include <string>
#include <vector>

#include "host/db_object.h"

class AcDbEntity;
class AcDbSymbolTableRecord;

// Walks the records of a table in file order; erased records are skipped.
class AcDbSymbolTableIterator {
 public:
  explicit AcDbSymbolTableIterator(std::vector<AcDbObjectId> ids) : ids_(std::move(ids)) {}
  void start() { index_ = 0; }
  bool done() const { return index_ >= ids_.size(); }
  void step() { ++index_; }
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eInvalidIndex;
    id = ids_[index_];
    return Acad::eOk;
  }

 private:
  std::vector<AcDbObjectId> ids_;
  size_t index_ = 0;
};

class AcDbSymbolTable : public AcDbObject {
 public:
  using AcDbObject::AcDbObject;
  // eKeyNotFound when there is no record of that name.
  Acad::ErrorStatus getAt(const char* name, AcDbObjectId& id, bool get_erased = false) const;
  bool has(const char* name) const;
  // Appends a new record (which must carry a name not used yet:
  // eDuplicateRecordName otherwise). The caller closes the record.
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator) const;  // caller deletes it
  std::vector<AcDbObjectId> recordIds() const;
};

class AcDbSymbolTableRecord : public AcDbObject {
 public:
  using AcDbObject::AcDbObject;
  std::string getName() const;
  Acad::ErrorStatus getName(std::string& name) const;
  Acad::ErrorStatus setName(const char* name);
  bool isDependent() const;  // from an external reference ("XREF|NAME")
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  AcDbLayerTableRecord();
  bool isOff() const;
  bool isFrozen() const;
  bool isLocked() const;
  bool isPlottable() const;
  // A layer the editor keeps out of its layer lists: the system layers it
  // makes for itself, whose names begin with '*' ("*ADSK_CONSTRAINTS").
  bool isHidden() const;
  AcCmColor color() const;  // never by layer or by block
  AcDb::LineWeight lineWeight() const;
  AcDbObjectId linetypeObjectId() const;
  Acad::ErrorStatus setIsOff(bool off);
  Acad::ErrorStatus setIsFrozen(bool frozen);
  Acad::ErrorStatus setIsLocked(bool locked);
  Acad::ErrorStatus setColor(const AcCmColor& color);
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
  Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
};
using AcDbLayerTable = AcDbSymbolTable;

// Walks the entities of a block in order; erased entities are skipped.
class AcDbBlockTableRecordIterator {
 public:
  explicit AcDbBlockTableRecordIterator(std::vector<AcDbObjectId> ids) : ids_(std::move(ids)) {}
  void start() { index_ = 0; }
  bool done() const { return index_ >= ids_.size(); }
  void step() { ++index_; }
  Acad::ErrorStatus getEntityId(AcDbObjectId& id) const {
    if (done()) return Acad::eInvalidIndex;
    id = ids_[index_];
    return Acad::eOk;
  }

 private:
  std::vector<AcDbObjectId> ids_;
  size_t index_ = 0;
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  AcDbBlockTableRecord();
  static constexpr const char* kModelSpace = "*Model_Space";
  static constexpr const char* kPaperSpace = "*Paper_Space";

  // Appends a new entity (made with `new`) at the end of the block; the
  // record must be write-open. The caller closes the entity.
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator) const;  // caller deletes it
  std::vector<AcDbObjectId> entityIds() const;
  // Every INSERT (and dimension) in the database that references this block.
  Acad::ErrorStatus getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const;
  bool hasAttributeDefinitions() const;
  AcGePoint3d origin() const;  // the base point
  // Sets the base point; the record must be in a database already.
  Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
  bool isAnonymous() const;
  bool isLayout() const;
  bool isFromExternalReference() const;
};
using AcDbBlockTable = AcDbSymbolTable;

// The "*ACTIVE" viewport holds the current view of model space.
class AcDbViewportTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  AcGePoint2d centerPoint() const;
  double height() const;
  double width() const;  // height times the aspect ratio
  // The view: the centre above is in its display system, whose origin is
  // the target, whose Z axis is the view direction (from the target towards
  // the viewer) and whose X axis is turned by the twist (radians).
  AcGePoint3d target() const;
  AcGeVector3d viewDirection() const;  // +Z when the drawing gives none
  double viewTwist() const;
  Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center);
  Acad::ErrorStatus setHeight(double height);
  Acad::ErrorStatus setWidth(double width);
};
using AcDbViewportTable = AcDbSymbolTable;

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  AcDbRegAppTableRecord();
};
using AcDbRegAppTable = AcDbSymbolTable;

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  std::string comments() const;
  double patternLength() const;
  int numDashes() const;
  double dashLengthAt(int index) const;  // positive dash, negative gap, 0 dot
};
using AcDbLinetypeTable = AcDbSymbolTable;

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
  std::string fileName() const;
  std::string bigFontFileName() const;
  double textSize() const;  // 0 for a variable height
  double xScale() const;
  double obliquingAngle() const;
  bool isVertical() const;
  // The typeface of a TrueType style and its bold and italic flags; an empty
  // typeface when the style names only a font file.
  Acad::ErrorStatus font(std::string& typeface, bool& bold, bool& italic) const;
};
using AcDbTextStyleTable = AcDbSymbolTable;

#endif  // FLOORXPORT_HOST_DB_TABLES_H_
