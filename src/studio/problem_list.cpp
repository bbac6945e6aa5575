#include "studio/problem_list.h"

#include <string>

#include "host/database.h"
#include "host/documents.h"
#include "rooms/doc_data.h"
#include "rooms/navigation.h"
#include "rooms/room_record.h"

namespace fx::studio {
namespace {

using fx::rooms::ProblemKind;

struct KindInfo {
  ProblemKind kind;
  const char* key;
  const char* label;
  const char* command;
};

constexpr KindInfo kKinds[] = {
    {ProblemKind::kAreaNotFound, "areaNotFound", "Area not found", "vantoryZoomToNextAreaNotFound"},
    {ProblemKind::kDuplicateNumber, "duplicateNumber", "Duplicate numbers", "vantoryZoomToNextDuplicateNumber"},
    {ProblemKind::kIntersectedContour, "intersectedContour", "Intersected contours",
     "vantoryZoomToNextIntersectContour"},
    {ProblemKind::kEmptyContour, "emptyContour", "Empty contours", "vantoryZoomToNextEmptyContour"},
    {ProblemKind::kMultipleIds, "multipleIds", "Rooms with several identifiers", "vantoryZoomToNextMultiIDs"},
};

std::string HandleText(AcDbObjectId id) {
  if (id.isNull()) return {};
  char text[24];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(id.handle().value()));
  return text;
}

// Null for an entity that cannot be opened (erased since the analysis).
nlohmann::json ProblemJson(AcDbObjectId id) {
  AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
  if (entity.openStatus() != Acad::eOk) return nullptr;
  nlohmann::json problem = {{"handle", HandleText(id)}, {"layer", entity->layer()}, {"name", ""}};
  AcDbExtents box;
  if (entity->getGeomExtents(box) == Acad::eOk && !box.isEmpty()) {
    problem["box"] = {box.minPoint().x, box.minPoint().y, box.maxPoint().x, box.maxPoint().y};
  }
  entity.close();
  fx::rooms::RoomRecord record;
  if (fx::rooms::ReadRoomRecord(id, &record)) problem["name"] = record.name;
  return problem;
}

// A quoted answer for the script: "" stands for one '"'.
std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

}  // namespace

nlohmann::json ProblemListJson() {
  nlohmann::json list = {{"analysed", false}, {"kinds", nlohmann::json::array()}};
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return list;
  fx::rooms::CDocData& data = fx::rooms::DocVars().docData(document);
  list["analysed"] = data.analysed();
  for (const KindInfo& info : kKinds) {
    nlohmann::json problems = nlohmann::json::array();
    for (AcDbObjectId id : data.problems(info.kind)) {
      nlohmann::json problem = ProblemJson(id);
      if (!problem.is_null()) problems.push_back(std::move(problem));
    }
    std::string command = info.command;
    if (info.kind == ProblemKind::kEmptyContour && !problems.empty()) {
      command += " " + Quoted(problems.front()["layer"].get<std::string>());
    }
    list["kinds"].push_back({{"kind", info.key},
                             {"label", info.label},
                             {"command", command},
                             {"visited", HandleText(fx::rooms::Cursors().cursor(info.kind))},
                             {"problems", std::move(problems)}});
  }
  return list;
}

}  // namespace fx::studio
