// What every DXF input must satisfy, for the ASCII and the binary fuzz targets:
// - read as it is, it is refused with a message or loaded; what loads writes back
//   byte-identical and converts to the other encoding without crashing;
// - read with recovery, it is refused with a message or loaded; what loads writes
//   without error, and the written file loads again without recovery.
#ifndef FLOORXPORT_FUZZ_DXF_CHECKS_H_
#define FLOORXPORT_FUZZ_DXF_CHECKS_H_

#include <memory>
#include <string>

#include "host/dxf/dxf_document.h"
#include "host/dxf/dxf_writer.h"

namespace fx::fuzz {

inline void CheckAsRead(const std::string& bytes) {
  dxf::LoadError error;
  const std::unique_ptr<dxf::Document> doc = dxf::Document::Parse(bytes, "fuzz", &error);
  if (!doc) {
    if (error.message.empty()) __builtin_trap();
    return;
  }
  std::string written;
  if (!dxf::WriteTo(*doc, &written).ok() || written != bytes) __builtin_trap();
  std::string converted;
  const dxf::Encoding other = doc->encoding() == dxf::Encoding::kAscii ? dxf::Encoding::kBinary
                                                                       : dxf::Encoding::kAscii;
  (void)dxf::WriteTo(*doc, &converted, other);  // may refuse values; must not crash
}

inline void CheckRecovered(const std::string& bytes) {
  dxf::LoadError error;
  const std::unique_ptr<dxf::Document> doc =
      dxf::Document::Parse(bytes, "fuzz", &error, nullptr, dxf::DamagedFile::kRecover);
  if (!doc) {
    if (error.message.empty()) __builtin_trap();
    return;
  }
  std::string written;
  if (!dxf::WriteTo(*doc, &written).ok()) __builtin_trap();
  dxf::LoadError again_error;
  if (!dxf::Document::Parse(written, "fuzz", &again_error)) __builtin_trap();
}

inline void CheckDxfBytes(const std::string& bytes) {
  CheckAsRead(bytes);
  CheckRecovered(bytes);
}

}  // namespace fx::fuzz

#endif  // FLOORXPORT_FUZZ_DXF_CHECKS_H_
