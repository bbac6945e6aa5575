#include "settings/settings_command.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include "settings/known_settings.h"
#include "settings/reg_file.h"
#include "settings/reg_text.h"
#include "settings/settings.h"
#include "settings/settings_diagnostics.h"
#include "settings/settings_path.h"

namespace fx::settings {

const char kSettingsUsage[] =
    "Usage: floorxport settings [--settings FILE]\n"
    "       floorxport settings set NAME VALUE [--section N] [--int | --string]\n"
    "                                          [--settings FILE]\n"
    "\n"
    "Lists every setting of the plug-in with its section, kind, current value and\n"
    "default, or writes one value. Listing never changes the file.\n"
    "\n"
    "Options:\n"
    "  --settings FILE  the settings file (default: $FLOORXPORT_SETTINGS, else\n"
    "                   $XDG_CONFIG_HOME/PlanVault/VantoryApp.reg, else\n"
    "                   ~/.config/PlanVault/VantoryApp.reg)\n"
    "  --section N      0 ExportOptions, 1 ConvertOptions, 2 Server, 3 the application\n"
    "                   key (a section name works too); needed for a name not listed\n"
    "  --int            write such a value as an integer (default: a string)\n"
    "  --string         write it as a string\n"
    "  -h, --help       this text\n"
    "\n"
    "A listed name takes its own section and kind; a boolean takes 0 or 1.\n";

namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
constexpr char kPrefix[] = "floorxport settings: ";
constexpr size_t kStringLimit = 260;  // UTF-16 units from which a string reads as empty

struct CommandLine {
  std::vector<std::string> words;  // "set", NAME, VALUE
  std::optional<std::string> settings_file;
  std::optional<std::string> section;
  std::optional<SettingKind> kind;  // from --int or --string
  bool help = false;
};

// Sends settings diagnostics to `err` while the command runs.
class DiagnosticsToStream {
 public:
  explicit DiagnosticsToStream(std::ostream& err)
      : previous_(SetSettingsDiagnostics(
            [&err](const std::string& message) { err << kPrefix << message << "\n"; })) {}
  DiagnosticsToStream(const DiagnosticsToStream&) = delete;
  DiagnosticsToStream& operator=(const DiagnosticsToStream&) = delete;
  ~DiagnosticsToStream() { SetSettingsDiagnostics(std::move(previous_)); }

 private:
  SettingsDiagnostics previous_;
};

bool Fail(std::string* error, std::string message) {
  *error = std::move(message);
  return false;
}

bool ParseCommandLine(const std::vector<std::string>& args, CommandLine* line, std::string* error) {
  bool options_done = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    // "-7" is a value, not an option.
    const bool number = arg.size() > 1 && arg[1] >= '0' && arg[1] <= '9';
    if (options_done || !arg.starts_with("-") || arg == "-" || number) {
      line->words.push_back(arg);
      continue;
    }
    const size_t equals = arg.find('=');
    const std::string option = arg.substr(0, equals);
    auto value = [&]() -> std::optional<std::string> {
      if (equals != std::string::npos) return arg.substr(equals + 1);
      if (i + 1 < args.size()) return args[++i];
      return std::nullopt;
    };
    if (option == "--settings" || option == "--section") {
      std::optional<std::string> given = value();
      if (!given) return Fail(error, "option " + option + " needs a value");
      (option == "--settings" ? line->settings_file : line->section) = std::move(given);
    } else if (arg == "--int" || arg == "--string") {
      line->kind = arg == "--int" ? SettingKind::kInteger : SettingKind::kString;
    } else if (arg == "-h" || arg == "--help") {
      line->help = true;
    } else if (arg == "--") {
      options_done = true;
    } else {
      return Fail(error, "unknown option " + arg);
    }
  }
  return true;
}

bool ParseInt(std::string_view text, int32_t* value) {
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, *value);
  return ec == std::errc() && ptr == end && !text.empty();
}

std::optional<int> ParseSection(std::string_view text) {
  int32_t number = 0;
  if (ParseInt(text, &number)) return number;
  for (const int section :
       {kSectionExportOptions, kSectionConvertOptions, kSectionServer, kSectionApplication}) {
    if (SameRegistryName(text, SettingsSectionName(section))) return section;
  }
  return std::nullopt;
}

std::string Quote(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '\\' || c == '"') out.push_back('\\');
    out.push_back(c);
  }
  return out + "\"";
}

std::string CurrentValue(const KnownSetting& setting) {
  SettingsKey key;
  if (!OpenSettingsKey(setting.section, false, &key) || !key.HasValue(setting.name)) {
    return "(not set)";
  }
  key.Close();
  if (setting.kind == SettingKind::kString) {
    return Quote(GetSettingString(setting.name, setting.section));
  }
  return std::to_string(GetSettingInt(setting.name, setting.default_value, setting.section));
}

