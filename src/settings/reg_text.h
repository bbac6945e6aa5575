// Text conversions of the settings file: UTF-8 (our strings) to and from
// UTF-16 (registry strings and the file's usual encoding).
#ifndef FLOORXPORT_SETTINGS_REG_TEXT_H_
#define FLOORXPORT_SETTINGS_REG_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fx::settings {

// False, leaving *out unspecified, when `text` is not valid UTF-8.
bool Utf8ToUtf16(std::string_view text, std::u16string* out);
// False, leaving *out unspecified, for an unpaired surrogate.
bool Utf16ToUtf8(std::u16string_view text, std::string* out);

// The data of a REG_SZ value: UTF-16LE with its terminating zero, i.e.
// (length + 1) * 2 bytes. False when `text` is not valid UTF-8.
bool EncodeRegSz(std::string_view text, std::vector<uint8_t>* data);
// The text of REG_SZ-like data up to its first zero unit (or the end). An odd
// last byte is ignored; an unpaired surrogate becomes U+FFFD.
std::string DecodeRegSz(const std::vector<uint8_t>& data);
// True when `data` is exactly EncodeRegSz of some text (one terminating zero,
// no zero before it, no unpaired surrogate); *text receives that text.
bool IsPlainRegSz(const std::vector<uint8_t>& data, std::string* text);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_REG_TEXT_H_
