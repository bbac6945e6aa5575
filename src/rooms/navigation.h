// Walking the problems of the last analysis: the five zoom-to-next commands
// and the cursor each of them keeps.
//
// Each command zooms the view to the object after the one it visited last,
// wrapping to the first; the cursors are process-wide (the editor's
// application object keeps them), shared by all documents and kept while the
// plug-in is loaded. The lists are the current document's (CDocData).
#ifndef FLOORXPORT_ROOMS_NAVIGATION_H_
#define FLOORXPORT_ROOMS_NAVIGATION_H_

#include <array>
#include <optional>
#include <vector>

#include "host/ids.h"
#include "rooms/doc_data.h"

namespace fx::rooms {

// The entry of `list` after `cursor`: the first entry when `cursor` is null,
// is the last entry, or is not in the list; nullopt for an empty list.
std::optional<AcDbObjectId> NextProblemObject(const std::vector<AcDbObjectId>& list,
                                              AcDbObjectId cursor);

// The object each kind's command visited last (null when none yet).
class NavigationCursors {
 public:
  AcDbObjectId& cursor(ProblemKind kind) { return cursors_[static_cast<size_t>(kind)]; }
  void Reset() { cursors_ = {}; }

 private:
  std::array<AcDbObjectId, kProblemKindCount> cursors_{};
};

// The plug-in's cursors.
NavigationCursors& Cursors();

// Chooses the next object of `list` for `kind`, stores it as the cursor and
// zooms the current document's view to it (CDocData::ZoomToObject). An empty
// list changes nothing. Returns the object chosen.
std::optional<AcDbObjectId> ZoomToNextProblem(ProblemKind kind,
                                              const std::vector<AcDbObjectId>& list);

// The commands. The four list-walking ones read the current document's
// problem list of their kind. vantoryZoomToNextEmptyContour first asks
// "\nEnter room contours layer: " (an empty answer prints "\nPlease select
// Contour Layer" and ends), then walks the contours of that layer in model
// space that the analysis found empty, in model-space order.
void ZoomToNextAreaNotFound();
void ZoomToNextDuplicateNumber();
void ZoomToNextIntersectContour();
void ZoomToNextMultiIDs();
void ZoomToNextEmptyContour();

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_NAVIGATION_H_
