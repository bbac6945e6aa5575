#include "host/dxf/dxf_iconv.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>

#include "host/dxf/dxf_utf8.h"

namespace fx::dxf {
namespace {

const iconv_t kInvalidHandle = reinterpret_cast<iconv_t>(-1);
constexpr size_t kIconvFailed = static_cast<size_t>(-1);

// iconv(3) takes its input as char** though it does not write through it.
char* MutableInput(const char* input) { return const_cast<char*>(input); }

}  // namespace

std::string IconvDecodeToUtf8(const char* charset, std::string_view raw) {
  std::string out;
  out.reserve(raw.size() * 2);
  const iconv_t handle = iconv_open("UTF-8", charset);
  if (handle == kInvalidHandle) {
    for (const char c : raw) {
      AppendUtf8(static_cast<uint8_t>(c) < 0x80 ? static_cast<char32_t>(c) : kReplacementCharacter,
                 &out);
    }
    return out;
  }
  char* in = MutableInput(raw.data());
  size_t in_left = raw.size();
  char buffer[1024];
  while (in_left > 0) {
    char* converted = buffer;
    size_t room = sizeof buffer;
    const size_t result = iconv(handle, &in, &in_left, &converted, &room);
    out.append(buffer, static_cast<size_t>(converted - buffer));
    if (result == kIconvFailed && errno != E2BIG) {
      // EILSEQ or EINVAL (a sequence cut short by the end): skip one byte and resynchronize.
      AppendUtf8(kReplacementCharacter, &out);
      ++in;
      --in_left;
      iconv(handle, nullptr, nullptr, nullptr, nullptr);
    }
  }
  iconv_close(handle);
  return out;
}

IconvEncoder::IconvEncoder(const char* charset) {
  const iconv_t handle = iconv_open(charset, "UTF-8");
  handle_ = handle == kInvalidHandle ? nullptr : handle;
}

IconvEncoder::~IconvEncoder() {
  if (handle_ != nullptr) iconv_close(handle_);
}

bool IconvEncoder::EncodeCharacter(std::string_view utf8_character, std::string* out) {
  if (handle_ == nullptr) return false;
  char* in = MutableInput(utf8_character.data());
  size_t in_left = utf8_character.size();
  char buffer[16];
  char* converted = buffer;
  size_t room = sizeof buffer;
  const size_t result = iconv(handle_, &in, &in_left, &converted, &room);
  // Glibc counts characters it replaced by an approximation as irreversible (result > 0);
  // those are not the character asked for.
  const bool exact = result == 0 && in_left == 0;
  iconv(handle_, nullptr, nullptr, nullptr, nullptr);
  if (!exact) return false;
  out->append(buffer, static_cast<size_t>(converted - buffer));
  return true;
}

}  // namespace fx::dxf
