#ifndef FX_HOST_DXF_DXF_READERS_H_
#define FX_HOST_DXF_DXF_READERS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/dxf/dxf_document.h"

namespace fx::dxf {

// The two file readers. Each fills a fresh document (bytes and name set) with its tags,
// records, head, prologue and tail; false with *error set when the file is broken. A file
// cut off inside a tag fails, unless `damaged` asks to recover: the incomplete tag is then
// dropped with a warning (CheckStructure deals with the records left open).
class AsciiReader {
 public:
  static bool Read(Document& doc, LoadError* error, DiagnosticSink* sink, DamagedFile damaged);
};

class BinaryReader {
 public:
  static bool Read(Document& doc, LoadError* error, DiagnosticSink* sink, DamagedFile damaged);
};

// How many errors of one kind a reader passes to a sink before it keeps quiet.
inline constexpr int kMaxReportedErrors = 100;

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_READERS_H_
