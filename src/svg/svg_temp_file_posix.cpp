#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "svg/svg_temp_file.h"

namespace fx::svg {

TempFile::TempFile(const std::string& target) : target_(target) {
  std::vector<char> name(target.begin(), target.end());
  const char suffix[] = ".tmpXXXXXX";
  name.insert(name.end(), suffix, suffix + sizeof suffix);  // with the NUL
  fd_ = mkstemp(name.data());
  if (fd_ < 0) {
    Fail("cannot create a file beside it");
    return;
  }
  path_ = name.data();
  // mkstemp makes the file private; an export is an ordinary file.
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(fd_, 0666 & ~mask);
}

TempFile::~TempFile() {
  if (fd_ >= 0) close(fd_);
  if (!committed_ && !path_.empty()) unlink(path_.c_str());
}

bool TempFile::Fail(const std::string& what) {
  error_ = target_ + ": " + what + ": " + std::strerror(errno);
  return false;
}

int TempFile::Duplicate() const { return fd_ >= 0 ? dup(fd_) : -1; }

void TempFile::CloseDuplicate(int fd) {
  if (fd >= 0) close(fd);
}

bool TempFile::Write(const void* data, size_t size) {
  const char* bytes = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t wrote = write(fd_, bytes, size);
    if (wrote < 0 && errno == EINTR) continue;
    if (wrote <= 0) return Fail("cannot write");
    bytes += wrote;
    size -= static_cast<size_t>(wrote);
  }
  return true;
}

bool TempFile::Commit() {
  if (fd_ < 0) return false;
  if (fsync(fd_) != 0) return Fail("cannot write");
  const int fd = fd_;
  fd_ = -1;
  if (close(fd) != 0) return Fail("cannot write");
  if (rename(path_.c_str(), target_.c_str()) != 0) return Fail("cannot replace it");
  committed_ = true;
  return true;
}

}  // namespace fx::svg
