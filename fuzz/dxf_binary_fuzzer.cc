// Fuzz entry for the DXF reader on binary files: the input is the file after the
// binary sentinel, which is put in front unless the input starts with it already
// (so that whole binary files serve as seeds). Checks as in dxf_checks.h.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dxf_checks.h"
#include "host/dxf/dxf_binary_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  std::string bytes;
  if (!fx::dxf::IsBinaryDxf(input)) bytes = fx::dxf::kBinarySentinel;
  bytes += input;
  fx::fuzz::CheckDxfBytes(bytes);
  return 0;
}
