// The settings file format: exact text written, every form read, damaged
// lines reported with their line numbers, and read-write-read stability.
#include <gtest/gtest.h>

#include <random>

#include "settings/reg_file_reader.h"
#include "settings/reg_file_writer.h"
#include "settings/reg_text.h"
#include "settings_test_support.h"

namespace fx::settings {
namespace {

using testing::Describe;
using testing::RegText;
using testing::Utf16LeFile;

constexpr char kExportKey[] = "HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ExportOptions";

RegValue Integer(std::string name, uint32_t bits) {
  return {std::move(name),
          kRegNone,
          {static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8),
           static_cast<uint8_t>(bits >> 16), static_cast<uint8_t>(bits >> 24)}};
}

RegValue String(std::string name, std::string_view text) {
  RegValue value{std::move(name), kRegSz, {}};
  EXPECT_TRUE(EncodeRegSz(text, &value.data));
  return value;
}

RegFile ParseClean(std::string_view bytes) {
  std::vector<RegFileProblem> problems;
  RegFile file = ParseRegFile(bytes, &problems);
  for (const RegFileProblem& problem : problems) {
    ADD_FAILURE() << "line " << problem.line << ": " << problem.message;
  }
  return file;
}

// The exact text of values and a new file's UTF-16LE are in settings_test.cpp;
// here, the forms the settings operations never write.
TEST(RegFileWriter, StringsAQuotedFormWouldChangeAreWrittenAsHex) {
  const struct {
    RegValue value;
    const char* line;
  } kCases[] = {
      {String("Note", "a\r\nb"), "\"Note\"=hex(1):61,00,0d,00,0a,00,62,00,00,00"},
      {{"NoZero", kRegSz, {0x61, 0x00}}, "\"NoZero\"=hex(1):61,00"},
      {{"Lone", kRegSz, {0x00, 0xD8, 0x00, 0x00}}, "\"Lone\"=hex(1):00,d8,00,00"},
      {{"Bin", kRegBinary, {0xAB}}, "\"Bin\"=hex:ab"},
      {{"Empty", kRegNone, {}}, "\"Empty\"=hex(0):"},
      {{"Q", 11, {1, 2, 3, 4, 5, 6, 7, 8}}, "\"Q\"=hex(b):01,02,03,04,05,06,07,08"},
      {{"ShortDword", kRegDword, {1, 2}}, "\"ShortDword\"=hex(4):01,02"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(FormatRegValue(test.value), test.line);
    RegFile file;
    file.FindOrAddKey("HKEY_CURRENT_USER\\X").Set(test.value);
    const RegFile again = ParseClean(FormatRegFile(file));
    EXPECT_EQ(Describe(again), Describe(file)) << test.line;
  }
}

// Long hex data goes on over lines of at most 80 columns, the backslash
// included, filled as the registry editor fills them.
TEST(RegFileWriter, LongHexDataGoesOnOverLinesAsTheRegistryEditorWritesThem) {
  RegValue value{"Server list blob", kRegBinary, std::vector<uint8_t>(100, 0x5A)};
  auto bytes = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "5a,";
    return text;
  };
  const std::string full_line = "  " + bytes(25) + "\\\r\n";  // 78 columns
  EXPECT_EQ(FormatRegValue(value), "\"Server list blob\"=hex:" + bytes(18) + "\\\r\n" + full_line + full_line +
                                       full_line + "  " + bytes(6) + "5a");
  RegFile file;
  file.FindOrAddKey("HKEY_CURRENT_USER\\X").Set(value);
  EXPECT_EQ(Describe(ParseClean(FormatRegFile(file))), Describe(file));
}

TEST(RegFileReader, ReadsEveryValueForm) {
  const RegFile file =
      ParseClean(RegText("; a comment\r\n"
                         "[HKEY_CURRENT_USER\\Software\\PlanVault\\VantoryApp\\ExportOptions\\]\r\n"
                         "\"Draw Box\"=hex(0):01,00,00,00\r\n"
                         "\"Hand\" = dword:2A\r\n"
                         "\"Text\"=\"a\\\\b \\\"c\\\" \\n\"\r\n"
                         "@=\"default\"\r\n"
                         "\"Wrapped\"=hex(2):41,00,\\\r\n"
                         "  42,00,00,00\r\n"
                         "\"Bin\"=hex:\r\n"));
  ASSERT_EQ(file.keys.size(), 1u);
  EXPECT_EQ(file.keys[0].path, kExportKey);  // the trailing backslash dropped
  RegKey expected{kExportKey, {}};
  expected.Set(Integer("Draw Box", 1));
  expected.Set({"Hand", kRegDword, {0x2a, 0, 0, 0}});
  expected.Set(String("Text", "a\\b \"c\" \\n"));  // only \\ and \" are escapes
  expected.Set(String("", "default"));
  expected.Set({"Wrapped", kRegExpandSz, {0x41, 0, 0x42, 0, 0, 0}});
  expected.Set({"Bin", kRegBinary, {}});
  EXPECT_EQ(Describe(file), Describe(RegFile{RegEncoding::kUtf8, {expected}}));
}

TEST(RegFileReader, ReadsEveryEncodingAndLineEnd) {
  const std::string body = "[HKEY_CURRENT_USER\\A]\n\"Name\"=\"Räume ✓\"\n";
  const std::string crlf = RegText("[HKEY_CURRENT_USER\\A]\r\n\"Name\"=\"Räume ✓\"\r\n");
  std::string big_endian = "\xFE\xFF";
  const std::string little = Utf16LeFile(crlf);
  for (size_t i = 2; i + 1 < little.size(); i += 2) {
    big_endian.push_back(little[i + 1]);
    big_endian.push_back(little[i]);
  }
  const struct {
    std::string bytes;
    RegEncoding encoding;
  } kCases[] = {
      {little, RegEncoding::kUtf16Le},
      {big_endian, RegEncoding::kUtf16Le},
      {crlf, RegEncoding::kUtf8},
      {"\xEF\xBB\xBF" + crlf, RegEncoding::kUtf8Bom},
      {"Windows Registry Editor Version 5.00\n\n" + body, RegEncoding::kUtf8},
      {"REGEDIT4\n\n" + body, RegEncoding::kUtf8},
  };
  RegFile expected;
  expected.FindOrAddKey("HKEY_CURRENT_USER\\A").Set(String("Name", "Räume ✓"));
  for (const auto& test : kCases) {
    const RegFile file = ParseClean(test.bytes);
    EXPECT_EQ(file.encoding, test.encoding);
    EXPECT_EQ(Describe(file), Describe(expected));
  }
}

TEST(RegFileReader, ImportFormsDeleteWhatCameBefore) {
  const RegFile file =
      ParseClean(RegText("[HKEY_CURRENT_USER\\A]\r\n\"keep\"=\"1\"\r\n\"drop\"=\"2\"\r\n"
                         "[HKEY_CURRENT_USER\\A\\Sub]\r\n\"x\"=\"3\"\r\n"
                         "[HKEY_CURRENT_USER\\AB]\r\n\"y\"=\"4\"\r\n"
                         "[HKEY_CURRENT_USER\\A\\Subway]\r\n\"z\"=\"5\"\r\n"
                         "[hkey_current_user\\a]\r\n\"DROP\"=-\r\n"
                         "[-HKEY_CURRENT_USER\\A\\Sub]\r\n"));
  RegFile expected;
  expected.FindOrAddKey("HKEY_CURRENT_USER\\A").Set(String("keep", "1"));
  expected.FindOrAddKey("HKEY_CURRENT_USER\\AB").Set(String("y", "4"));
  expected.FindOrAddKey("HKEY_CURRENT_USER\\A\\Subway").Set(String("z", "5"));  // not below A\Sub
  EXPECT_EQ(Describe(file), Describe(expected));
  EXPECT_TRUE(file.HasKeyOrSubkey("HKEY_CURRENT_USER"));
  EXPECT_FALSE(file.HasKeyOrSubkey("HKEY_CURRENT_USER\\A\\Sub"));
}

TEST(RegFileReader, DamagedLinesAreReportedAndSkipped) {
  const struct {
    const char* line;
    const char* message;
  } kCases[] = {
      {"\"Draw Box\"=hex(0):01,zz,00,00", "bad hex data in value \"Draw Box\""},
      {"\"Draw Box\"=hex(0):01,,00", "bad hex data in value \"Draw Box\""},
      {"\"Draw Box\"=hex(0):100", "bad hex data in value \"Draw Box\""},
      {"\"Draw Box\"=hex(zz):01", "bad value type in value \"Draw Box\""},
      {"\"Draw Box\"=dword:123456789", "bad dword in value \"Draw Box\""},
      {"\"Draw Box\"=dword:", "bad dword in value \"Draw Box\""},
      {"\"Draw Box\"=1", "unknown kind of value in value \"Draw Box\""},
      {"\"Text\"=\"open", "unterminated string in value \"Text\""},
      {"\"Text\"=\"a\" b", "text after the closing quote in value \"Text\""},
      {"\"Text=\"a\"", "no '=' after the value name \"Text=\""},
      {"\"Text", "unterminated value name"},
      {"Draw Box=1", "not a key, a value or a comment"},
      {"\"Draw\rBox\"=\"1\"", "line break in a value name"},
      {"\xFF\xFE", "not valid text in the file's encoding"},
  };
  for (const auto& test : kCases) {
    const std::string bytes = RegText(std::string("[HKEY_CURRENT_USER\\A]\r\n\"a\"=\"1\"\r\n") +
                                      test.line + "\r\n\"b\"=\"2\"\r\n");
    std::vector<RegFileProblem> problems;
    const RegFile file = ParseRegFile(bytes, &problems);
    ASSERT_EQ(problems.size(), 1u) << test.line;
    EXPECT_EQ(problems[0].line, 5) << test.line;
    EXPECT_EQ(problems[0].message, test.message) << test.line;
    ASSERT_EQ(file.keys.size(), 1u) << test.line;
    ASSERT_EQ(file.keys[0].values.size(), 2u) << test.line;  // "a" and "b" kept
  }
}

TEST(RegFileReader, ValuesUnderABadKeyLineOrWithoutHeaderAreReported) {
  std::vector<RegFileProblem> problems;
  const RegFile file = ParseRegFile(
      "\"early\"=\"x\"\r\n"
      "[HKEY_CURRENT_USER\\A\r\n"
      "\"lost\"=\"y\"\r\n"
      "[]\r\n"
      "[HKEY_CURRENT_USER\\A\rB]\r\n"
      "[HKEY_CURRENT_USER\\B]\r\n"
      "\"kept\"=\"z\"\r\n",
      &problems);
  std::vector<std::string> messages;
  for (const auto& problem : problems) {
    messages.push_back(std::to_string(problem.line) + ": " + problem.message);
  }
  EXPECT_EQ(messages, (std::vector<std::string>{
                          "1: no \"Windows Registry Editor Version 5.00\" line",
                          "1: value \"early\" outside a valid key",
                          "2: key line without its closing ']'",
                          "3: value \"lost\" outside a valid key",
                          "4: empty key path",
                          "5: line break in the key path",
                      }));
  RegFile expected;
  expected.FindOrAddKey("HKEY_CURRENT_USER\\B").Set(String("kept", "z"));
  EXPECT_EQ(Describe(file), Describe(expected));
}

TEST(RegFileReader, AFileCutInsideACharacterLosesOnlyItsLastLine) {
  std::string bytes = Utf16LeFile(RegText("[HKEY_CURRENT_USER\\A]\r\n\"a\"=\"1\"\r\n\"b\"=\"2\""));
  bytes.pop_back();
  std::vector<RegFileProblem> problems;
  const RegFile file = ParseRegFile(bytes, &problems);
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].line, 5);
  ASSERT_EQ(file.keys.size(), 1u);
  EXPECT_EQ(file.keys[0].values.size(), 1u);
  std::vector<RegFileProblem> none;
  EXPECT_TRUE(ParseRegFile("", &none).keys.empty());
  EXPECT_TRUE(none.empty());  // an empty file is an empty store, not damage
}

