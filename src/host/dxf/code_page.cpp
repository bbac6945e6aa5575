// The host's code pages (host/code_page.h): the user's ANSI code page from the
// locale, and encoders over the DXF layer's code page tables and iconv.
#include "host/code_page.h"

#include <cstdlib>
#include <initializer_list>
#include <string>

#include "host/dxf/dxf_code_page_tables.h"
#include "host/dxf/dxf_iconv.h"
#include "host/dxf/dxf_utf8.h"
#include "host/dxf/dxf_values.h"

namespace fx {
namespace {

struct PageName {
  unsigned code_page;
  std::string_view dwg_name;  // as $DWGCODEPAGE and the single-byte tables spell it
  const char* iconv_name;     // the double-byte pages, written by iconv
  const char* xml_name;       // for XML declarations; null for none readers agree on
  const char* xml_iconv_name; // iconv's charset of that name, where it is not iconv_name
};

constexpr PageName kPages[] = {
    {874, "ANSI_874", nullptr, "windows-874", nullptr},
    {932, "ANSI_932", "CP932", "Windows-31J", nullptr},
    {936, "ANSI_936", "CP936", "GBK", nullptr},
    {949, "ANSI_949", "CP949", "EUC-KR", "EUC-KR"},
    {950, "ANSI_950", "CP950", "Big5", "BIG5"},
    {1250, "ANSI_1250", nullptr, "windows-1250", nullptr},
    {1251, "ANSI_1251", nullptr, "windows-1251", nullptr},
    {1252, "ANSI_1252", nullptr, "windows-1252", nullptr},
    {1253, "ANSI_1253", nullptr, "windows-1253", nullptr},
    {1254, "ANSI_1254", nullptr, "windows-1254", nullptr},
    {1255, "ANSI_1255", nullptr, "windows-1255", nullptr},
    {1256, "ANSI_1256", nullptr, "windows-1256", nullptr},
    {1257, "ANSI_1257", nullptr, "windows-1257", nullptr},
    {1258, "ANSI_1258", nullptr, "windows-1258", nullptr},
    {1361, "ANSI_1361", "JOHAB", nullptr, nullptr},
    {437, "DOS437", nullptr, nullptr, nullptr},
    {850, "DOS850", nullptr, nullptr, nullptr},
    {852, "DOS852", nullptr, nullptr, nullptr},
    {855, "DOS855", nullptr, nullptr, nullptr},
    {857, "DOS857", nullptr, nullptr, nullptr},
    {860, "DOS860", nullptr, nullptr, nullptr},
    {861, "DOS861", nullptr, nullptr, nullptr},
    {863, "DOS863", nullptr, nullptr, nullptr},
    {865, "DOS865", nullptr, nullptr, nullptr},
    {866, "DOS866", nullptr, "IBM866", nullptr},
    {869, "DOS869", nullptr, nullptr, nullptr},
    {10000, "MACINTOSH", nullptr, "macintosh", nullptr},
};

const PageName* FindPage(unsigned code_page) {
  for (const PageName& page : kPages) {
    if (page.code_page == code_page) return &page;
  }
  return nullptr;
}

const dxf::SingleByteCodePage* SingleByteTable(std::string_view dwg_name) {
  for (const dxf::SingleByteCodePage* table : dxf::SingleByteCodePages()) {
    if (table->dxf_name == dwg_name) return table;
  }
  return nullptr;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = Lower(c);
  return lower;
}

bool OneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  for (std::string_view w : words) {
    if (word == w) return true;
  }
  return false;
}

// language[_territory][.charset][@modifier], as POSIX names a locale.
unsigned AnsiCodePageOfLocale(std::string_view locale) {
  const size_t modifier_at = locale.find('@');
  const std::string modifier =
      modifier_at == std::string_view::npos ? std::string() : LowerCase(locale.substr(modifier_at + 1));
  locale = locale.substr(0, modifier_at);
  locale = locale.substr(0, locale.find('.'));
  const size_t territory_at = locale.find('_');
  const std::string language = LowerCase(locale.substr(0, territory_at));
  const std::string territory =
      territory_at == std::string_view::npos ? std::string() : LowerCase(locale.substr(territory_at + 1));
  if (language.empty() || language == "c" || language == "posix") return 0;
  const bool latin = modifier == "latin";
  const bool cyrillic = modifier == "cyrillic";
  if (language == "ja") return 932;
  if (language == "ko") return 949;
  if (language == "zh") return OneOf(territory, {"tw", "hk", "mo"}) ? 950 : 936;
  if (language == "th") return 874;
  if (language == "vi") return 1258;
  if (language == "sr") return latin || (territory == "me" && !cyrillic) ? 1250 : 1251;
  if (OneOf(language, {"az", "uz"})) return cyrillic ? 1251 : 1254;
  if (OneOf(language, {"cs", "sk", "pl", "hu", "sl", "hr", "bs", "ro", "sq", "tk"})) return 1250;
  if (OneOf(language, {"ru", "uk", "be", "bg", "mk", "kk", "ky", "tt", "mn", "ba", "tg", "sah"})) return 1251;
  if (language == "el") return 1253;
  if (language == "tr") return 1254;
  if (OneOf(language, {"he", "iw", "yi"})) return 1255;
  if (OneOf(language, {"ar", "fa", "ur", "ps", "ug", "sd", "ckb"})) return 1256;
  if (OneOf(language, {"et", "lv", "lt"})) return 1257;
  return 1252;
}

}  // namespace

