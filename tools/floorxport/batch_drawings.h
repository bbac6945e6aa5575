// The drawings of a batch: found in a folder or read from a list file, and
// the arguments of the subcommand run for each.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_DRAWINGS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_DRAWINGS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace fx::cli {

struct BatchDrawing {
  std::string path;  // absolute and lexically normal
  std::string stem;  // the file name without its extension
  // The drawing's folder under --out-dir, relative to it; unique in the batch.
  std::string out_key;
  // What identifies this version of the drawing: -1 when it cannot be read
  // (the subcommand then reports why).
  std::int64_t size = -1;
  std::int64_t mtime_ns = -1;
};

// `source` is a folder, walked recursively for .dxf and .dwg files (any case;
// links to files are followed), or a text file with one drawing per line
// (blank lines and lines starting with '#' are skipped; relative paths are
// taken from the current directory). The drawings come sorted by path.
// False with *error when `source` is neither or cannot be read.
bool CollectDrawings(const std::string& source, std::vector<BatchDrawing>* drawings,
                     std::string* error);

// `command` with {drawing}, {stem} and {out} replaced wherever they occur;
// {out} is `out_dir`/out_key.
std::vector<std::string> ExpandCommand(const std::vector<std::string>& command,
                                       const BatchDrawing& drawing, const std::string& out_dir);

// The drawing's folder under `out_dir`.
std::string OutFolder(const BatchDrawing& drawing, const std::string& out_dir);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_DRAWINGS_H_
