// Edits (replace, insert, erase) must be written in the file's own style, keep everything
// else as it was, and read back. (Edits of real drawings, ASCII and binary, through the
// database and read by ezdxf: host_db.)
#include <gtest/gtest.h>

#include "host/dxf/dxf_sections.h"
#include "host/dxf/dxf_writer.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::AllTags;
using testing::ParseOrFail;
using testing::TestData;

RecordId FindType(const Document& doc, std::string_view type) {
  RecordId id = doc.first();
  while (id != kNoRecord && doc.type(id) != type) id = doc.next(id);
  return id;
}

std::vector<std::string_view> Types(const Document& doc) {
  std::vector<std::string_view> types;
  for (RecordId id = doc.first(); id != kNoRecord; id = doc.next(id)) types.push_back(doc.type(id));
  return types;
}

const Tag kCircle[] = {{0, "CIRCLE"}, {8, "Walls"}, {10, "5.0"},
                       {20, "6.0"},   {30, "0.0"},  {40, "2.5"}};

// Replaces the LINE's layer, inserts a CIRCLE after it and a POINT before it (erasing a first
// POINT again), then writes, reads back and compares.
void EditAndCheck(const std::string& file, std::string_view expected_circle_text) {
  SCOPED_TRACE(file);
  const std::string original = TestData(file);
  const std::unique_ptr<Document> doc = ParseOrFail(original, file);
  ASSERT_TRUE(doc);
  const RecordId line = FindType(*doc, "LINE");
  ASSERT_NE(line, kNoRecord);

  std::vector<Tag> line_tags(doc->tags(line).begin(), doc->tags(line).end());
  line_tags[2].value = "Doors";  // 8: layer
  ASSERT_TRUE(doc->ReplaceTags(line, line_tags));
  EXPECT_TRUE(doc->modified(line));
  ASSERT_NE(doc->InsertAfter(line, kCircle), kNoRecord);
  const Tag point[] = {{0, "POINT"}, {8, "0"}, {10, "1.0"}, {20, "2.0"}, {30, "0.0"}};
  const RecordId inserted_point = doc->InsertBefore(line, point);
  ASSERT_NE(inserted_point, kNoRecord);
  EXPECT_EQ(doc->source_line(inserted_point), 0);
  ASSERT_TRUE(doc->Erase(inserted_point));
  ASSERT_NE(doc->InsertBefore(line, point), kNoRecord);

  std::string written;
  ASSERT_TRUE(WriteTo(*doc, &written).ok());
  EXPECT_NE(written.find(expected_circle_text), std::string::npos) << written;
  const std::unique_ptr<Document> reread = ParseOrFail(written, "written");
  ASSERT_TRUE(reread);
  EXPECT_EQ(Types(*reread), (std::vector<std::string_view>{"SECTION", "ENDSEC", "SECTION", "POINT",
                                                           "LINE", "CIRCLE", "ENDSEC", "EOF"}));
  const std::vector<Tag> expected = AllTags(*doc);
  std::string where;
  EXPECT_TRUE(testing::SameTags(expected, AllTags(*reread), &where)) << where;
  // Unmodified records keep their bytes: the HEADER section comes out as it went in.
  const RecordId header = FindSection(*reread, "HEADER").section;
  EXPECT_EQ(reread->original_bytes(header),
            doc->original_bytes(FindSection(*doc, "HEADER").section));
}

TEST(Edit, ReplaceInsertEraseAreWrittenInTheFilesStyle) {
  EditAndCheck("minimal.dxf", "  0\nCIRCLE\n  8\nWalls\n 10\n5.0\n");
  EditAndCheck("unpadded_lf.dxf", "0\nCIRCLE\n8\nWalls\n10\n5.0\n");
  EditAndCheck("mixed_line_endings.dxf", "  0\r\nCIRCLE\r\n  8\r\nWalls\r\n");
}

// Some R12 writers set every group code two blanks in ("  0", "  66", "  10")
// instead of right-aligning it to three columns. A record written anew takes
// that padding for a code of each width, and a tag it keeps keeps its own
// code line, odd as it may be ("   2").
TEST(Edit, RecordsWrittenAnewPadCodesAsTheFileDoes) {
  const std::string insert = "  0\nINSERT\n  8\nStamps\n   2\nROOMTAG\n  10\n1.0\n  20\n2.0\n";
  const std::unique_ptr<Document> doc =
      ParseOrFail("  0\nSECTION\n  2\nENTITIES\n" + insert + "  0\nENDSEC\n  0\nEOF\n", "r12");
  ASSERT_TRUE(doc);
  const RecordId id = FindType(*doc, "INSERT");
  std::vector<Tag> tags(doc->tags(id).begin(), doc->tags(id).end());
  tags.insert(tags.begin() + 2, Tag{66, "1"});
  tags.push_back({30, "0.0"});
  tags.push_back({210, "0.0"});
  ASSERT_TRUE(doc->ReplaceTags(id, tags));
  const Tag attribute[] = {{0, "ATTRIB"}, {8, "Stamps"}, {1, "101"}, {2, "NAME"}, {70, "0"}};
  ASSERT_NE(doc->InsertAfter(id, attribute), kNoRecord);
  std::string written;
  ASSERT_TRUE(WriteTo(*doc, &written).ok());
  EXPECT_EQ(written,
            "  0\nSECTION\n  2\nENTITIES\n"
            "  0\nINSERT\n  8\nStamps\n  66\n1\n   2\nROOMTAG\n  10\n1.0\n  20\n2.0\n  30\n0.0\n  210\n0.0\n"
            "  0\nATTRIB\n  8\nStamps\n  1\n101\n  2\nNAME\n  70\n0\n"
            "  0\nENDSEC\n  0\nEOF\n");
}

