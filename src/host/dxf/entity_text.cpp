// TEXT, and the text part that ATTRIB and ATTDEF share with it: first
// alignment point (10) and second (11) in the object coordinates of the
// normal (210), height (40), value (1), rotation (50), width factor (41),
// obliquing (51), style (7), mirroring (71: 2 backwards, 4 upside down),
// horizontal alignment (72) and vertical alignment (73 for TEXT, in its
// second AcDbText subclass; 74 for ATTRIB and ATTDEF).
#include <cmath>
#include <numbers>

#include "host/database.h"
#include "host/db_entities.h"
#include "host/dxf/draw_extents.h"
#include "host/dxf/draw_text_box.h"
#include "host/dxf/draw_text_layout.h"
#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_database.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::Range;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kSubclass = "AcDbText";
constexpr double kRadiansToDegrees = 180 / std::numbers::pi;

Range TextData(const AcDbText& text) { return DataOf(text.impl()->tags(), kSubclass); }

// Where the vertical alignment is: TEXT keeps it in a second AcDbText
// subclass, attributes in their own subclass; searching from the first
// AcDbText data to the end of the record finds either.
Range TextTail(const TagList& tags) {
  Range range = DataOf(tags, kSubclass);
  range.end = tags.XDataBegin();
  size_t embedded = tags.Find(101, range);
  if (embedded != TagList::kNotFound) range.end = embedded;
  return range;
}

int VerticalCode(const AcDbText& text) { return text.impl()->type() == "TEXT" ? 73 : 74; }

// Readings of the text data `range`, shared by the accessors and the layout.
double WidthFactorIn(const TagList& tags, Range range) {
  double factor = tags.GetDouble(41, range, 1);
  return factor > 0 ? factor : 1;
}

AcDbTextHorzMode HorizontalModeIn(const TagList& tags, Range range) {
  int64_t mode = tags.GetInt(72, range, 0);
  return mode >= kTextLeft && mode <= kTextFit ? static_cast<AcDbTextHorzMode>(mode) : kTextLeft;
}

// Group 71: 2 backwards (mirrored in X), 4 upside down (mirrored in Y).
bool MirroredIn(const TagList& tags, Range range, int flag) { return (tags.GetInt(71, range, 0) & flag) != 0; }

}  // namespace

namespace fx::dxf {

TagList NewTextTags(std::string_view type, const AcGePoint3d& position, std::string_view text,
                    AcDbObjectId style, double height, double rotation) {
  TagList tags = NewEntityTags(type, kSubclass);
  AppendPoint(tags, 10, position);
  AppendDouble(tags, 40, height);
  tags.Append(1, CaretEncode(text));
  if (rotation != 0) AppendDouble(tags, 50, rotation * kRadiansToDegrees);
  std::string style_name = fx::dxf::StoredSymbolName(style);
  if (!style_name.empty()) tags.Append(7, style_name);
  return tags;
}

}  // namespace fx::dxf

AcDbText::AcDbText() : AcDbText(AcGePoint3d::kOrigin, "") {}

