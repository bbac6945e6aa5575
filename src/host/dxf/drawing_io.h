// Reading a drawing file into a database of the headless host, and choosing
// the working database that acdbHostApplicationServices() reports.
#ifndef FLOORXPORT_HOST_DXF_DRAWING_IO_H_
#define FLOORXPORT_HOST_DXF_DRAWING_IO_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <functional>
#include <memory>
#include <string>

#include "host/database.h"
#include "host/dxf/dwg_input.h"
#include "host/dxf/dxf_structure.h"

namespace fx::dxf {

// Receives warnings about a drawing that loaded anyway ("FILE:LINE: ...").
using WarningSink = std::function<void(const std::string& message)>;

// Reads an ASCII or binary DXF file. On failure returns nullptr and sets
// *error to a message naming the file and, where known, the line. A
// truncated file fails unless `damaged` asks to recover what was read
// before the cut (the warnings then say what was dropped).
std::unique_ptr<AcDbDatabase> ReadDrawing(const std::string& path, std::string* error,
                                          const WarningSink& warnings = nullptr,
                                          DamagedFile damaged = DamagedFile::kRefuse);

// Where the drawing was read from a DWG (converted to DXF on reading, see
// dwg_input.h): its version and what the conversion dropped; else nullptr.
// ReadDrawing reads a DWG (recognised by its first bytes) that way; the
// database's filename() is the DWG's path, and saving it writes DXF only.
const DwgSource* DwgSourceOf(const AcDbDatabase& database);

// The database acdbHostApplicationServices()->workingDatabase() returns
// (nullptr for none). The caller keeps it alive while it is set.
void SetWorkingDatabase(AcDbDatabase* database);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DRAWING_IO_H_
