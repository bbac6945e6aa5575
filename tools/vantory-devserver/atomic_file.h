// Whole-or-nothing file writes for the users file and the TLS key: the
// contents go to a temporary file beside the target, are flushed to disk
// and renamed over it, so a reader sees the old file or the new one.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ATOMIC_FILE_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ATOMIC_FILE_H_

#include <sys/types.h>

#include <string>
#include <string_view>

namespace fx::devserver {

// Replaces `path` with `contents`, the file's permissions `mode`. Throws
// std::runtime_error naming the path; on failure the target is unchanged
// and no temporary file is left.
void WriteFileAtomically(const std::string& path, std::string_view contents, mode_t mode);

// The whole file; throws std::runtime_error when it cannot be read.
std::string ReadWholeFile(const std::string& path);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_ATOMIC_FILE_H_
