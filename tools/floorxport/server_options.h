// What the server subcommands share: the log-in given to a batch run, the
// script lines that answer the site chooser and the floor dialog, and the
// exit status of an exchange.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_SERVER_OPTIONS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_SERVER_OPTIONS_H_

#include <optional>
#include <string>
#include <vector>

#include "cli_args.h"

namespace fx::cli {

// --user and --password-file, with FLOORXPORT_USER and FLOORXPORT_PASSWORD
// as the defaults. Never a password on the command line.
inline constexpr OptionDefinition kUserOption = {nullptr, "--user", true};
inline constexpr OptionDefinition kPasswordFileOption = {nullptr, "--password-file", true};
// --tls-verify and --ca-file: the strict certificate check for this run.
inline constexpr OptionDefinition kTlsVerifyOption = {nullptr, "--tls-verify", false};
inline constexpr OptionDefinition kCaFileOption = {nullptr, "--ca-file", true};

inline constexpr const char kLogInHelp[] =
    "      --user NAME            log in as NAME (default: $FLOORXPORT_USER)\n"
    "      --password-file FILE   the password, the first line of FILE\n"
    "                             (default: $FLOORXPORT_PASSWORD)\n"
    "Without them, a server that asks for a log-in gets the log-in dialog\n"
    "(on a terminal; a batch run cancels it).\n"
    "      --tls-verify           verify the site's certificate and host name\n"
    "                             (default: the \"Verify Server Certificate\" setting,\n"
    "                             0: any certificate is accepted)\n"
    "      --ca-file FILE         trust the authorities in FILE (PEM) when verifying;\n"
    "                             implies --tls-verify\n";

// Remembers the log-in the options or the environment give, for the whole
// run, and keeps this process from dumping its memory. False, with *error,
// when the password file cannot be read.
bool TakeLogIn(const ParsedArgs& parsed, std::string* error);

// Sets this run's certificate check from --tls-verify and --ca-file; without
// them the settings decide. False, with *error, when the CA file cannot be read.
bool TakeTlsOptions(const ParsedArgs& parsed, std::string* error);

// The answers to the site chooser: the address (empty keeps the one shown)
// and OK.
std::vector<std::string> SiteChooserAnswers(const std::optional<std::string>& server);

// The exit status of the last Open from or Send to: 0 success, 2 cancelled,
// 1 failure or none run.
int ExchangeExitStatus();

// Joins answers into one script line, each answer on a line of its own.
std::string ScriptLines(const std::vector<std::string>& answers);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_SERVER_OPTIONS_H_
