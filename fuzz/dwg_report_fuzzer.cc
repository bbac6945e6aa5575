// Fuzz entry for the reading of the DWG converter's report (its stderr: JSON
// lines of facts and plain lines of messages). The DXF the converter writes is
// read by the DXF reader, which the DXF targets cover (seeded with converted
// drawings). Every message read must come from the report.
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/dxf/dwg_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string report(reinterpret_cast<const char*>(data), size);
  fx::dxf::DwgSource source;
  std::string failure;
  fx::dxf::ReadConverterReport(report, &source, &failure);
  if (source.version.size() > size || source.release.size() > size) __builtin_trap();
  for (const std::string& note : source.notes) {
    if (note.empty() || note.size() > size) __builtin_trap();
  }
  for (const std::string& dropped : source.dropped) {
    if (dropped.find(' ') == std::string::npos) __builtin_trap();
  }
  return 0;
}