// The same in a CR LF file; and binary DXF takes a 16-bit value signed or
// unsigned (the same bits).
TEST(Edit, CrLfCodeLinesAreKeptAndUnsigned16BitValuesGoToBinary) {
  const std::unique_ptr<Document> doc = ParseOrFail(
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nINSERT\r\n   2\r\nROOMTAG\r\n  70\r\n65535\r\n"
      "  0\r\nENDSEC\r\n  0\r\nEOF\r\n", "crlf");
  ASSERT_TRUE(doc);
  const RecordId id = FindType(*doc, "INSERT");
  std::vector<Tag> tags(doc->tags(id).begin(), doc->tags(id).end());
  tags.push_back({8, "Stamps"});
  ASSERT_TRUE(doc->ReplaceTags(id, tags));
  std::string written, binary;
  ASSERT_TRUE(WriteTo(*doc, &written).ok());
  EXPECT_NE(written.find("  0\r\nINSERT\r\n   2\r\nROOMTAG\r\n  70\r\n65535\r\n  8\r\nStamps\r\n"), std::string::npos)
      << written;
  const Status to_binary = WriteTo(*doc, &binary, Encoding::kBinary);
  EXPECT_TRUE(to_binary.ok()) << to_binary.message();
}

TEST(Edit, TagsOfTheDocumentItselfCanBePassedBack) {
  const std::unique_ptr<Document> doc = ParseOrFail(TestData("minimal.dxf"), "m");
  ASSERT_TRUE(doc);
  const RecordId line = FindType(*doc, "LINE");
  const std::string_view layer_before = doc->tags(line)[2].value;
  for (int i = 0; i < 1000; ++i) ASSERT_TRUE(doc->ReplaceTags(line, doc->tags(line)));
  EXPECT_EQ(doc->tags(line)[2].value, "Walls");
  EXPECT_EQ(layer_before, "Walls");  // views handed out stay valid across edits
  const std::string_view stored = doc->Store(std::string(64, 'x'));
  const Tag with_stored[] = {{0, "TEXT"}, {1, stored}};
  const RecordId text = doc->InsertAfter(line, with_stored);
  EXPECT_EQ(doc->tags(text)[1].value.data(), stored.data());  // already the document's: not copied
}

// A value of 64 KiB or more is kept apart from the packed tags: it must read whole in both
// encodings, leave the tags after it in place, and survive an edit.
TEST(Edit, ValuesOf64KiBAndMoreReadWriteAndEditWhole) {
  const std::string long_value = std::string(70000, 'a') + "b";
  const std::string original = "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\n0\n1\n" + long_value +
                               "\n40\n2.5\n0\nENDSEC\n0\nEOF\n";
  const std::unique_ptr<Document> ascii = ParseOrFail(original, "long.dxf");
  ASSERT_TRUE(ascii);
  std::string binary;
  ASSERT_TRUE(WriteTo(*ascii, &binary, Encoding::kBinary).ok());
  const std::unique_ptr<Document> from_binary = ParseOrFail(binary, "long-binary.dxf");
  ASSERT_TRUE(from_binary);
  for (Document* doc : {ascii.get(), from_binary.get()}) {
    const RecordId text = FindType(*doc, "TEXT");
    ASSERT_NE(text, kNoRecord);
    ASSERT_EQ(doc->tags(text).size(), 4u);
    EXPECT_EQ(doc->tags(text)[2].value, long_value);
    EXPECT_EQ(doc->tags(text)[3].value, "2.5");
    ASSERT_TRUE(doc->ReplaceTags(text, doc->tags(text)));
    EXPECT_EQ(doc->tags(text)[2].value, long_value);
  }
  std::string written;
  ASSERT_TRUE(WriteTo(*ascii, &written).ok());
  const std::unique_ptr<Document> reread = ParseOrFail(written, "written");
  ASSERT_TRUE(reread);
  EXPECT_EQ(reread->tags(FindType(*reread, "TEXT"))[2].value, long_value);
}

TEST(Edit, InvalidEditsChangeNothing) {
  const std::unique_ptr<Document> doc = ParseOrFail(TestData("minimal.dxf"), "m");
  ASSERT_TRUE(doc);
  const RecordId line = FindType(*doc, "LINE");
  const size_t records = doc->record_count();
  const Tag no_zero_tag[] = {{8, "Walls"}};
  EXPECT_FALSE(doc->ReplaceTags(line, no_zero_tag));
  EXPECT_FALSE(doc->ReplaceTags(line, {}));
  EXPECT_EQ(doc->InsertAfter(kNoRecord, kCircle), kNoRecord);
  ASSERT_TRUE(doc->Erase(line));
  EXPECT_FALSE(doc->Erase(line));
  EXPECT_EQ(doc->InsertAfter(line, kCircle), kNoRecord);
  EXPECT_FALSE(doc->ReplaceTags(line, kCircle));
  EXPECT_EQ(doc->record_count(), records - 1);
}

}  // namespace
}  // namespace fx::dxf
