// The kinds of finding a review reports: the five problem kinds of the room
// analysis, each with the name scripts use for it, its title, what it means
// and the colour that outlines it in the atlas.
#ifndef FLOORXPORT_REVIEW_FINDING_KINDS_H_
#define FLOORXPORT_REVIEW_FINDING_KINDS_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "rooms/doc_data.h"

namespace fx::review {

using fx::rooms::ProblemKind;

struct KindInfo {
  ProblemKind kind;
  const char* id;           // "empty-contour": findings.json, --fail-on, CSS classes
  const char* title;        // "Contours Without Identifiers", the summary's caption
  const char* explanation;  // one sentence under the title
  const char* colour;       // "#RRGGBB" of its outline
};

// In the summary's order, which is the order of the findings. The colours
// are told apart also by readers with a red-green deficiency (after the
// Okabe-Ito palette), each strong enough for a 2-pixel line on white.
inline constexpr std::array<KindInfo, fx::rooms::kProblemKindCount> kKinds = {{
    {ProblemKind::kAreaNotFound, "area-not-found", "Area not found",
     "No room contour holds this room identifier.", "#D55E00"},
    {ProblemKind::kDuplicateNumber, "duplicate-number", "Duplicate Numbers",
     "An earlier room identifier carries the same room name.", "#CC79A7"},
    {ProblemKind::kIntersectedContour, "intersected-contour", "Intersected contours",
     "This room contour overlaps another room contour.", "#E69F00"},
    {ProblemKind::kEmptyContour, "empty-contour", "Contours Without Identifiers",
     "No room identifier lies inside this room contour.", "#0072B2"},
    {ProblemKind::kMultipleIds, "multiple-ids", "Room With Multiple Identifiers",
     "The contour holding this room identifier already holds another one.", "#009E73"},
}};

const KindInfo& Info(ProblemKind kind);
// The kind whose id is `id`; nullopt for any other text.
std::optional<ProblemKind> KindFromId(std::string_view id);

// A set of kinds, as --fail-on names them.
class KindSet {
 public:
  bool contains(ProblemKind kind) const { return bits_ & Bit(kind); }
  bool empty() const { return bits_ == 0; }
  void insert(ProblemKind kind) { bits_ |= Bit(kind); }

 private:
  static unsigned Bit(ProblemKind kind) { return 1u << static_cast<unsigned>(kind); }
  unsigned bits_ = 0;
};

// Reads "any" or a comma-separated list of kind ids ("empty-contour,
// duplicate-number"; blanks around the ids are allowed). False, with
// *error naming the wrong word and the valid ones, for anything else.
bool ParseKindList(std::string_view text, KindSet* kinds, std::string* error);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_FINDING_KINDS_H_
