#include "host/dxf/entity_support.h"

#include <numbers>
#include <utility>

#include "host/database.h"
#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

namespace fx::dxf {
namespace {

DrawWarningHandler& WarningHandler() {
  static DrawWarningHandler handler;
  return handler;
}

}  // namespace

Range DataOf(const TagList& tags, std::string_view marker) { return tags.SubclassData(marker); }

AcGeVector3d ReadNormal(const TagList& tags, Range range) {
  AcGeVector3d normal = tags.GetPoint(210, range, {0, 0, 1}) - AcGePoint3d::kOrigin;
  return normal.length() == 0 ? AcGeVector3d::kZAxis : normal.normal();
}

void WriteNormal(TagList& tags, Range range, const AcGeVector3d& normal) {
  const AcGeVector3d unit = normal.normal();
  if (tags.Find(210, range) == TagList::kNotFound && unit == AcGeVector3d::kZAxis) return;
  tags.SetPoint(210, AcGePoint3d::kOrigin + unit, range);
}

double ReadDegrees(const TagList& tags, int code, Range range, double fallback) {
  return tags.GetDouble(code, range, fallback) * std::numbers::pi / 180;
}

std::string_view ReadName(const TagList& tags, int code, Range range, std::string_view fallback) {
  size_t index = tags.Find(code, range);
  return index == TagList::kNotFound ? fallback : TrimBlanks(tags[index].value);
}

AcGePoint3d OcsToWorld(const AcGeVector3d& normal, const AcGePoint3d& point) {
  return AcGeMatrix3d::planeToWorld(normal) * point;
}

AcGePoint3d WorldToOcs(const AcGeVector3d& normal, const AcGePoint3d& point) {
  // The arbitrary-axis frame is orthonormal: its inverse is its transpose.
  AcGeMatrix3d to_world = AcGeMatrix3d::planeToWorld(normal);
  AcGeVector3d v = point - AcGePoint3d::kOrigin;
  return {to_world(0, 0) * v.x + to_world(1, 0) * v.y + to_world(2, 0) * v.z,
          to_world(0, 1) * v.x + to_world(1, 1) * v.y + to_world(2, 1) * v.z,
          to_world(0, 2) * v.x + to_world(1, 2) * v.y + to_world(2, 2) * v.z};
}

std::string DecodeText(const AcDbObject& object, std::string_view stored) {
  return CaretDecode(CodecOf(object).Decode(stored));
}

std::string EncodeText(const AcDbObject& object, std::string_view utf8) {
  return CaretEncode(CodecOf(object).Encode(utf8));
}

TagList NewEntityTags(std::string_view type, std::string_view subclass) {
  TagList tags;
  tags.Append(0, type);
  tags.Append(100, "AcDbEntity");
  tags.Append(8, "0");
  tags.Append(100, subclass);
  return tags;
}

void AppendDouble(TagList& tags, int code, double value) { tags.Append(code, FormatDouble(value)); }

void AppendInt(TagList& tags, int code, int64_t value) { tags.Append(code, std::to_string(value)); }

void AppendPoint(TagList& tags, int code, const AcGePoint3d& point) {
  AppendDouble(tags, code, point.x);
  AppendDouble(tags, code + 10, point.y);
  AppendDouble(tags, code + 20, point.z);
}

std::string StoredSymbolName(AcDbObjectId record_id) {
  AcDbObject* record = nullptr;
  if (acdbOpenAcDbObject(record, record_id, AcDb::kForRead) != Acad::eOk) return {};
  const TagList& tags = record->impl()->tags();
  std::string name(ReadName(tags, 2, tags.Body()));
  record->close();
  return name;
}

void LoadTextStyle(AcDbObjectId style_id, AcGiTextStyle& style) {
  AcDbObjectPointer<AcDbTextStyleTableRecord> record(style_id, AcDb::kForRead);
  if (record.openStatus() != Acad::eOk) return;
  style.file_name = record->fileName();
  record->font(style.typeface, style.bold, style.italic);
  style.vertical = record->isVertical();
}

double TextStyleWidthFactor(AcDbObjectId style_id) {
  AcDbObjectPointer<AcDbTextStyleTableRecord> record(style_id, AcDb::kForRead);
  if (record.openStatus() != Acad::eOk) return 1;
  double factor = record->xScale();
  return factor > 0 ? factor : 1;
}

void SetEntityTraits(const AcDbEntity& entity, AcGiWorldDraw& draw) {
  AcGiSubEntityTraits& traits = draw.subEntityTraits();
  AcCmEntityColor color = entity.color();
  // A true colour has no palette index of its own: the sink takes it from
  // setTrueColor, which always follows.
  if (!color.isByColor()) traits.setColor(color.colorIndex());
  traits.setTrueColor(color);
  traits.setLayer(entity.layerId());
  traits.setLineType(entity.linetypeId());
  traits.setLineTypeScale(entity.linetypeScale());
  traits.setLineWeight(entity.lineWeight());
  traits.setFillType(kAcGiFillNever);
  const TagList& tags = entity.impl()->tags();
  traits.setThickness(tags.GetDouble(39, tags.Body(), 0));
}

double ModelDeviation(const AcGiWorldDraw& draw) {
  double stretch = draw.geometry().getModelToWorldTransform().scale();
  return stretch > 0 ? draw.deviation() / stretch : draw.deviation();
}

void SetDrawWarningHandler(DrawWarningHandler handler) { WarningHandler() = std::move(handler); }

void ReportDrawWarning(std::string message) {
  if (WarningHandler()) WarningHandler()(message);
}

}  // namespace fx::dxf
