// The room record in extended entity data; layout in room_record.h.
#include "rooms/room_record.h"

#include <cstring>
#include <string>

#include "host/database.h"

namespace fx::rooms {
namespace {

// Reads the items of the list one by one, each of an expected group code;
// a missing or different item ends the reading (the fields keep their
// defaults), so a damaged record reads as far as it goes.
class ItemReader {
 public:
  explicit ItemReader(const resbuf* item) : item_(item) {}
  bool Text(std::string& value) {
    if (!Next(1000)) return false;
    value = item_->resval.rstring != nullptr ? item_->resval.rstring : "";
    return true;
  }
  bool Integer(int32_t& value) {
    if (!Next(1071)) return false;
    // Read back as 16 bits, sign-extended: see room_record.h.
    value = static_cast<int16_t>(static_cast<uint16_t>(item_->resval.rlong & 0xFFFF));
    return true;
  }
  bool Point(AcGePoint3d& value) {
    if (!Next(1010)) return false;
    value = {item_->resval.rpoint[0], item_->resval.rpoint[1], item_->resval.rpoint[2]};
    return true;
  }

 private:
  bool Next(int code) {
    const resbuf* next = item_ != nullptr ? item_->rbnext : nullptr;
    if (next == nullptr || next->restype != code) return false;
    item_ = next;
    return true;
  }
  const resbuf* item_;
};

AcDbObjectId LinkedId(AcDbDatabase* database, const std::string& handle_text) {
  const AcDbHandle handle(handle_text);
  AcDbObjectId id;
  if (database == nullptr || handle.isNull() || database->getAcDbObjectId(id, false, handle) != Acad::eOk) {
    return AcDbObjectId::kNull;
  }
  return id;
}

// Fills *record from the application's list (its first item is the 1001
// name). Versions compare as text, as they always have: "1.1" and "1.2"
// carry the integer, "1.2" the extents too.
void ParseRecord(const resbuf* list, AcDbDatabase* database, RoomRecord* record) {
  ItemReader reader(list);
  std::string version;
  std::string handle;
  if (!reader.Text(version) || !reader.Text(record->name) || !reader.Text(record->category) ||
      !reader.Text(record->description) || !reader.Text(record->comment) || !reader.Text(handle)) {
    return;
  }
  record->linked = LinkedId(database, handle);
  if (std::strcmp(version.c_str(), "1.0") <= 0 || !reader.Integer(record->flags)) return;
  if (std::strcmp(version.c_str(), "1.1") <= 0) return;
  AcGePoint3d min;
  AcGePoint3d max;
  if (reader.Point(min) && reader.Point(max)) record->extents.set(min, max);
}

// An object opened for the span of one function, closed when it ends. (The
// host's AcDbObjectPointer types its object; records sit on any object.)
class OpenedObject {
 public:
  OpenedObject(AcDbObjectId id, AcDb::OpenMode mode) { status_ = acdbOpenAcDbObject(object_, id, mode); }
  ~OpenedObject() { close(); }
  OpenedObject(const OpenedObject&) = delete;
  OpenedObject& operator=(const OpenedObject&) = delete;
  Acad::ErrorStatus openStatus() const { return status_; }
  AcDbObject* operator->() const { return object_; }
  Acad::ErrorStatus close() {
    if (object_ == nullptr) return Acad::eOk;
    const Acad::ErrorStatus status = object_->close();
    object_ = nullptr;
    return status;
  }

 private:
  AcDbObject* object_ = nullptr;
  Acad::ErrorStatus status_ = Acad::eNullObjectId;
};

}  // namespace

bool ReadRoomRecord(AcDbObjectId id, RoomRecord* record) {
  OpenedObject object(id, AcDb::kForRead);
  if (object.openStatus() != Acad::eOk) return false;
  ResbufPtr list(object->xData(kAppName));
  if (list == nullptr) return false;
  RoomRecord read;
  // The linked entity is looked up in the entity's own drawing: the working
  // database whenever the plug-in reads records.
  ParseRecord(list.get(), object->database(), &read);
  *record = std::move(read);
  return true;
}

Acad::ErrorStatus SetXData(AcDbObjectId id, const RoomRecord& record) {
  OpenedObject object(id, AcDb::kForWrite);
  if (object.openStatus() != Acad::eOk) return object.openStatus();
  // A null linked entity is written as the null handle's text, "0".
  const std::string handle = record.linked.handle().ascii();
  const AcGePoint3d& min = record.extents.minPoint();
  const AcGePoint3d& max = record.extents.maxPoint();
  const double min_xyz[3] = {min.x, min.y, min.z};
  const double max_xyz[3] = {max.x, max.y, max.z};
  ResbufPtr list(acutBuildList(1001, kAppName, 1000, kRecordVersion, 1000, record.name.c_str(),
                               1000, record.category.c_str(), 1000, record.description.c_str(),
                               1000, record.comment.c_str(), 1000, handle.c_str(), 1071,
                               static_cast<int>(record.flags), 1010, min_xyz, 1010, max_xyz, RTNONE));
  const Acad::ErrorStatus status = object->setXData(list.get());
  const Acad::ErrorStatus closed = object.close();
  return status != Acad::eOk ? status : closed;
}

Acad::ErrorStatus RemoveRoomRecord(AcDbObjectId id) {
  OpenedObject object(id, AcDb::kForWrite);
  if (object.openStatus() != Acad::eOk) return object.openStatus();
  ResbufPtr list(object->xData(kAppName));
  if (list == nullptr) return Acad::eOk;  // nothing to remove; closed unchanged
  // The application's name alone removes its data.
  acutRelRb(list->rbnext);
  list->rbnext = nullptr;
  const Acad::ErrorStatus status = object->setXData(list.get());
  const Acad::ErrorStatus closed = object.close();
  return status != Acad::eOk ? status : closed;
}

}  // namespace fx::rooms
