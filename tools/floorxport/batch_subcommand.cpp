// `floorxport batch`: one subcommand over many drawings, each in a process of
// its own, several at a time, with a manifest that lets a batch resume.
#include <stdlib.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "batch_drawings.h"
#include "batch_manifest.h"
#include "batch_progress.h"
#include "batch_results.h"
#include "batch_runner.h"
#include "cli_args.h"
#include "settings/settings_path.h"
#include "subcommands.h"

namespace fx::cli {

const char kBatchUsage[] = R"(Usage: floorxport batch DIR|LIST [options] -- SUBCOMMAND ARGS...

Runs "floorxport SUBCOMMAND ARGS..." for every drawing of DIR (a folder,
searched with its subfolders for .dxf and .dwg files) or of LIST (a text file
with one drawing per line; '#' starts a comment line), each in a process of
its own, several at a time. In ARGS these placeholders are replaced:

  {drawing}  the drawing's path
  {stem}     its file name without the extension
  {out}      a folder of its own under --out-dir (made before the run), named
             after its path below DIR (or the current directory)

for example:
  floorxport batch plans --out-dir out -- export {drawing} {out}/{stem}.svg
  floorxport batch plans.txt --jobs 2 --out-dir out -- analyze {drawing}
      --floor-layer FloorArea --contour-layer RoomContours ... -o {out}/{stem}.dxf

Each drawing that ends gets a line in the manifest (JSON lines): its status
(ok, failed, timeout, crashed or skipped), exit code or signal, time, peak
memory, the analysis summary when the subcommand printed one, the files it
wrote and the first problem it reported. Run again with the same manifest, the
batch skips the drawings that ended ok with the same ARGS while the drawing is
unchanged (same size and modification time). The largest drawings start first.

Options:
  -j, --jobs N            run N drawings at a time (default: the number of cores)
      --time-limit SECONDS
                          stop a drawing's run after SECONDS (SIGTERM to its
                          processes, SIGKILL 5 s later): status timeout
      --out-dir DIR       the folder for {out}; each drawing's transcript is
                          kept there in floorxport.log
      --manifest FILE     the manifest (default: batch-manifest.jsonl in
                          --out-dir, else in the current directory)
  -h, --help              show this help

On a terminal a progress bar shows the drawings done, failed and the rate;
otherwise a line is printed for each drawing. Ctrl-C stops the running
drawings (they are run again next time) and keeps the manifest.

Exit status: 0 every drawing ended ok or was skipped; 1 a drawing failed,
timed out or crashed, or the manifest could not be written; 2 wrong usage;
128 + the signal when the batch was interrupted.
)";

namespace {

namespace fs = std::filesystem;
using json = nlohmann::ordered_json;

constexpr char kLogName[] = "floorxport.log";

struct BatchOptions {
  std::string source;
  int jobs = 0;
  std::optional<std::chrono::milliseconds> time_limit;
  std::string out_dir;
  std::string manifest;
  std::vector<std::string> command;  // SUBCOMMAND ARGS..., placeholders kept
};

bool ParseCount(const std::string& text, int* value) {
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return error == std::errc() && end == text.data() + text.size() && *value > 0;
}

bool ParseSeconds(const std::string& text, std::chrono::milliseconds* value) {
  double seconds = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size() || !(seconds > 0) || seconds > 1e9) return false;
  *value = std::chrono::milliseconds(static_cast<long long>(std::ceil(seconds * 1000)));
  return true;
}

bool CheckCommand(const BatchOptions& options, std::string* error) {
  auto uses = [&](const char* placeholder) {
    return std::any_of(options.command.begin(), options.command.end(),
                       [&](const std::string& arg) { return arg.find(placeholder) != std::string::npos; });
  };
  if (options.command.empty()) {
    *error = "batch needs the subcommand after --";
  } else if (options.command.front() == "batch") {
    *error = "a batch does not run batch";
  } else if (!uses("{drawing}")) {
    *error = "the subcommand's arguments need {drawing}";
  } else if (uses("{out}") && options.out_dir.empty()) {
    *error = "{out} needs --out-dir";
  } else {
    return true;
  }
  return false;
}

