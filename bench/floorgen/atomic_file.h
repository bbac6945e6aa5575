// Writing a file whole or not at all.
#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>

namespace floorgen {

// Calls `write` with a new temporary file beside `target`, then renames it to
// `target`, replacing any file there (through a symbolic link, the file it
// points to). If `write` throws or the file cannot be completed, the temporary
// file is removed, `target` is left as it was, and the error is passed on.
// Targets that are not regular files, such as devices and pipes, are written
// directly, since they cannot be replaced.
void WriteFileAtomically(const std::filesystem::path& target, const std::function<void(std::FILE*)>& write);

}  // namespace floorgen
