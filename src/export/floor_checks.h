// The floor checks both floor writers make before they write: a floor
// outline must exist and enclose an area. In strict mode (automated
// callers) a failed check shows a warning and stops the export; otherwise
// it asks whether to go on.
//
//   no floor outline, strict:  "No Floor Area Found."                (OK)
//   no floor outline:          "No Floor Area Polyline Found.\nDo you want to continue?"
//   zero area, strict:         "Floor Area is zero."                 (OK)
//   zero area:                 "Floor Area is zero.\nDo you want to continue?"
//
// Every box is a warning (MB_ICONWARNING); the questions are Yes/No.
#ifndef FLOORXPORT_EXPORT_FLOOR_CHECKS_H_
#define FLOORXPORT_EXPORT_FLOOR_CHECKS_H_

namespace fx::exports {

inline constexpr const char* kNoFloorWarning = "No Floor Area Found.";
inline constexpr const char* kNoFloorQuestion = "No Floor Area Polyline Found.\nDo you want to continue?";
inline constexpr const char* kZeroAreaWarning = "Floor Area is zero.";
inline constexpr const char* kZeroAreaQuestion = "Floor Area is zero.\nDo you want to continue?";

// An area counts as zero when its absolute value is at most 1e-6.
bool IsZeroArea(double area);

// Whether the export goes on, asking or warning as above. `floor_found`:
// the drawing has a floor outline; `area`: its area (not read otherwise).
bool CheckFloor(bool floor_found, double area, bool strict);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_FLOOR_CHECKS_H_
