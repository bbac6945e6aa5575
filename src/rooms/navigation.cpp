#include "rooms/navigation.h"

#include <algorithm>
#include <unordered_set>

#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"

namespace fx::rooms {
namespace {

// acedGetString answers are read into buffers of this size, as in the
// analysis command.
constexpr size_t kAnswerSize = 133;

void ZoomToNextInList(ProblemKind kind) {
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return;
  ZoomToNextProblem(kind, DocVars().docData(document).problems(kind));
}

// The entities of model space on `layer` that `problems` lists, in
// model-space order.
std::vector<AcDbObjectId> ContoursOnLayer(AcDbObjectId model_space, AcDbObjectId layer,
                                          const std::vector<AcDbObjectId>& problems) {
  std::vector<AcDbObjectId> contours;
  const std::unordered_set<AcDbObjectId> listed(problems.begin(), problems.end());
  AcDbObjectPointer<AcDbBlockTableRecord> block(model_space, AcDb::kForRead);
  if (block.openStatus() != Acad::eOk) {
    acutPrintf("\npModelSpace.openStatus = %s", Acad::acadErrorStatusText(block.openStatus()));
    return contours;
  }
  for (AcDbObjectId id : block->entityIds()) {
    if (!listed.contains(id)) continue;
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() == Acad::eOk && entity->layerId() == layer) contours.push_back(id);
  }
  return contours;
}

}  // namespace

std::optional<AcDbObjectId> NextProblemObject(const std::vector<AcDbObjectId>& list,
                                              AcDbObjectId cursor) {
  if (list.empty()) return std::nullopt;
  if (cursor.isNull()) return list.front();
  auto found = std::find(list.begin(), list.end(), cursor);
  if (found == list.end() || std::next(found) == list.end()) return list.front();
  return *std::next(found);
}

NavigationCursors& Cursors() {
  static NavigationCursors cursors;
  return cursors;
}

std::optional<AcDbObjectId> ZoomToNextProblem(ProblemKind kind,
                                              const std::vector<AcDbObjectId>& list) {
  AcDbObjectId& cursor = Cursors().cursor(kind);
  std::optional<AcDbObjectId> next = NextProblemObject(list, cursor);
  if (!next) return std::nullopt;
  cursor = *next;
  DocVars().docData().ZoomToObject(*next);
  return next;
}

void ZoomToNextAreaNotFound() { ZoomToNextInList(ProblemKind::kAreaNotFound); }
void ZoomToNextDuplicateNumber() { ZoomToNextInList(ProblemKind::kDuplicateNumber); }
void ZoomToNextIntersectContour() { ZoomToNextInList(ProblemKind::kIntersectedContour); }
void ZoomToNextMultiIDs() { ZoomToNextInList(ProblemKind::kMultipleIds); }

void ZoomToNextEmptyContour() {
  char layer_name[kAnswerSize] = "";
  if (acedGetString(1, "\nEnter room contours layer: ", layer_name, sizeof layer_name) != RTNORM) {
    return;
  }
  if (layer_name[0] == '\0') {
    acutPrintf("\nPlease select Contour Layer");
    return;
  }
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return;
  CDocData& data = DocVars().docData(document);
  AcDbObjectId layer;
  AcDbObjectId model_space;
  if (data.GetLayerTableID(layer_name, layer) != Acad::eOk) return;
  if (data.GetBlockID(AcDbBlockTableRecord::kModelSpace, model_space) != Acad::eOk) return;
  ZoomToNextProblem(ProblemKind::kEmptyContour,
                    ContoursOnLayer(model_space, layer, data.problems(ProblemKind::kEmptyContour)));
}

}  // namespace fx::rooms
