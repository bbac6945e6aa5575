#include "review/finding_kinds.h"

namespace fx::review {
namespace {

constexpr bool KindsInOrder() {
  for (size_t i = 0; i < kKinds.size(); ++i) {
    if (static_cast<size_t>(kKinds[i].kind) != i) return false;
  }
  return true;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

std::string ValidWords() {
  std::string words = "any";
  for (const KindInfo& info : kKinds) words += std::string(", ") + info.id;
  return words;
}

}  // namespace

const KindInfo& Info(ProblemKind kind) {
  static_assert(KindsInOrder(), "kKinds is indexed by kind");
  return kKinds[static_cast<size_t>(kind)];
}

std::optional<ProblemKind> KindFromId(std::string_view id) {
  for (const KindInfo& info : kKinds) {
    if (id == info.id) return info.kind;
  }
  return std::nullopt;
}

bool ParseKindList(std::string_view text, KindSet* kinds, std::string* error) {
  KindSet parsed;
  while (true) {
    const size_t comma = text.find(',');
    const std::string_view word = Trimmed(text.substr(0, comma));
    if (word == "any") {
      for (const KindInfo& info : kKinds) parsed.insert(info.kind);
    } else if (const std::optional<ProblemKind> kind = KindFromId(word)) {
      parsed.insert(*kind);
    } else {
      *error = "unknown kind of finding \"" + std::string(word) + "\" (give " + ValidWords() + ")";
      return false;
    }
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  *kinds = parsed;
  return true;
}

}  // namespace fx::review
