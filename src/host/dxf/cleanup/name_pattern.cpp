#include "host/dxf/cleanup/name_pattern.h"

#include <cctype>

namespace fx::cleanup {
namespace {

// The length of the UTF-8 character starting at text[pos] (1 for a stray byte).
size_t CharLength(std::string_view text, size_t pos) {
  size_t length = 1;
  while (pos + length < text.size() && (static_cast<unsigned char>(text[pos + length]) & 0xC0) == 0x80)
    ++length;
  return length;
}

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool MatchOne(char pattern, std::string_view name, size_t pos, size_t length) {
  unsigned char c = static_cast<unsigned char>(name[pos]);
  switch (pattern) {
    case '?': return true;
    case '#': return length == 1 && std::isdigit(c);
    case '@': return length == 1 && std::isalpha(c);
    default: return length == 1 && Lower(pattern) == Lower(name[pos]);
  }
}

// Iterative matching with one backtracking point for the last '*': linear
// for the usual patterns, never exponential.
bool Match(std::string_view pattern, std::string_view name) {
  size_t p = 0, n = 0;
  size_t star = std::string_view::npos, star_n = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      star_n = n;
      continue;
    }
    size_t length = CharLength(name, n);
    if (p < pattern.size() && MatchOne(pattern[p], name, n, length)) {
      ++p;
      n += length;
      continue;
    }
    if (star == std::string_view::npos) return false;
    p = star + 1;
    star_n += CharLength(name, star_n);
    n = star_n;
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace

NamePattern::NamePattern(std::string_view list) {
  size_t start = 0;
  while (start <= list.size()) {
    size_t comma = list.find(',', start);
    if (comma == std::string_view::npos) comma = list.size();
    std::string_view item = list.substr(start, comma - start);
    while (!item.empty() && item.front() == ' ') item.remove_prefix(1);
    while (!item.empty() && item.back() == ' ') item.remove_suffix(1);
    if (!item.empty()) patterns_.emplace_back(item);
    start = comma + 1;
  }
}

bool NamePattern::Matches(std::string_view name) const {
  if (patterns_.empty()) return true;
  for (const std::string& pattern : patterns_) {
    bool negated = pattern.starts_with('~');
    bool matched = Match(negated ? std::string_view(pattern).substr(1) : std::string_view(pattern), name);
    if (matched != negated) return true;
  }
  return false;
}

}  // namespace fx::cleanup
