// libFuzzer entry point: any input must be rejected with a message or loaded, and whatever
// loads must write back byte-identical and convert to the other encoding without crashing.
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/dxf/dxf_document.h"
#include "host/dxf/dxf_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  fx::dxf::LoadError error;
  const std::unique_ptr<fx::dxf::Document> doc = fx::dxf::Document::Parse(bytes, "fuzz", &error);
  if (!doc) {
    if (error.message.empty()) __builtin_trap();
    return 0;
  }
  std::string written;
  if (!fx::dxf::WriteTo(*doc, &written).ok() || written != bytes) __builtin_trap();
  std::string converted;
  const fx::dxf::Encoding other = doc->encoding() == fx::dxf::Encoding::kAscii
                                      ? fx::dxf::Encoding::kBinary
                                      : fx::dxf::Encoding::kAscii;
  (void)fx::dxf::WriteTo(*doc, &converted, other);  // may refuse values; must not crash
  return 0;
}
