// `floorxport export`: the floor of a drawing in one or more of the five
// export formats, each through the plug-in's _vantoryexport command.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"
#include "export/export_formats.h"
#include "export/exporter.h"
#include "host/editor.h"
#include "run_subcommand.h"
#include "subcommands.h"

namespace fx::cli {

const char kExportUsage[] = R"(Usage: floorxport export DRAWING OUT... [options]

Exports the floor of DRAWING (DXF) to each OUT by running the plug-in's
command _vantoryexport with OUT and the format's keyword as its answers, as
a script would in the editor. The export options are those of the settings
file ("floorxport settings"; "Drawing Position", "Block optimization", ...).
The format of an OUT is --format when given, otherwise its extension:

  .xml        xml        PlanVault v1: floor outline and rooms
  .planvault  planvault  PlanVault v2: floor document with layers and SVG
  .drawing    drawing    PlanVault DRW: the floor document, gzip-compressed
  .svg        svg        the drawing as SVG
  .svgz       svgz       the SVG, gzip-compressed

The floor formats ask "No Floor Area Polyline Found.\nDo you want to
continue?" when the drawing has no floor outline (run floorxport analyze
first) and "Floor Area is zero.\nDo you want to continue?" for an outline
without area; in a batch run they are answered No unless --yes or --answer
says otherwise.

Options:
      --format FORMAT        xml, planvault, drawing, svg or svgz, for every OUT
      --yes, --no            answer Yes/No questions with Yes (or No)
      --answer "QUESTION=ANSWER"
                             answer one question, as floorxport run does
      --recover              load a truncated DRAWING with what was read
                             before the cut, as floorxport run does
  -h, --help                 show this help

Exit status: 0 every file was written; 1 the drawing did not load, or an
export wrote no file (a question answered No, or a failure: the reason is in
the transcript); 2 wrong usage.
)";

namespace {

constexpr OptionDefinition kExportOptions[] = {
    {nullptr, "--format", true}, {nullptr, "--yes", false},  {nullptr, "--no", false},
    {nullptr, "--answer", true}, {nullptr, "--recover", false}, {"-h", "--help", false},
};

// The longest path the command reads (its buffer holds 260 characters).
constexpr size_t kLongestPath = 259;

struct Output {
  std::string path;
  fx::exports::ExportFormat format;
};

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// The format of OUT: --format, else its extension (any letter case).
bool FormatOf(const std::string& path, const std::optional<std::string>& forced, Output& output,
              std::string* error) {
  output.path = path;
  std::string extension = std::filesystem::path(path).extension().string();
  if (!extension.empty()) extension.erase(0, 1);  // the dot
  const std::string keyword = forced ? *forced : Lower(extension);
  const std::optional<fx::exports::ExportFormat> format = fx::exports::FormatOfKeyword(keyword);
  if (!format) {
    *error = forced ? "unknown --format \"" + *forced + "\" (xml, planvault, drawing, svg or svgz)"
                    : "cannot tell the format of \"" + path + "\" from its extension; give --format";
    return false;
  }
  if (path.empty() || path.size() > kLongestPath || path.find_first_of("\"\r\n") != std::string::npos) {
    *error = "\"" + path + "\" cannot be typed to the export command (empty, longer than 259 characters, "
             "or holding a quote or line break)";
    return false;
  }
  output.format = *format;
  return true;
}

bool ReadExportOptions(const ParsedArgs& parsed, RunOptions& options, std::vector<Output>& outputs,
                       std::string* error) {
  if (parsed.positional.size() < 2) {
    *error = parsed.positional.empty() ? "export needs a DRAWING and an OUT file" : "export needs an OUT file";
    return false;
  }
  options.drawing = parsed.positional.front();
  std::optional<std::string> forced;
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--format")) forced = option.value;
  }
  if (!ReadAnswerOptions(parsed, options, error)) return false;
  for (size_t i = 1; i < parsed.positional.size(); ++i) {
    Output output;
    if (!FormatOf(parsed.positional[i], forced, output, error)) return false;
    outputs.push_back(output);
  }
  return true;
}

// The command lines: the command, the path on a line of its own (blanks
// belong to it), the keyword.
void AddExportLines(const std::vector<Output>& outputs, RunOptions& options) {
  for (const Output& output : outputs) {
    options.script.push_back(
        {ScriptItem::kLine, "_vantoryexport\n" + output.path + "\n" + fx::exports::RowOf(output.format).keyword});
  }
}

std::string Bytes(const std::string& path) {
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(path, error);
  if (error) return "?";
  std::string digits = std::to_string(size);
  for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3) digits.insert(static_cast<size_t>(at), ",");
  return digits;
}

// After the commands: where each file went. False when one was not written.
bool PrintExports(size_t expected, std::string* problem) {
  const auto& history = fx::exports::Exporter().history();
  size_t written = 0;
  acutPrintf("\n\nExports:");
  for (const fx::exports::ExportRecord& record : history) {
    const char* keyword = fx::exports::RowOf(record.format).keyword;
    if (record.written) {
      ++written;
      acutPrintf("\n  %-10s %s (%s bytes)", keyword, record.path.c_str(), Bytes(record.path).c_str());
    } else {
      acutPrintf("\n  %-10s %s: not written", keyword, record.path.c_str());
    }
  }
  acutPrintf("\n");
  if (written == expected && history.size() == expected) return true;
  const size_t missing = expected - std::min(written, expected);
  *problem = std::to_string(missing) + (missing == 1 ? " export was" : " exports were") +
             " not written (see the transcript)";
  return false;
}

}  // namespace

int ExportSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, kExportOptions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kExportUsage, stdout);
      return kExitOk;
    }
  }
  RunOptions options;
  std::vector<Output> outputs;
  if (!parsed_ok || !ReadExportOptions(parsed, options, outputs, &error)) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport export --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  AddExportLines(outputs, options);
  fx::exports::Exporter().ClearHistory();
  const size_t expected = outputs.size();
  options.after_script = [expected](std::string* problem) { return PrintExports(expected, problem); };
  return RunDrawing(options);
}

}  // namespace fx::cli
