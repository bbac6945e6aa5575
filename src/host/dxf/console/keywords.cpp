#include "host/dxf/console/keywords.h"

#include <cctype>

#include "host/dxf/console/text_case.h"

namespace fx::console {
namespace {

std::vector<std::string> SplitBlanks(std::string_view text) {
  std::vector<std::string> words;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t start = text.find_first_not_of(" \t", pos);
    if (start == std::string_view::npos) break;
    size_t end = text.find_first_of(" \t", start);
    if (end == std::string_view::npos) end = text.size();
    words.emplace_back(text.substr(start, end - start));
    pos = end;
  }
  return words;
}

std::string Capitals(std::string_view keyword) {
  std::string capitals;
  for (char c : keyword) {
    if (std::isupper(static_cast<unsigned char>(c))) capitals += c;
  }
  return capitals;
}

// The index of the keyword `answer` names in `keywords`, or -1.
int FindKeyword(const std::vector<std::string>& keywords, std::string_view answer) {
  if (answer.empty()) return -1;
  for (size_t i = 0; i < keywords.size(); ++i) {
    if (EqualNoCase(keywords[i], answer)) return static_cast<int>(i);
  }
  for (size_t i = 0; i < keywords.size(); ++i) {
    if (EqualNoCase(Capitals(keywords[i]), answer)) return static_cast<int>(i);
  }
  int found = -1;
  for (size_t i = 0; i < keywords.size(); ++i) {
    if (keywords[i].size() > answer.size() &&
        EqualNoCase(std::string_view(keywords[i]).substr(0, answer.size()), answer)) {
      if (found >= 0) return -1;  // ambiguous
      found = static_cast<int>(i);
    }
  }
  return found;
}

}  // namespace

KeywordList::KeywordList(std::string_view list) {
  std::vector<std::string> words = SplitBlanks(list);
  bool in_global = false;
  for (std::string& word : words) {
    if (word == "_") {
      in_global = true;
    } else {
      (in_global ? global_ : local_).push_back(std::move(word));
    }
  }
  // A global list that does not pair up with the local one is ignored.
  if (global_.size() != local_.size()) global_.clear();
}

std::optional<std::string> KeywordList::Match(std::string_view answer) const {
  const std::vector<std::string>& globals = global_.empty() ? local_ : global_;
  int index = -1;
  if (answer.starts_with('_')) {
    index = FindKeyword(globals, answer.substr(1));
  } else {
    index = FindKeyword(local_, answer);
  }
  if (index < 0) return std::nullopt;
  return globals[static_cast<size_t>(index)];
}

}  // namespace fx::console
