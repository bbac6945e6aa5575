// DWG input: a DWG drawing is converted to DXF by tools/dwg2dxf/convert.mjs,
// run under node as a separate process, and the DXF is read by our own
// database. The host never writes DWG.
//
// The converter script is $FLOORXPORT_DWG_CONVERTER when set, else the one of
// the source tree the program was built from (FLOORXPORT_DWG_CONVERTER_DEFAULT,
// set by the build). `node` is looked up on PATH.
#ifndef FLOORXPORT_HOST_DXF_DWG_INPUT_H_
#define FLOORXPORT_HOST_DXF_DWG_INPUT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <vector>

namespace fx::dxf {

// What a drawing read from a DWG went through.
struct DwgSource {
  std::string version;               // "AC1032"
  std::string release;               // "R2018"
  std::vector<std::string> dropped;  // "2 ACAD_TABLE": entities the DXF lacks
  std::vector<std::string> notes;    // the converter's other messages
};

// Whether `first_bytes` (the file's first six or more) start like a DWG:
// "AC10" and two digits ("AC1012" R13 to "AC1032" R2018, older ones too).
bool IsDwgSignature(std::string_view first_bytes);
// The same for the file at `path` (false when it cannot be read).
bool IsDwgFile(const std::string& path);
// Whether a file named `path` would be taken for a DWG: its name ends in
// ".dwg" (any case) or it exists and starts like one. DXF is never written there.
bool IsDwgTarget(const std::string& path);

// Reads the converter's report (its stderr) into *source: JSON lines give the
// version, the dropped entities and notes; plain lines are failure messages,
// joined into *failure with "; ".
void ReadConverterReport(const std::string& output, DwgSource* source, std::string* failure);

// The converter script's path (see above).
std::string DwgConverterScript();

// Converts `dwg_path` to a DXF at `dxf_path`, killing the converter after
// `timeout_seconds`. False with *error when the converter is not installed
// (the message says how to install it), fails, or runs out of time.
bool ConvertDwg(const std::string& dwg_path, const std::string& dxf_path, DwgSource* source,
                std::string* error, int timeout_seconds = 120);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_DWG_INPUT_H_
