#include "cli_args.h"

#include <cstdio>
#include <cstring>

namespace fx::cli {
namespace {

const OptionDefinition* FindDefinition(std::span<const OptionDefinition> definitions,
                                       std::string_view name) {
  for (const OptionDefinition& definition : definitions) {
    if ((definition.short_name != nullptr && name == definition.short_name) ||
        name == definition.long_name) {
      return &definition;
    }
  }
  return nullptr;
}

}  // namespace

bool ParseArgs(std::span<const std::string> args, std::span<const OptionDefinition> definitions,
               ParsedArgs& parsed, std::string* error) {
  bool options_ended = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (options_ended || arg.size() < 2 || arg[0] != '-') {
      parsed.positional.push_back(arg);
      continue;
    }
    if (arg == "--") {
      options_ended = true;
      continue;
    }
    std::string name = arg;
    std::string value;
    size_t equals = arg.find('=');
    const bool inline_value = arg.starts_with("--") && equals != std::string::npos;
    if (inline_value) {
      name = arg.substr(0, equals);
      value = arg.substr(equals + 1);
    }
    const OptionDefinition* definition = FindDefinition(definitions, name);
    if (definition == nullptr) {
      *error = "unknown option " + name;
      return false;
    }
    if (!definition->takes_value && inline_value) {
      *error = "option " + name + " takes no value";
      return false;
    }
    if (definition->takes_value && !inline_value) {
      if (i + 1 == args.size()) {
        *error = "option " + name + " needs a value";
        return false;
      }
      value = args[++i];
    }
    parsed.options.push_back({definition, std::move(value)});
  }
  return true;
}

bool Is(const ParsedOption& option, const char* long_name) {
  return std::strcmp(option.definition->long_name, long_name) == 0;
}

std::optional<int> ParseDrawingAndOutput(std::span<const std::string> args, const char* command,
                                         const char* usage, std::string* drawing,
                                         std::optional<std::string>* output) {
  static constexpr OptionDefinition kOptions[] = {{"-o", "--output", true}, {"-h", "--help", false}};
  ParsedArgs parsed;
  std::string error;
  const bool parsed_ok = ParseArgs(args, kOptions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(usage, stdout);
      return kExitOk;
    }
    if (Is(option, "--output")) *output = option.value;
  }
  if (parsed_ok && parsed.positional.size() != 1) error = std::string(command) + " takes one DRAWING";
  if (!parsed_ok || parsed.positional.size() != 1) {
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport %s --help\" for usage.\n", error.c_str(), command);
    return kExitUsage;
  }
  *drawing = parsed.positional.front();
  return std::nullopt;
}

std::string DwgSaveRefusal(const std::string& drawing) {
  return "--save would write DXF over the DWG drawing " + drawing +
         "; drawings are saved as DXF only: give -o OUT.dxf instead";
}

}  // namespace fx::cli
