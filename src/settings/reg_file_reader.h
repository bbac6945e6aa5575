// Reads the settings file: a registry export file ("Windows Registry Editor
// Version 5.00" or "REGEDIT4"), as the registry editor would import it.
#ifndef FLOORXPORT_SETTINGS_REG_FILE_READER_H_
#define FLOORXPORT_SETTINGS_REG_FILE_READER_H_

#include <string>
#include <string_view>
#include <vector>

#include "settings/reg_file.h"

namespace fx::settings {

struct RegFileProblem {
  int line;  // 1-based; the first line of a value continued over several
  std::string message;
};

constexpr char kRegFileHeader[] = "Windows Registry Editor Version 5.00";

// Never fails: every valid line is taken and every damaged line is skipped
// with one entry in *problems (in line order), so a damaged file reads as far
// as it is valid. Accepts UTF-16LE or UTF-16BE with a byte order mark and
// UTF-8 with or without one (the result's encoding says which; UTF-16BE is
// rewritten as UTF-16LE), CRLF or LF line ends, ";" comment lines, hex values
// continued with a trailing backslash, and the import forms "[-key]" and
// "name"=- which delete what came before them. Repeated keys merge and a
// repeated value replaces the earlier one, as on import. An empty file is a
// valid empty store.
RegFile ParseRegFile(std::string_view bytes, std::vector<RegFileProblem>* problems);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_REG_FILE_READER_H_