// Reads the batch's options; false with *error for wrong usage, or with
// *help set when the usage was asked for.
bool ReadBatchOptions(std::span<const std::string> args, BatchOptions* options, bool* help, std::string* error) {
  static constexpr OptionDefinition kOptions[] = {{"-j", "--jobs", true},
                                                  {nullptr, "--time-limit", true},
                                                  {nullptr, "--out-dir", true},
                                                  {nullptr, "--manifest", true},
                                                  {"-h", "--help", false}};
  const auto separator = std::find(args.begin(), args.end(), "--");
  ParsedArgs parsed;
  const bool parsed_ok = ParseArgs(std::span(args.begin(), separator), kOptions, parsed, error);
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--help")) *help = true;
  }
  if (*help || !parsed_ok) return false;
  options->jobs = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  for (const ParsedOption& option : parsed.options) {
    std::chrono::milliseconds limit{};
    if (Is(option, "--jobs") && !ParseCount(option.value, &options->jobs)) {
      *error = "--jobs needs a whole number of 1 or more, not \"" + option.value + "\"";
      return false;
    }
    if (Is(option, "--time-limit")) {
      if (!ParseSeconds(option.value, &limit)) {
        *error = "--time-limit needs a number of seconds above 0, not \"" + option.value + "\"";
        return false;
      }
      options->time_limit = limit;
    }
    if (Is(option, "--out-dir")) options->out_dir = option.value;
    if (Is(option, "--manifest")) options->manifest = option.value;
  }
  if (parsed.positional.size() != 1) {
    *error = parsed.positional.empty() ? "batch needs a DIR or LIST" : "batch takes one DIR or LIST";
    return false;
  }
  options->source = parsed.positional.front();
  if (separator != args.end()) options->command.assign(separator + 1, args.end());
  if (options->manifest.empty()) {
    options->manifest = (fs::path(options->out_dir) / "batch-manifest.jsonl").string();
  }
  return CheckCommand(*options, error);
}

DrawingStatus StatusOf(const TaskEnd& end) {
  if (!end.start_error.empty()) return DrawingStatus::kFailed;
  if (end.timed_out) return DrawingStatus::kTimeout;
  if (end.child.signal != 0) return DrawingStatus::kCrashed;
  return end.child.exit_code == 0 ? DrawingStatus::kOk : DrawingStatus::kFailed;
}

double Milliseconds(double seconds) { return std::round(seconds * 1000) / 1000; }

std::string SignalName(int signal) {
  const char* abbreviation = sigabbrev_np(signal);
  return abbreviation != nullptr ? std::string("SIG") + abbreviation : std::to_string(signal);
}

// One drawing to run: its manifest key, arguments and where its files go.
struct Job {
  const BatchDrawing* drawing;
  std::vector<std::string> args;
  std::string out_folder;  // empty without --out-dir
};

class Batch {
 public:
  explicit Batch(const BatchOptions& options) : options_(options) {}

  int Run() {
    std::vector<BatchDrawing> drawings;
    std::string error;
    if (!CollectDrawings(options_.source, &drawings, &error)) return Fail(error);
    if (drawings.empty()) return Fail("no .dxf or .dwg drawings in " + options_.source);
    // The children use the settings file this process would.
    const std::string settings = fx::settings::SettingsFilePath();
    if (!settings.empty()) setenv(fx::settings::kSettingsFileVariable, settings.c_str(), 1);

    ManifestHistory history;
    std::vector<std::string> warnings;
    history.Read(options_.manifest, &warnings);
    for (const std::string& warning : warnings) std::fprintf(stderr, "floorxport: warning: %s\n", warning.c_str());
    std::error_code code;
    if (!options_.out_dir.empty() && !fs::create_directories(options_.out_dir, code) && code) {
      return Fail("cannot make the folder " + options_.out_dir + ": " + code.message());
    }
    if (!manifest_.Open(options_.manifest, &error)) return Fail(error);

    progress_.emplace(drawings.size(), stdout);
    std::vector<const json*> done(drawings.size());
    for (size_t i = 0; i < drawings.size(); ++i) {
      Job job{&drawings[i], ExpandCommand(options_.command, drawings[i], options_.out_dir), ""};
      if (const json* record = history.Done(drawings[i], job.args)) {
        if (!RecordSkipped(*record, &error)) return Fail(error);
        continue;
      }
      if (!options_.out_dir.empty()) job.out_folder = OutFolder(drawings[i], options_.out_dir);
      jobs_.push_back(std::move(job));
    }
    // The largest first, so the last to end are small and no core idles long.
    std::stable_sort(jobs_.begin(), jobs_.end(),
                     [](const Job& a, const Job& b) { return a.drawing->size > b.drawing->size; });
    if (!PrepareTasks(&error)) return Fail(error);

    RunnerOptions runner;
    runner.jobs = options_.jobs;
    runner.time_limit = options_.time_limit;
    runner.on_end = [this](const TaskEnd& end) { return Record(end); };
    runner.on_tick = [this](size_t running) { progress_->Tick(running); };
    const int stopped_by = RunTasks(tasks_, runner);
    if (!temp_logs_.empty()) fs::remove_all(temp_logs_);
    progress_->Finish(options_.jobs, options_.manifest, stopped_by);
    if (stopped_by > 0) return 128 + stopped_by;
    if (stopped_by < 0) return Fail(manifest_error_);
    return progress_->counts().bad() == 0 ? kExitOk : kExitFailure;
  }

