// Hatch boundaries as the host works with them, and hatch patterns clipped
// to them.
#ifndef FLOORXPORT_HOST_DXF_DRAW_HATCH_H_
#define FLOORXPORT_HOST_DXF_DRAW_HATCH_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <vector>

#include "host/db_entities.h"
#include "host/dxf/draw_spline.h"

namespace fx::dxf {

// The most pattern lines (over all line families) drawn for one hatch; a
// denser pattern is not drawn: its boundary is drawn instead, and reported.
inline constexpr size_t kMaxPatternLines = 10000;
// The most dashes drawn for one hatch, for the same fallback.
inline constexpr size_t kMaxPatternDashes = 200000;

// The loops of a hatch with the spline edges kept as curves: splines[i]
// holds, in order, the curves of the spline edges of loops[i], whose
// `points` are samples within `spline_deviation` (see ReadHatchBoundary).
struct HatchBoundary {
  std::vector<AcDbHatchLoop> loops;
  std::vector<std::vector<SplineCurve>> splines;
};

// Reads the boundary loops of a hatch; spline edges are sampled within
// `spline_deviation` (plane units), or within a ten-thousandth of their
// control polygon's size when it is not positive.
HatchBoundary ReadHatchBoundary(const AcDbHatch& hatch, double spline_deviation);

// A loop as a closed polygon in the plane (the first point not repeated),
// curves replaced by chords within `max_deviation`.
std::vector<AcGePoint2d> FlattenLoop(const AcDbHatchLoop& loop,
                                     const std::vector<SplineCurve>& splines, double max_deviation);

// Adds the exact box of a loop mapped by `plane_to_space` (any affine map).
void AddLoopExtents(AcDbExtents& box, const AcDbHatchLoop& loop,
                    const std::vector<SplineCurve>& splines, const AcGeMatrix3d& plane_to_space);

struct PatternDash {
  AcGePoint2d start, end;  // equal for a dot
};

// The dashes of a pattern's line families clipped to the polygons, inside
// by the even-odd rule over all polygons. A line family's lines run at
// family.angle through family.base + k x family.offset for every integer k
// that crosses the polygons' box; each line's dash sequence starts at its
// base point. A point of a line exactly on a polygon edge counts as inside
// only between two crossings: an edge end touching the line counts on the
// side of the edge's other end (half-open rule), so a vertex on a line is
// counted once. Returns false, with `dashes` empty, when the pattern needs
// more than kMaxPatternLines lines or kMaxPatternDashes dashes.
bool ClipPattern(const std::vector<std::vector<AcGePoint2d>>& polygons,
                 const std::vector<AcDbHatchPatternLine>& families, std::vector<PatternDash>& dashes);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAW_HATCH_H_
