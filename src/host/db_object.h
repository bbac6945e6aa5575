// Database-resident objects: the base of everything in a drawing, and the
// entity base of everything that has geometry.
//
// Objects are opened through acdbOpenObject (or AcDbObjectPointer), used
// within one operation and closed. close() commits a write-open object's
// changes and ends the object's life: the pointer must not be used after it.
// A new object made with `new` belongs to the caller until it is appended to
// the database (AcDbBlockTableRecord::appendAcDbEntity, AcDbDictionary::setAt,
// AcDbSymbolTable::add); from then on it is closed like an opened one.
#ifndef FLOORXPORT_HOST_DB_OBJECT_H_
#define FLOORXPORT_HOST_DB_OBJECT_H_

#include <memory>
#include <string>

#include "host/color.h"
#include "host/geometry.h"
#include "host/ids.h"
#include "host/resbuf.h"
#include "host/status.h"

class AcDbImpObject;  // the host's state of an object
class AcGiWorldDraw;

class AcDbObject {
 public:
  virtual ~AcDbObject();
  AcDbObject(const AcDbObject&) = delete;
  AcDbObject& operator=(const AcDbObject&) = delete;

  // The object's type name as a drawing file writes it ("LWPOLYLINE").
  const char* dxfName() const;

  AcDbObjectId objectId() const;  // null until the object is in a database
  AcDbObjectId ownerId() const;
  AcDbDatabase* database() const;
  AcDbHandle handle() const;
  void getAcDbHandle(AcDbHandle& handle) const { handle = this->handle(); }

  bool isErased() const;
  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  bool isNewObject() const;  // made with `new` and not yet in a database
  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();
  Acad::ErrorStatus erase(bool erasing = true);
  // Commits changes of a write-open object and releases it; see above.
  Acad::ErrorStatus close();

  // Extended data: with an application name, that application's list
  // (starting with its 1001 item) or nullptr when it has none; with nullptr,
  // every application's list. The caller releases the chain with acutRelRb.
  resbuf* xData(const char* regapp_name = nullptr) const;
  // Replaces the data of each application named in the chain (a 1001 item
  // followed by its items). A chain of only the 1001 item removes that
  // application's data. Needs write access; the application must be
  // registered in the database (eInvalidInput otherwise).
  Acad::ErrorStatus setXData(const resbuf* xdata);

  AcDbObjectId extensionDictionary() const;

  // For the host: wraps the state of an object it opens or makes.
  explicit AcDbObject(std::unique_ptr<AcDbImpObject> imp);
  AcDbImpObject* impl() const { return imp_.get(); }

 protected:
  Acad::ErrorStatus assertReadEnabled() const;
  Acad::ErrorStatus assertWriteEnabled();

 private:
  std::unique_ptr<AcDbImpObject> imp_;
};

class AcDbEntity : public AcDbObject {
 public:
  AcDbObjectId blockId() const;  // the block table record that owns it

  std::string layer() const;
  AcDbObjectId layerId() const;
  // Fails with eKeyNotFound when the layer does not exist.
  Acad::ErrorStatus setLayer(const char* name);
  Acad::ErrorStatus setLayer(AcDbObjectId layer_id);

  AcCmColor color() const;
  uint16_t colorIndex() const;
  Acad::ErrorStatus setColor(const AcCmColor& color);
  Acad::ErrorStatus setColorIndex(uint16_t aci);

  std::string linetype() const;  // "ByLayer" when unset
  AcDbObjectId linetypeId() const;
  double linetypeScale() const;

  AcDb::LineWeight lineWeight() const;
  // With `subents`, sub-objects (attributes of an insert, vertices) too.
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool subents = false);

  AcDb::Visibility visibility() const;

  // Takes the general properties of `source` (layer, colour, linetype,
  // linetype scale, lineweight, visibility, plot style, transparency): each
  // one `source` leaves unset is unset here too (by layer, or the default).
  // Needs write access; eInvalidInput for a null `source`.
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* source);

  // Transforms the entity in place. eNotApplicable for entity types that
  // cannot be transformed; eInvalidInput, with nothing changed, for a
  // transform that collapses the entity.
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& transform);

  // The entity's extents in world coordinates (its block's coordinates for
  // an entity inside a block definition). eInvalidExtents for entities
  // without extents (an empty text, an infinite line).
  virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  // Draws the entity through the world-draw interfaces; false when drawing
  // was aborted.
  virtual bool worldDraw(AcGiWorldDraw* world_draw);

  using AcDbObject::AcDbObject;
};

class AcDbCurve : public AcDbEntity {
 public:
  virtual bool isClosed() const;
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

  using AcDbEntity::AcDbEntity;
};

#endif  // FLOORXPORT_HOST_DB_OBJECT_H_
