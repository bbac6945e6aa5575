// The host's record of one object of a drawing: what an AcDbObjectId points to.
#ifndef FLOORXPORT_HOST_DXF_DB_STUB_H_
#define FLOORXPORT_HOST_DXF_DB_STUB_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>

#include "host/dxf/dxf_tag.h"
#include "host/ids.h"

class AcDbImpDatabase;

// What kind of thing a record is, which decides the class it opens as.
enum class StubKind : uint8_t {
  kEntity,       // in ENTITIES or inside a block definition (ATTRIB, VERTEX, SEQEND too)
  kObject,       // in OBJECTS
  kTable,        // a TABLE record
  kTableRecord,  // an entry of a table (LAYER, BLOCK_RECORD, ...)
  kBlockBegin,   // BLOCK: also stands for the block table record in files without BLOCK_RECORD
  kBlockEnd,     // ENDBLK
};

// A record's type among those that open as a class of their own, read from its 0-tag once
// when its stub is made (RecordTypeOf in object_factory.h).
enum class RecordType : uint8_t {
  kOther, kLine, kCircle, kArc, kEllipse, kSpline, kLwPolyline, kPolyline, kVertex, kText, kAttrib,
  kAttdef, kMText, kInsert, kHatch, kSolid, kFace, kPoint, kDimension, kLeader, kXline,
  kDictionary, kXrecord,
};

class AcDbStub {
 public:
  AcDbImpDatabase* database = nullptr;
  fx::dxf::RecordId record = fx::dxf::kNoRecord;
  AcDbHandle handle;
  // Entities: the block table record that owns them; sub-entities (ATTRIB,
  // VERTEX, SEQEND): their parent. Table records: their table. Objects: null
  // (their owner is read from the record).
  AcDbStub* owner = nullptr;
  StubKind kind = StubKind::kObject;
  RecordType type = RecordType::kOther;
  bool erased = false;
  // Whether the handle was made up in memory (files that write no handles).
  bool synthetic_handle = false;
  // Open state: readers and at most one writer, never both.
  uint16_t readers = 0;
  bool writer = false;
};

#endif  // FLOORXPORT_HOST_DXF_DB_STUB_H_
