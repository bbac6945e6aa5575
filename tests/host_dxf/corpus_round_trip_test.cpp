// Every real drawing of the corpus must come back unchanged: byte for byte in its own
// encoding, tag for tag through the other encoding.
#include <gtest/gtest.h>

#include "host/dxf/dxf_writer.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::AllTags;
using testing::CorpusFiles;
using testing::ParseOrFail;
using testing::ReadFileBytes;
using testing::SameTags;

Encoding Other(Encoding encoding) {
  return encoding == Encoding::kAscii ? Encoding::kBinary : Encoding::kAscii;
}

TEST(CorpusRoundTrip, EveryFileWritesBackByteIdentical) {
  const std::vector<std::string> files = CorpusFiles();
  if (files.empty()) GTEST_SKIP() << "no corpus directory";
  for (const std::string& path : files) {
    SCOPED_TRACE(path);
    const std::string original = ReadFileBytes(path);
    LoadError error;
    const std::unique_ptr<Document> doc = Document::Load(path, &error);
    ASSERT_TRUE(doc) << error.message;
    std::string written;
    ASSERT_TRUE(WriteTo(*doc, &written).ok());
    EXPECT_EQ(written.size(), original.size());
    EXPECT_TRUE(written == original) << "content differs";
  }
}

// File -> other encoding -> back: every tag keeps its code and meaning on both trips, and a
// binary file comes back byte for byte (binary holds exact values, so nothing is lost).
TEST(CorpusRoundTrip, ConversionToTheOtherEncodingAndBackKeepsEveryTag) {
  const std::vector<std::string> files = CorpusFiles();
  if (files.empty()) GTEST_SKIP() << "no corpus directory";
  for (const std::string& path : files) {
    SCOPED_TRACE(path);
    const std::string original = ReadFileBytes(path);
    const std::unique_ptr<Document> doc = ParseOrFail(original, path);
    ASSERT_TRUE(doc);
    const Encoding other = Other(doc->encoding());

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
