// The parts of OVERKILL (see overkill.h): the candidates both passes share.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_INTERNAL_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_INTERNAL_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <vector>

#include "host/dxf/cleanup/eraser.h"
#include "host/dxf/cleanup/overkill.h"
#include "host/dxf/cleanup/overkill_shape.h"

namespace fx::cleanup {

struct Candidate {
  AcDbStub* stub;
  size_t order;  // position in the selection: the first one stays
  Shape shape;
};

// Erases the later of each pair of duplicates; returns how many went.
int EraseDuplicates(std::vector<Candidate>& candidates, double tolerance, Eraser& eraser);

// Merges overlapping collinear LINEs among the candidates still there.
void MergeOverlaps(AcDbImpDatabase& db, std::vector<Candidate>& candidates, double tolerance,
                   Eraser& eraser, OverkillResult& result);

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_OVERKILL_INTERNAL_H_
