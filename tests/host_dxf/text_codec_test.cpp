// Code page round trips: what a page can hold is stored as its bytes, everything else as
// \U+XXXX, and decoding gives the original text back.
#include <gtest/gtest.h>

#include "host/dxf/dxf_text_codec.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

TextCodec Page(std::string_view name) {
  const std::optional<TextCodec> codec = TextCodec::ForCodePage(name);
  EXPECT_TRUE(codec) << name;
  return codec.value_or(TextCodec::Utf8());
}

struct RoundTrip {
  const char* page;
  std::string text;     // UTF-8
  std::string encoded;  // as stored
};

TEST(TextCodec, CodePagesRoundTripWithUnicodeEscapes) {
  const RoundTrip cases[] = {
      {"ANSI_1252", "Café ☃ 😀", "Caf\xE9 \\U+2603 \\U+D83D\\U+DE00"},
      {"ANSI_1251", "Привет, € ü", "\xCF\xF0\xE8\xE2\xE5\xF2, \x88 \\U+00FC"},
      {"ansi_1251", "Room 101", "Room 101"},
      {"ANSI_936", "房间 😀", "\xB7\xBF\xBC\xE4 \\U+D83D\\U+DE00"},
      {"ANSI_932", "日本", "\x93\xFA\x96{"},
  };
  for (const RoundTrip& test_case : cases) {
    SCOPED_TRACE(test_case.page);
    const TextCodec codec = Page(test_case.page);
    EXPECT_EQ(codec.Encode(test_case.text), test_case.encoded);
    EXPECT_EQ(codec.Decode(test_case.encoded), test_case.text);
  }
}

TEST(TextCodec, DecodingNeverFailsAndLeavesOtherBackslashesAlone) {
  const TextCodec cp1252 = Page("ANSI_1252");
  EXPECT_EQ(cp1252.Decode("a\x81z"), "a\uFFFDz");                             // undefined in 1252
  EXPECT_EQ(cp1252.Decode("\\P\\U+00e9\\U+12\\U+DC00"), "\\Pé\\U+12\uFFFD");  // MTEXT codes stay
  EXPECT_EQ(Page("ANSI_936").Decode("\xB7"), "\uFFFD");                       // cut-off double byte
  EXPECT_EQ(cp1252.Decode("\\M+5B7BF\\M+9ZZZZ"), "房\\M+9ZZZZ");

  const TextCodec utf8 = TextCodec::Utf8();
  EXPECT_EQ(utf8.Decode("Caf\xC3\xA9 \xFF \\U+2603"), "Café \uFFFD ☃");
  EXPECT_EQ(utf8.Encode("Café ☃"), "Café ☃");
}

TEST(TextCodec, DocumentsDecodeTheirStrings) {
  const std::string drawing =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$DWGCODEPAGE\n3\nANSI_1251\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n0\nTEXT\n1\n\xCA\xF3\xF5\xED\xFF\n0\nENDSEC\n0\nEOF\n";
  testing::CollectingSink sink;
  LoadError error;
  const std::unique_ptr<Document> doc = Document::Parse(drawing, "cyrillic.dxf", &error, &sink);
  ASSERT_TRUE(doc) << error.message;
  EXPECT_TRUE(sink.reports.empty());
  const RecordId text = doc->next(doc->next(doc->next(doc->first())));
  EXPECT_EQ(doc->codec().Decode(doc->tags(text)[1].value), "Кухня");

  std::string unknown_page = drawing;
  unknown_page.replace(unknown_page.find("ANSI_1251"), 9, "ANSI_7");
  ASSERT_TRUE(Document::Parse(unknown_page, "unknown.dxf", &error, &sink));
  ASSERT_EQ(sink.reports.size(), 1u);
  EXPECT_EQ(sink.reports[0].second,
            "unknown.dxf: unknown $DWGCODEPAGE 'ANSI_7'; strings are read as ANSI_1252");
}

}  // namespace
}  // namespace fx::dxf