std::string DefaultValue(const KnownSetting& setting) {
  if (!setting.has_default) return "none";
  if (setting.kind == SettingKind::kString) return "\"\"";
  return std::to_string(setting.default_value);
}

int ListSettings(std::ostream& out) {
  const std::string path = SettingsFilePath();
  out << "Settings file: " << (path.empty() ? "none (HOME is not set)" : path) << "\n\n";
  std::vector<std::vector<std::string>> rows = {{"Section", "Name", "Kind", "Value", "Default"}};
  for (const KnownSetting& setting : KnownSettings()) {
    rows.push_back({SettingsSectionName(setting.section), setting.name,
                    SettingKindName(setting.kind), CurrentValue(setting), DefaultValue(setting)});
  }
  std::vector<size_t> widths(rows.front().size(), 0);
  for (const auto& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (const auto& row : rows) {
    for (size_t i = 0; i + 1 < row.size(); ++i) {
      out << row[i] << std::string(widths[i] - row[i].size() + 2, ' ');
    }
    out << row.back() << "\n";
  }
  return kExitOk;
}

}  // namespace

namespace {

int UsageError(std::ostream& err, const std::string& message) {
  err << kPrefix << message << "\nRun \"floorxport settings --help\" for usage.\n";
  return kExitUsage;
}

// What `set` writes: the table decides for a listed name in its own section.
struct Target {
  std::string name;
  int section = kSectionApplication;
  SettingKind kind = SettingKind::kString;
};

bool ResolveTarget(const CommandLine& line, Target* target, std::string* error) {
  target->name = line.words[1];
  std::optional<int> section;
  if (line.section && !(section = ParseSection(*line.section))) {
    return Fail(error, "bad section \"" + *line.section + "\"");
  }
  const KnownSetting* known = FindKnownSetting(target->name);
  if (known != nullptr && (!section || *section == known->section)) {
    const bool wants_string = line.kind == SettingKind::kString;
    if (line.kind && wants_string != (known->kind == SettingKind::kString)) {
      return Fail(error, Quote(known->name) + " is a " + SettingKindName(known->kind) + " setting");
    }
    *target = {known->name, known->section, known->kind};
    return true;
  }
  if (!section) {
    return Fail(error, "unknown setting " + Quote(target->name) +
                           ": give its --section (and --int for an integer)");
  }
  target->section = *section;
  target->kind = line.kind.value_or(SettingKind::kString);
  return true;
}

int SetOne(const CommandLine& line, std::ostream& err) {
  if (line.words.size() != 3) return UsageError(err, "set takes a NAME and a VALUE");
  Target target;
  std::string error;
  if (!ResolveTarget(line, &target, &error)) return UsageError(err, error);
  const std::string& text = line.words[2];
  bool written = false;
  if (target.kind == SettingKind::kString) {
    std::u16string units;
    if (!Utf8ToUtf16(text, &units)) return UsageError(err, "the value is not valid UTF-8");
    if (units.size() >= kStringLimit) {
      err << kPrefix << "note: a string of " << kStringLimit
          << " or more characters reads back as empty\n";
    }
    written = SetSettingString(target.name, text, target.section);
  } else {
    int32_t number = 0;
    const bool boolean = target.kind == SettingKind::kBoolean;
    if (!ParseInt(text, &number) || (boolean && number != 0 && number != 1)) {
      return UsageError(err, Quote(target.name) + " takes " + (boolean ? "0 or 1" : "an integer") +
                                 ", not " + Quote(text));
    }
    written = SetSettingInt(target.name, number, target.section);
  }
  if (written) return kExitOk;
  err << kPrefix << "cannot write " << Quote(target.name) << " to "
      << (SettingsFilePath().empty() ? "a settings file" : SettingsFilePath()) << "\n";
  return kExitFailure;
}

}  // namespace

int RunSettingsCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  CommandLine line;
  std::string error;
  if (!ParseCommandLine(args, &line, &error)) return UsageError(err, error);
  if (line.help) {
    out << kSettingsUsage;
    return kExitOk;
  }
  if (line.settings_file) SetSettingsFilePath(*line.settings_file);
  const DiagnosticsToStream diagnostics(err);
  if (line.words.empty()) {
    if (line.section || line.kind)
      return UsageError(err, "--section, --int and --string go with set");
    return ListSettings(out);
  }
  if (line.words.front() != "set")
    return UsageError(err, "unknown word \"" + line.words.front() + "\"");
  return SetOne(line, err);
}

}  // namespace fx::settings
