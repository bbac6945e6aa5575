#include "review/fingerprint.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fx::review {
namespace {

using GridPoint = std::pair<long long, long long>;

GridPoint OnGrid(const AcGePoint2d& point) {
  return {std::llround(point.x / kGridUnits), std::llround(point.y / kGridUnits)};
}

void Append(std::string& text, const GridPoint& point) {
  text += std::to_string(point.first);
  text += ',';
  text += std::to_string(point.second);
}

// The ring's points from `start`, forwards or backwards.
std::vector<GridPoint> Walk(const std::vector<GridPoint>& ring, size_t start, bool forwards) {
  std::vector<GridPoint> walk;
  walk.reserve(ring.size());
  const size_t n = ring.size();
  for (size_t i = 0; i < n; ++i) walk.push_back(ring[forwards ? (start + i) % n : (start + n - i) % n]);
  return walk;
}

// The least of the walks from each least vertex in both directions.
std::vector<GridPoint> Canonical(const std::vector<GridPoint>& ring) {
  if (ring.empty()) return ring;
  const GridPoint least = *std::min_element(ring.begin(), ring.end());
  std::vector<GridPoint> best;
  for (size_t start = 0; start < ring.size(); ++start) {
    if (ring[start] != least) continue;
    for (bool forwards : {true, false}) {
      std::vector<GridPoint> walk = Walk(ring, start, forwards);
      if (best.empty() || walk < best) best = std::move(walk);
    }
  }
  return best;
}

}  // namespace

std::string ContourText(const char* kind_id, const std::vector<AcGePoint2d>& vertices) {
  std::vector<GridPoint> ring;
  for (const AcGePoint2d& vertex : vertices) {
    const GridPoint point = OnGrid(vertex);
    if (ring.empty() || ring.back() != point) ring.push_back(point);
  }
  while (ring.size() > 1 && ring.back() == ring.front()) ring.pop_back();
  std::string text = std::string(kind_id) + "|C|";
  for (const GridPoint& point : Canonical(ring)) {
    Append(text, point);
    text += ';';
  }
  return text;
}

std::string IdentifierText(const char* kind_id, const std::string& name, const AcGePoint2d& point) {
  std::string text = std::string(kind_id) + "|I|" + name + "|";
  Append(text, OnGrid(point));
  return text;
}

std::string FingerprintOf(const std::string& text) {
  uint64_t hash = 0xcbf29ce484222325ULL;
  for (unsigned char c : text) {
    hash ^= c;
    hash *= 0x100000001b3ULL;
  }
  static const char kDigits[] = "0123456789abcdef";
  std::string hex(16, '0');
  for (int i = 15; i >= 0; --i, hash >>= 4) hex[static_cast<size_t>(i)] = kDigits[hash & 0xF];
  return hex;
}

}  // namespace fx::review
