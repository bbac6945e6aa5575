#include "review/findings_json.h"

#include <nlohmann/json.hpp>

namespace fx::review {
namespace {

using nlohmann::ordered_json;

ordered_json Point(const AcGePoint2d& point) { return ordered_json::array({point.x, point.y}); }

// Null for an empty text: "no room", "no contour".
ordered_json TextOrNull(const std::string& text) { return text.empty() ? ordered_json() : ordered_json(text); }

ordered_json FindingJson(const Finding& finding, size_t number) {
  const AcDbExtents box = OutlineBox(finding);
  ordered_json entry;
  entry["number"] = number;
  entry["kind"] = Info(finding.kind).id;
  entry["handle"] = finding.handle;
  entry["layer"] = finding.layer;
  entry["room"] = TextOrNull(finding.room);
  entry["point"] = Point(finding.point);
  entry["contour"] = TextOrNull(finding.contour);
  entry["area"] = finding.area ? ordered_json(*finding.area) : ordered_json();
  entry["box"] = ordered_json::array({box.minPoint().x, box.minPoint().y, box.maxPoint().x, box.maxPoint().y});
  entry["fingerprint"] = finding.fingerprint;
  return entry;
}

// Compact, invalid UTF-8 replaced.
std::string Dump(const ordered_json& value) { return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace); }

}  // namespace

std::string FindingsJson(const ReviewData& review) {
  ordered_json head;
  head["drawing"] = review.drawing;
  head["view"] = {{"min", Point(review.view.min)}, {"max", Point(review.view.max)}};
  head["rooms_identified"] = review.rooms_identified;
  ordered_json counts = ordered_json::object();
  for (const KindInfo& info : kKinds) counts[info.id] = review.count(info.kind);
  head["counts"] = counts;
  // One line per value of the head and per finding: readable, and a diff of
  // two reviews shows the findings that changed.
  std::string text = "{\n";
  for (const auto& [key, value] : head.items()) text += "  " + ordered_json(key).dump() + ": " + Dump(value) + ",\n";
  text += "  \"findings\": [";
  for (size_t i = 0; i < review.findings.size(); ++i) {
    text += (i == 0 ? "\n    " : ",\n    ") + Dump(FindingJson(review.findings[i], i + 1));
  }
  text += review.findings.empty() ? "]\n}\n" : "\n  ]\n}\n";
  return text;
}

}  // namespace fx::review
