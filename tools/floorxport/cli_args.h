// Command-line arguments of the floorxport subcommands: options in the order
// given (-c and -s lines run in that order) and positional arguments.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_CLI_ARGS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_CLI_ARGS_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace fx::cli {

// Exit statuses of the program.
constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;  // the work failed: load, command, save
constexpr int kExitUsage = 2;    // the command line is wrong
constexpr int kExitCanceled = 2; // the user cancelled a server exchange

struct OptionDefinition {
  const char* short_name;  // "-c", or nullptr
  const char* long_name;   // "--command"
  bool takes_value;
};

struct ParsedOption {
  const OptionDefinition* definition;
  std::string value;
};

struct ParsedArgs {
  std::vector<ParsedOption> options;  // in the order given
  std::vector<std::string> positional;
};

// Accepts "-c VALUE", "--command VALUE" and "--command=VALUE"; a value is
// taken as is even when it starts with '-'. "--" ends the options. False,
// with *error, for an unknown option or a missing value.
bool ParseArgs(std::span<const std::string> args, std::span<const OptionDefinition> definitions,
               ParsedArgs& parsed, std::string* error);

// True when the option given is `definition`'s (compared by its long name).
bool Is(const ParsedOption& option, const char* long_name);

// The arguments of a subcommand that takes one DRAWING and an optional
// "-o FILE". Returns the exit status to end with when --help was asked
// (usage printed) or the arguments are wrong (reported on stderr); nothing
// when *drawing and *output are set.
std::optional<int> ParseDrawingAndOutput(std::span<const std::string> args, const char* command,
                                         const char* usage, std::string* drawing,
                                         std::optional<std::string>* output);

// Why --save is refused for a DWG drawing (DXF is never written over a DWG).
std::string DwgSaveRefusal(const std::string& drawing);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_CLI_ARGS_H_
