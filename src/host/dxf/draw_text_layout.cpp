#include "host/dxf/draw_text_layout.h"

#include <cmath>

#include "host/dxf/entity_support.h"
#include "host/world_draw.h"

namespace fx::dxf {
namespace {

// The plane frame of a text before it is mapped into space: origin and
// axes in the object coordinates of its normal.
struct PlaneFrame {
  AcGePoint3d origin;
  AcGeVector3d x_axis, y_axis;
  double width = 0;
};

PlaneFrame LayoutInPlane(const TextPlacement& text, double natural_width) {
  const AcGeVector3d normal = text.normal;
  const AcGePoint3d first = WorldToOcs(normal, text.position);
  const AcGePoint3d second = WorldToOcs(normal, text.alignment_point);
  const double height = text.height;
  const AcDbTextHorzMode horizontal = text.horizontal;
  const AcDbTextVertMode vertical = text.vertical;
  const double x_sign = text.mirrored_x ? -1 : 1;
  const double y_sign = text.mirrored_y ? -1 : 1;

  PlaneFrame frame;
  AcGeVector3d span = second - first;
  span.z = 0;
  if ((horizontal == kTextAlign || horizontal == kTextFit) && span.length() > 0) {
    AcGeVector3d along = span.normal();
    AcGeVector3d up{-along.y, along.x, 0};
    frame.width = span.length();
    frame.x_axis = along * x_sign;
    frame.y_axis = up * y_sign;
    frame.origin = x_sign > 0 ? first : second;
    return frame;
  }
  double angle = text.rotation;
  AcGeVector3d along{std::cos(angle), std::sin(angle), 0};
  AcGeVector3d up{-along.y, along.x, 0};
  frame.width = natural_width;
  frame.x_axis = along * x_sign;
  frame.y_axis = up * y_sign;
  if (horizontal == kTextLeft && vertical == kTextBase) {
    frame.origin = first;
    return frame;
  }
  double dx = 0, dy = 0;
  switch (horizontal) {
    case kTextCenter:
    case kTextMid: dx = -natural_width / 2; break;
    case kTextRight: dx = -natural_width; break;
    default: break;
  }
  switch (horizontal == kTextMid ? kTextVertMid : vertical) {
    case kTextBottom: dy = kDescent * height; break;
    case kTextVertMid: dy = -height / 2; break;
    case kTextTop: dy = -height; break;
    default: break;
  }
  frame.origin = second + frame.x_axis * dx + frame.y_axis * dy;
  return frame;
}

}  // namespace

TextFrame LayoutText(const TextPlacement& text, double advance) {
  const double height = text.height;
  PlaneFrame plane = LayoutInPlane(text, advance * height * text.width_factor);
  AcGeMatrix3d to_world = AcGeMatrix3d::planeToWorld(text.normal);
  TextFrame frame;
  frame.origin = to_world * plane.origin;
  frame.x_axis = to_world * plane.x_axis;
  frame.y_axis = to_world * plane.y_axis;
  frame.width = plane.width;
  frame.height = height;
  frame.slant = std::tan(text.oblique);
  return frame;
}

TextFrame LayoutText(const AcDbText& text, std::string_view display) {
  return LayoutText(ReadTextPlacement(text), TextAdvance(display));
}

bool DrawTextLine(const AcDbText& text, AcGiWorldDraw& draw, std::string_view value) {
  AcGiTextStyle style;
  std::string display = ExpandPercentCodes(value, &style.underlined);
  if (display.empty()) return false;
  LoadTextStyle(text.textStyle(), style);
  const TextPlacement placement = ReadTextPlacement(text);
  const double advance_per_height = TextAdvance(display);
  TextFrame frame = LayoutText(placement, advance_per_height);
  style.text_size = placement.height;
  style.x_scale = placement.width_factor;
  double advance = advance_per_height * style.text_size;
  if ((placement.horizontal == kTextAlign || placement.horizontal == kTextFit) && advance > 0)
    style.x_scale = frame.width / advance;
  style.obliquing_angle = placement.oblique;
  // The sink derives the up direction as normal x direction.
  AcGeVector3d normal = frame.x_axis.crossProduct(frame.y_axis).normal();
  return draw.geometry().text(frame.origin, normal, frame.x_axis, display.c_str(), true, style);
}

}  // namespace fx::dxf
