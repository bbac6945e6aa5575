#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <utility>

#include "host/whole_file.h"

namespace fx {
namespace {

std::string DirectoryOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string FileNameOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Eight hex digits, unpredictable enough that two processes with the same
// PID (one in another PID namespace) do not pick the same name; the
// exclusive create settles any collision anyway.
std::string RandomPart() {
  static std::atomic<uint32_t> counter{0};
  uint32_t value = 0;
  if (getentropy(&value, sizeof value) != 0) value = static_cast<uint32_t>(getpid()) * 2654435761u;
  value ^= counter++;
  char text[9];
  std::snprintf(text, sizeof text, "%08x", value);
  return text;
}

// Read once: umask() both reads and sets, so the first caller restores it
// before any other thread can create a file with the wrong mask.
mode_t ProcessUmask() {
  static std::once_flag once;
  static mode_t mask = 022;
  std::call_once(once, [] {
    mask = umask(0);
    umask(mask);
  });
  return mask;
}

bool ProcessIsGone(long pid) {
  return kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH;
}

void SyncDirectory(const std::string& directory) {
  const int fd = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;  // the rename is done; the directory entry's durability is best effort
  fsync(fd);
  close(fd);
}

}  // namespace

int RemoveStaleTemporaryFiles(const std::string& directory) {
  DIR* dir = opendir(directory.c_str());
  if (dir == nullptr) return 0;
  int removed = 0;
  while (const dirent* entry = readdir(dir)) {
    const long owner = TemporaryFileOwner(entry->d_name);
    if (owner == 0 || !ProcessIsGone(owner)) continue;
    if (unlinkat(dirfd(dir), entry->d_name, 0) == 0) ++removed;
  }
  closedir(dir);
  return removed;
}

WholeFile::WholeFile(std::string target, WholeFileOptions options) : target_(std::move(target)) {
  const std::string directory = DirectoryOf(target_);
  RemoveStaleTemporaryFiles(directory);
  struct stat existing {};
  const bool replaces = stat(target_.c_str(), &existing) == 0;
  // Private until its mode is set, so no other user can open it meanwhile.
  for (int attempt = 0; attempt < 100 && fd_ < 0; ++attempt) {
    temporary_ = directory + "/" + TemporaryFileName(FileNameOf(target_), getpid(), RandomPart());
    fd_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd_ < 0 && errno != EEXIST) break;
  }
  if (fd_ < 0) {
    temporary_.clear();
    Fail("cannot create a temporary file in " + directory);
    return;
  }
  const mode_t mode = replaces ? existing.st_mode & 07777 : options.new_file_mode & ~ProcessUmask();
  fchmod(fd_, mode);  // best effort: some file systems keep their own modes
}

WholeFile::~WholeFile() {
  if (fd_ >= 0) close(fd_);
  if (!committed_ && !temporary_.empty()) unlink(temporary_.c_str());
}

bool WholeFile::Fail(const std::string& what) {
  error_ = target_ + ": " + what + ": " + std::strerror(errno);
  return false;
}

bool WholeFile::Write(std::string_view bytes) {
  if (fd_ < 0) return false;
  while (!bytes.empty()) {
    const ssize_t wrote = write(fd_, bytes.data(), bytes.size());
    if (wrote < 0 && errno == EINTR) continue;
    if (wrote == 0) errno = ENOSPC;
    if (wrote <= 0) return Fail("cannot write");
    bytes.remove_prefix(static_cast<size_t>(wrote));
  }
  return true;
}

int WholeFile::Duplicate() const { return fd_ >= 0 ? fcntl(fd_, F_DUPFD_CLOEXEC, 0) : -1; }

void WholeFile::CloseDuplicate(int fd) {
  if (fd >= 0) close(fd);
}

bool WholeFile::Commit() {
  if (fd_ < 0) return false;
  if (fsync(fd_) != 0) return Fail("cannot write");
  const int fd = fd_;
  fd_ = -1;
  if (close(fd) != 0) return Fail("cannot write");
  if (rename(temporary_.c_str(), target_.c_str()) != 0) return Fail("cannot replace the file");
  committed_ = true;
  SyncDirectory(DirectoryOf(target_));
  return true;
}

}  // namespace fx
