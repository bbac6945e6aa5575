// The review atlas: findings.json and index.html of a floor's last room
// analysis, written into a folder (docs/review-atlas.md).
#ifndef FLOORXPORT_REVIEW_ATLAS_H_
#define FLOORXPORT_REVIEW_ATLAS_H_

#include <string>

#include "review/review_data.h"

class AcDbDatabase;

namespace fx::rooms {
class CDocData;
}

namespace fx::review {

inline constexpr const char* kFindingsFile = "findings.json";
inline constexpr const char* kPageFile = "index.html";

struct AtlasResult {
  ReviewData review;
  size_t json_bytes = 0;
  size_t page_bytes = 0;
};

// Collects the findings of `data`'s last analysis of `database`, draws the
// floor and writes DIR/findings.json and DIR/index.html, making DIR (and
// its parents) when missing. Each file is written whole beside its target
// and renamed over it only when both were written, so a failure leaves the
// folder's earlier files as they were. `drawing` is the name the page
// shows. False, with *error naming what failed, otherwise true with
// *result filled.
bool WriteAtlas(AcDbDatabase& database, const fx::rooms::CDocData& data, const std::string& drawing,
                const std::string& dir, AtlasResult* result, std::string* error);

}  // namespace fx::review

#endif  // FLOORXPORT_REVIEW_ATLAS_H_
