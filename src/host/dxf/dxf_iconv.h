#ifndef FX_HOST_DXF_DXF_ICONV_H_
#define FX_HOST_DXF_DXF_ICONV_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

namespace fx::dxf {

// Decodes `raw` from iconv's `charset` into UTF-8. Bytes that do not decode become U+FFFD;
// when the C library lacks the charset, every non-ASCII byte does.
std::string IconvDecodeToUtf8(const char* charset, std::string_view raw);

// Encodes UTF-8 text character by character into iconv's `charset`. Not thread-safe: make
// one per conversion.
class IconvEncoder {
 public:
  explicit IconvEncoder(const char* charset);
  ~IconvEncoder();
  IconvEncoder(const IconvEncoder&) = delete;
  IconvEncoder& operator=(const IconvEncoder&) = delete;

  // False when the C library lacks the charset: then every character fails.
  bool ok() const { return handle_ != nullptr; }

  // Appends `utf8_character` (one code point) in the charset; false, appending nothing,
  // when the charset cannot hold it.
  bool EncodeCharacter(std::string_view utf8_character, std::string* out);

 private:
  void* handle_;  // iconv_t, or null when the charset is not available
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_ICONV_H_
