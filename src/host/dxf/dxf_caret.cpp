#include "host/dxf/dxf_caret.h"

#include <cstdint>

namespace fx::dxf {
namespace {

constexpr char kCaret = '^';
constexpr uint8_t kFirstControl = 1;  // NUL never occurs in a string
constexpr uint8_t kLastControl = 31;
constexpr uint8_t kLetterOffset = 64;  // ^A is 1, ^J is 10, ^_ is 31

bool IsControl(char c) {
  const auto byte = static_cast<uint8_t>(c);
  return byte >= kFirstControl && byte <= kLastControl;
}

}  // namespace

std::string CaretDecode(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  for (size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (c == kCaret && i + 1 < value.size()) {
      const char next = value[i + 1];
      const int control = static_cast<uint8_t>(next) - kLetterOffset;
      if (next == ' ') {
        text.push_back(kCaret);
        ++i;
        continue;
      }
      if (control >= kFirstControl && control <= kLastControl) {
        text.push_back(static_cast<char>(control));
        ++i;
        continue;
      }
    }
    text.push_back(c);
  }
  return text;
}

std::string CaretEncode(std::string_view text) {
  std::string value;
  value.reserve(text.size() + 8);
  for (const char c : text) {
    if (c == kCaret) {
      value += "^ ";
    } else if (IsControl(c)) {
      value.push_back(kCaret);
      value.push_back(static_cast<char>(static_cast<uint8_t>(c) + kLetterOffset));
    } else {
      value.push_back(c);
    }
  }
  return value;
}

bool NeedsCaretEncoding(std::string_view text) {
  for (const char c : text) {
    if (c == kCaret || IsControl(c)) return true;
  }
  return false;
}

}  // namespace fx::dxf
