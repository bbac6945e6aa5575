// `floorxport menu`: the menu bar with the plug-in loaded, as a tree.
#include <cstdio>
#include <memory>
#include <string>

#include "cli_args.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/menu_bar.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "plugin_modules.h"
#include "subcommands.h"

namespace fx::cli {

const char kMenuUsage[] = R"(Usage: floorxport menu

Loads the plug-in and prints the menu bar as a tree: each menu and submenu
by its label ('&' marks the mnemonic), each item by its label and, in
double quotes, the macro it sends to the command line (\n is a line end),
and "----" for a separator. No drawing is needed.

Run an item on a drawing with: floorxport run DRAWING --menu "MENU/ITEM"

Options:
  -h, --help             show this help
)";

namespace {

constexpr OptionDefinition kMenuOptions[] = {{"-h", "--help", false}};

}  // namespace

int MenuSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, kMenuOptions, parsed, &error);
  if (parsed_ok && !parsed.options.empty()) {
    std::fputs(kMenuUsage, stdout);
    return kExitOk;
  }
  if (parsed_ok && !parsed.positional.empty()) error = "menu takes no arguments";
  if (!parsed_ok || !parsed.positional.empty()) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport menu --help\" for usage.\n",
                 error.c_str());
    return kExitUsage;
  }
  std::unique_ptr<fx::console::Terminal> terminal = fx::console::MakeProcessTerminal();
  fx::console::Console console(*terminal, fx::console::AnswerPolicy());
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry modules;
  RegisterPlugInModules(modules);
  std::string tree;
  {
    fx::console::HostSession session(runner, modules);
    tree = fx::console::MenuTreeText();
  }
  // Whatever the plug-in said while loading comes before the tree.
  console.Finish();
  terminal->WriteOut(tree);
  for (const std::string& problem : runner.problems()) {
    terminal->WriteErr("floorxport: " + problem + "\n");
  }
  return runner.failed() ? kExitFailure : kExitOk;
}

}  // namespace fx::cli
