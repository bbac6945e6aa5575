// The state of one audit run (see audit.h), shared by the files that check
// the header, tables and objects (audit.cpp) and the blocks and their
// entities (audit_entities.cpp).
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_AUDITOR_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_AUDITOR_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/cleanup/audit.h"
#include "host/dxf/cleanup/eraser.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {

class Auditor {
 public:
  Auditor(AcDbImpDatabase& db, bool fix) : db_(db), fix_(fix), eraser_(db) {}
  AuditResult Run();

 private:
  // A name that no table record has, and where it is used: the record and
  // the index of the tag naming it.
  struct MissingName {
    std::string stored;
    std::vector<std::pair<AcDbStub*, size_t>> users;
  };
  using MissingNames = std::map<std::string, MissingName>;  // by folded name

  // audit.cpp
  void CheckHandseed();
  void CheckTables();
  void CheckObjects();
  void CheckDictionaries();
  // audit_entities.cpp
  void CheckBlocks();
  void CheckEntity(AcDbStub* entity, uint64_t owner);
  void ReportMissing(const MissingNames& names, const char* what, const char* repair,
                     std::string_view replacement);
  bool CreateLayer(std::string_view stored);

  // Shared helpers.
  void Report(std::string message, std::string repair, bool fixed);
  void CheckOwner(AcDbStub* stub, uint64_t expected, const char* owner_kind);
  bool SetTagValue(AcDbStub* stub, size_t index, std::string_view value);
  // "LINE 1A2", or "LINE at line 120" in a drawing without handles.
  std::string Describe(const AcDbStub* stub) const;
  std::string Decoded(std::string_view stored) const;

  AcDbImpDatabase& db_;
  bool fix_;
  Eraser eraser_;
  AuditResult result_;
  MissingNames missing_layers_, missing_linetypes_, missing_styles_;
  std::vector<std::pair<AcDbStub*, std::string>> missing_blocks_;  // inserts, block name
};

std::string Hex(uint64_t handle);
// ByLayer, ByBlock and Continuous: every drawing has them, even one whose
// linetype table (files before R13) leaves them out.
bool BuiltInLinetype(std::string_view name);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_AUDITOR_H_
