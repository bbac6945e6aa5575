#include "host/dxf/dxf_file_io.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace fx::dxf {

bool ReadWholeFile(const std::string& path, std::string* bytes, std::string* failure) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    *failure = std::strerror(errno);
    return false;
  }
  struct stat info {};
  if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
    *failure = S_ISDIR(info.st_mode) ? "is a directory" : "not a regular file";
    close(fd);
    return false;
  }
  bytes->reserve(static_cast<size_t>(info.st_size));
  AdviseHugePages(bytes->data(), bytes->capacity());
  bytes->resize(static_cast<size_t>(info.st_size));
  size_t done = 0;
  while (done < bytes->size()) {
    const ssize_t got = read(fd, bytes->data() + done, bytes->size() - done);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) {
      *failure = got == 0 ? "file shrank while being read" : std::strerror(errno);
      close(fd);
      return false;
    }
    done += static_cast<size_t>(got);
  }
  close(fd);
  return true;
}

void AdviseHugePages(const void* data, size_t size) {
  constexpr uintptr_t kHugePage = uintptr_t{2} << 20;
  const auto begin = (reinterpret_cast<uintptr_t>(data) + kHugePage - 1) & ~(kHugePage - 1);
  const auto end = (reinterpret_cast<uintptr_t>(data) + size) & ~(kHugePage - 1);
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace fx::dxf
