// The batch manifest: a JSON-lines file with one line per drawing that ended,
// appended and flushed as each ends, so an interrupted batch leaves a valid
// file. The format is described in docs/batch.md.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_MANIFEST_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_MANIFEST_H_

#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "batch_drawings.h"

namespace fx::cli {

// How a drawing's run ended. kSkipped: done by an earlier run with the same
// inputs, not run again.
enum class DrawingStatus { kOk, kFailed, kTimeout, kCrashed, kSkipped };

const char* StatusName(DrawingStatus status);

// A new manifest line for `drawing` run with `args`: drawing, status, input
// and args set; the caller adds what the run measured.
nlohmann::ordered_json ManifestRecord(const BatchDrawing& drawing, DrawingStatus status,
                              const std::vector<std::string>& args);

// The drawings an earlier batch finished with success, by path: their last
// line, which tells whether the inputs were the same.
class ManifestHistory {
 public:
  // Reads `path`; a missing file is an empty history. Lines that are not
  // JSON objects (a line cut by a crash of the batch) are ignored, each
  // with a warning in *warnings.
  void Read(const std::string& path, std::vector<std::string>* warnings);

  // The line that makes `drawing` run with `args` done already, or null.
  const nlohmann::ordered_json* Done(const BatchDrawing& drawing, const std::vector<std::string>& args) const;

 private:
  std::map<std::string, nlohmann::ordered_json> done_;
};

// Appends lines to the manifest, each with one write, so a line is there
// whole or, after a crash of the machine at worst, cut (and then ignored).
class ManifestWriter {
 public:
  ManifestWriter() = default;
  ~ManifestWriter();
  ManifestWriter(const ManifestWriter&) = delete;
  ManifestWriter& operator=(const ManifestWriter&) = delete;

  // Opens `path` for appending, creating it; false with *error.
  bool Open(const std::string& path, std::string* error);
  // False with *error when the line could not be written whole.
  bool Append(const nlohmann::ordered_json& record, std::string* error);

 private:
  int fd_ = -1;
  std::string path_;
};

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_MANIFEST_H_
