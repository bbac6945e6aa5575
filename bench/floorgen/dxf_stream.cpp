#include "dxf_stream.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <stdexcept>
#include <string>

namespace floorgen {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;
// Longest formatted number or handle, with its line end, including margin.
constexpr std::size_t kMaxNumberLength = 48;

}  // namespace

DxfStream::DxfStream(std::FILE* file) : file_(file), buffer_(kBufferSize) {}

char* DxfStream::Reserve(std::size_t size) {
  if (used_ + size > buffer_.size()) {
    Flush();
    if (size > buffer_.size()) buffer_.resize(size);
  }
  return buffer_.data() + used_;
}

void DxfStream::Flush() {
  if (file_ != nullptr && used_ > 0 && std::fwrite(buffer_.data(), 1, used_, file_) != used_) {
    throw std::runtime_error(std::string("cannot write output: ") + std::strerror(errno));
  }
  flushed_ += used_;
  used_ = 0;
}

void DxfStream::Code(int code) {
  // Group codes are right-aligned in three columns, as CAD programs write them.
  char* out = Reserve(kMaxNumberLength);
  const char* start = out;
  if (code < 10) {
    *out++ = ' ';
    *out++ = ' ';
  } else if (code < 100) {
    *out++ = ' ';
  }
  out = std::to_chars(out, out + 8, code).ptr;
  used_ += static_cast<std::size_t>(out - start);
  EndLine();
}

void DxfStream::Text(int code, std::string_view value) {
  Code(code);
  char* out = Reserve(value.size() + 1);
  std::memcpy(out, value.data(), value.size());
  used_ += value.size();
  EndLine();
}

void DxfStream::Integer(int code, long long value) {
  Code(code);
  char* out = Reserve(kMaxNumberLength);
  used_ += static_cast<std::size_t>(std::to_chars(out, out + kMaxNumberLength, value).ptr - out);
  EndLine();
}

void DxfStream::Real(int code, double value) {
  Code(code);
  char* out = Reserve(kMaxNumberLength + 320);  // fixed notation of any double fits
  char* end = std::to_chars(out, out + kMaxNumberLength + 320, value, std::chars_format::fixed, 6).ptr;
  // Drop trailing zeros but keep one decimal ("12.500000" -> "12.5", "3.000000" -> "3.0").
  while (end[-1] == '0' && end[-2] != '.') --end;
  if (end - out == 4 && std::memcmp(out, "-0.0", 4) == 0) {
    std::memcpy(out, "0.0", 3);
    end = out + 3;
  }
  used_ += static_cast<std::size_t>(end - out);
  EndLine();
}

void DxfStream::HandleValue(int code, Handle handle) {
  Code(code);
  char* out = Reserve(kMaxNumberLength);
  char* end = std::to_chars(out, out + kMaxNumberLength, handle, 16).ptr;
  for (char* c = out; c != end; ++c) {
    if (*c >= 'a' && *c <= 'f') *c = static_cast<char>(*c - 'a' + 'A');
  }
  used_ += static_cast<std::size_t>(end - out);
  EndLine();
}

void DxfStream::Point2(int code, Point point) {
  Real(code, point.x);
  Real(code + 10, point.y);
}

void DxfStream::Point3(int code, Point point) {
  Point2(code, point);
  Real(code + 20, 0.0);
}

}  // namespace floorgen
