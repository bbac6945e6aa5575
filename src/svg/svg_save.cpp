#include "svg/svg_save.h"

#include <zlib.h>

#include <climits>

#include "host/whole_file.h"
#include "svg/svg_document.h"

namespace fx::svg {
namespace {

bool Report(std::string* error, const std::string& message) {
  if (error != nullptr) *error = message;
  return false;
}

// Streams the document's text into the new file in large writes (pugixml
// hands it over a few kilobytes at a time).
class FileWriter : public pugi::xml_writer {
 public:
  explicit FileWriter(WholeFile& file) : file_(file) { buffer_.reserve(kBufferSize); }
  void write(const void* data, size_t size) override {
    if (buffer_.size() + size > kBufferSize) Flush();
    if (size >= kBufferSize) {
      if (ok_) ok_ = file_.Write(std::string_view(static_cast<const char*>(data), size));
      return;
    }
    buffer_.append(static_cast<const char*>(data), size);
  }
  // Writes what is buffered; true when everything so far was written.
  bool Flush() {
    if (ok_ && !buffer_.empty()) ok_ = file_.Write(buffer_);
    buffer_.clear();
    return ok_;
  }

 private:
  static constexpr size_t kBufferSize = 1 << 20;
  WholeFile& file_;
  std::string buffer_;
  bool ok_ = true;
};

// Streams it through zlib; a short write ends the writing.
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

// SaveXmlDocument, the text in `code_page`, of a tree or of a rendered document.
template <typename Document>
bool Save(const Document& document, const std::string& path, const char* gzip_mode, unsigned code_page,
          std::string* error) {
  WholeFile file(path);
  if (!file.ok()) return Report(error, file.error());
  if (gzip_mode == nullptr) {
    FileWriter writer(file);
    WriteDocument(document, writer, code_page);
    if (!writer.Flush()) return Report(error, file.error());
  } else {
    // zlib gets its own descriptor: gzclose closes it, the file keeps its
    // own for the flush to disk and the rename.
    const int fd = file.Duplicate();
    gzFile gz = fd >= 0 ? gzdopen(fd, gzip_mode) : nullptr;
    if (gz == nullptr) {
      WholeFile::CloseDuplicate(fd);
      return Report(error, path + ": cannot start compressing");
    }
    GzipWriter writer(gz);
    WriteDocument(document, writer, code_page);
    const bool closed = gzclose(gz) == Z_OK;
    if (!writer.ok() || !closed) return Report(error, path + ": cannot write the compressed text");
  }
  if (!file.Commit()) return Report(error, file.error());
  return true;
}

}  // namespace

bool SaveXmlDocument(const pugi::xml_document& document, const std::string& path, const char* gzip_mode,
                     std::string* error) {
  return Save(document, path, gzip_mode, kCodePageUtf8, error);
}

bool SaveSvg(const SvgText& document, const std::string& path, std::string* error) {
  return Save(document, path, nullptr, kCodePageUtf8, error);
}

bool SaveSvgz(const SvgText& document, const std::string& path, std::string* error, unsigned code_page) {
  return Save(document, path, "wb6f", code_page, error);
}

}  // namespace fx::svg
