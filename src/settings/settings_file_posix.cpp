#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "host/whole_file.h"
#include "settings/reg_file_writer.h"
#include "settings/settings_file.h"

namespace fx::settings {
namespace {

constexpr mode_t kNewFileMode = 0600;
constexpr mode_t kNewDirectoryMode = 0700;  // as the XDG rules ask of the config directory

std::string ErrnoText(const std::string& what) { return what + ": " + std::strerror(errno); }

bool Fail(std::string* failure, std::string message) {
  *failure = std::move(message);
  return false;
}

// Closes the descriptor when it goes out of scope.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) close(fd_);
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

// *exists false for a missing file; false for any other failure.
bool ReadBytes(const std::string& path, std::string* bytes, bool* exists, std::string* failure) {
  FileDescriptor fd(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  // A file below a missing directory, or below a file, does not exist either.
  *exists = fd.get() >= 0 || (errno != ENOENT && errno != ENOTDIR);
  if (fd.get() < 0) return !*exists || Fail(failure, ErrnoText(path));
  struct stat info {};
  if (fstat(fd.get(), &info) != 0) return Fail(failure, ErrnoText(path));
  if (!S_ISREG(info.st_mode)) return Fail(failure, path + ": not a regular file");
  bytes->clear();
  char buffer[16384];
  while (true) {
    const ssize_t got = read(fd.get(), buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Fail(failure, ErrnoText(path));
    if (got == 0) return true;
    bytes->append(buffer, static_cast<size_t>(got));
  }
}

std::string DirectoryOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// mkdir -p for the directory holding `path`.
bool MakeDirectories(const std::string& path, std::string* failure) {
  const std::string directory = DirectoryOf(path);
  for (size_t slash = directory.find('/', 1);; slash = directory.find('/', slash + 1)) {
    const std::string prefix = directory.substr(0, slash);
    if (mkdir(prefix.c_str(), kNewDirectoryMode) != 0 && errno != EEXIST) {
      return Fail(failure, ErrnoText("cannot create " + prefix));
    }
    if (slash == std::string::npos) return true;
  }
}

// The file a symbolic link points to, so that a write replaces the target
// and keeps the link, and every process locks beside the same file. A link
// to a file not yet created is followed too; a path that is no link is
// returned as given.
std::string ResolvedPath(const std::string& path) {
  constexpr int kMaxLinks = 40;  // as the kernel's own limit on a path
  std::string current = path;
  for (int links = 0; links < kMaxLinks; ++links) {
    if (char* resolved = realpath(current.c_str(), nullptr)) {
      std::string result = resolved;
      free(resolved);
      return result;
    }
    struct stat info {};
    if (lstat(current.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return current;
    std::string target(4096, '\0');
    const ssize_t length = readlink(current.c_str(), target.data(), target.size());
    if (length <= 0 || static_cast<size_t>(length) >= target.size()) return current;
    target.resize(static_cast<size_t>(length));
    current = target.starts_with('/') ? target : DirectoryOf(current) + "/" + target;
  }
  return current;
}

}  // namespace

bool LoadSettingsFile(const std::string& path, LoadedSettingsFile* loaded, std::string* failure) {
  std::string bytes;
  *loaded = LoadedSettingsFile{};
  if (!ReadBytes(path, &bytes, &loaded->exists, failure)) return false;
  if (loaded->exists) loaded->file = ParseRegFile(bytes, &loaded->problems);
  return true;
}

bool UpdateSettingsFile(const std::string& given_path,
                        const std::function<bool(LoadedSettingsFile& loaded)>& change,
                        std::string* failure) {
  const std::string path = ResolvedPath(given_path);
  if (!MakeDirectories(path, failure)) return false;
  const std::string lock_path = path + kLockFileSuffix;
  FileDescriptor lock(open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kNewFileMode));
  if (lock.get() < 0) return Fail(failure, ErrnoText("cannot open " + lock_path));
  while (flock(lock.get(), LOCK_EX) != 0) {
    if (errno != EINTR) return Fail(failure, ErrnoText("cannot lock " + lock_path));
  }
  // Read under the lock: what another writer saved a moment ago is in it.
  LoadedSettingsFile loaded;
  if (!LoadSettingsFile(path, &loaded, failure)) return false;
  if (!change(loaded)) return true;
  // Whole or not at all, so a reader that takes no lock never sees a part; then `lock`
  // closes: unlocked.
  return WriteWholeFile(path, FormatRegFile(loaded.file), failure, {.new_file_mode = kNewFileMode});
}

}  // namespace fx::settings