// Whatever a (damaged) file holds, what was read is written so that it reads
// back the same, with no problem.
TEST(RegFileReader, WhatWasReadIsWrittenBackUnchangedInMeaning) {
  const char* kFragments[] = {
      "[HKEY_CURRENT_USER\\A]",
      "[HKEY_CURRENT_USER\\A\\B\\]",
      "[-HKEY_CURRENT_USER\\A\\B]",
      "\"n\"=\"v\"",
      "\"N\"=hex(0):01,02",
      "@=\"d\"",
      "\"q\\\"\"=\"\\\\\"",
      "\"x\"=-",
      "\"w\"=hex(7):41,00,00,00,\\",
      "  00,00",
      "\"d\"=dword:7fffffff",
      "\"bad\"=hex:zz",
      "; comment",
      "",
      "garbage",
      "\"u\"=\"Ä✓\"",
      "\"e\"=hex(1):0a,00,00,00",
      "[",
  };
  std::mt19937 random(1234);
  for (int round = 0; round < 300; ++round) {
    std::string text = round % 3 == 0 ? "" : "Windows Registry Editor Version 5.00\r\n";
    const int lines = static_cast<int>(random() % 12);
    for (int i = 0; i < lines; ++i) {
      text += kFragments[random() % std::size(kFragments)];
      text += random() % 2 ? "\r\n" : "\n";
    }
    std::vector<RegFileProblem> problems;
    RegFile file = ParseRegFile(round % 2 ? Utf16LeFile(text) : text, &problems);
    std::vector<RegFileProblem> again_problems;
    const RegFile again = ParseRegFile(FormatRegFile(file), &again_problems);
    EXPECT_TRUE(again_problems.empty()) << text;
    EXPECT_EQ(Describe(again), Describe(file)) << text;
    EXPECT_EQ(again.encoding, file.encoding) << text;
  }
}

}  // namespace
}  // namespace fx::settings
