#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_values.h"
#include "program_runner.h"

namespace fx::dxf::testing {
namespace {

bool SameHex(std::string_view a, std::string_view b) {
  a = TrimBlanks(a);
  b = TrimBlanks(b);
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::toupper(static_cast<unsigned char>(x)) ==
           std::toupper(static_cast<unsigned char>(y));
  });
}

}  // namespace

std::string TestDataPath(std::string_view name) {
  return std::string(FX_TEST_DATA_DIR) + "/" + std::string(name);
}

std::string TestData(std::string_view name) { return fx::cli_test::ReadFile(TestDataPath(name)); }

std::unique_ptr<Document> ParseOrFail(std::string bytes, std::string_view name) {
  LoadError error;
  std::unique_ptr<Document> doc = Document::Parse(std::move(bytes), name, &error);
  if (!doc) ADD_FAILURE() << "cannot parse " << name << ": " << error.message;
  return doc;
}

std::vector<Tag> AllTags(const Document& doc) {
  std::vector<Tag> tags(doc.prologue().begin(), doc.prologue().end());
  for (RecordId id = doc.first(); id != kNoRecord; id = doc.next(id)) {
    tags.insert(tags.end(), doc.tags(id).begin(), doc.tags(id).end());
  }
  return tags;
}

bool SameMeaning(int code, std::string_view a, std::string_view b) {
  switch (ValueTypeOf(code)) {
    case GroupValueType::kDouble: {
      const std::optional<double> x = ParseDouble(a);
      const std::optional<double> y = ParseDouble(b);
      return x && y && (*x == *y || (*x != *x && *y != *y));
    }
    case GroupValueType::kInt16:
    case GroupValueType::kInt32:
    case GroupValueType::kInt64:
    case GroupValueType::kBool: {
      const std::optional<int64_t> x = ParseInt(a);
      return x && x == ParseInt(b);
    }
    case GroupValueType::kString:
      return CaretDecode(a) == CaretDecode(b);
    case GroupValueType::kBinaryChunk:
      return SameHex(a, b);
    case GroupValueType::kHandle:
    case GroupValueType::kUnknown:
      break;
  }
  return a == b;
}

bool SameTags(const std::vector<Tag>& a, const std::vector<Tag>& b, std::string* where) {
  for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    if (a[i].code != b[i].code || !SameMeaning(a[i].code, a[i].value, b[i].value)) {
      *where = "tag " + std::to_string(i) + ": " + std::to_string(a[i].code) + "/'" +
               std::string(a[i].value) + "' vs " + std::to_string(b[i].code) + "/'" +
               std::string(b[i].value) + "'";
      return false;
    }
  }
  if (a.size() != b.size()) {
    *where = "tag counts differ: " + std::to_string(a.size()) + " vs " + std::to_string(b.size());
    return false;
  }
  return true;
}

}  // namespace fx::dxf::testing
