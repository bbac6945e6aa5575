// `floorxport studio DRAWING [--port N]`: the drawing in the browser.
#include <cstdio>
#include <string>

#include "cli_args.h"
#include "plugin_modules.h"
#include "server_options.h"
#include "studio/studio_app.h"
#include "subcommands.h"

namespace fx::cli {

const char kStudioUsage[] = R"(Usage: floorxport studio DRAWING [--port N] [options]

Serves DRAWING (DXF, or DWG converted on reading) to a browser on this
machine: the floor drawn from our SVG export with its problems marked, the
"&PlanVault" menu, every dialog as a form, the command line, Save and Save
As. Prints the address to open, which carries a random token; requests
without it, or from another page or host name, are refused. The drawing's
file changes only when you save; a command that fails leaves the drawing as
it was before it. Ctrl-C stops the studio (unsaved changes are lost).

Options:
      --port N               listen on 127.0.0.1:N (default: a free port)
  -h, --help                 show this help
)";

namespace {

constexpr OptionDefinition kStudioOptions[] = {
    {nullptr, "--port", true}, kUserOption, kPasswordFileOption, {"-h", "--help", false}};

}  // namespace

int StudioSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  std::string error;
  const bool ok = ParseArgs(args, kStudioOptions, parsed, &error);
  fx::studio::StudioOptions options;
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(kStudioUsage, stdout);
      std::fputs(kLogInHelp, stdout);
      return kExitOk;
    }
    if (Is(option, "--port")) {
      const std::string& port = option.value;
      if (port.empty() || port.size() > 5 || port.find_first_not_of("0123456789") != std::string::npos ||
          std::stoi(port) > 65535) {
        error = "--port takes a port number, 0 to 65535";
      } else {
        options.port = std::stoi(port);
      }
    }
  }
  if (ok && error.empty() && parsed.positional.size() != 1) {
    error = parsed.positional.empty() ? "studio needs a DRAWING" : "studio takes one DRAWING";
  }
  if (!ok || !error.empty() || !TakeLogIn(parsed, &error)) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport studio --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  options.drawing = parsed.positional.front();
  options.register_modules = RegisterPlugInModules;
  return fx::studio::RunStudio(options, stdout) == 0 ? kExitOk : kExitFailure;
}

}  // namespace fx::cli
