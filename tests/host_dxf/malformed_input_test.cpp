// What the reader rejects (with the place of the damage) and what it tolerates (with a
// warning), from the hand-made drawings in tests/data/dxf.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_writer.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::CollectingSink;
using testing::TestData;
using testing::TestDataPath;

struct RejectedFile {
  const char* name;
  const char* message;
};

constexpr RejectedFile kRejectedFiles[] = {
    {"invalid_group_code.dxf", "invalid_group_code.dxf:25: invalid group code 'abc'"},
    {"truncated_value.dxf",
     "truncated_value.dxf:33: unexpected end of file: group code 30 has no value line"},
    {"bad_number.dxf", "bad_number.dxf:32: group code 20 expects a number, found '1,5'"},
    {"bad_integer.dxf", "bad_integer.dxf:16: group code 70 expects an integer, found '6.0'"},
    {"not_dxf.txt", "not_dxf.txt:1: not a DXF file: expected a 0/SECTION tag or a 999 comment"},
    {"starts_without_section.dxf",
     "starts_without_section.dxf:1: not a DXF file: expected a 0/SECTION tag or a 999 comment"},
    {"empty.dxf", "empty.dxf:1: not a DXF file: expected a 0/SECTION tag or a 999 comment"},
};

TEST(MalformedInput, BrokenFilesAreRejectedWithTheirPlace) {
  for (const RejectedFile& file : kRejectedFiles) {
    SCOPED_TRACE(file.name);
    LoadError error;
    EXPECT_EQ(Document::Parse(TestData(file.name), file.name, &error), nullptr);
    EXPECT_EQ(error.message, file.message);
  }
}

TEST(MalformedInput, LoadNamesThePathInMessages) {
  const std::string path = TestDataPath("invalid_group_code.dxf");
  LoadError error;
  EXPECT_EQ(Document::Load(path, &error), nullptr);
  EXPECT_EQ(error.message, path + ":25: invalid group code 'abc'");

  EXPECT_EQ(Document::Load(TestDataPath("no_such_file.dxf"), &error), nullptr);
  EXPECT_EQ(error.message, TestDataPath("no_such_file.dxf") + ": No such file or directory");
}

TEST(MalformedInput, EveryBadNumberIsReportedAndTheFirstFailsTheLoad) {
  std::string text = TestData("minimal.dxf");
  text.replace(text.find("1250.5"), 6, "x");
  text.replace(text.find("-3.25e+2"), 8, "");
  CollectingSink sink;
  LoadError error;
  EXPECT_EQ(Document::Parse(text, "two_bad.dxf", &error, &sink), nullptr);
  EXPECT_EQ(error.message, "two_bad.dxf:36: group code 11 expects a number, found 'x'");
  ASSERT_EQ(sink.reports.size(), 2u);
  EXPECT_EQ(sink.reports[1].first, Severity::kError);
  EXPECT_EQ(sink.reports[1].second, "two_bad.dxf:38: group code 21 expects a number, found ''");
}

// Binary damage is placed by byte offset. The file is built here: a sentinel, then
// two-byte codes.
std::string BinaryTag(int code, std::string_view value) {
  std::string bytes{static_cast<char>(code & 0xFF), static_cast<char>(code >> 8)};
  return bytes.append(value);
}

TEST(MalformedInput, BinaryDamageIsRejectedWithItsOffset) {
  const std::string start = std::string(kBinarySentinel) +
                            BinaryTag(0, std::string("SECTION\0", 8)) +
                            BinaryTag(2, std::string("ENTITIES\0", 9));  // 43 bytes
  const struct {
    std::string bytes;
    const char* message;
  } cases[] = {
      {start + BinaryTag(0, std::string("LINE\0", 5)) + BinaryTag(10, "\x01\x02\x03"),
       "bin.dxf: offset 52: unexpected end of file in the value of group code 10"},
      {start + BinaryTag(2000, "x"), "bin.dxf: offset 43: unknown group code 2000"},
      {start + BinaryTag(8, "no terminating NUL"),
       "bin.dxf: offset 45: unexpected end of file in the value of group code 8"},
      {start + "\x01", "bin.dxf: offset 43: unexpected end of file in a group code"},
      {std::string(kBinarySentinel) + "garbage",
       "bin.dxf: offset 22: not a DXF file: expected a 0/SECTION tag or a 999 comment"},
  };
  for (const auto& test_case : cases) {
    LoadError error;
    EXPECT_EQ(Document::Parse(test_case.bytes, "bin.dxf", &error), nullptr);
    EXPECT_EQ(error.message, test_case.message);
  }
}

