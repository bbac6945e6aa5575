#include "export/document_file.h"

#include <zlib.h>

#include <climits>

#include "host/editor.h"
#include "svg/svg_document.h"
#include "svg/svg_temp_file.h"

namespace fx::exports {
namespace {

class FileWriter : public pugi::xml_writer {
 public:
  explicit FileWriter(fx::svg::TempFile& file) : file_(file) {}
  void write(const void* data, size_t size) override {
    if (ok_) ok_ = file_.Write(data, size);
  }
  bool ok() const { return ok_; }

 private:
  fx::svg::TempFile& file_;
  bool ok_ = true;
};

// Streams the text through zlib chunk by chunk; a short write ends the
// writing.
class GzipWriter : public pugi::xml_writer {
 public:
  explicit GzipWriter(gzFile file) : file_(file) {}
  void write(const void* data, size_t size) override {
    const char* bytes = static_cast<const char*>(data);
    while (ok_ && size > 0) {
      const unsigned chunk = size > INT_MAX / 2 ? INT_MAX / 2 : static_cast<unsigned>(size);
      ok_ = gzwrite(file_, bytes, chunk) == static_cast<int>(chunk);
      bytes += chunk;
      size -= chunk;
    }
  }
  bool ok() const { return ok_; }

 private:
  gzFile file_;
  bool ok_ = true;
};

bool Fail(const std::string& reason) {
  acutPrintf("%s", SaveFailureMessage(reason).c_str());
  return false;
}

bool WriteCompressed(const pugi::xml_document& document, fx::svg::TempFile& file, const char* mode,
                     const std::string& path) {
  // zlib gets a descriptor of its own, which gzclose closes; the temporary
  // file keeps its own for the flush and the rename.
  const int fd = file.Duplicate();
  gzFile gz = fd >= 0 ? gzdopen(fd, mode) : nullptr;
  if (gz == nullptr) {
    fx::svg::TempFile::CloseDuplicate(fd);
    return Fail(path + ": cannot start compressing");
  }
  GzipWriter writer(gz);
  fx::svg::WriteDocument(document, writer);
  const bool closed = gzclose(gz) == Z_OK;
  if (!writer.ok() || !closed) return Fail(path + ": cannot write the compressed text");
  return true;
}

}  // namespace

std::string SaveFailureMessage(const std::string& reason) { return "\nPlanVault: Cannot export: " + reason; }

bool SaveDocumentFile(const pugi::xml_document& document, const std::string& path, Compression compression) {
  fx::svg::TempFile file(path);
  if (!file.ok()) return Fail(file.error());
  if (compression == Compression::kNone) {
    FileWriter writer(file);
    fx::svg::WriteDocument(document, writer);
    if (!writer.ok()) return Fail(file.error());
  } else {
    if (!WriteCompressed(document, file, "wb9", path)) return false;
  }
  if (!file.Commit()) return Fail(file.error());
  return true;
}

bool IsLargeDrawingFile(uintmax_t size) { return size > kDrawingWarningSize; }

}  // namespace fx::exports
