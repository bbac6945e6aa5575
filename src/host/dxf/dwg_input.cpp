#include "host/dxf/dwg_input.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

#ifndef FLOORXPORT_SOURCE_DIR
#define FLOORXPORT_SOURCE_DIR "."
#endif

namespace fx::dxf {
namespace {

bool IsFile(const std::string& path) {
  struct stat info{};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::string FindOnPath(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::stringstream dirs(path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
  std::string dir;
  while (std::getline(dirs, dir, ':')) {
    std::string candidate = (dir.empty() ? "." : dir) + "/" + program;
    if (::access(candidate.c_str(), X_OK) == 0 && IsFile(candidate)) return candidate;
  }
  return {};
}

std::string Dirname(const std::string& path) {
  size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

std::string InstallHint() {
  return "install it with: bash " FLOORXPORT_SOURCE_DIR "/scripts/setup";
}

// The value of "key" in a flat JSON object line: a string's text or a number's.
std::string JsonField(std::string_view line, std::string_view key) {
  const std::string quoted = "\"" + std::string(key) + "\":";
  size_t at = line.find(quoted);
  if (at == std::string_view::npos) return {};
  at += quoted.size();
  if (at < line.size() && line[at] == '"') {
    std::string text;
    for (size_t i = at + 1; i < line.size() && line[i] != '"'; ++i) {
      if (line[i] == '\\' && i + 1 < line.size()) ++i;
      text += line[i];
    }
    return text;
  }
  size_t end = line.find_first_of(",}", at);
  return std::string(line.substr(at, end == std::string_view::npos ? end : end - at));
}

// Runs argv with stdout to /dev/null and stderr into *output; kills it after
// `timeout_seconds`. Returns its wait status, or -1 with *error.
int RunCaptured(const std::vector<std::string>& argv, int timeout_seconds, std::string* output,
                bool* timed_out, std::string* error) {
  int pipe_fds[2];
  if (::pipe2(pipe_fds, O_CLOEXEC) != 0) {
    *error = std::string("cannot make a pipe: ") + std::strerror(errno);
    return -1;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, pipe_fds[1], STDERR_FILENO);
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  pid_t pid = 0;
  int spawned = ::posix_spawn(&pid, args[0], &actions, nullptr, args.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipe_fds[1]);
  if (spawned != 0) {
    ::close(pipe_fds[0]);
    *error = "cannot start " + argv[0] + ": " + std::strerror(spawned);
    return -1;
  }
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(timeout_seconds);
  *timed_out = false;
  char buffer[4096];
  for (;;) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
      *timed_out = true;
      ::kill(pid, SIGKILL);
      break;
    }
    pollfd poll_fd{pipe_fds[0], POLLIN, 0};
    int ready = ::poll(&poll_fd, 1, static_cast<int>(left.count()));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) continue;
    ssize_t got = ::read(pipe_fds[0], buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    if (output->size() < (1u << 20)) output->append(buffer, static_cast<size_t>(got));
  }
  ::close(pipe_fds[0]);
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

}  // namespace

void ReadConverterReport(const std::string& output, DwgSource* source, std::string* failure) {
  std::stringstream lines(output);
  std::string line;
  while (std::getline(lines, line)) {
    if (line.empty()) continue;
    if (line.front() != '{') {
      if (line.rfind("dwg2dxf: ", 0) == 0) line.erase(0, 9);
      if (!failure->empty()) *failure += "; ";
      *failure += line;
    } else if (std::string version = JsonField(line, "version"); !version.empty()) {
      source->version = version;
      source->release = JsonField(line, "release");
    } else if (std::string dropped = JsonField(line, "dropped"); !dropped.empty()) {
      source->dropped.push_back(JsonField(line, "count") + " " + dropped);
    } else if (std::string note = JsonField(line, "libredwg"); !note.empty()) {
      source->notes.push_back(note);
    }
  }
}

bool IsDwgSignature(std::string_view first_bytes) {
  if (first_bytes.size() < 6 || first_bytes.substr(0, 4) != "AC10") return false;
  auto digit = [](char c) { return c >= '0' && c <= '9'; };
  return digit(first_bytes[4]) && digit(first_bytes[5]);
}

bool IsDwgFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  char bytes[6] = {};
  if (!file.read(bytes, sizeof bytes)) return false;
  return IsDwgSignature(std::string_view(bytes, sizeof bytes));
}

bool IsDwgTarget(const std::string& path) {
  if (path.size() >= 4) {
    std::string extension = path.substr(path.size() - 4);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (extension == ".dwg") return true;
  }
  return IsDwgFile(path);
}

std::string DwgConverterScript() {
  const char* script = std::getenv("FLOORXPORT_DWG_CONVERTER");
  if (script != nullptr && *script != '\0') return script;
  return FLOORXPORT_SOURCE_DIR "/tools/dwg2dxf/convert.mjs";
}

bool ConvertDwg(const std::string& dwg_path, const std::string& dxf_path, DwgSource* source,
                std::string* error, int timeout_seconds) {
  const std::string script = DwgConverterScript();
  const std::string node = FindOnPath("node");
  std::string missing;
  if (node.empty()) missing = "node is not on PATH";
  else if (!IsFile(script)) missing = script + " is missing";
  else if (!IsFile(Dirname(script) + "/package-lock.json") ||
           ::access((Dirname(script) + "/node_modules").c_str(), F_OK) != 0)
    missing = "its package is not installed in " + Dirname(script);
  if (!missing.empty()) {
    *error = dwg_path + ": reading DWG drawings needs the DWG converter (" + missing + "); " +
             InstallHint();
    return false;
  }
  std::string output;
  bool timed_out = false;
  std::string spawn_error;
  int status = RunCaptured({node, script, dwg_path, dxf_path}, timeout_seconds, &output,
                           &timed_out, &spawn_error);
  if (status < 0) {
    *error = dwg_path + ": " + spawn_error;
    return false;
  }
  std::string failure;
  ReadConverterReport(output, source, &failure);
  if (timed_out) {
    *error = dwg_path + ": the DWG converter took more than " + std::to_string(timeout_seconds) +
             " s and was stopped";
    return false;
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || !IsFile(dxf_path)) {
    if (failure.empty()) {
      failure = WIFSIGNALED(status) ? "the converter was killed by signal " +
                                          std::to_string(WTERMSIG(status))
                                    : "the converter failed";
    }
    *error = dwg_path + ": cannot convert the DWG drawing: " + failure;
    return false;
  }
  return true;
}

}  // namespace fx::dxf