unsigned UserAnsiCodePage() {
  // The first that is set and not empty wins, as for the C library's LC_CTYPE.
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return AnsiCodePageOfLocale(value);
  }
  return 0;
}

unsigned CodePageOfDwgName(std::string_view dwg_code_page) {
  const std::string name = LowerCase(dxf::TrimBlanks(dwg_code_page));
  for (const PageName& page : kPages) {
    if (LowerCase(page.dwg_name) == name) return page.code_page;
  }
  return 0;
}

bool CanWriteCodePage(unsigned code_page) { return CodePageEncoder(code_page).ok(); }

const char* CodePageXmlName(unsigned code_page) {
  if (code_page == kCodePageUtf8) return "UTF-8";
  const PageName* page = FindPage(code_page);
  return page != nullptr && CanWriteCodePage(code_page) ? page->xml_name : nullptr;
}

struct CodePageEncoder::State {
  bool utf8 = false;
  bool c1_in_undefined_bytes = false;
  const dxf::SingleByteCodePage* table = nullptr;
  std::unique_ptr<dxf::IconvEncoder> iconv;
};

CodePageEncoder::CodePageEncoder(unsigned code_page, CodePageUse use) : state_(std::make_unique<State>()) {
  const PageName* page = FindPage(code_page);
  if (code_page == kCodePageUtf8) {
    state_->utf8 = true;
  } else if (page != nullptr && page->iconv_name != nullptr) {
    const bool xml_charset = use == CodePageUse::kXml && page->xml_iconv_name != nullptr;
    state_->iconv = std::make_unique<dxf::IconvEncoder>(xml_charset ? page->xml_iconv_name : page->iconv_name);
    if (!state_->iconv->ok()) state_->iconv.reset();
  } else if (page != nullptr) {
    state_->table = SingleByteTable(page->dwg_name);
    state_->c1_in_undefined_bytes = use == CodePageUse::kWindows;
  }
}

CodePageEncoder::~CodePageEncoder() = default;

bool CodePageEncoder::ok() const { return state_->utf8 || state_->table != nullptr || state_->iconv != nullptr; }

bool CodePageEncoder::Append(char32_t c, std::string* out) {
  const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
  if (c > 0x10FFFF || surrogate) return false;
  if (state_->utf8) {
    dxf::AppendUtf8(c, out);
    return true;
  }
  if (c < 0x80 && ok()) {
    out->push_back(static_cast<char>(c));
    return true;
  }
  if (const dxf::SingleByteCodePage* table = state_->table) {
    for (size_t i = 0; i < table->upper.size(); ++i) {
      const char32_t defined = table->upper[i];
      const bool undefined_c1 =
          state_->c1_in_undefined_bytes && defined == dxf::kReplacementCharacter && c == 0x80 + i;
      if ((defined == c && c != dxf::kReplacementCharacter) || undefined_c1) {
        out->push_back(static_cast<char>(0x80 + i));
        return true;
      }
    }
    return false;
  }
  if (state_->iconv == nullptr || c == dxf::kReplacementCharacter) return false;
  std::string character;
  dxf::AppendUtf8(c, &character);
  return state_->iconv->EncodeCharacter(character, out);
}

}  // namespace fx
