#include "atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fx::devserver {
namespace {

[[noreturn]] void Fail(const std::string& path, const char* what, int error) {
  throw std::runtime_error(path + ": " + what + ": " + std::strerror(error));
}

std::string DirectoryOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

void WriteFileAtomically(const std::string& path, std::string_view contents, mode_t mode) {
  std::string temp = path + ".XXXXXX";
  const int fd = mkstemp(temp.data());
  if (fd < 0) Fail(path, "cannot create a temporary file", errno);
  auto abandon = [&](const char* what) {
    const int error = errno;
    close(fd);
    unlink(temp.c_str());
    Fail(path, what, error);
  };
  if (fchmod(fd, mode) != 0) abandon("cannot set permissions");
  for (std::size_t done = 0; done < contents.size();) {
    const ssize_t n = write(fd, contents.data() + done, contents.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) abandon("cannot write");
    done += static_cast<std::size_t>(n);
  }
  if (fsync(fd) != 0) abandon("cannot flush");
  if (close(fd) != 0) {
    const int error = errno;
    unlink(temp.c_str());
    Fail(path, "cannot close", error);
  }
  if (rename(temp.c_str(), path.c_str()) != 0) {
    const int error = errno;
    unlink(temp.c_str());
    Fail(path, "cannot rename the temporary file", error);
  }
  // The rename itself reaches the disk with the directory.
  const int dir = open(DirectoryOf(path).c_str(), O_RDONLY | O_DIRECTORY);
  if (dir >= 0) {
    fsync(dir);
    close(dir);
  }
}

std::string ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) Fail(path, "cannot open", errno);
  std::ostringstream contents;
  contents << in.rdbuf();
  if (in.bad()) Fail(path, "cannot read", errno);
  return std::move(contents).str();
}

}  // namespace fx::devserver