 private:
  int Fail(const std::string& message) {
    std::fprintf(stderr, "floorxport: %s\n", message.c_str());
    return kExitFailure;
  }

  // The folders for {out} and the logs, made before anything runs.
  bool PrepareTasks(std::string* error) {
    std::error_code code;
    if (options_.out_dir.empty()) {
      std::string pattern = (fs::temp_directory_path(code) / "floorxport-batch-XXXXXX").string();
      if (mkdtemp(pattern.data()) == nullptr) {
        *error = "cannot make a folder for the transcripts in " + fs::temp_directory_path(code).string();
        return false;
      }
      temp_logs_ = pattern;
    }
    for (size_t i = 0; i < jobs_.size(); ++i) {
      const Job& job = jobs_[i];
      if (!job.out_folder.empty() && !fs::create_directories(job.out_folder, code) && code) {
        *error = "cannot make the folder " + job.out_folder + ": " + code.message();
        return false;
      }
      const fs::path log = job.out_folder.empty() ? fs::path(temp_logs_) / (std::to_string(i) + ".log")
                                                  : fs::path(job.out_folder) / kLogName;
      tasks_.push_back({job.args, log.string()});
    }
    return true;
  }

  bool RecordSkipped(const json& previous, std::string* error) {
    json record = previous;
    record["status"] = StatusName(DrawingStatus::kSkipped);
    progress_->Ended(record["drawing"], DrawingStatus::kSkipped, 0, "");
    return manifest_.Append(record, error);
  }

  bool Record(const TaskEnd& end) {
    const Job& job = jobs_[end.index];
    const std::string& log = tasks_[end.index].log_path;
    const DrawingStatus status = StatusOf(end);
    json record = ManifestRecord(*job.drawing, status, job.args);
    record["exit_code"] = end.child.exit_code >= 0 ? json(end.child.exit_code) : json(nullptr);
    record["signal"] = end.child.signal != 0 ? json(SignalName(end.child.signal)) : json(nullptr);
    record["wall_seconds"] = Milliseconds(end.wall_seconds);
    record["cpu_seconds"] = Milliseconds(end.child.cpu_seconds);
    record["peak_rss_kb"] = end.child.peak_rss_kb;
    const std::string transcript = ReadTranscript(log);
    if (job.out_folder.empty()) fs::remove(log);
    if (json summary = ParseAnalysisSummary(transcript); !summary.is_null()) record["summary"] = summary;
    std::vector<std::string> places = OutputOptions(job.args);
    if (!job.out_folder.empty()) places.push_back(job.out_folder);
    record["outputs"] = FilesWrittenSince(places, end.started, fs::absolute(log).lexically_normal().string());
    std::string detail;
    if (status != DrawingStatus::kOk) {
      const std::string problem = end.start_error.empty() ? FirstProblem(transcript) : end.start_error;
      if (!problem.empty()) record["message"] = problem;
      detail = end.child.signal != 0 ? SignalName(end.child.signal) : "exit " + std::to_string(end.child.exit_code);
      if (status == DrawingStatus::kTimeout) detail += " at the time limit";
      if (!problem.empty()) detail += ", " + problem;
    }
    if (!job.out_folder.empty()) record["log"] = fs::absolute(log).lexically_normal().string();
    progress_->Ended(job.drawing->path, status, end.wall_seconds, detail);
    return manifest_.Append(record, &manifest_error_);
  }

  static std::string ReadTranscript(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) return "";
    std::string text;
    char buffer[65536];
    for (size_t count; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) text.append(buffer, count);
    std::fclose(file);
    return text;
  }

  const BatchOptions& options_;
  ManifestWriter manifest_;
  std::string manifest_error_;
  std::optional<BatchProgress> progress_;
  std::vector<Job> jobs_;
  std::vector<BatchTask> tasks_;
  std::string temp_logs_;  // the transcripts' folder without --out-dir
};

}  // namespace

int BatchSubcommand(std::span<const std::string> args) {
  BatchOptions options;
  bool help = false;
  std::string error;
  if (!ReadBatchOptions(args, &options, &help, &error)) {
    if (help) {
      std::fputs(kBatchUsage, stdout);
      return kExitOk;
    }
    std::fprintf(stderr, "floorxport: %s\nRun \"floorxport batch --help\" for usage.\n", error.c_str());
    return kExitUsage;
  }
  return Batch(options).Run();
}

}  // namespace fx::cli
