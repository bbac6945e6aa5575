// Shared helpers for the DXF layer's tests: where the test files are, reading them, and
// comparing tags by meaning.
#ifndef FX_TESTS_HOST_DXF_TEST_SUPPORT_H_
#define FX_TESTS_HOST_DXF_TEST_SUPPORT_H_

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dxf/dxf_document.h"

namespace fx::dxf::testing {

// A file of tests/data/dxf (passed in as FX_TEST_DATA_DIR at build time).
std::string TestDataPath(std::string_view name);

// The bytes of a file of tests/data/dxf.
std::string TestData(std::string_view name);

struct CollectingSink : DiagnosticSink {
  void Report(Severity severity, std::string message) override {
    reports.emplace_back(severity, std::move(message));
  }
  std::vector<std::pair<Severity, std::string>> reports;
};

// Parses or records a test failure (with the load error) and returns null.
std::unique_ptr<Document> ParseOrFail(std::string bytes, std::string_view name);

// The prologue's tags followed by every live record's tags, in file order.
std::vector<Tag> AllTags(const Document& doc);

// Whether two values of a group code mean the same: equal numbers, the same characters for
// strings (caret escapes decoded), the same bytes for binary chunks, equal text otherwise.
bool SameMeaning(int code, std::string_view a, std::string_view b);

// Whether two tag lists are equal by SameMeaning; on a difference, says where in *where.
bool SameTags(const std::vector<Tag>& a, const std::vector<Tag>& b, std::string* where);

}  // namespace fx::dxf::testing

#endif  // FX_TESTS_HOST_DXF_TEST_SUPPORT_H_
