// Buffered writer of ASCII DXF group code / value pairs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include "geometry.h"

namespace floorgen {

using Handle = std::uint64_t;

class DxfStream {
 public:
  // Writes to `file`, or, when `file` is null, only counts the bytes that
  // would have been written (used to plan a drawing before writing it).
  explicit DxfStream(std::FILE* file);

  void Text(int code, std::string_view value);
  void Integer(int code, long long value);
  // Fixed notation with up to six decimals (micrometres for millimetre
  // drawings), always with a decimal point.
  void Real(int code, double value);
  void HandleValue(int code, Handle handle);
  // Writes x and y with codes `code` and `code` + 10.
  void Point2(int code, Point point);
  // Writes x, y and z = 0 with codes `code`, `code` + 10 and `code` + 20.
  void Point3(int code, Point point);

  // Hands buffered bytes to the file; throws std::runtime_error on a write error.
  void Flush();
  // Bytes written so far, buffered ones included.
  std::uint64_t ByteCount() const { return flushed_ + used_; }

 private:
  char* Reserve(std::size_t size);
  void Code(int code);
  void EndLine() { buffer_[used_++] = '\n'; }

  std::FILE* file_;
  std::vector<char> buffer_;
  std::size_t used_ = 0;
  std::uint64_t flushed_ = 0;
};

}  // namespace floorgen
