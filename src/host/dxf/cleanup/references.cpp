#include "host/dxf/cleanup/references.h"

#include "host/dxf/cleanup/record_walk.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"

namespace fx::cleanup {
namespace {

using fx::dxf::Tag;
using fx::dxf::TagRange;

bool NamesBlock(std::string_view type) {
  return type == "INSERT" || type == "ACAD_TABLE" || type.find("DIMENSION") != std::string_view::npos;
}

class Collector {
 public:
  explicit Collector(References& refs) : refs_(refs) {}

  void Visit(const RecordView& record) {
    if (record.section == Section::kHeader) return Header(record.tags);
    if (record.section == Section::kBlocks) TrackBlock(record);
    const uint64_t own = OwnHandle(record);
    const bool names_block = NamesBlock(record.type);
    const bool dimstyle = record.type == "DIMSTYLE";
    bool in_xdata = false;
    for (size_t i = 1; i < record.tags.size(); ++i) {
      const Tag& tag = record.tags[i];
      if (tag.code == 1001) in_xdata = true;
      if (in_xdata) {
        if (tag.code == 1003) Add(refs_.layers, tag.value);
        continue;
      }
      switch (tag.code) {
        case 8: Add(refs_.layers, tag.value); break;
        case 6: Add(refs_.linetypes, tag.value); break;
        case 7: Add(refs_.text_styles, tag.value); break;
        case 2: if (names_block) AddBlock(tag.value); break;
        default: break;
      }
      // Dimension styles name their arrow blocks in 5 to 7 (files before R13
      // and obsolete copies in later ones); 6 and 7 were counted above too.
      if (dimstyle && tag.code >= 5 && tag.code <= 7) AddBlock(tag.value);
    }
    ForEachPointer(record.tags, [&](uint64_t handle) {
      if (handle != own && handle != block_record_) refs_.handles.insert(handle);
    });
  }

 private:
  void Header(TagRange tags) {
    for (const Tag& tag : tags) {
      switch (tag.code) {
        case 8: Add(refs_.layers, tag.value); break;
        case 6: Add(refs_.linetypes, tag.value); break;
        case 7: Add(refs_.text_styles, tag.value); break;
        case 1:
        case 2: Add(refs_.blocks, tag.value); break;
        default:
          if (IsPointerCode(tag.code))
            if (uint64_t handle = HandleValue(tag.value)) refs_.handles.insert(handle);
          break;
      }
    }
  }

  // Inside a block definition its own name and record do not count.
  void TrackBlock(const RecordView& record) {
    if (record.type == "BLOCK") {
      block_name_ = fx::dxf::FoldCase(Value(record.tags, 2));
      size_t owner = OwnerTagIndex(record.tags);
      block_record_ = owner < record.tags.size() ? HandleValue(record.tags[owner].value) : 0;
    } else if (record.type == "ENDBLK") {
      block_name_.clear();
      block_record_ = 0;
    }
  }

  void AddBlock(std::string_view name) {
    std::string folded = fx::dxf::FoldCase(name);
    if (!folded.empty() && folded != block_name_) refs_.blocks.insert(std::move(folded));
  }

  static void Add(std::unordered_set<std::string>& names, std::string_view name) {
    std::string folded = fx::dxf::FoldCase(name);
    if (!folded.empty()) names.insert(std::move(folded));
  }

  static std::string_view Value(TagRange tags, int code) {
    for (size_t i = 1; i < tags.size(); ++i)
      if (tags[i].code == code) return fx::dxf::TrimBlanks(tags[i].value);
    return {};
  }

  static uint64_t OwnHandle(const RecordView& record) {
    return HandleValue(Value(record.tags, record.type == "DIMSTYLE" ? 105 : 5));
  }

  References& refs_;
  std::string block_name_;   // folded, while inside BLOCK ... ENDBLK
  uint64_t block_record_ = 0;
};

}  // namespace

References CollectReferences(const fx::dxf::Document& doc) {
  References refs;
  Collector collector(refs);
  ForEachRecord(doc, [&](const RecordView& record) { collector.Visit(record); });
  return refs;
}

}  // namespace fx::cleanup
