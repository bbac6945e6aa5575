// The subcommands that talk to a Vantory server: floors (list buildings and
// floors), open (Open from), send (Send to), occupants (Update Vantory
// Attributes) and servers (the server list). open, send and occupants run
// the plug-in's commands with their dialogs answered from the options, as a
// script would in the editor.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"
#include "host/editor.h"
#include "run_subcommand.h"
#include "server/download_file.h"
#include "server/occupant_import.h"
#include "server/workflow_result.h"
#include "server/server_address.h"
#include "server/server_list.h"
#include "server/service_calls.h"
#include "server/service_errors.h"
#include "server_options.h"
#include "subcommands.h"

namespace fx::cli {

const char kFloorsUsage[] = R"(Usage: floorxport floors --server URL [--json] [options]
Lists the buildings of a Vantory server with their floors: each floor's id,
name, area and whether a drawing is stored for it. A listing that succeeds
adds the server to the server list and makes it the last used server.
Options:
      --server URL           the server ("https://" is assumed without a scheme)
      --json                 print the listing as JSON
)";

const char kOpenUsage[] = R"(Usage: floorxport open [--server URL] [--floor ID] [-o DIR] [options]
Open from Vantory: downloads the drawing stored for a floor into DIR (the
current directory by default) as BUILDING_FLOOR.dxf (or .dwg), then opens it
and imports the floor's occupants into it (as floorxport occupants does; it
logs in, so a batch run gives --user and --password-file). Without --floor
the floor dialog is shown on the terminal; without --server the last used
server is taken.
Options:
      --server URL           the server
      --floor ID             the floor's id (see floorxport floors)
  -o, --output DIR           the folder of the downloaded drawing
)";

const char kSendUsage[] = R"(Usage: floorxport send DRAWING [--server URL] [--floor ID] [--notes TEXT] [options]
Send to Vantory: saves DRAWING (in place: it records the server and floor
in it), exports its floor document (.drawing) and uploads both to the floor.
Without --server the server the drawing was last sent to is taken; without
--floor the floor dialog is shown on the terminal.
Options:
      --server URL           the server
      --floor ID             the floor's id (see floorxport floors)
      --notes TEXT           the drawing notes stored with the upload
)";

const char kOccupantsUsage[] =
    R"(Usage: floorxport occupants DRAWING [--server URL] [--floor ID] [-o OUT.dxf | --save] [options]
Update Vantory Attributes: asks the server for the rooms of the drawing's
floor with their type, cost center and users, and shows them on the rooms
of the drawing (identified before with analyze) as inserts of the block
VANTORY-IMPORT-ATTRIBUTES-BLOCK on the layer !VANTORYIMPORT, replacing an
earlier import. Prints how many rooms were updated, the server's rooms the
drawing lacks, and how many drawing rooms got no data. Without --server and
--floor, those the drawing was last sent to (or opened from) are taken.
The drawing is saved only with -o or --save, and only when the import
succeeded. Exit status: 0 success, 1 failure (nothing saved).
Options:
      --server URL           the server
      --floor ID             the floor's id (see floorxport floors)
  -o, --output OUT.dxf       save the drawing to OUT.dxf
      --save                 save over DRAWING
)";

const char kServersUsage[] = R"(Usage: floorxport servers [add URL]
Prints the server list (one address a line; the last used one is marked
"*"), or adds URL to it as the site chooser would.
)";

