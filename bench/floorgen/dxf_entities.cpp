#include "dxf_entities.h"

namespace floorgen {

namespace {

constexpr int kAlignCenter = 1;   // horizontal justification
constexpr int kAlignMiddle = 2;   // vertical justification
constexpr int kLeftToRight = 1;   // MTEXT drawing direction

// Placement shared by TEXT, ATTDEF and ATTRIB: aligned texts keep the first
// alignment point equal to the second, which is the one that counts.
void WriteCenteredPlacement(DxfStream& out, Point center, double height, std::string_view text) {
  out.Point3(10, center);
  out.Real(40, height);
  out.Text(1, text);
  out.Integer(72, kAlignCenter);
  out.Point3(11, center);
}

}  // namespace

Handle EntityWriter::Begin(std::string_view type, std::string_view layer, int color) {
  const Handle handle = BeginOwnedBy(owner_, type, layer);
  if (color != kColorByLayer) out_.Integer(62, color);
  return handle;
}

Handle EntityWriter::BeginOwnedBy(Handle owner, std::string_view type, std::string_view layer) {
  const Handle handle = handles_.Next();
  out_.Text(0, type);
  out_.HandleValue(5, handle);
  out_.HandleValue(330, owner);
  out_.Text(100, "AcDbEntity");
  out_.Text(8, layer);
  return handle;
}

void WriteLine(EntityWriter& writer, std::string_view layer, Segment segment, int color) {
  writer.Begin("LINE", layer, color);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbLine");
  out.Point3(10, segment.a);
  out.Point3(11, segment.b);
}

void WriteArc(EntityWriter& writer, std::string_view layer, Point center, double radius, double start_degrees,
              double end_degrees) {
  writer.Begin("ARC", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbCircle");
  out.Point3(10, center);
  out.Real(40, radius);
  out.Text(100, "AcDbArc");
  out.Real(50, start_degrees);
  out.Real(51, end_degrees);
}

void WriteClosedPolyline(EntityWriter& writer, std::string_view layer, std::span<const Point> vertices) {
  writer.Begin("LWPOLYLINE", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbPolyline");
  out.Integer(90, static_cast<long long>(vertices.size()));
  out.Integer(70, 1);  // closed
  for (Point vertex : vertices) out.Point2(10, vertex);
}

void WritePoint(EntityWriter& writer, std::string_view layer, Point point) {
  writer.Begin("POINT", layer);
  writer.Out().Text(100, "AcDbPoint");
  writer.Out().Point3(10, point);
}

void WriteFilledTriangle(EntityWriter& writer, std::string_view layer, Point a, Point b, Point c, int color) {
  writer.Begin("SOLID", layer, color);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbTrace");
  out.Point3(10, a);
  out.Point3(11, b);
  out.Point3(12, c);
  out.Point3(13, c);
}

void WriteCenteredText(EntityWriter& writer, std::string_view layer, Point center, double height,
                       std::string_view text) {
  writer.Begin("TEXT", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbText");
  WriteCenteredPlacement(out, center, height, text);
  out.Text(100, "AcDbText");
  out.Integer(73, kAlignMiddle);
}

void WriteMText(EntityWriter& writer, std::string_view layer, int color, Point insertion,
                MTextAttachment attachment, double height, double reference_width, std::string_view text) {
  writer.Begin("MTEXT", layer, color);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbMText");
  out.Point3(10, insertion);
  out.Real(40, height);
  out.Real(41, reference_width);
  out.Integer(71, static_cast<int>(attachment));
  out.Integer(72, kLeftToRight);
  out.Text(1, text);  // callers keep texts below the 250 characters of one chunk
}

void WriteAttributeDefinition(EntityWriter& writer, std::string_view tag, std::string_view prompt,
                              Point center, double height) {
  writer.Begin("ATTDEF", "0");
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbText");
  WriteCenteredPlacement(out, center, height, "");
  out.Text(100, "AcDbAttributeDefinition");
  out.Integer(280, 0);  // version
  out.Text(3, prompt);
  out.Text(2, tag);
  out.Integer(70, 0);  // visible, variable, no verification
  out.Integer(74, kAlignMiddle);
}

void WriteInsert(EntityWriter& writer, std::string_view layer, std::string_view block, Point position,
                 double rotation_degrees, double scale) {
  writer.Begin("INSERT", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbBlockReference");
  out.Text(2, block);
  out.Point3(10, position);
  out.Real(41, scale);
  out.Real(42, scale);
  out.Real(43, scale);
  out.Real(50, rotation_degrees);
}

void WriteInsertWithAttributes(EntityWriter& writer, std::string_view layer, std::string_view block,
                               Point position, std::span<const AttributeValue> attributes) {
  const Handle insert = writer.Begin("INSERT", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbBlockReference");
  out.Integer(66, 1);  // attributes follow
  out.Text(2, block);
  out.Point3(10, position);
  for (const AttributeValue& attribute : attributes) {
    writer.BeginOwnedBy(insert, "ATTRIB", layer);
    out.Text(100, "AcDbText");
    WriteCenteredPlacement(out, attribute.center, attribute.height, attribute.value);
    out.Text(100, "AcDbAttribute");
    out.Integer(280, 0);  // version
    out.Text(2, attribute.tag);
    out.Integer(70, 0);
    out.Integer(74, kAlignMiddle);
  }
  writer.BeginOwnedBy(insert, "SEQEND", layer);
}

}  // namespace floorgen
