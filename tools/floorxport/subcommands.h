// The subcommands of floorxport. Each takes the arguments after its name and
// returns the exit status (cli_args.h); each prints its usage for --help.
// A subcommand that maps onto commands builds RunOptions and calls
// RunDrawing (run_subcommand.h), so it stays a few lines.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_SUBCOMMANDS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_SUBCOMMANDS_H_

#include <span>
#include <string>

namespace fx::cli {

int RunSubcommand(std::span<const std::string> args);
int AnalyzeSubcommand(std::span<const std::string> args);
int ExportSubcommand(std::span<const std::string> args);
int InfoSubcommand(std::span<const std::string> args);
int ConvertSubcommand(std::span<const std::string> args);
int MenuSubcommand(std::span<const std::string> args);
int RoomsSubcommand(std::span<const std::string> args);
int FloorsSubcommand(std::span<const std::string> args);
int OpenSubcommand(std::span<const std::string> args);
int SendSubcommand(std::span<const std::string> args);
int OccupantsSubcommand(std::span<const std::string> args);
int ServersSubcommand(std::span<const std::string> args);
int ReviewSubcommand(std::span<const std::string> args);
int BatchSubcommand(std::span<const std::string> args);
int StudioSubcommand(std::span<const std::string> args);

extern const char kRunUsage[];
extern const char kAnalyzeUsage[];
extern const char kExportUsage[];
extern const char kInfoUsage[];
extern const char kConvertUsage[];
extern const char kMenuUsage[];
extern const char kRoomsUsage[];
extern const char kFloorsUsage[];
extern const char kOpenUsage[];
extern const char kSendUsage[];
extern const char kOccupantsUsage[];
extern const char kServersUsage[];
extern const char kReviewUsage[];
extern const char kBatchUsage[];
extern const char kStudioUsage[];

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_SUBCOMMANDS_H_
