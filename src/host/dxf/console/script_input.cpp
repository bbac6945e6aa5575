#include "host/dxf/console/script_input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace fx::console {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Splits at '\n'; a final line end does not start another (empty) line.
std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string line(text.substr(start, end - start));
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
    start = end + 1;
  }
  return lines;
}

// False with errno set when the file cannot be opened or read (a directory).
bool ReadWholeFile(const std::string& path, std::string& text) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return false;
  char buffer[8192];
  size_t count;
  while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0) text.append(buffer, count);
  bool ok = std::ferror(file) == 0;
  int read_error = errno;
  std::fclose(file);
  errno = read_error;
  return ok;
}

}  // namespace

void ScriptInput::AddLine(std::string_view text) {
  if (text.empty()) {
    lines_.push_back({});
    return;
  }
  for (std::string& line : SplitLines(text)) lines_.push_back({std::move(line)});
}

bool ScriptInput::AddFile(const std::string& path, std::string* error) {
  std::string text;
  if (!ReadWholeFile(path, text)) {
    *error = "cannot read script " + path + ": " + std::strerror(errno);
    return false;
  }
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  for (std::string& line : SplitLines(text)) {
    if (!line.starts_with(';')) lines_.push_back({std::move(line)});
  }
  return true;
}

void ScriptInput::InsertFront(std::string_view text) {
  if (!text.empty() && (text.back() == ' ' || text.back() == '\n')) text.remove_suffix(1);
  // What is left of the current line (possibly only its pending line end)
  // comes after the inserted text.
  if (in_line_) {
    lines_.push_front({line_.text.substr(pos_), line_.origin});
    in_line_ = false;
  }
  std::vector<std::string> lines = SplitLines(text);
  if (lines.empty()) lines.emplace_back();
  for (auto it = lines.rbegin(); it != lines.rend(); ++it) lines_.push_front({std::move(*it)});
}

void ScriptInput::Clear() {
  lines_.clear();
  in_line_ = false;
}

bool ScriptInput::StartLine() {
  if (!lines_.empty()) {
    line_ = std::move(lines_.front());
    lines_.pop_front();
  } else {
    std::string typed;
    if (!reader_ || !reader_(typed)) return false;
    line_ = {std::move(typed), TokenOrigin::kTyped};
  }
  pos_ = 0;
  in_line_ = true;
  return true;
}

std::string ScriptInput::ReadQuoted() {
  std::string token;
  const std::string& text = line_.text;
  ++pos_;  // the opening quote
  while (pos_ < text.size()) {
    char c = text[pos_++];
    if (c != '"') {
      token += c;
    } else if (pos_ < text.size() && text[pos_] == '"') {
      token += '"';
      ++pos_;
    } else {
      return token + ReadUntil(TokenEnd::kBlank);
    }
  }
  return token;  // unclosed: ran to the line end
}

std::string ScriptInput::ReadUntil(TokenEnd end) {
  const std::string& text = line_.text;
  size_t start = pos_;
  if (end == TokenEnd::kLineEnd) {
    pos_ = text.size();
  } else {
    while (pos_ < text.size() && !IsBlank(text[pos_])) ++pos_;
  }
  return text.substr(start, pos_ - start);
}

bool ScriptInput::Next(TokenEnd end, std::string& token, TokenOrigin* origin) {
  if (!in_line_ && !StartLine()) return false;
  if (origin != nullptr) *origin = line_.origin;
  const std::string& text = line_.text;
  token = pos_ < text.size() && text[pos_] == '"' ? ReadQuoted() : ReadUntil(end);
  // Consume the separator: a blank, or the line end.
  if (pos_ < text.size()) {
    ++pos_;
  } else {
    in_line_ = false;
  }
  return true;
}

}  // namespace fx::console
