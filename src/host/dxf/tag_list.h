// The working copy of one record's tags while its object is open: typed
// reads by group code within a subclass, and edits that keep every tag the
// host does not interpret in place. Opening costs no copy: the list reads
// the document's tags until its first edit copies them. Where the body ends
// and where its subclass markers are is found once, on the first read that
// needs it, and again only after an edit.
#ifndef FLOORXPORT_HOST_DXF_TAG_LIST_H_
#define FLOORXPORT_HOST_DXF_TAG_LIST_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstdint>
#include <forward_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxf_tag.h"
#include "host/dxf/dxf_tag_range.h"
#include "host/geometry.h"

namespace fx::dxf {

class TagList {
 public:
  // A half-open range of tag indexes.
  struct Range {
    size_t begin = 0, end = 0;
    bool empty() const { return begin >= end; }
  };
  static constexpr size_t kNotFound = static_cast<size_t>(-1);

  TagList() = default;
  // A copy of `tags`. Their values must outlive the list (they point into the document's
  // storage or literals).
  explicit TagList(TagRange tags) : edited_(tags.begin(), tags.end()), editing_(true) {
    tags_ = edited_;
  }
  // A list reading `tags` in place until its first edit: the tags themselves must stay where
  // they are for the list's life, as a document's do.
  static TagList View(TagRange tags);
  // Moving keeps the owned values and the copied tags where they are, so views stay valid.
  TagList(TagList&&) = default;
  TagList& operator=(TagList&&) = default;
  TagList(const TagList&) = delete;
  TagList& operator=(const TagList&) = delete;

  // Valid until the next edit.
  TagRange tags() const { return tags_; }
  size_t size() const { return tags_.size(); }
  Tag operator[](size_t index) const { return tags_[index]; }
  std::string_view type() const { return tags_.empty() ? std::string_view() : tags_[0].value; }

  // Every tag after the 0-tag and before the extended data.
  Range Body() const;
  // The tags after the subclass marker (100) named `marker` up to the next
  // marker or the extended data. A record without any marker (files before
  // R13) answers its whole body; a missing marker answers an empty range at
  // the end of the body.
  Range Subclass(std::string_view marker) const;
  // The tags of subclass `marker` that belong to the record itself: Subclass(marker), or
  // for a record that has markers but not this one everything after its AcDbEntity data;
  // either ending before an embedded object (group 101). Kept for the last few markers asked
  // for until the next edit.
  Range SubclassData(std::string_view marker) const;
  // Index of the first tag of extended data (group 1001), or size().
  size_t XDataBegin() const;

  // The tags of an entity that hold the groups every entity has (layer 8,
  // linetype 6, colour 62 and 420, lineweight 370, linetype scale 48,
  // visibility 60, ...). The layout puts them in the AcDbEntity subclass, and
  // that range is answered when it holds the layer (the whole body in files
  // before R13). Some writers put them after another marker ("100
  // AcDbPolyline" then "8"), or leave the AcDbEntity marker out: then the
  // body up to an embedded object (group 101), where the first tag of a code
  // is the entity's.
  Range EntityCommon() const;
  // Where a common group that the entity lacks goes: at the end of its
  // AcDbEntity subclass; without that marker, right after its layer, else
  // before its first marker.
  size_t EntityCommonInsertAt() const;

  size_t Find(int code, Range range) const;
  size_t Find(int code) const { return Find(code, Body()); }
  std::string_view GetString(int code, Range range, std::string_view fallback = {}) const;
  double GetDouble(int code, Range range, double fallback = 0) const;
  int64_t GetInt(int code, Range range, int64_t fallback = 0) const;
  // x in `code`, y in code+10, z in code+20, each the first after x.
  AcGePoint3d GetPoint(int code, Range range, const AcGePoint3d& fallback = {}) const;

  // Edits. Values are copied.
  void SetValue(size_t index, std::string_view value);
  // Replaces the first tag of `code` in `range`, or inserts one at its end.
  void SetString(int code, std::string_view value, Range range);
  void SetDouble(int code, double value, Range range);
  void SetInt(int code, int64_t value, Range range);
  void SetPoint(int code, const AcGePoint3d& point, Range range, bool with_z = true);
  void Insert(size_t index, int code, std::string_view value);
  void Erase(size_t begin, size_t end);
  // Removes every tag of `code` in `range`.
  void EraseCode(int code, Range range);
  void Append(int code, std::string_view value) { Insert(tags_.size(), code, value); }

 private:
  // Where the body ends and its subclass markers are (tag indexes).
  struct Layout {
    static constexpr size_t kMaxMarkers = 8;
    bool known = false;
    bool entity_common_known = false;
    uint8_t marker_count = 0;  // kMaxMarkers + 1: more than fit, found by a scan
    uint32_t body_end = 0;
    uint32_t markers[kMaxMarkers];
    Range entity_common;
  };
  // SubclassData answers by marker; the marker is copied, as callers may pass temporaries.
  struct DataRange {
    static constexpr size_t kMaxMarkerSize = 30;
    uint8_t size = 0;  // 0: unused
    char marker[kMaxMarkerSize];
    Range range;
  };
  static constexpr size_t kDataRanges = 3;

  const Layout& layout() const;
  Range SubclassByScan(std::string_view marker) const;
  // Before an edit: copies the tags read in place and forgets the layout.
  std::vector<Tag>& Edit();
  std::string_view Own(std::string_view value);

  TagRange tags_;  // the document's tags, or edited_ once editing_
  std::vector<Tag> edited_;
  bool editing_ = false;
  mutable Layout layout_;
  mutable DataRange data_ranges_[kDataRanges];
  mutable uint8_t next_data_range_ = 0;
  std::forward_list<std::string> owned_;  // values set through this list; never move
};

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_TAG_LIST_H_
