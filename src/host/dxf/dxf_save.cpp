// Atomic save: write a temporary file in the target's directory, flush it to disk, rename it
// over the target, then flush the directory so the rename itself survives a crash.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#include "host/dxf/dxf_writer.h"

namespace fx::dxf {
namespace {

// Buffers small pieces; large ones (unmodified runs of the original file) go straight out.
class FileSink : public ByteSink {
 public:
  explicit FileSink(int fd) : fd_(fd) { buffer_.reserve(kBufferSize); }

  bool Append(std::string_view bytes) override {
    if (buffer_.size() + bytes.size() > kBufferSize && !Flush()) return false;
    if (bytes.size() >= kBufferSize) return WriteAll(bytes);
    buffer_.append(bytes);
    return true;
  }

  bool Flush() {
    const bool ok = WriteAll(buffer_);
    buffer_.clear();
    return ok;
  }

  int error() const { return error_; }

 private:
  static constexpr size_t kBufferSize = 1 << 20;

  bool WriteAll(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(fd_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) {
        error_ = written < 0 ? errno : EIO;
        return false;
      }
      bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
  }

  int fd_;
  int error_ = 0;
  std::string buffer_;
};

struct SplitPath {
  std::string directory;
  std::string file_name;
};

SplitPath Split(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return {".", path};
  return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

// Creates "<dir>/.<name>.tmp.<pid>.<n>" exclusively; the umask applies to its mode.
int CreateTemporary(const SplitPath& target, std::string* temp_path) {
  static std::atomic<unsigned> counter{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    *temp_path = target.directory + "/." + target.file_name + ".tmp." + std::to_string(getpid()) +
                 "." + std::to_string(counter++);
    const int fd = open(temp_path->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  errno = EEXIST;
  return -1;
}

void SyncDirectory(const std::string& directory) {
  const int fd = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;  // the rename is done; durability of the directory entry is best effort
  fsync(fd);
  close(fd);
}

}  // namespace

Status SaveAtomic(const Document& doc, const std::string& path, const SaveOptions& options) {
  const SplitPath target = Split(path);
  if (target.file_name.empty()) return Status::Error(path + ": not a file name");
  struct stat existing {};
  const bool target_exists = stat(path.c_str(), &existing) == 0;
  if (target_exists && S_ISDIR(existing.st_mode)) return Status::Error(path + ": is a directory");

  std::string temp_path;
  int fd = CreateTemporary(target, &temp_path);
  if (fd < 0) {
    return Status::Error(path + ": cannot create a temporary file in " + target.directory + ": " +
                         std::strerror(errno));
  }
  const auto fail = [&](const std::string& why) {
    if (fd >= 0) close(fd);
    unlink(temp_path.c_str());
    return Status::Error(path + ": " + why);
  };
  if (target_exists) fchmod(fd, existing.st_mode & 07777);

  FileSink sink(fd);
  const Status written = WriteTo(doc, sink, options.as_encoding);
  const bool flushed = sink.Flush();
  if (sink.error() != 0) return fail(std::string("write failed: ") + std::strerror(sink.error()));
  if (!written.ok()) return fail("not saved: " + written.message());
  if (!flushed) return fail("write failed");
  if (fsync(fd) != 0) return fail(std::string("fsync failed: ") + std::strerror(errno));
  const int closed = close(fd);
  fd = -1;
  if (closed != 0) return fail(std::string("close failed: ") + std::strerror(errno));
  if (rename(temp_path.c_str(), path.c_str()) != 0) {
    return fail(std::string("cannot replace the file: ") + std::strerror(errno));
  }
  SyncDirectory(target.directory);
  return Status::Ok();
}

}  // namespace fx::dxf
