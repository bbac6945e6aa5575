#include "host/dxf/tag_list.h"

#include <algorithm>

#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

// A subclass marker as stored (blanks around it allowed) against a marker
// asked for (none): only a longer value needs trimming.
bool IsMarker(std::string_view value, std::string_view marker) {
  if (value.size() == marker.size()) return value == marker;
  return value.size() > marker.size() && TrimBlanks(value) == marker;
}

}  // namespace

TagList TagList::View(TagRange tags) {
  TagList list;
  list.tags_ = tags;
  return list;
}

const TagList::Layout& TagList::layout() const {
  if (layout_.known) return layout_;
  Layout& layout = layout_;
  layout.entity_common_known = false;
  for (DataRange& cached : data_ranges_) cached.size = 0;
  layout.marker_count = 0;
  size_t i = 1;
  for (; i < tags_.size(); ++i) {
    const int code = tags_.code(i);
    if (code == 1001) break;
    if (code != 100 || layout.marker_count > Layout::kMaxMarkers) continue;
    if (layout.marker_count < Layout::kMaxMarkers) layout.markers[layout.marker_count] = static_cast<uint32_t>(i);
    ++layout.marker_count;
  }
  layout.body_end = static_cast<uint32_t>(std::min(i, tags_.size()));
  layout.known = true;
  return layout;
}

size_t TagList::XDataBegin() const { return layout().body_end; }

TagList::Range TagList::Body() const {
  return {tags_.empty() ? 0 : size_t{1}, XDataBegin()};
}

TagList::Range TagList::Subclass(std::string_view marker) const {
  const Layout& layout = this->layout();
  const Range body = Body();
  if (layout.marker_count == 0) return body;
  if (layout.marker_count > Layout::kMaxMarkers) return SubclassByScan(marker);
  for (uint8_t k = 0; k < layout.marker_count; ++k) {
    const size_t at = layout.markers[k];
    if (!IsMarker(tags_[at].value, marker)) continue;
    return {at + 1, k + 1 < layout.marker_count ? layout.markers[k + 1] : body.end};
  }
  return {body.end, body.end};
}

TagList::Range TagList::SubclassData(std::string_view marker) const {
  layout();  // forgets the kept ranges after an edit
  for (const DataRange& cached : data_ranges_) {
    if (cached.size != 0 && cached.size == marker.size() && marker == std::string_view(cached.marker, cached.size)) return cached.range;
  }
  Range range = Subclass(marker);
  const Range body = Body();
  if (range.begin == body.end) {
    // A record with markers but not this one (some writers leave markers
    // out): everything after its entity data.
    range = {Subclass("AcDbEntity").end, body.end};
    if (range.begin == body.end) range = body;
  }
  if (const size_t embedded = Find(101, range); embedded != kNotFound) range.end = embedded;
  if (!marker.empty() && marker.size() <= DataRange::kMaxMarkerSize) {
    DataRange& slot = data_ranges_[next_data_range_];
    next_data_range_ = static_cast<uint8_t>((next_data_range_ + 1) % kDataRanges);
    marker.copy(slot.marker, marker.size());
    slot.size = static_cast<uint8_t>(marker.size());
    slot.range = range;
  }
  return range;
}

TagList::Range TagList::SubclassByScan(std::string_view marker) const {
  const Range body = Body();
  for (size_t i = body.begin; i < body.end; ++i) {
    if (tags_.code(i) != 100 || !IsMarker(tags_[i].value, marker)) continue;
    size_t end = i + 1;
    while (end < body.end && tags_.code(end) != 100) ++end;
    return {i + 1, end};
  }
  return {body.end, body.end};
}

TagList::Range TagList::EntityCommon() const {
  const Layout& layout = this->layout();
  if (layout.entity_common_known) return layout.entity_common;
  Range range = Subclass("AcDbEntity");
  if (Find(8, range) == kNotFound) {
    range = Body();
    if (const size_t embedded = Find(101, range); embedded != kNotFound) range.end = embedded;
  }
  layout_.entity_common = range;
  layout_.entity_common_known = true;
  return range;
}

