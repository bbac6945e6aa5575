// The section structure of a loaded file: a file cut off inside a section
// is not a drawing. Reading refuses it, or, when asked to recover as the
// editor's RECOVER does, keeps what was read before the cut and closes it.
#ifndef FX_HOST_DXF_DXF_STRUCTURE_H_
#define FX_HOST_DXF_DXF_STRUCTURE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include "host/dxf/dxf_diagnostics.h"

namespace fx::dxf {

class Document;

enum class DamagedFile { kRefuse, kRecover };

// Checks a document just read. A file that ends (without its EOF record)
// inside a section, or that lacks its ENTITIES section and its EOF record
// (cut off between sections), is truncated: with kRefuse the check fails
// with a message naming the line; with kRecover the last record of the
// cut section is dropped (the cut may have left it incomplete), the
// missing closing records (SEQEND, ENDBLK, ENDTAB, ENDSEC, EOF) are added,
// and `sink` hears what was dropped. A section without ENDSEC before a
// present EOF record is tolerated with a warning, as is a missing EOF after
// a complete last section (which recovering adds).
bool CheckStructure(Document& doc, DamagedFile damaged, LoadError* error, DiagnosticSink* sink);

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_STRUCTURE_H_
