#include "batch_drawings.h"

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace fx::cli {
namespace {

namespace fs = std::filesystem;

bool IsDrawingName(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".dxf" || extension == ".dwg";
}

BatchDrawing Describe(const fs::path& path) {
  BatchDrawing drawing;
  drawing.path = fs::absolute(path).lexically_normal().string();
  drawing.stem = path.stem().string();
  struct stat status {};
  if (stat(drawing.path.c_str(), &status) == 0) {
    drawing.size = status.st_size;
    drawing.mtime_ns = static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 +
                       status.st_mtim.tv_nsec;
  }
  return drawing;
}

// The out folder key: the path below the walked folder (or below the current
// directory for a list) without its extension, else the stem alone.
std::string OutKey(const fs::path& path, const fs::path& base) {
  const fs::path relative = fs::absolute(path).lexically_normal().lexically_relative(base);
  if (relative.empty() || *relative.begin() == "..") return path.stem().string();
  return (relative.parent_path() / relative.stem()).string();
}

// Two drawings never share a folder: a repeated key gets "-2", "-3", ...
void MakeOutKeysUnique(std::vector<BatchDrawing>& drawings) {
  std::set<std::string> used;
  for (BatchDrawing& drawing : drawings) {
    std::string key = drawing.out_key;
    for (int n = 2; !used.insert(key).second; ++n) key = drawing.out_key + "-" + std::to_string(n);
    drawing.out_key = key;
  }
}

bool WalkFolder(const fs::path& folder, std::vector<BatchDrawing>* drawings, std::string* error) {
  std::error_code code;
  const fs::path base = fs::absolute(folder).lexically_normal();
  fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, code);
  for (; !code && it != fs::recursive_directory_iterator(); it.increment(code)) {
    std::error_code type_error;
    if (!IsDrawingName(it->path()) || !it->is_regular_file(type_error)) continue;
    BatchDrawing drawing = Describe(it->path());
    drawing.out_key = OutKey(it->path(), base);
    drawings->push_back(std::move(drawing));
  }
  if (code) *error = "cannot read the folder " + folder.string() + ": " + code.message();
  return !code;
}

bool ReadList(const fs::path& list, std::vector<BatchDrawing>* drawings, std::string* error) {
  std::ifstream file(list);
  if (!file) {
    *error = "cannot read the list " + list.string();
    return false;
  }
  const fs::path base = fs::current_path();
  std::string line;
  while (std::getline(file, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line.front() == '#') continue;
    BatchDrawing drawing = Describe(line);
    drawing.out_key = OutKey(line, base);
    drawings->push_back(std::move(drawing));
  }
  return true;
}

void ReplaceAll(std::string& text, const std::string& placeholder, const std::string& value) {
  for (size_t at = text.find(placeholder); at != std::string::npos;
       at = text.find(placeholder, at + value.size())) {
    text.replace(at, placeholder.size(), value);
  }
}

}  // namespace

bool CollectDrawings(const std::string& source, std::vector<BatchDrawing>* drawings,
                     std::string* error) {
  std::error_code code;
  bool read = false;
  if (fs::is_directory(source, code)) {
    read = WalkFolder(source, drawings, error);
  } else if (fs::is_regular_file(source, code)) {
    read = ReadList(source, drawings, error);
  } else {
    *error = "no folder or list file " + source;
  }
  if (!read) return false;
  std::sort(drawings->begin(), drawings->end(),
            [](const BatchDrawing& a, const BatchDrawing& b) { return a.path < b.path; });
  MakeOutKeysUnique(*drawings);
  return true;
}

std::string OutFolder(const BatchDrawing& drawing, const std::string& out_dir) {
  return (fs::path(out_dir) / drawing.out_key).string();
}

std::vector<std::string> ExpandCommand(const std::vector<std::string>& command,
                                       const BatchDrawing& drawing, const std::string& out_dir) {
  std::vector<std::string> expanded = command;
  for (std::string& arg : expanded) {
    ReplaceAll(arg, "{drawing}", drawing.path);
    ReplaceAll(arg, "{stem}", drawing.stem);
    if (!out_dir.empty()) ReplaceAll(arg, "{out}", OutFolder(drawing, out_dir));
  }
  return expanded;
}

}  // namespace fx::cli
