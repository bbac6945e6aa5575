// Every real drawing of the corpus converts to the other encoding and back
// without losing a tag. (That each comes back byte for byte in its own
// encoding is checked through the database, in host_db.)
#include <gtest/gtest.h>

#include "corpus.h"
#include "host/dxf/dxf_writer.h"
#include "program_runner.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::AllTags;
using testing::ParseOrFail;
using testing::SameTags;

// File -> other encoding -> back: every tag keeps its code and meaning on both trips, and a
// binary file comes back byte for byte (binary holds exact values, so nothing is lost).
TEST(CorpusRoundTrip, ConversionToTheOtherEncodingAndBackKeepsEveryTag) {
  const std::vector<std::filesystem::path> files = fx::testing::CorpusDrawings();
  if (files.empty()) GTEST_SKIP() << "no corpus directory";
  for (const std::filesystem::path& path : files) {
    SCOPED_TRACE(path.string());
    const std::string original = fx::cli_test::ReadFile(path.string());
    const std::unique_ptr<Document> doc = ParseOrFail(original, path.string());
    ASSERT_TRUE(doc);
    const Encoding other = doc->encoding() == Encoding::kAscii ? Encoding::kBinary : Encoding::kAscii;

    std::string converted;
    const Status to_other = WriteTo(*doc, &converted, other);
    ASSERT_TRUE(to_other.ok()) << to_other.message();
    const std::unique_ptr<Document> converted_doc = ParseOrFail(converted, "converted");
    ASSERT_TRUE(converted_doc);
    EXPECT_EQ(converted_doc->encoding(), other);

    std::string back;
    const Status to_original = WriteTo(*converted_doc, &back, doc->encoding());
    ASSERT_TRUE(to_original.ok()) << to_original.message();
    const std::unique_ptr<Document> back_doc = ParseOrFail(back, "back");
    ASSERT_TRUE(back_doc);

    const std::vector<Tag> tags = AllTags(*doc);
    std::string where;
    EXPECT_TRUE(SameTags(tags, AllTags(*converted_doc), &where)) << "converted: " << where;
    EXPECT_TRUE(SameTags(tags, AllTags(*back_doc), &where)) << "back: " << where;
    if (doc->encoding() == Encoding::kBinary) {
      EXPECT_TRUE(back == original) << "binary bytes differ";
    }
  }
}

}  // namespace
}  // namespace fx::dxf
