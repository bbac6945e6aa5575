#ifndef FX_HOST_DXF_DXF_WRITER_H_
#define FX_HOST_DXF_DXF_WRITER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <optional>
#include <string>
#include <string_view>

#include "host/dxf/dxf_diagnostics.h"
#include "host/dxf/dxf_document.h"

namespace fx::dxf {

// Where written bytes go. Append returns false to stop the writer (a failed write).
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual bool Append(std::string_view bytes) = 0;
};

// Writes the file form of a document.
//
// In the document's own encoding, records that are not modified are written as their
// original bytes, together with the head, the prologue and the tail, so an unmodified
// document comes out byte-identical. Modified and new records are formatted like the file:
// its line ends and code padding (ASCII), its one- or two-byte group codes (binary).
//
// In the other encoding every record is formatted from its tags; the head and tail are
// dropped (a binary file gets the binary sentinel). ASCII from binary uses CRLF and padded
// codes; binary from ASCII uses one-byte codes up to AC1009, two-byte codes from AC1012 on.
// Strings go to binary with their caret escapes decoded ("^J" becomes a line feed; see
// dxf_caret.h). Writing fails (with the record's place in the message) on a value the target
// cannot hold: a line break in an ASCII value, a non-number where binary needs a number, an
// integer out of range, a code of unknown type in binary. On failure *out or the sink holds
// part of the file. A record read without its line end (a file cut inside its last value)
// gets one when records follow it.
Status WriteTo(const Document& doc, ByteSink& sink,
               std::optional<Encoding> as_encoding = std::nullopt);
// Appends to *out.
Status WriteTo(const Document& doc, std::string* out,
               std::optional<Encoding> as_encoding = std::nullopt);

struct SaveOptions {
  std::optional<Encoding> as_encoding;  // unset: the document's encoding
};

// Saves to `path` through a temporary file beside it (same directory): written, flushed to
// disk, then renamed over the target, so that readers see the old file or the new one,
// never a part. On any failure the temporary file is removed and the target is untouched.
// An existing target's permission bits are kept; a symbolic link at `path` is replaced by
// the file, not followed.
Status SaveAtomic(const Document& doc, const std::string& path, const SaveOptions& options = {});

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_WRITER_H_
