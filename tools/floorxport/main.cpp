// floorxport: the command-line program. It reads the subcommand and hands
// the rest to it; this is the exception firewall of the program.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "cli_args.h"
#include "settings/settings_diagnostics.h"
#include "settings/settings_command.h"
#include "settings/settings_path.h"
#include "subcommands.h"

namespace {

struct Subcommand {
  const char* name;
  const char* summary;
  int (*run)(std::span<const std::string> args);
};

constexpr Subcommand kSubcommands[] = {
    {"run", "load a drawing, run command lines, save when asked", fx::cli::RunSubcommand},
    {"analyze", "identify the rooms of a drawing and print what was found",
     fx::cli::AnalyzeSubcommand},
    {"review", "analyse a drawing's rooms and write an atlas of every problem",
     fx::cli::ReviewSubcommand},
    {"export", "export the floor as XML, floor documents or SVG", fx::cli::ExportSubcommand},
    {"info", "print a drawing's version, units, extents, layers and entities",
     fx::cli::InfoSubcommand},
    {"convert", "save a DWG (or DXF) drawing as DXF", fx::cli::ConvertSubcommand},
    {"menu", "print the menu bar with the plug-in's menu and each item's macro",
     fx::cli::MenuSubcommand},
    {"rooms", "print the room list of an analysed drawing, write its report",
     fx::cli::RoomsSubcommand},
    {"floors", "list the buildings and floors of a Vantory server", fx::cli::FloorsSubcommand},
    {"open", "download a floor's drawing from a Vantory server and open it",
     fx::cli::OpenSubcommand},
    {"send", "send a drawing and its floor document to a floor of a Vantory server",
     fx::cli::SendSubcommand},
    {"occupants", "show a floor's rooms, types and users from a Vantory server in the drawing",
     fx::cli::OccupantsSubcommand},
    {"servers", "print the server list, or add a server to it", fx::cli::ServersSubcommand},
    {"batch", "run a command over many drawings, several at a time, with a manifest",
     fx::cli::BatchSubcommand},
    {"studio", "serve a drawing to the browser: floor, menu, dialogs, problems", fx::cli::StudioSubcommand},
    {"settings", "list the plug-in's settings, or set one",
     [](std::span<const std::string> args) {
       return fx::settings::RunSettingsCommand({args.begin(), args.end()}, std::cout, std::cerr);
     }},
};

void PrintUsage(std::FILE* stream) {
  std::fputs(
      "Usage: floorxport COMMAND [arguments]\n"
      "\n"
      "Floor plans from DXF drawings: the plug-in's commands, run headless.\n"
      "\n"
      "Commands:\n",
      stream);
  for (const Subcommand& subcommand : kSubcommands) {
    std::fprintf(stream, "  %-9s %s\n", subcommand.name, subcommand.summary);
  }
  std::fputs(
      "\n"
      "Run \"floorxport COMMAND --help\" for a command's options.\n"
      "Options: -h, --help (this text), --version,\n"
      "         --settings FILE (the settings file; also FLOORXPORT_SETTINGS)\n",
      stream);
}

int Dispatch(std::vector<std::string> args) {
  // Options of the program as a whole come before the subcommand.
  while (args.size() >= 2 && args.front() == "--settings") {
    fx::settings::SetSettingsFilePath(args[1]);
    args.erase(args.begin(), args.begin() + 2);
  }
  if (args.empty()) {
    PrintUsage(stderr);
    return fx::cli::kExitUsage;
  }
  const std::string& name = args.front();
  if (name == "-h" || name == "--help") {
    PrintUsage(stdout);
    return fx::cli::kExitOk;
  }
  if (name == "--version") {
    std::printf("floorxport %s\n", FX_VERSION);
    return fx::cli::kExitOk;
  }
  for (const Subcommand& subcommand : kSubcommands) {
    if (name == subcommand.name) return subcommand.run(std::span(args).subspan(1));
  }
  std::fprintf(stderr, "floorxport: unknown command \"%s\"\nRun \"floorxport --help\" for usage.\n",
               name.c_str());
  return fx::cli::kExitUsage;
}

}  // namespace

int main(int argc, char** argv) {
  // A closed pipe (floorxport ... | head) ends the writes, not the process.
  std::signal(SIGPIPE, SIG_IGN);
  fx::settings::SetSettingsDiagnostics(
      [](const std::string& message) { std::fprintf(stderr, "floorxport: %s\n", message.c_str()); });
  try {
    return Dispatch(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::exception& error) {
    std::fflush(stdout);
    std::fprintf(stderr, "\nfloorxport: internal error: %s\n", error.what());
  } catch (...) {
    std::fflush(stdout);
    std::fputs("\nfloorxport: internal error\n", stderr);
  }
  return fx::cli::kExitFailure;
}
