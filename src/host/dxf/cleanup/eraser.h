// Erasing records for the clean-up commands, with everything that goes with
// them: an entity's attributes or vertices and its SEQEND, a block's BLOCK,
// ENDBLK and entities, and the objects each erased record owns (extension
// dictionaries and their contents). Symbol tables keep their index of names
// and their entry count (group 70) consistent.
//
// Records are erased at the document level, so entities on locked layers
// go too; a record that is open anywhere is left alone.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_ERASER_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_ERASER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/dxf/imp_database.h"

namespace fx::cleanup {

// The records after `parent` that belong to it (attributes, vertices and the
// SEQEND that ends them), in file order.
std::vector<AcDbStub*> SubRecords(const AcDbImpDatabase& db, const AcDbStub* parent);

class Eraser {
 public:
  // Indexes the objects of `db` by owner; `db` must outlive the eraser.
  explicit Eraser(AcDbImpDatabase& db);
  Eraser(const Eraser&) = delete;
  Eraser& operator=(const Eraser&) = delete;

  // An entity with its sub-entities. False (nothing erased) when it or one
  // of them is open, or it is erased already.
  bool EraseEntity(AcDbStub* entity);
  // An object of the OBJECTS section and everything it owns.
  bool EraseObject(AcDbStub* object);
  // A layer, linetype, text style (or other non-block) table record.
  bool EraseTableRecord(fx::dxf::SymbolTable& table, AcDbStub* record);
  // A block definition: its record, BLOCK, entities and ENDBLK.
  bool EraseBlock(fx::dxf::SymbolTable& block_table, AcDbStub* record);

 private:
  static bool IsOpen(const AcDbStub* stub) { return stub->readers > 0 || stub->writer; }
  // Marks the stub erased, removes its record and erases what it owns.
  void EraseRecord(AcDbStub* stub);
  void EraseOwnedBy(uint64_t handle);
  void RemoveFromTable(fx::dxf::SymbolTable& table, AcDbStub* record);

  AcDbImpDatabase& db_;
  std::unordered_map<uint64_t, std::vector<AcDbStub*>> owned_;  // owner handle -> objects
};

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_ERASER_H_