namespace {

constexpr OptionDefinition kFloorsOptions[] = {
    {nullptr, "--server", true}, {nullptr, "--json", false}, kUserOption, kPasswordFileOption, kTlsVerifyOption, kCaFileOption,
    {"-h", "--help", false}};
constexpr OptionDefinition kOpenOptions[] = {
    {nullptr, "--server", true}, {nullptr, "--floor", true}, {"-o", "--output", true},
    kUserOption, kPasswordFileOption, kTlsVerifyOption, kCaFileOption, {"-h", "--help", false}};
constexpr OptionDefinition kOccupantsOptions[] = {
    {nullptr, "--server", true}, {nullptr, "--floor", true}, {"-o", "--output", true},
    {nullptr, "--save", false}, kUserOption, kPasswordFileOption, kTlsVerifyOption, kCaFileOption, {"-h", "--help", false}};
constexpr OptionDefinition kSendOptions[] = {
    {nullptr, "--server", true}, {nullptr, "--floor", true}, {nullptr, "--notes", true},
    kUserOption, kPasswordFileOption, kTlsVerifyOption, kCaFileOption, {"-h", "--help", false}};

struct Common {
  std::optional<std::string> server;
  std::optional<std::string> floor;
  std::optional<std::string> notes;
  std::optional<std::string> output;
  bool json = false;
  bool save = false;
};

// Parses, prints usage or errors; nullopt when parsing succeeded.
std::optional<int> Parse(std::span<const std::string> args,
                         std::span<const OptionDefinition> definitions, const char* command,
                         const char* usage, ParsedArgs& parsed, Common& common) {
  std::string error;
  const bool ok = ParseArgs(args, definitions, parsed, &error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) {
      std::fputs(usage, stdout);
      std::fputs(kLogInHelp, stdout);
      return kExitOk;
    }
    if (Is(option, "--server")) common.server = option.value;
    if (Is(option, "--floor")) common.floor = option.value;
    if (Is(option, "--notes")) common.notes = option.value;
    if (Is(option, "--output")) common.output = option.value;
    if (Is(option, "--json")) common.json = true;
    if (Is(option, "--save")) common.save = true;
  }
  if (ok && common.floor && common.floor->find_first_not_of("0123456789") != std::string::npos) {
    error = "--floor takes a floor's id, a number";
  }
  if (ok && common.floor && common.floor->size() > 9) error = "--floor takes a floor's id, a number";
  if (ok && common.save && common.output) error = "give either -o or --save";
  if (ok && common.server && fx::server::FormServerAddress(*common.server).empty()) {
    error = "\"" + *common.server + "\" is not a server address";
  }
  if (ok && error.empty() && TakeLogIn(parsed, &error) && TakeTlsOptions(parsed, &error)) return std::nullopt;
  std::fprintf(stderr, "floorxport: %s\nRun \"floorxport %s --help\" for usage.\n", error.c_str(),
               command);
  return kExitUsage;
}

nlohmann::json ListingJson(const std::vector<fx::server::BuildingEntry>& buildings) {
  nlohmann::json list = nlohmann::json::array();
  for (const auto& building : buildings) {
    nlohmann::json floors = nlohmann::json::array();
    for (const auto& floor : building.floors) {
      nlohmann::json entry = {{"id", floor.id},
                              {"name", floor.name},
                              {"drawingAvailable", floor.drawing_available},
                              {"dwgAvailable", floor.dwg_available},
                              {"binaryFormat", floor.binary_format},
                              {"notes", floor.notes}};
      entry["area"] = floor.has_area ? nlohmann::json(floor.area) : nlohmann::json();
      floors.push_back(std::move(entry));
    }
    list.push_back({{"id", building.id},
                    {"name", building.name},
                    {"code", building.code},
                    {"city", building.city},
                    {"street", building.street},
                    {"street2", building.street2},
                    {"state", building.state},
                    {"floors", std::move(floors)}});
  }
  return list;
}

void PrintTable(const std::vector<fx::server::BuildingEntry>& buildings) {
  acutPrintf("%-8s %-30s %-10s %s\n", "FLOOR", "NAME", "AREA", "DRAWING");
  for (const auto& building : buildings) {
    acutPrintf("%s%s%s\n", building.name.c_str(), building.city.empty() ? "" : ", ",
               building.city.c_str());
    for (const auto& floor : building.floors) {
      const std::string area = floor.has_area ? std::to_string(static_cast<long long>(floor.area)) : "";
      const std::string drawing = floor.dwg_available
                                      ? (floor.binary_format.empty() ? "yes" : floor.binary_format)
                                      : "-";
      acutPrintf("%-8d %-30s %-10s %s\n", floor.id, floor.name.c_str(), area.c_str(), drawing.c_str());
    }
  }
}

}  // namespace

int FloorsSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  Common common;
  if (std::optional<int> status = Parse(args, kFloorsOptions, "floors", kFloorsUsage, parsed, common)) {
    return *status;
  }
  if (!common.server) {
    std::fputs("floorxport: floors needs --server URL\n", stderr);
    return kExitUsage;
  }
  const std::string server = fx::server::FormServerAddress(*common.server);
  RunOptions options;
  options.without_drawing = true;
  options.ask_on_terminal = true;
  options.after_script = [&](std::string* problem) {
    std::vector<fx::server::BuildingEntry> buildings;
    const int result = fx::server::ListBuildingsAndFloors(server, buildings);
    if (result != 0) {
      *problem = fx::server::CallErrorReport(server, result, fx::server::kOpRefreshing);
      return false;
    }
    fx::server::AddServerToList(server);
    fx::server::SetLastUsedServer(server);
    if (common.json) {
      acutPrintf("%s\n", ListingJson(buildings).dump(2).c_str());
    } else {
      PrintTable(buildings);
    }
    return true;
  };
  return RunDrawing(options);
}

int OpenSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  Common common;
  if (std::optional<int> status = Parse(args, kOpenOptions, "open", kOpenUsage, parsed, common)) {
    return *status;
  }
  if (common.output) fx::server::SetDownloadFolder(*common.output);
  std::vector<std::string> answers = {"_vantoryOpenFrom"};
  const std::vector<std::string> site = SiteChooserAnswers(common.server);
  answers.insert(answers.end(), site.begin(), site.end());
  // The floor dialog: the floor, Find, then the action.
  if (common.floor) answers.insert(answers.end(), {*common.floor, "", "Open"});
  RunOptions options;
  options.without_drawing = true;
  options.ask_on_terminal = true;
  options.script.push_back({ScriptItem::kLine, ScriptLines(answers)});
  const int run = RunDrawing(options);
  const int exchange = ExchangeExitStatus();
  return exchange != kExitOk ? exchange : run;
}

int SendSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  Common common;
  if (std::optional<int> status = Parse(args, kSendOptions, "send", kSendUsage, parsed, common)) {
    return *status;
  }
  if (parsed.positional.size() != 1) {
    std::fputs("floorxport: send needs one DRAWING\n", stderr);
    return kExitUsage;
  }
  std::vector<std::string> answers = {"_vantorySendTo"};
  const std::vector<std::string> site = SiteChooserAnswers(common.server);
  answers.insert(answers.end(), site.begin(), site.end());
  // The floor dialog: the floor, Find, Drawing Notes, then the action.
  if (common.floor) answers.insert(answers.end(), {*common.floor, "", common.notes.value_or(""), "Send"});
  RunOptions options;
  options.drawing = parsed.positional.front();
  options.ask_on_terminal = true;
  options.script.push_back({ScriptItem::kLine, ScriptLines(answers)});
  const int run = RunDrawing(options);
  const int exchange = ExchangeExitStatus();
  return exchange != kExitOk ? exchange : run;
}

int OccupantsSubcommand(std::span<const std::string> args) {
  ParsedArgs parsed;
  Common common;
  if (std::optional<int> status =
          Parse(args, kOccupantsOptions, "occupants", kOccupantsUsage, parsed, common)) {
    return *status;
  }
  if (parsed.positional.size() != 1) {
    std::fputs("floorxport: occupants needs one DRAWING\n", stderr);
    return kExitUsage;
  }
  fx::server::SetOccupantSource(common.server,
                                common.floor ? std::optional<int>(std::stoi(*common.floor)) : std::nullopt);
  RunOptions options;
  options.drawing = parsed.positional.front();
  options.output = common.output;
  options.save_in_place = common.save;
  options.ask_on_terminal = true;
  options.script.push_back({ScriptItem::kLine, "_vantoryUpdateVantoryData"});
  options.after_script = [](std::string* problem) {
    const auto outcome = fx::server::LastOccupantImport();
    if (outcome && outcome->result == fx::server::kSucceeded) return true;
    *problem = outcome && outcome->result == fx::server::kCanceled
                   ? "the log-in was cancelled; nothing was saved"
                   : "the occupant import failed; nothing was saved";
    return false;
  };
  return RunDrawing(options);
}

int ServersSubcommand(std::span<const std::string> args) {
  if (!args.empty() && (args[0] == "-h" || args[0] == "--help")) {
    std::fputs(kServersUsage, stdout);
    return kExitOk;
  }
  if (args.size() == 2 && args[0] == "add") {
    const std::string address = fx::server::FormServerAddress(args[1]);
    if (address.empty()) {
      std::fprintf(stderr, "floorxport: \"%s\" is not a server address\n", args[1].c_str());
      return kExitUsage;
    }
    fx::server::AddServerToList(address);
    std::printf("%s\n", address.c_str());
    return kExitOk;
  }
  if (!args.empty()) {
    std::fputs(kServersUsage, stderr);
    return kExitUsage;
  }
  const std::string last = fx::server::GetLastUsedServer();
  for (const std::string& address : fx::server::SplitServerList(fx::server::GetServerList())) {
    std::printf("%s %s\n", address == last ? "*" : " ", address.c_str());
  }
  return kExitOk;
}

}  // namespace fx::cli
