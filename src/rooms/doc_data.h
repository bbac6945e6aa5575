// The plug-in's data of one open document. One CDocData exists per document,
// made when the document first asks for it and dropped when it closes.
#ifndef FLOORXPORT_ROOMS_DOC_DATA_H_
#define FLOORXPORT_ROOMS_DOC_DATA_H_

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/database.h"
#include "host/documents.h"
#include "host/ids.h"

class AcDbDatabase;

namespace fx::rooms {

// The named-object dictionary entry under which a drawing keeps the Vantory
// server and floor it belongs to.
inline constexpr const char* kServerDictionary = "PLANVAULT_DICT_3287";
inline constexpr const char* kServerDataEntry = "PLANVAULT_SERVER_DATA";

// The five kinds of problem the room analysis finds.
enum class ProblemKind { kAreaNotFound, kDuplicateNumber, kIntersectedContour, kEmptyContour, kMultipleIds };
inline constexpr size_t kProblemKindCount = 5;

class CDocData {
 public:
  // The drawing's $TDUUPDATE as it was when the drawing was opened; the
  // default date until then.
  const AcDbDate& lastUpdateDate() const { return last_update_; }
  void setLastUpdateDate(const AcDbDate& date) { last_update_ = date; }

  // The problems of the last analysis, each list in the order the analysis
  // found them; replaced by the next analysis.
  const std::vector<AcDbObjectId>& problems(ProblemKind kind) const { return problems_[Index(kind)]; }
  size_t problemCount(ProblemKind kind) const { return problems(kind).size(); }
  void setProblems(ProblemKind kind, std::vector<AcDbObjectId> ids) { problems_[Index(kind)] = std::move(ids); }
  // Intersecting contour pairs, each stored in both orders.
  const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& intersectingPairs() const { return pairs_; }
  void setIntersectingPairs(std::vector<std::pair<AcDbObjectId, AcDbObjectId>> pairs) { pairs_ = std::move(pairs); }
  // The entities that identified rooms in the last analysis (and markers placed since).
  const std::vector<AcDbObjectId>& roomIds() const { return rooms_; }
  void setRoomIds(std::vector<AcDbObjectId> ids) { rooms_ = std::move(ids); }
  void addRoomId(AcDbObjectId id) { rooms_.push_back(id); }
  // The number of contours that the last analysis matched to an identifier
  // (the rooms identified; "Rooms Identified :" of the summary).
  size_t identifiedRoomCount() const { return identified_rooms_; }
  void setIdentifiedRoomCount(size_t count) { identified_rooms_ = count; }
  // The polyline the last analysis marked as the floor outline; null when
  // the drawing had none.
  AcDbObjectId floorOutline() const { return floor_outline_; }
  void setFloorOutline(AcDbObjectId id) { floor_outline_ = id; }
  // True once an analysis ran to its end; false while one runs and after
  // one ended early (its message printed), until the next one completes.
  bool analysed() const { return analysed_; }
  void setAnalysed(bool analysed) { analysed_ = analysed; }
  // The layers to export, by name, as the export options dialog saved them;
  // nullopt (every layer) until then and after "Set by Drawing".
  const std::optional<std::vector<std::string>>& exportedLayers() const { return exported_layers_; }
  void setExportedLayers(std::optional<std::vector<std::string>> layers) { exported_layers_ = std::move(layers); }

  // Drawing access. Failures print their line ("\nCDocData::GetBlockID = %s")
  // through the editor and return the host's status.
  Acad::ErrorStatus GetBlockID(const char* name, AcDbObjectId& id);  // "*Model_Space" for model space
  Acad::ErrorStatus GetLayerTableID(const char* name, AcDbObjectId& id);
  // Whether the block definition `block` has an attribute definition tagged `tag`.
  Acad::ErrorStatus HasAttribute(AcDbObjectId block, const char* tag, bool& has);
  Acad::ErrorStatus GetAttributeIdByName(AcDbObjectId insert, const char* tag, AcDbObjectId& id);
  Acad::ErrorStatus GetAttributeValue(AcDbObjectId insert, const char* tag, std::string& value);
  // The entity's handle as hexadecimal text; "\nGetEntityHandle = ERROR" when it has none.
  Acad::ErrorStatus GetEntityHandle(AcDbObjectId id, std::string& handle);
  // Appends a new entity to the block `block_name` and closes nothing: the
  // caller closes the entity.
  Acad::ErrorStatus postToDwg(AcDbEntity* entity, AcDbObjectId& id, const char* block_name = "*Model_Space");
  // Is `point` inside the closed polyline `polyline` (a point on an edge is
  // outside; polylines with arcs are refused with their message).
  bool CheckPointForPolylineNew(const AcGePoint3d& point, AcDbObjectId polyline);
  // Zooms the active view to the entity; prints "Can't zoom" on failure.
  void ZoomToObject(AcDbObjectId id);
  // Questions on the command line: the prompt followed by "[Yes/No]:" or
  // "[Block/Text]:"; other answers print "\nYes or No, please." and ask again.
  // False when the input was cancelled.
  bool AskYesNo(const char* prompt, bool& yes);
  bool AskBlockOrText(const char* prompt, bool& block);

 private:
  static size_t Index(ProblemKind kind) { return static_cast<size_t>(kind); }

  AcDbDate last_update_;
  std::array<std::vector<AcDbObjectId>, kProblemKindCount> problems_;
  std::vector<std::pair<AcDbObjectId, AcDbObjectId>> pairs_;
  std::vector<AcDbObjectId> rooms_;
  size_t identified_rooms_ = 0;
  AcDbObjectId floor_outline_;
  bool analysed_ = false;
  std::optional<std::vector<std::string>> exported_layers_;
};

// The data of every open document.
AcApDataManager<CDocData>& DocVars();

// True when `database` is associated with a floor of a Vantory server: its
// named-object dictionary holds the dictionary kServerDictionary with the
// entry kServerDataEntry. False for a null database and when the dictionary
// cannot be read.
bool HasServerFloorAssociation(AcDbDatabase* database);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_DOC_DATA_H_
