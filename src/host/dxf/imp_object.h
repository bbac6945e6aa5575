// The state of an open (or new) object: its stub and a working copy of its
// tags, written back into the document when a write-open object is closed.
#ifndef FLOORXPORT_HOST_DXF_IMP_OBJECT_H_
#define FLOORXPORT_HOST_DXF_IMP_OBJECT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string_view>

#include "host/db_object.h"
#include "host/dxf/db_stub.h"
#include "host/dxf/tag_list.h"

namespace fx::dxf {
void ApplyWorkingDatabaseDefaults(TagList& tags);
}  // namespace fx::dxf

class AcDbImpObject {
 public:
  // An object opened from the database.
  AcDbImpObject(AcDbStub* stub, AcDb::OpenMode mode, fx::dxf::TagList tags)
      : stub_(stub), mode_(mode), tags_(std::move(tags)) {}
  // A new object not in any database: its tags start with the 0-tag of its
  // type. A new entity takes the working database's defaults, as in the
  // editor: the current layer, and for texts of no height the default height.
  explicit AcDbImpObject(fx::dxf::TagList tags) : tags_(std::move(tags)) {
    fx::dxf::ApplyWorkingDatabaseDefaults(tags_);
  }

  AcDbStub* stub() const { return stub_; }
  AcDbImpDatabase* database() const { return stub_ ? stub_->database : nullptr; }
  AcDb::OpenMode mode() const { return mode_; }
  void set_mode(AcDb::OpenMode mode) { mode_ = mode; }
  bool is_new() const { return stub_ == nullptr; }
  std::string_view type() const { return tags_.type(); }

  const fx::dxf::TagList& tags() const { return tags_; }
  // For edits: marks the object modified, so close() writes it back.
  fx::dxf::TagList& mutable_tags() {
    modified_ = true;
    return tags_;
  }
  bool modified() const { return modified_; }

  // Called when a new object joins a database (append, setAt, add).
  void Attach(AcDbStub* stub, AcDb::OpenMode mode) {
    stub_ = stub;
    mode_ = mode;
  }

 private:
  AcDbStub* stub_ = nullptr;
  AcDb::OpenMode mode_ = AcDb::kForWrite;
  fx::dxf::TagList tags_;
  bool modified_ = false;
};

namespace fx::dxf {
// Convenience for the typed classes: the object's state.
inline const TagList& TagsOf(const AcDbObject& object) { return object.impl()->tags(); }
}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_IMP_OBJECT_H_
