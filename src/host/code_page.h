// Windows code pages, for the files the plug-in writes in the user's code
// page instead of UTF-8 (the room report, the .svgz text). A host on Windows
// answers from the system; the headless host from the locale, its own code
// page tables and iconv.
#ifndef FLOORXPORT_HOST_CODE_PAGE_H_
#define FLOORXPORT_HOST_CODE_PAGE_H_

#include <memory>
#include <string>
#include <string_view>

namespace fx {

inline constexpr unsigned kCodePageUtf8 = 65001;

// The ANSI code page Windows uses for the user's locale. Elsewhere, from the
// first of LC_ALL, LC_CTYPE and LANG that is set: zh_CN gives 936, zh_TW
// 950, ja_JP 932, ko_KR 949, ru_RU 1251, pl_PL 1250, el_GR 1253, tr_TR 1254,
// and every western locale 1252; the locale's character set does not count.
// 0 when the locale names no language (C, POSIX, none set).
unsigned UserAnsiCodePage();

// The code page a $DWGCODEPAGE value names ("ANSI_936" is 936, "DOS850"
// 850, "MACINTOSH" 10000), ignoring case and blanks; 0 for none the host
// knows.
unsigned CodePageOfDwgName(std::string_view dwg_code_page);

// True for a page the host can write (CodePageEncoder).
bool CanWriteCodePage(unsigned code_page);

// The name of `code_page` for an XML declaration, one that XML readers
// (those over iconv, and web browsers) both decode as CodePageUse::kXml
// writes: "windows-1252", "GBK", "Windows-31J", "EUC-KR", "Big5", "UTF-8".
// Null for a page without such a name (most DOS pages, Johab).
const char* CodePageXmlName(unsigned code_page);

enum class CodePageUse {
  // As Windows converts: where a single-byte page leaves a byte undefined,
  // the C1 control of that value (U+0080 to U+009F) is that byte.
  kWindows,
  // As readers of the page's XML name decode: no undefined bytes, and 949
  // and 950 without the Windows extensions to EUC-KR and Big5.
  kXml,
};

// Writes characters in one code page.
class CodePageEncoder {
 public:
  explicit CodePageEncoder(unsigned code_page, CodePageUse use = CodePageUse::kWindows);
  ~CodePageEncoder();
  CodePageEncoder(const CodePageEncoder&) = delete;
  CodePageEncoder& operator=(const CodePageEncoder&) = delete;

  // False for a page the host cannot write: every Append fails then.
  bool ok() const;
  // Appends `c` in the code page; false, appending nothing, when the page
  // cannot hold it.
  bool Append(char32_t c, std::string* out);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace fx

#endif  // FLOORXPORT_HOST_CODE_PAGE_H_
