#include "atomic_file.h"

#include <cerrno>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace floorgen {

namespace {

constexpr int kNameAttempts = 16;

std::runtime_error FileError(const std::string& what, const std::filesystem::path& path) {
  return std::runtime_error(what + " " + path.string() + ": " + std::strerror(errno));
}

// Creates a file named after `target` with a random suffix; "x" makes the
// creation fail rather than reuse an existing file.
std::FILE* CreateTemporaryBeside(const std::filesystem::path& target, std::filesystem::path& temporary) {
  std::random_device entropy;
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = target;
    temporary += ".tmp" + std::to_string(entropy());
    if (std::FILE* file = std::fopen(temporary.c_str(), "wbx")) return file;
    if (errno != EEXIST) break;
  }
  throw FileError("cannot create a temporary file for", target);
}

// Flushes and closes `file`; throws if any write to it failed.
void Complete(std::FILE* file, const std::filesystem::path& path) {
  const bool written = std::fflush(file) == 0 && std::ferror(file) == 0;
  const bool closed = std::fclose(file) == 0;
  if (!written || !closed) throw FileError("cannot write", path);
}

void WriteDirectly(const std::filesystem::path& target, const std::function<void(std::FILE*)>& write) {
  std::FILE* file = std::fopen(target.c_str(), "wb");
  if (file == nullptr) throw FileError("cannot open", target);
  try {
    write(file);
  } catch (...) {
    std::fclose(file);
    throw;
  }
  Complete(file, target);
}

}  // namespace

void WriteFileAtomically(const std::filesystem::path& requested, const std::function<void(std::FILE*)>& write) {
  std::error_code ignored;
  const std::filesystem::path target = std::filesystem::exists(requested, ignored)
                                           ? std::filesystem::canonical(requested)
                                           : requested;
  const auto status = std::filesystem::status(target, ignored);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
      !std::filesystem::is_directory(status)) {
    WriteDirectly(target, write);
    return;
  }
  std::filesystem::path temporary;
  std::FILE* file = CreateTemporaryBeside(target, temporary);
  try {
    write(file);
    std::FILE* completed = file;
    file = nullptr;
    Complete(completed, temporary);
    std::filesystem::rename(temporary, target);
  } catch (...) {
    if (file != nullptr) std::fclose(file);
    std::filesystem::remove(temporary, ignored);
    throw;
  }
}

}  // namespace floorgen
