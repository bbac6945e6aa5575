#include "host/dxf/cleanup/overkill.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>

#include "host/dxf/cleanup/overkill_internal.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {
namespace {

constexpr int64_t kLayerLocked = 4;

bool OnLockedLayer(AcDbImpDatabase& db, fx::dxf::TagRange tags) {
  std::string_view layer = "0";
  for (size_t i = 1; i < tags.size() && tags[i].code != 1001; ++i) {
    if (tags[i].code == 8) {
      layer = fx::dxf::TrimBlanks(tags[i].value);
      break;
    }
  }
  AcDbStub* record = db.FindSymbol("LAYER", layer);
  if (record == nullptr) return false;
  fx::dxf::TagList layer_tags = db.TagsOf(record);
  return (layer_tags.GetInt(70, layer_tags.Body(), 0) & kLayerLocked) != 0;
}

bool Agree(const std::vector<double>& a, const std::vector<double>& b, double tolerance) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::abs(a[i] - b[i]) > tolerance) return false;
  return true;
}

}  // namespace

int EraseDuplicates(std::vector<Candidate>& candidates, double tolerance, Eraser& eraser) {
  std::unordered_map<std::string, std::vector<Candidate*>> groups;
  for (Candidate& candidate : candidates) groups[candidate.shape.key].push_back(&candidate);
  int erased = 0;
  for (auto& [key, group] : groups) {
    if (group.size() < 2) continue;
    std::sort(group.begin(), group.end(),
              [](const Candidate* a, const Candidate* b) { return a->shape.values < b->shape.values; });
    // Sorted by the first number: the copies of one within the tolerance
    // follow it closely, and the scan stops at the first one beyond.
    for (size_t i = 0; i < group.size(); ++i) {
      Candidate* first = group[i];
      for (size_t j = i + 1; j < group.size() && !first->stub->erased; ++j) {
        Candidate* second = group[j];
        if (!second->shape.values.empty() && !first->shape.values.empty() &&
            second->shape.values[0] - first->shape.values[0] > tolerance) {
          break;
        }
        if (second->stub->erased || !Agree(first->shape.values, second->shape.values, tolerance)) continue;
        Candidate* later = first->order < second->order ? second : first;
        if (eraser.EraseEntity(later->stub)) ++erased;
      }
    }
  }
  return erased;
}

OverkillResult Overkill(AcDbImpDatabase& db, const std::vector<AcDbStub*>& selection,
                        const OverkillOptions& options) {
  const double tolerance = std::max(options.tolerance, 0.0);
  std::vector<Candidate> candidates;
  candidates.reserve(selection.size());
  for (size_t order = 0; order < selection.size(); ++order) {
    AcDbStub* stub = selection[order];
    if (stub == nullptr || stub->erased || stub->record == fx::dxf::kNoRecord) continue;
    auto tags = db.document().tags(stub->record);
    if (OnLockedLayer(db, tags)) continue;
    std::optional<Shape> shape = ShapeOf(db.document().type(stub->record), tags, tolerance);
    if (shape) candidates.push_back({stub, order, std::move(*shape)});
  }
  Eraser eraser(db);
  OverkillResult result;
  result.duplicates = EraseDuplicates(candidates, tolerance, eraser);
  MergeOverlaps(db, candidates, tolerance, eraser, result);
  return result;
}

}  // namespace fx::cleanup
