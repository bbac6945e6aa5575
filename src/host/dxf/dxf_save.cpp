// Atomic save: the drawing is written whole through a WholeFile (host/whole_file.h), which
// replaces the target only once every byte is on disk.
#include <sys/stat.h>

#include "host/dxf/dxf_writer.h"
#include "host/whole_file.h"

namespace fx::dxf {
namespace {

// Buffers small pieces; large ones (unmodified runs of the original file) go straight out.
class FileSink : public ByteSink {
 public:
  explicit FileSink(WholeFile& file) : file_(file) { buffer_.reserve(kBufferSize); }

  bool Append(std::string_view bytes) override {
    if (buffer_.size() + bytes.size() > kBufferSize && !Flush()) return false;
    if (bytes.size() >= kBufferSize) return file_.Write(bytes);
    buffer_.append(bytes);
    return true;
  }

  bool Flush() {
    const bool ok = file_.Write(buffer_);
    buffer_.clear();
    return ok;
  }

 private:
  static constexpr size_t kBufferSize = 1 << 20;

  WholeFile& file_;
  std::string buffer_;
};

}  // namespace

Status SaveAtomic(const Document& doc, const std::string& path, const SaveOptions& options) {
  if (path.empty() || path.back() == '/') return Status::Error(path + ": not a file name");
  struct stat existing {};
  if (stat(path.c_str(), &existing) == 0 && S_ISDIR(existing.st_mode)) {
    return Status::Error(path + ": is a directory");
  }
  WholeFile file(path);
  if (!file.ok()) return Status::Error(file.error());
  FileSink sink(file);
  const Status written = WriteTo(doc, sink, options.as_encoding);
  if (!sink.Flush() || !file.error().empty()) return Status::Error(file.error());
  if (!written.ok()) return Status::Error(path + ": not saved: " + written.message());
  if (!file.Commit()) return Status::Error(file.error());
  return Status::Ok();
}

}  // namespace fx::dxf
