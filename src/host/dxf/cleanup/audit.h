// AUDIT: checks a drawing's database and, when asked, repairs it.
//
// Checks, each indexed so that the whole audit is one pass per kind of
// record (hash lookups, never a loop over pairs):
// - header: $HANDSEED must be above every handle in use (raised); a drawing
//   changed in memory is saved with the seed its new handles reached;
// - owners (drawings from R13 on): a table record's owner (group 330 before
//   its first subclass marker) must be its table, an entity's the block it
//   is in, an attribute's or vertex's its insert or polyline, BLOCK's and
//   ENDBLK's their block record (corrected); an object's owner must exist
//   (the orphan is erased with what it owns). A missing owner tag is not a
//   problem: the position in the file says the same;
// - references by name: an entity's layer (the layer is created), its
//   linetype (set to ByLayer), the text style of TEXT, MTEXT, ATTDEF and
//   ATTRIB (set to Standard), the block of an INSERT (the insert is
//   erased), a layer's linetype (set to Continuous);
// - dictionaries: an entry naming an object that does not exist (removed).
// Duplicate handles never get this far: such a drawing does not load.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_AUDIT_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_AUDIT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <vector>

class AcDbImpDatabase;

namespace fx::cleanup {

struct AuditProblem {
  std::string message;  // what is wrong: "LINE 1A2: layer \"Walls\" does not exist"
  std::string repair;   // what fixing does: "layer created"
  bool fixed = false;
};

struct AuditResult {
  std::vector<AuditProblem> problems;
  int fixed() const;
};

// With `fix`, repairs each problem as described above.
AuditResult Audit(AcDbImpDatabase& db, bool fix);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_AUDIT_H_
