// Fuzz entry for the DXF reader on text files: the input is the file (dxf_checks.h).
#include <cstddef>
#include <cstdint>
#include <string>

#include "dxf_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fx::fuzz::CheckDxfBytes(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
