#ifndef FX_HOST_DXF_DXF_TEXT_CODEC_H_
#define FX_HOST_DXF_DXF_TEXT_CODEC_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fx::dxf {

struct SingleByteCodePage;

// Converts between the bytes a drawing stores in its string values and UTF-8.
//
// Drawings before AC1021 store strings in their $DWGCODEPAGE code page and spell other
// characters as "\U+XXXX" (UTF-16 units, supplementary characters as a surrogate pair) or,
// for the East Asian pages, "\M+NXXXX" (N: 1 = 932, 2 = 950, 3 = 949, 4 = 1361, 5 = 936; XXXX
// the two bytes in that page). From AC1021 on strings are UTF-8, and may still carry "\U+".
//
// Decoding never fails: bytes the page cannot decode become U+FFFD in the result. The stored
// values themselves are never changed by decoding. Pure ASCII passes through unchanged.
class TextCodec {
 public:
  static TextCodec Utf8();

  // The page a $DWGCODEPAGE value names, ignoring case: ANSI_874, ANSI_1250 to ANSI_1258,
  // ANSI_932/936/949/950/1361, DOS437/850/852/855/857/860/861/863/865/866/869, MACINTOSH.
  static std::optional<TextCodec> ForCodePage(std::string_view dwg_code_page);

  // The codec of a drawing: UTF-8 from AC1021 on, otherwise its code page, ANSI_1252 when
  // the page is empty or unknown (*code_page_known tells which).
  static TextCodec ForDrawing(std::string_view acadver, std::string_view dwg_code_page,
                              bool* code_page_known = nullptr);

  std::string_view name() const { return name_; }  // "UTF-8", "ANSI_1252", ...
  bool is_utf8() const { return kind_ == Kind::kUtf8; }

  // Stored bytes to UTF-8, with "\U+" and "\M+" escapes turned into the characters.
  std::string Decode(std::string_view raw) const;

  // UTF-8 to the stored form; characters the page cannot hold become "\U+XXXX".
  std::string Encode(std::string_view utf8) const;

 private:
  enum class Kind : uint8_t { kUtf8, kSingleByte, kMultiByte };

  TextCodec(Kind kind, std::string_view name, const SingleByteCodePage* single_byte_page,
            const char* iconv_name)
      : kind_(kind), name_(name), single_byte_page_(single_byte_page), iconv_name_(iconv_name) {}

  std::string BytesToUtf8(std::string_view raw) const;

  Kind kind_;
  std::string_view name_;  // static storage
  const SingleByteCodePage* single_byte_page_;
  const char* iconv_name_;
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_TEXT_CODEC_H_