AcDbText::AcDbText(const AcGePoint3d& position, const char* text, AcDbObjectId style, double height,
                   double rotation)
    : AcDbEntity([&] {
        TagList tags = fx::dxf::NewTextTags("TEXT", position, text, style, height, rotation);
        tags.Append(100, kSubclass);
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {}

AcGePoint3d AcDbText::position() const {
  return fx::dxf::OcsToWorld(normal(), impl()->tags().GetPoint(10, TextData(*this)));
}

AcGePoint3d AcDbText::alignmentPoint() const {
  const TagList& tags = impl()->tags();
  Range range = TextData(*this);
  if (tags.Find(11, range) == TagList::kNotFound) return position();
  return fx::dxf::OcsToWorld(normal(), tags.GetPoint(11, range));
}

bool AcDbText::isDefaultAlignment() const {
  return horizontalMode() == kTextLeft && verticalMode() == kTextBase;
}

std::string AcDbText::textString() const {
  return fx::dxf::DecodeText(*this, impl()->tags().GetString(1, TextData(*this)));
}

double AcDbText::height() const { return impl()->tags().GetDouble(40, TextData(*this), 0); }

double AcDbText::rotation() const {
  return fx::dxf::ReadDegrees(impl()->tags(), 50, TextData(*this));
}

double AcDbText::oblique() const { return fx::dxf::ReadDegrees(impl()->tags(), 51, TextData(*this)); }

double AcDbText::widthFactor() const { return WidthFactorIn(impl()->tags(), TextData(*this)); }

AcDbTextHorzMode AcDbText::horizontalMode() const { return HorizontalModeIn(impl()->tags(), TextData(*this)); }

AcDbTextVertMode AcDbText::verticalMode() const {
  const TagList& tags = impl()->tags();
  int64_t mode = tags.GetInt(VerticalCode(*this), TextTail(tags), 0);
  return mode >= kTextBase && mode <= kTextTop ? static_cast<AcDbTextVertMode>(mode) : kTextBase;
}

bool AcDbText::isMirroredInX() const { return MirroredIn(impl()->tags(), TextData(*this), 2); }

bool AcDbText::isMirroredInY() const { return MirroredIn(impl()->tags(), TextData(*this), 4); }

AcDbObjectId AcDbText::textStyle() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::SymbolIdByName(database(), "STYLE",
                                 fx::dxf::ReadName(tags, 7, TextData(*this), "STANDARD"));
}

AcGeVector3d AcDbText::normal() const { return fx::dxf::ReadNormal(impl()->tags(), TextData(*this)); }

Acad::ErrorStatus AcDbText::setTextString(const char* text) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string stored = fx::dxf::EncodeText(*this, text != nullptr ? text : "");
  TagList& tags = impl()->mutable_tags();
  tags.SetString(1, stored, TextData(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcGePoint3d ocs = fx::dxf::WorldToOcs(normal(), position);
  TagList& tags = impl()->mutable_tags();
  tags.SetPoint(10, ocs, TextData(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  AcGePoint3d ocs = fx::dxf::WorldToOcs(normal(), point);
  TagList& tags = impl()->mutable_tags();
  Range range = TextData(*this);
  if (tags.Find(11, range) != TagList::kNotFound) {
    tags.SetPoint(11, ocs, range);
    return Acad::eOk;
  }
  // The second point goes before the normal where there is one.
  size_t normal_at = tags.Find(210, range);
  tags.SetPoint(11, ocs, {range.begin, normal_at != TagList::kNotFound ? normal_at : range.end});
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  if (!(height > 0)) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(40, height, TextData(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setRotation(double rotation) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetDouble(50, rotation * kRadiansToDegrees, TextData(*this));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDbTextHorzMode mode) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  tags.SetInt(72, mode, TextData(*this));
  if (mode != kTextLeft && tags.Find(11, TextData(*this)) == TagList::kNotFound) {
    // An alignment other than left needs the second point: it starts at the first.
    return setAlignmentPoint(position());
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDbTextVertMode mode) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  Range tail = TextTail(tags);
  if (tags.Find(VerticalCode(*this), tail) != TagList::kNotFound) {
    tags.SetInt(VerticalCode(*this), mode, tail);
  } else if (impl()->type() == "TEXT") {
    // TEXT keeps it in its second AcDbText subclass, when it has markers.
    size_t second = TagList::kNotFound;
    for (size_t i = TextData(*this).end; i < tail.end && second == TagList::kNotFound; ++i)
      if (tags[i].code == 100 && fx::dxf::TrimBlanks(tags[i].value) == kSubclass) second = i;
    tags.Insert(second != TagList::kNotFound ? second + 1 : tail.end, 73, std::to_string(mode));
  } else {
    tags.Insert(tail.end, 74, std::to_string(mode));
  }
  if (mode != kTextBase && tags.Find(11, TextData(*this)) == TagList::kNotFound)
    return setAlignmentPoint(position());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string name = fx::dxf::StoredSymbolName(style);
  if (name.empty()) return Acad::eInvalidInput;
  TagList& tags = impl()->mutable_tags();
  tags.SetString(7, name, TextData(*this));
  return Acad::eOk;
}

bool AcDbText::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  return !fx::dxf::DrawTextLine(*this, *world_draw, textString());
}

namespace fx::dxf {

TextPlacement ReadTextPlacement(const AcDbText& text) {
  // The accessors' readings, with the subclass data found once.
  const TagList& tags = text.impl()->tags();
  const Range range = TextData(text);
  TextPlacement placement;
  placement.normal = ReadNormal(tags, range);
  placement.position = OcsToWorld(placement.normal, tags.GetPoint(10, range));
  placement.alignment_point = tags.Find(11, range) == TagList::kNotFound
                                  ? placement.position
                                  : OcsToWorld(placement.normal, tags.GetPoint(11, range));
  placement.height = tags.GetDouble(40, range, 0);
  placement.width_factor = WidthFactorIn(tags, range);
  placement.rotation = ReadDegrees(tags, 50, range);
  placement.oblique = ReadDegrees(tags, 51, range);
  placement.horizontal = HorizontalModeIn(tags, range);
  placement.vertical = text.verticalMode();
  placement.mirrored_x = MirroredIn(tags, range, 2);
  placement.mirrored_y = MirroredIn(tags, range, 4);
  return placement;
}

void AddExtents(const AcDbText& text, const AcGeMatrix3d& transform, AcDbExtents& box) {
  // An attribute definition shows its tag, the others their value.
  const AcDbAttributeDefinition* definition = dynamic_cast<const AcDbAttributeDefinition*>(&text);
  std::string shown = definition != nullptr ? definition->tag() : text.textString();
  if (shown.empty()) return;
  AddTextFrameExtents(box, LayoutText(text, ExpandPercentCodes(shown)), transform);
}

}  // namespace fx::dxf
