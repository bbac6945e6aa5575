// OVERKILL: removes duplicate geometry and merges overlapping lines.
//
// Duplicates are entities of the same type and the same properties (layer,
// colour, linetype and its scale, lineweight, visibility, transparency,
// plot style, material and extended data, defaults and stored values alike)
// whose geometry agrees within the tolerance: LINE either way round, ARC,
// CIRCLE, POINT, LWPOLYLINE through the same vertices, bulges and widths
// (either way round; a closed one from any start), TEXT and MTEXT with the
// same contents, style and alignment at the same place, and INSERT without
// attributes. The first in drawing order stays. Entities are grouped by
// type and properties in a hash map; within a group they are sorted by
// geometry and only neighbours within the tolerance are compared.
//
// Overlapping lines: LINEs of the same properties lying on one line in a
// plane parallel to XY (every end point within the tolerance of the other
// line) whose extents overlap by more than the tolerance become one line:
// one that covers them all stays, or the first is stretched over them, and
// the others are erased. Lines that only touch end to end stay apart.
// Candidates are found through a hash grid of direction and offset.
// Lines shorter than 2e4 times the tolerance are only checked as duplicates.
//
// Left alone: entities on locked layers, entities with an extension
// dictionary or reactors (associative geometry), inserts with attributes
// and old-style polylines, and every other entity type.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <vector>

class AcDbImpDatabase;
class AcDbStub;

namespace fx::cleanup {

struct OverkillOptions {
  double tolerance = 1e-6;  // drawing units, for lengths and angles alike
};

struct OverkillResult {
  int duplicates = 0;  // entities erased as copies of another
  int overlaps = 0;    // lines erased because another one now covers them
  int stretched = 0;   // lines lengthened to cover those
};

// `selection`: entities of one block in drawing order (model space for
// "All"); erased ones are skipped.
OverkillResult Overkill(AcDbImpDatabase& db, const std::vector<AcDbStub*>& selection,
                        const OverkillOptions& options);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_H_
