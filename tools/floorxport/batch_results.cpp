#include "batch_results.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <set>
#include <sstream>

namespace fx::cli {
namespace {

namespace fs = std::filesystem;
using json = nlohmann::ordered_json;

std::string SnakeCase(std::string_view label) {
  std::string key;
  for (char c : label) {
    key += c == ' ' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return key;
}

json Value(std::string_view text) {
  long long number = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size()) return number;
  return std::string(text);
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  return text;
}

// Modification times from stat: exact, unlike the conversions of
// std::filesystem's clock.
std::chrono::system_clock::time_point ModifiedAt(const struct stat& status) {
  return std::chrono::system_clock::time_point(std::chrono::duration_cast<std::chrono::system_clock::duration>(
      std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec)));
}

}  // namespace

json ParseAnalysisSummary(const std::string& transcript) {
  const size_t at = transcript.rfind("\nRoom analysis:");
  if (at == std::string::npos) return nullptr;
  json summary = json::object();
  std::istringstream lines(transcript.substr(at + 1));
  std::string line;
  std::getline(lines, line);  // the heading
  while (std::getline(lines, line) && line.starts_with("  ")) {
    const size_t colon = line.find(':');
    if (colon == std::string::npos) break;
    summary[SnakeCase(Trim(std::string_view(line).substr(0, colon)))] =
        Value(Trim(std::string_view(line).substr(colon + 1)));
  }
  return summary;
}

std::string FirstProblem(const std::string& transcript) {
  std::istringstream lines(transcript);
  std::string line;
  while (std::getline(lines, line)) {
    if (line.starts_with("floorxport: ") && !line.starts_with("floorxport: warning: ")) {
      return std::string(Trim(line));
    }
  }
  return "";
}

std::vector<std::string> OutputOptions(const std::vector<std::string>& args) {
  static const std::string kOptions[] = {"-o", "--output", "--report"};
  std::vector<std::string> outputs;
  for (size_t i = 0; i < args.size(); ++i) {
    for (const std::string& option : kOptions) {
      if (args[i] == option && i + 1 < args.size()) outputs.push_back(args[i + 1]);
      if (args[i].starts_with(option + "=")) outputs.push_back(args[i].substr(option.size() + 1));
    }
  }
  return outputs;
}

std::vector<std::string> FilesWrittenSince(const std::vector<std::string>& places,
                                           std::chrono::system_clock::time_point since,
                                           const std::string& exclude) {
  // File times come from a clock that may lag the system clock by a tick.
  since -= std::chrono::milliseconds(50);
  std::set<std::string> files;
  auto consider = [&](const fs::path& path) {
    struct stat status {};
    const std::string name = fs::absolute(path).lexically_normal().string();
    if (stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ModifiedAt(status) >= since &&
        name != exclude) {
      files.insert(name);
    }
  };
  for (const std::string& place : places) {
    std::error_code error;
    if (!fs::is_directory(place, error)) {
      consider(place);
      continue;
    }
    for (fs::recursive_directory_iterator it(place, error), end; !error && it != end; it.increment(error)) {
      consider(it->path());
    }
  }
  return {files.begin(), files.end()};
}

}  // namespace fx::cli