struct ToleratedFile {
  const char* name;
  const char* warning;  // empty: none
};

constexpr ToleratedFile kToleratedFiles[] = {
    {"minimal.dxf", ""},
    {"missing_eof.dxf", "missing_eof.dxf:43: missing EOF record at end of file"},
    {"missing_eof_blank_lines.dxf",
     "missing_eof_blank_lines.dxf:43: missing EOF record at end of file"},
    {"trailing_blank_lines.dxf", ""},
    {"leading_comment.dxf", ""},
    {"unpadded_lf.dxf", ""},
    {"mixed_line_endings.dxf", ""},
    {"no_entities.dxf", ""},
};

TEST(TolerableInput, LoadsWithAWarningAtMostAndWritesBackIdentical) {
  for (const ToleratedFile& file : kToleratedFiles) {
    SCOPED_TRACE(file.name);
    const std::string bytes = TestData(file.name);
    CollectingSink sink;
    LoadError error;
    const std::unique_ptr<Document> doc = Document::Parse(bytes, file.name, &error, &sink);
    ASSERT_TRUE(doc) << error.message;
    if (*file.warning == '\0') {
      EXPECT_TRUE(sink.reports.empty()) << sink.reports.front().second;
    } else {
      ASSERT_EQ(sink.reports.size(), 1u);
      EXPECT_EQ(sink.reports[0].first, Severity::kWarning);
      EXPECT_EQ(sink.reports[0].second, file.warning);
    }
    for (RecordId id = doc->first(); id != kNoRecord; id = doc->next(id)) {
      for (const Tag& tag : doc->tags(id)) EXPECT_FALSE(tag.value.ends_with('\r')) << tag.value;
    }
    std::string written;
    ASSERT_TRUE(WriteTo(*doc, &written).ok());
    EXPECT_EQ(written, bytes);
  }
}

// Every cut of a drawing with tables, blocks, attributes and polylines after a whole line:
// refused (unless it falls after a complete ENTITIES section), and recovered into a file that
// reads back without a warning. Recovered too, into a file that reads back: a cut inside a
// last value (that value once lost its line end, and the closing records added after it were
// glued onto its line), and a cut between the "\r" and "\n" of a CRLF file (only the "\n"
// is added).
TEST(TruncatedInput, EveryCutIsRefusedOrRecoveredIntoAWholeFile) {
  const std::string whole = TestData("../rooms/locked.dxf");
  std::string crlf;
  for (char c : whole) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const size_t entities_end = whole.find("ENDSEC", whole.find("ENTITIES"));
  ASSERT_NE(entities_end, std::string::npos);
  size_t recovered[3] = {};
  size_t end = whole.find('\n', 100);
  for (size_t lines = std::count(whole.begin(), whole.begin() + end, '\n'); end != std::string::npos;
       end = whole.find('\n', end + 1), ++lines) {
    const std::string cuts[3] = {whole.substr(0, end + 1), whole.substr(0, end - 1), crlf.substr(0, end + lines + 1)};
    LoadError error;
    CollectingSink quiet;
    if (!Document::Parse(cuts[0], "cut.dxf", &error, &quiet)) {
      EXPECT_TRUE(error.message.find("truncated") != std::string::npos ||
                  error.message.find("unexpected end of file") != std::string::npos)
          << error.message;
    } else {
      EXPECT_GT(end, entities_end) << "a cut at byte " << end << " loaded";
    }
    for (int kind = 0; kind < 3; ++kind) {
      SCOPED_TRACE("cut " + std::to_string(kind) + " at byte " + std::to_string(cuts[kind].size()));
      CollectingSink sink;
      const std::unique_ptr<Document> doc = Document::Parse(cuts[kind], "cut.dxf", &error, &sink, DamagedFile::kRecover);
      if (!doc && kind > 0) continue;  // a group code cut short, or a number cut to nothing
      ASSERT_TRUE(doc) << error.message;
      std::string written;
      ASSERT_TRUE(WriteTo(*doc, &written).ok());
      CollectingSink again;
      ASSERT_TRUE(Document::Parse(written, "recovered.dxf", &error, &again)) << error.message;
      EXPECT_TRUE(kind > 0 || again.reports.empty()) << again.reports.front().second;
      ++recovered[kind];
    }
  }
  for (size_t count : recovered) EXPECT_GT(count, 1900u);
}

}  // namespace
}  // namespace fx::dxf
