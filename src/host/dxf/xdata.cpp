// Extended entity data: the tags from the first 1001 to the end of a record,
// one block per registered application.
#include <string>
#include <vector>

#include "host/db_object.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/resbuf_tags.h"

namespace {

using fx::dxf::TagList;

// The [begin, end) tag range of `app`'s block, or an empty range at size().
// Names compare as the APPID table compares them, without folded copies.
TagList::Range AppBlock(const TagList& tags, std::string_view app) {
  const fx::dxf::FoldedNameEqual same_name;
  for (size_t i = tags.XDataBegin(); i < tags.size();) {
    size_t end = i + 1;
    while (end < tags.size() && tags[end].code != 1001) ++end;
    if (same_name(tags[i].value, app)) return {i, end};
    i = end;
  }
  return {tags.size(), tags.size()};
}

}  // namespace

resbuf* AcDbObject::xData(const char* regapp_name) const {
  const TagList& tags = impl()->tags();
  TagList::Range range = regapp_name == nullptr ? TagList::Range{tags.XDataBegin(), tags.size()}
                                                : AppBlock(tags, regapp_name);
  return range.empty() ? nullptr : fx::dxf::TagsToChain(tags, range, fx::dxf::CodecOf(*this));
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcDbImpDatabase* db = impl()->database();
  const fx::dxf::TextCodec& codec = fx::dxf::CodecOf(*this);
  // Check the whole chain before changing anything.
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype != 1001) continue;
    if (rb->resval.rstring == nullptr) return Acad::eInvalidInput;
    if (db != nullptr && db->FindSymbol("APPID", codec.Encode(rb->resval.rstring)) == nullptr)
      return Acad::eInvalidInput;
  }
  if (xdata == nullptr || xdata->restype != 1001) return Acad::eInvalidInput;
  std::vector<std::pair<int, std::string>> items;
  if (!fx::dxf::ChainToTags(xdata, codec, &items)) return Acad::eInvalidInput;

  TagList& tags = impl()->mutable_tags();
  for (size_t i = 0; i < items.size();) {
    size_t end = i + 1;
    while (end < items.size() && items[end].first != 1001) ++end;
    TagList::Range old = AppBlock(tags, items[i].second);
    tags.Erase(old.begin, old.end);
    // A block of only the application name removes the application's data.
    if (end - i > 1) {
      size_t at = old.begin;
      for (size_t k = i; k < end; ++k) tags.Insert(at++, items[k].first, items[k].second);
    }
    i = end;
  }
  return Acad::eOk;
}
