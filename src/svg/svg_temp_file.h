// A new file beside a target that replaces the target when committed, for
// saves that must be whole or not at all. Platform code: one
// implementation per platform, chosen by CMake.
#ifndef FLOORXPORT_SVG_SVG_TEMP_FILE_H_
#define FLOORXPORT_SVG_SVG_TEMP_FILE_H_

#include <string>

namespace fx::svg {

class TempFile {
 public:
  // Creates a new, empty file in the target's folder; check ok().
  explicit TempFile(const std::string& target);
  // Removes the new file unless it was committed.
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  bool ok() const { return fd_ >= 0; }
  int fd() const { return fd_; }
  const std::string& path() const { return path_; }
  const std::string& error() const { return error_; }

  // A second descriptor of the file, for a library that closes what it is
  // given (zlib's gzclose); -1 on failure. CloseDuplicate closes one that
  // was not handed over.
  int Duplicate() const;
  static void CloseDuplicate(int fd);
  // Writes all of `size` bytes; false on failure.
  bool Write(const void* data, size_t size);
  // Flushes to disk, closes, and renames over the target; false on failure
  // (the new file is then removed).
  bool Commit();

 private:
  bool Fail(const std::string& what);

  std::string target_;
  std::string path_;
  std::string error_;
  int fd_ = -1;
  bool committed_ = false;
};

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_TEMP_FILE_H_
