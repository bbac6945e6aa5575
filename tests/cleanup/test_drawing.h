// Small R2000 drawings written for a test: the tables and objects every
// drawing has, plus what the test adds, with handles and owners as the
// editor writes them (unless a test asks for a wrong owner).
#ifndef FLOORXPORT_TESTS_CLEANUP_TEST_DRAWING_H_
#define FLOORXPORT_TESTS_CLEANUP_TEST_DRAWING_H_

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace fx::cleanup_test {

using Tags = std::vector<std::pair<int, std::string>>;

// The body of a LINE from (0, y) to (10, y).
Tags LineBody(double y);

class TestDrawing {
 public:
  TestDrawing();

  // Each returns the handle of what it adds.
  // Values in `extra` replace the defaults of their codes (70 flags, 6 linetype, 330 owner).
  std::string Layer(const std::string& name, const Tags& extra = {});
  std::string Linetype(const std::string& name);
  std::string Style(const std::string& name);
  std::string Block(const std::string& name);  // the block record
  // An entity of `block` ("" for model space): its AcDbEntity part names
  // `layer` and has `common` after it; `body` follows (with its subclass
  // markers). `owner` replaces the owner handle when not empty.
  std::string Entity(const std::string& block, const std::string& type, const std::string& layer,
                     const Tags& body, const Tags& common = {}, const std::string& owner = "");
  // An object of the OBJECTS section owned by `owner`.
  std::string Object(const std::string& type, const std::string& owner, const Tags& body);
  // A named entry of the root dictionary.
  void RootEntry(const std::string& name, const std::string& handle);
  void Header(const std::string& name, const Tags& values);
  void DimstyleTags(const Tags& tags) { dimstyle_extra_ = tags; }
  std::string NewHandle();
  std::string TableHandle(const std::string& table) const { return table_handles_.at(table); }

  std::string Text() const;
  // Writes the drawing; false when the file cannot be written.
  bool Save(const std::string& path) const;

 private:
  struct Record {
    std::string type;
    Tags tags;  // after the 0-tag
  };
  struct BlockDef {
    std::string name, record_handle, begin_handle, end_handle;
    std::vector<Record> entities;
  };
  std::string TableRecord(const std::string& table, const std::string& type, const Tags& tags,
                          const std::string& owner = "");

  unsigned next_handle_ = 0x100;
  std::vector<std::pair<std::string, Tags>> header_;
  std::map<std::string, std::string> table_handles_;
  std::map<std::string, std::vector<Record>> tables_;  // by table name
  std::vector<BlockDef> blocks_;
  std::vector<Record> objects_;
  Tags root_entries_;
  Tags dimstyle_extra_;
  std::string root_handle_;
};

}  // namespace fx::cleanup_test

#endif  // FLOORXPORT_TESTS_CLEANUP_TEST_DRAWING_H_
