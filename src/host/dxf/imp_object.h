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

// What a typed class decoded from an object's tags to answer its reads
// without decoding them again (a polyline's vertices): kept on the open
// object until the next edit of its tags.
class AcDbImpDecoded {
 public:
  virtual ~AcDbImpDecoded() = default;
};

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
  // For edits: marks the object modified, so close() writes it back, and
  // forgets the decoded values.
  fx::dxf::TagList& mutable_tags() {
    modified_ = true;
    decoded_.reset();
    return tags_;
  }
  bool modified() const { return modified_; }

  // The values a typed class kept since the last edit, or null. Reads keep
  // them, hence const; an edit that updates them itself takes them before
  // calling mutable_tags() and keeps them again after.
  AcDbImpDecoded* decoded() const { return decoded_.get(); }
  std::unique_ptr<AcDbImpDecoded> take_decoded() const { return std::move(decoded_); }
  void keep_decoded(std::unique_ptr<AcDbImpDecoded> decoded) const { decoded_ = std::move(decoded); }

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
  mutable std::unique_ptr<AcDbImpDecoded> decoded_;
};

namespace fx::dxf {
// Convenience for the typed classes: the object's state.
inline const TagList& TagsOf(const AcDbObject& object) { return object.impl()->tags(); }
}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_IMP_OBJECT_H_
