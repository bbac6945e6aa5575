// What the reader rejects (with the place of the damage) and what it tolerates (with a
// warning), from the hand-made drawings in tests/data/dxf.
#include <gtest/gtest.h>

#include "host/dxf/dxf_binary_format.h"
#include "host/dxf/dxf_writer.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::CollectingSink;
using testing::ReadFileBytes;
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
    EXPECT_EQ(Document::Parse(ReadFileBytes(TestDataPath(file.name)), file.name, &error), nullptr);
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
  std::string text = ReadFileBytes(TestDataPath("minimal.dxf"));
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
    const std::string bytes = ReadFileBytes(TestDataPath(file.name));
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

// Every cut of a drawing with tables, blocks, attributes and polylines: refused
// (unless it falls after a complete ENTITIES section), and recovered into a file that
// reads back without a warning.
TEST(TruncatedInput, EveryCutIsRefusedOrRecoveredIntoAWholeFile) {
  const std::string whole = ReadFileBytes(TestDataPath("../rooms/locked.dxf"));
  const size_t entities_end = whole.find("ENDSEC", whole.find("ENTITIES"));
  ASSERT_NE(entities_end, std::string::npos);
  size_t cuts = 0;
  for (size_t end = whole.find('\n', 100); end != std::string::npos; end = whole.find('\n', end + 1)) {
    const std::string cut = whole.substr(0, end + 1);
    LoadError error;
    CollectingSink quiet;
    if (!Document::Parse(cut, "cut.dxf", &error, &quiet)) {
      EXPECT_TRUE(error.message.find("truncated") != std::string::npos ||
                  error.message.find("unexpected end of file") != std::string::npos)
          << error.message;
    } else {
      EXPECT_GT(end, entities_end) << "a cut at byte " << end << " loaded";
    }
    CollectingSink sink;
    const std::unique_ptr<Document> recovered =
        Document::Parse(cut, "cut.dxf", &error, &sink, DamagedFile::kRecover);
    ASSERT_TRUE(recovered) << error.message;
    std::string written;
    ASSERT_TRUE(WriteTo(*recovered, &written).ok());
    CollectingSink again;
    ASSERT_TRUE(Document::Parse(written, "recovered.dxf", &error, &again)) << error.message;
    EXPECT_TRUE(again.reports.empty()) << "cut at byte " << end << ": " << again.reports.front().second;
    ++cuts;
  }
  EXPECT_GT(cuts, 1900u);
}

// A cut inside the last value of a record that recovery keeps (a BLOCK, say) left
// that value without its line end, and the closing records added after it were
// glued onto its line: the recovered file did not read back.
TEST(TruncatedInput, CutInsideALastValueKeepsTheAddedRecordsOnTheirOwnLines) {
  const std::string whole = ReadFileBytes(TestDataPath("../rooms/locked.dxf"));
  size_t cuts = 0;
  for (size_t end = whole.find('\n', 100); end != std::string::npos; end = whole.find('\n', end + 1)) {
    const std::string cut = whole.substr(0, end - 1);  // the line without its last character
    LoadError error;
    CollectingSink sink;
    const std::unique_ptr<Document> recovered =
        Document::Parse(cut, "cut.dxf", &error, &sink, DamagedFile::kRecover);
    if (!recovered) continue;  // a group code cut short, or a number cut to nothing
    std::string written;
    ASSERT_TRUE(WriteTo(*recovered, &written).ok());
    ASSERT_TRUE(Document::Parse(written, "recovered.dxf", &error)) << "cut at byte " << end - 1
                                                                   << ": " << error.message;
    ++cuts;
  }
  EXPECT_GT(cuts, 900u);
}

// A file with "\r\n" line ends cut between the two: the "\r" stays, only "\n" is added.
TEST(TruncatedInput, CutBetweenCarriageReturnAndLineFeedReadsBack) {
  std::string crlf;
  for (char c : ReadFileBytes(TestDataPath("../rooms/locked.dxf"))) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  for (size_t end = crlf.find('\n', 100); end != std::string::npos; end = crlf.find('\n', end + 1)) {
    LoadError error;
    const std::unique_ptr<Document> recovered =
        Document::Parse(crlf.substr(0, end), "cut.dxf", &error, nullptr, DamagedFile::kRecover);
    if (!recovered) continue;
    std::string written;
    ASSERT_TRUE(WriteTo(*recovered, &written).ok());
    ASSERT_TRUE(Document::Parse(written, "recovered.dxf", &error)) << "cut at byte " << end << ": " << error.message;
  }
}

}  // namespace
}  // namespace fx::dxf