size_t TagList::EntityCommonInsertAt() const {
  const Range body = Body();
  const Range entity = Subclass("AcDbEntity");
  const bool no_markers = entity.begin == body.begin;
  if (no_markers || (tags_[entity.begin - 1].code == 100 &&
                     TrimBlanks(tags_[entity.begin - 1].value) == "AcDbEntity")) {
    return entity.end;
  }
  if (const size_t layer = Find(8, EntityCommon()); layer != kNotFound) return layer + 1;
  const size_t marker = Find(100, body);
  return marker != kNotFound ? marker : body.end;
}

size_t TagList::Find(int code, Range range) const {
  for (size_t i = range.begin; i < range.end && i < tags_.size(); ++i)
    if (tags_.code(i) == code) return i;
  return kNotFound;
}

std::string_view TagList::GetString(int code, Range range, std::string_view fallback) const {
  size_t i = Find(code, range);
  return i == kNotFound ? fallback : tags_[i].value;
}

double TagList::GetDouble(int code, Range range, double fallback) const {
  size_t i = Find(code, range);
  if (i == kNotFound) return fallback;
  return ParseDouble(tags_[i].value).value_or(fallback);
}

int64_t TagList::GetInt(int code, Range range, int64_t fallback) const {
  size_t i = Find(code, range);
  if (i == kNotFound) return fallback;
  return ParseInt(tags_[i].value).value_or(fallback);
}

AcGePoint3d TagList::GetPoint(int code, Range range, const AcGePoint3d& fallback) const {
  size_t ix = Find(code, range);
  if (ix == kNotFound) return fallback;
  AcGePoint3d p{ParseDouble(tags_[ix].value).value_or(0), 0, 0};
  // The coordinates follow the x value; stop at the next x of any point.
  for (size_t i = ix + 1; i < range.end && i < tags_.size() && i <= ix + 2; ++i) {
    if (tags_.code(i) == code + 10) p.y = ParseDouble(tags_[i].value).value_or(0);
    else if (tags_.code(i) == code + 20) p.z = ParseDouble(tags_[i].value).value_or(0);
  }
  return p;
}

std::vector<Tag>& TagList::Edit() {
  if (!editing_) {
    edited_.reserve(tags_.size() + 4);
    edited_.assign(tags_.begin(), tags_.end());
    editing_ = true;
  }
  layout_.known = false;
  return edited_;
}

std::string_view TagList::Own(std::string_view value) { return owned_.emplace_front(value); }

void TagList::SetValue(size_t index, std::string_view value) {
  const std::string_view owned = Own(value);
  Edit()[index].value = owned;
  tags_ = edited_;
}

void TagList::SetString(int code, std::string_view value, Range range) {
  size_t i = Find(code, range);
  if (i == kNotFound) Insert(range.end, code, value);
  else SetValue(i, value);
}

void TagList::SetDouble(int code, double value, Range range) {
  SetString(code, FormatDouble(value), range);
}

void TagList::SetInt(int code, int64_t value, Range range) {
  SetString(code, std::to_string(value), range);
}

void TagList::SetPoint(int code, const AcGePoint3d& point, Range range, bool with_z) {
  size_t ix = Find(code, range);
  if (ix == kNotFound) {
    size_t at = range.end;
    Insert(at, code, FormatDouble(point.x));
    Insert(at + 1, code + 10, FormatDouble(point.y));
    if (with_z) Insert(at + 2, code + 20, FormatDouble(point.z));
    return;
  }
  SetValue(ix, FormatDouble(point.x));
  if (ix + 1 < tags_.size() && tags_[ix + 1].code == code + 10) SetValue(ix + 1, FormatDouble(point.y));
  else Insert(ix + 1, code + 10, FormatDouble(point.y));
  if (ix + 2 < tags_.size() && tags_[ix + 2].code == code + 20) SetValue(ix + 2, FormatDouble(point.z));
  else if (with_z) Insert(ix + 2, code + 20, FormatDouble(point.z));
}

void TagList::Insert(size_t index, int code, std::string_view value) {
  const std::string_view owned = Own(value);
  std::vector<Tag>& tags = Edit();
  tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(index), Tag{code, owned});
  tags_ = edited_;
}

void TagList::Erase(size_t begin, size_t end) {
  std::vector<Tag>& tags = Edit();
  tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(begin), tags.begin() + static_cast<std::ptrdiff_t>(end));
  tags_ = edited_;
}

void TagList::EraseCode(int code, Range range) {
  for (size_t i = range.end; i-- > range.begin;)
    if (tags_.code(i) == code) Erase(i, i + 1);
}

}  // namespace fx::dxf
