#include "dxf_dimension.h"

#include <charconv>
#include <cmath>
#include <string>

#include "layers.h"

namespace floorgen {

namespace {

constexpr int kDimensionRotated = 0;
constexpr int kBlockReferencedOnlyByThis = 32;
constexpr int kAttachMiddleCenter = 5;

std::string MeasurementText(const LinearDimension& dimension) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, std::lround(dimension.Measurement())).ptr;
  return std::string(text, end);
}

}  // namespace

void WriteDimensionBlockContent(EntityWriter& writer, const LinearDimension& dimension) {
  const double y = dimension.line_y;
  const double x1 = dimension.first.x;
  const double x2 = dimension.second.x;
  const double arrow = kDimArrowSize * kDimScale;
  const double offset = kDimExtensionOffset * kDimScale;
  const double beyond = kDimExtensionBeyond * kDimScale;
  // Block content is drawn on layer 0 by block colour, so it takes the
  // dimension's own layer and colour.
  WriteLine(writer, kLayerZero, {{x1, dimension.first.y - offset}, {x1, y - beyond}}, kColorByBlock);
  WriteLine(writer, kLayerZero, {{x2, dimension.second.y - offset}, {x2, y - beyond}}, kColorByBlock);
  WriteLine(writer, kLayerZero, {{x1, y}, {x2, y}}, kColorByBlock);
  // Closed filled arrowheads, tip on the extension line, 1:3 wide.
  WriteFilledTriangle(writer, kLayerZero, {x1, y}, {x1 + arrow, y + arrow / 6}, {x1 + arrow, y - arrow / 6},
                      kColorByBlock);
  WriteFilledTriangle(writer, kLayerZero, {x2, y}, {x2 - arrow, y - arrow / 6}, {x2 - arrow, y + arrow / 6},
                      kColorByBlock);
  WriteMText(writer, kLayerZero, kColorByBlock, dimension.TextBottomCenter(), MTextAttachment::kBottomCenter,
             kDimTextHeight * kDimScale, 0.0, MeasurementText(dimension));
  WritePoint(writer, kLayerDefpoints, dimension.first);
  WritePoint(writer, kLayerDefpoints, dimension.second);
  WritePoint(writer, kLayerDefpoints, {x2, y});
}

void WriteRotatedDimension(EntityWriter& writer, std::string_view layer, const LinearDimension& dimension,
                           std::string_view block, std::string_view dimension_style) {
  writer.Begin("DIMENSION", layer);
  DxfStream& out = writer.Out();
  out.Text(100, "AcDbDimension");
  out.Integer(280, 0);  // version
  out.Text(2, block);
  out.Point3(10, {dimension.second.x, dimension.line_y});  // where the dimension line meets extension line 2
  out.Point3(11, dimension.TextMiddle());
  out.Integer(70, kDimensionRotated | kBlockReferencedOnlyByThis);
  out.Integer(71, kAttachMiddleCenter);
  out.Real(42, dimension.Measurement());
  out.Text(3, dimension_style);
  out.Text(100, "AcDbAlignedDimension");
  out.Point3(13, dimension.first);
  out.Point3(14, dimension.second);
  out.Real(50, 0.0);  // horizontal
  out.Text(100, "AcDbRotatedDimension");
}

}  // namespace floorgen
