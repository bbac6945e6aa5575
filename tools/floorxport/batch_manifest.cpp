#include "batch_manifest.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace fx::cli {
namespace {

using json = nlohmann::ordered_json;

// What makes two runs of a drawing the same work.
json InputOf(const BatchDrawing& drawing) {
  return {{"size", drawing.size}, {"mtime_ns", drawing.mtime_ns}};
}

bool WriteWhole(int fd, const std::string& text) {
  size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = write(fd, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<size_t>(count);
  }
  return true;
}

}  // namespace

const char* StatusName(DrawingStatus status) {
  switch (status) {
    case DrawingStatus::kOk: return "ok";
    case DrawingStatus::kFailed: return "failed";
    case DrawingStatus::kTimeout: return "timeout";
    case DrawingStatus::kCrashed: return "crashed";
    case DrawingStatus::kSkipped: return "skipped";
  }
  return "failed";
}

json ManifestRecord(const BatchDrawing& drawing, DrawingStatus status,
                    const std::vector<std::string>& args) {
  return {{"drawing", drawing.path}, {"status", StatusName(status)}, {"input", InputOf(drawing)},
          {"args", args}};
}

void ManifestHistory::Read(const std::string& path, std::vector<std::string>* warnings) {
  std::ifstream file(path);
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty()) continue;
    json record = json::parse(line, nullptr, /*allow_exceptions=*/false);
    if (!record.is_object() || !record.contains("drawing") || !record["drawing"].is_string()) {
      warnings->push_back(path + ":" + std::to_string(number) + ": not a manifest line, ignored");
      continue;
    }
    const std::string drawing = record["drawing"];
    const std::string status = record.value("status", "");
    // A later line for the same drawing tells how its last run went.
    if (status == StatusName(DrawingStatus::kOk) || status == StatusName(DrawingStatus::kSkipped)) {
      done_[drawing] = std::move(record);
    } else {
      done_.erase(drawing);
    }
  }
}

const json* ManifestHistory::Done(const BatchDrawing& drawing, const std::vector<std::string>& args) const {
  auto found = done_.find(drawing.path);
  if (found == done_.end() || drawing.size < 0) return nullptr;
  const json& record = found->second;
  if (record.value("input", json()) != InputOf(drawing) || record.value("args", json()) != json(args)) {
    return nullptr;
  }
  return &record;
}

ManifestWriter::~ManifestWriter() {
  if (fd_ >= 0) close(fd_);
}

bool ManifestWriter::Open(const std::string& path, std::string* error) {
  path_ = path;
  fd_ = open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (fd_ < 0) {
    *error = "cannot write the manifest " + path + ": " + std::strerror(errno);
    return false;
  }
  // A line cut by an earlier crash is ended, so the next line stands alone.
  const off_t size = lseek(fd_, 0, SEEK_END);
  char last = '\n';
  if (size > 0 && (pread(fd_, &last, 1, size - 1) != 1 || (last != '\n' && !WriteWhole(fd_, "\n")))) {
    *error = "cannot write the manifest " + path + ": " + std::strerror(errno);
    return false;
  }
  return true;
}

bool ManifestWriter::Append(const json& record, std::string* error) {
  const std::string line = record.dump(-1, ' ', false, json::error_handler_t::replace) + "\n";
  if (WriteWhole(fd_, line)) return true;
  *error = "cannot write the manifest " + path_ + ": " + std::strerror(errno);
  return false;
}

}  // namespace fx::cli
