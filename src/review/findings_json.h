// findings.json: the findings of a review for scripts and CI jobs
// (docs/review-atlas.md describes every field).
#ifndef FLOORXPORT_REVIEW_FINDINGS_JSON_H_
#define FLOORXPORT_REVIEW_FINDINGS_JSON_H_

#include <string>

#include "review/review_data.h"

namespace fx::review {

// The document's text, indented, ending with a line end. Texts that are no
// valid UTF-8 have the bad bytes replaced by U+FFFD.
std::string FindingsJson(const ReviewData& review);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_FINDINGS_JSON_H_
