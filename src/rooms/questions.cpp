// CDocData's questions on the command line: the prompt with its two
// keywords appended, asked until the answer is one of them.
#include <cctype>
#include <string>
#include <string_view>

#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::rooms {
namespace {

constexpr size_t kAnswerSize = 133;

// An answer names a keyword when it is a non-empty prefix of it in any
// letter case ("y", "YES"), also with the underscore of the global form
// ("_Yes"), as the editor accepts keywords.
bool NamesKeyword(std::string_view answer, std::string_view keyword) {
  if (answer.starts_with('_')) answer.remove_prefix(1);
  if (answer.empty() || answer.size() > keyword.size()) return false;
  for (size_t i = 0; i < answer.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(answer[i])) !=
        std::tolower(static_cast<unsigned char>(keyword[i]))) {
      return false;
    }
  }
  return true;
}

// False when the input was cancelled. Both questions say "Yes or No,
// please." to a wrong answer: the editor's text, kept as it is.
bool AskKeyword(const char* prompt, std::string_view first, std::string_view second, bool& is_first) {
  const std::string question = std::string(prompt) + "[" + std::string(first) + "/" + std::string(second) + "]:";
  for (;;) {
    char answer[kAnswerSize] = {};
    const int read = acedGetString(0, question.c_str(), answer, sizeof answer);
    if (read != RTNORM && read != RTINPUTTRUNCATED) return false;  // a cut answer is no keyword
    if (NamesKeyword(answer, first) || NamesKeyword(answer, second)) {
      is_first = NamesKeyword(answer, first);
      return true;
    }
    acutPrintf("\nYes or No, please.");
  }
}

}  // namespace

bool CDocData::AskYesNo(const char* prompt, bool& yes) { return AskKeyword(prompt, "Yes", "No", yes); }

bool CDocData::AskBlockOrText(const char* prompt, bool& block) {
  return AskKeyword(prompt, "Block", "Text", block);
}

}  // namespace fx::rooms
