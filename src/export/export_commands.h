// The two export commands.
//
// vantoryexport (global name _export): the scriptable export. Prompts
// "\nEnter Export File Path: " (blanks belong to the path; at most 259
// characters; double quotes are removed) and "\nEnter Export File Format: "
// (a keyword: "xml", "planvault", "svg", "drawing" or "svgz", exactly as
// written; anything else prints "\nERROR : Wrong Export File Format."), then
// exports with the flag 0 (questions, not warnings). A cancelled or empty
// answer ends the command without a word. The path is used as typed.
//
// vantoryExportToFile (global name _ExportToFile): the interactive export.
// Shows the save dialog (export_file_dialog.h) with the format last chosen
// ("Export file format") and the drawing's file name without extension,
// gives the path the chosen filter's extension unless it has it (letter
// case ignored: plan.xml with the SVG filter becomes plan.xml.svg, plan.SVG
// stays), asks "%s already exists.\nDo you want to replace it?" (the file
// name without folder; Yes/No, warning) when the file exists, sends
// "_vantoryexport %s\n%s\n" (path, keyword) to the document's command line
// and stores the format's name under "Export file format".
#ifndef FLOORXPORT_EXPORT_EXPORT_COMMANDS_H_
#define FLOORXPORT_EXPORT_EXPORT_COMMANDS_H_

#include <string>

namespace fx::exports {

inline constexpr const char* kPathPrompt = "\nEnter Export File Path: ";
inline constexpr const char* kFormatPrompt = "\nEnter Export File Format: ";
inline constexpr const char* kWrongFormatMessage = "\nERROR : Wrong Export File Format.";
inline constexpr const char* kReplaceQuestion = "%s already exists.\nDo you want to replace it?";

// The command line that ExportToFile sends: "_vantoryexport %s\n%s\n".
std::string ExportCommandLineFor(const std::string& path, const std::string& keyword);

void ExportCommand();       // vantoryexport
void ExportToFileCommand();  // vantoryExportToFile

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_EXPORT_COMMANDS_H_
