// Fingerprints of findings: a name for a problem that stays the same while
// the drawing keeps its geometry, so a list of accepted problems can be
// kept beside a drawing across saves, purges and changes of handles.
//
// A fingerprint is 16 hexadecimal digits, the 64-bit FNV-1a hash of a
// canonical text:
//   contour      "<kind id>|C|x,y;x,y;..." over its vertices rounded to a
//                grid of kGridUnits, repeated points and the closing point
//                dropped, starting at the least vertex (by x, then y) and
//                running in the direction whose sequence sorts first: the
//                same outline drawn from another start or the other way
//                round has the same text;
//   identifier   "<kind id>|I|name|x,y", its trimmed name and its point.
// Two findings with the same text (a polyline drawn twice over itself) are
// told apart by the occurrence: "#2" is added for the second, and so on.
#ifndef FLOORXPORT_REVIEW_FINGERPRINT_H_
#define FLOORXPORT_REVIEW_FINGERPRINT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/geometry.h"

namespace fx::review {

// The grid coordinates are rounded to, in drawing units.
inline constexpr double kGridUnits = 1e-3;

std::string ContourText(const char* kind_id, const std::vector<AcGePoint2d>& vertices);
std::string IdentifierText(const char* kind_id, const std::string& name, const AcGePoint2d& point);

// 16 lower-case hexadecimal digits of the FNV-1a hash of `text`.
std::string FingerprintOf(const std::string& text);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_FINGERPRINT_H_
