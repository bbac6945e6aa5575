// Moving TEXT, ATTRIB and ATTDEF to another plane or through a transform.
//
// A text is drawn in a frame of its plane: glyphs advance along the
// rotation's direction (against it when the text is backwards, 71 bit 2) and
// stand up along its perpendicular (down when upside down, bit 4). A glyph
// point (u, v), in units of the height, sits at
//   h * (w * u + v * tan(oblique)) * advance + h * v * up
// from the alignment point. transformBy maps advance and up through the
// transform and reads the new height, width factor and obliquing off their
// images, so the glyphs land exactly where the transform puts them, for
// rotations, mirrors and scalings alike.
//
// Backwards text is mirrored about its reference: the first point when left
// aligned, the second for the other alignments, and the span between the
// two for aligned and fit text, which run from the first to the second.
#include <cmath>
#include <numbers>
#include <utility>

#include "host/db_entities.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbText";
constexpr int kBackward = 2;
constexpr int kUpsideDown = 4;
// Below this, a factor that should be its default is taken for it, so a
// rigid move does not add groups for rounding noise.
constexpr double kNoise = 1e-12;

Range TextData(const TagList& tags) { return DataOf(tags, kSubclass); }

// Writes an optional group only when the entity has it or it differs from
// the value a missing group means.
void SetOptional(TagList& tags, int code, double value, double fallback) {
  Range range = TextData(tags);
  if (tags.Find(code, range) != TagList::kNotFound || std::abs(value - fallback) > kNoise)
    tags.SetDouble(code, value, range);
}

double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

// The angle of an in-plane direction in the object coordinates of `normal`,
// in [0, 2 pi).
double AngleInPlane(const AcGeVector3d& normal, const AcGeVector3d& direction) {
  AcGePoint3d ocs = fx::dxf::WorldToOcs(normal, AcGePoint3d::kOrigin + direction);
  double angle = std::atan2(ocs.y, ocs.x);
  if (angle < 0) angle += 2 * std::numbers::pi;
  return angle > 2 * std::numbers::pi - kNoise ? 0 : angle;
}

bool RunsAlongItsSpan(const AcDbText& text) {
  return text.horizontalMode() == kTextAlign || text.horizontalMode() == kTextFit;
}

// The direction of the text's x axis in its plane: aligned and fit text run
// along their span whatever rotation they store.
double TextAngle(const AcDbText& text) {
  if (RunsAlongItsSpan(text)) {
    const AcGePoint3d first = fx::dxf::WorldToOcs(text.normal(), text.position());
    const AcGePoint3d second = fx::dxf::WorldToOcs(text.normal(), text.alignmentPoint());
    if (first.x != second.x || first.y != second.y)
      return std::atan2(second.y - first.y, second.x - first.x);
  }
  return text.rotation();
}

}  // namespace

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (normal.length() == 0) return Acad::eInvalidInput;
  const AcGePoint3d position = this->position();
  const AcGePoint3d alignment = alignmentPoint();
  TagList& tags = impl()->mutable_tags();
  const bool has_alignment = tags.Find(11, TextData(tags)) != TagList::kNotFound;
  fx::dxf::WriteNormal(tags, TextData(tags), normal);
  setPosition(position);
  return has_alignment ? setAlignmentPoint(alignment) : Acad::eOk;
}

Acad::ErrorStatus AcDbText::transformBy(const AcGeMatrix3d& transform) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  const AcGeVector3d old_normal = normal();
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(old_normal);
  const double angle = TextAngle(*this);
  const double cosine = std::cos(angle), sine = std::sin(angle);
  const AcGeVector3d x_axis = transform * (plane * AcGeVector3d(cosine, sine, 0));
  const AcGeVector3d y_axis = transform * (plane * AcGeVector3d(-sine, cosine, 0));
  // The new plane's normal points the way the transformed normal does,
  // also under a reflection, where the images of x and y turn the other way.
  AcGeVector3d new_normal = x_axis.crossProduct(y_axis);
  if (transform.det() < 0) new_normal = -new_normal;
  const bool backward = isMirroredInX();
  const bool upside_down = isMirroredInY();
  const AcGeVector3d advance = backward ? -x_axis : x_axis;
  const AcGeVector3d up = upside_down ? -y_axis : y_axis;
  if (new_normal.length() == 0 || advance.length() == 0) return Acad::eInvalidInput;
  new_normal = new_normal.normal();

  const double advance_scale = advance.length();
  const AcGeVector3d advance_unit = advance * (1 / advance_scale);
  const AcGeVector3d up_across = up - advance_unit * up.dotProduct(advance_unit);
  const double up_scale = up_across.length();  // the height's factor
  const AcGeVector3d up_unit = up_across * (1 / up_scale);
  // The stored frame keeps the upside-down flag; the backwards flag then
  // says whether the glyphs run along its x axis or against it.
  const AcGeVector3d frame_y = upside_down ? -up_unit : up_unit;
  const AcGeVector3d frame_x = frame_y.crossProduct(new_normal);
  const bool new_backward = frame_x.dotProduct(advance_unit) < 0;

  const double height = this->height() * up_scale;
  const double width = widthFactor() * advance_scale / up_scale;
  const double tan_oblique =
      (std::tan(oblique()) * advance_scale + up.dotProduct(advance_unit)) / up_scale;
  AcGePoint3d position = transform * this->position();
  AcGePoint3d alignment = transform * alignmentPoint();
  // A span whose direction the mirroring turns is stored the other way round.
  if (RunsAlongItsSpan(*this) && new_backward != backward) {
    std::swap(position, alignment);
  }

  TagList& tags = impl()->mutable_tags();
  const bool has_alignment = tags.Find(11, TextData(tags)) != TagList::kNotFound;
  const double thickness = tags.GetDouble(39, tags.Body(), 0);
  fx::dxf::WriteNormal(tags, TextData(tags), new_normal);
  tags.SetPoint(10, fx::dxf::WorldToOcs(new_normal, position), TextData(tags));
  if (has_alignment) tags.SetPoint(11, fx::dxf::WorldToOcs(new_normal, alignment), TextData(tags));
  tags.SetDouble(40, height, TextData(tags));
  SetOptional(tags, 41, width, 1);
  SetOptional(tags, 50, Degrees(AngleInPlane(new_normal, frame_x)), 0);
  SetOptional(tags, 51, Degrees(std::atan(tan_oblique)), 0);
  if (thickness != 0) {
    tags.SetDouble(39, thickness * (transform * old_normal).dotProduct(new_normal), tags.Body());
  }
  const int flags = static_cast<int>(tags.GetInt(71, TextData(tags), 0));
  const int new_flags = new_backward ? flags | kBackward : flags & ~kBackward;
  if (new_flags != flags) tags.SetInt(71, new_flags, TextData(tags));
  return Acad::eOk;
}
