// ATTRIB and ATTDEF: a text (see entity_text.cpp) with a tag (2), flags
// (70: 1 invisible, 2 constant, 8 preset), a field length (73, after the
// flags, left out when 0) and, for a definition, a prompt (3), in the
// AcDbAttribute or AcDbAttributeDefinition subclass.
#include <cstdint>
#include <string>

#include "host/db_entities.h"
#include "host/dxf/draw_text_layout.h"
#include "host/dxf/entity_support.h"
#include "host/dxf/imp_object.h"
#include "host/world_draw.h"

using fx::dxf::DataOf;
using fx::dxf::TagList;

namespace {

constexpr std::string_view kAttribute = "AcDbAttribute";
constexpr std::string_view kDefinition = "AcDbAttributeDefinition";
constexpr int kInvisible = 1;
constexpr int kConstant = 2;
constexpr int kPreset = 8;

int Flags(const AcDbObject& object, std::string_view subclass) {
  const TagList& tags = object.impl()->tags();
  return static_cast<int>(tags.GetInt(70, DataOf(tags, subclass), 0));
}

uint16_t FieldLength(const AcDbObject& object, std::string_view subclass) {
  const TagList& tags = object.impl()->tags();
  int64_t length = tags.GetInt(73, DataOf(tags, subclass), 0);
  return length > 0 && length <= UINT16_MAX ? static_cast<uint16_t>(length) : 0;
}

}  // namespace

AcDbAttribute::AcDbAttribute()
    : AcDbText([] {
        TagList tags = fx::dxf::NewTextTags("ATTRIB", AcGePoint3d::kOrigin, "", {}, 0, 0);
        tags.Append(100, kAttribute);
        tags.Append(2, "");
        fx::dxf::AppendInt(tags, 70, 0);
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {}

std::string AcDbAttribute::tag() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::DecodeText(*this, tags.GetString(2, DataOf(tags, kAttribute)));
}

Acad::ErrorStatus AcDbAttribute::setTag(const char* tag) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  std::string stored = fx::dxf::EncodeText(*this, tag != nullptr ? tag : "");
  TagList& tags = impl()->mutable_tags();
  tags.SetString(2, stored, DataOf(tags, kAttribute));
  return Acad::eOk;
}

bool AcDbAttribute::isInvisible() const { return (Flags(*this, kAttribute) & kInvisible) != 0; }
bool AcDbAttribute::isConstant() const { return (Flags(*this, kAttribute) & kConstant) != 0; }

Acad::ErrorStatus AcDbAttribute::setInvisible(bool invisible) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  const int flags = Flags(*this, kAttribute);
  TagList& tags = impl()->mutable_tags();
  tags.SetInt(70, invisible ? flags | kInvisible : flags & ~kInvisible, DataOf(tags, kAttribute));
  return Acad::eOk;
}

uint16_t AcDbAttribute::fieldLength() const { return FieldLength(*this, kAttribute); }

Acad::ErrorStatus AcDbAttribute::setFieldLength(uint16_t length) {
  if (Acad::ErrorStatus es = assertWriteEnabled(); es != Acad::eOk) return es;
  TagList& tags = impl()->mutable_tags();
  const fx::dxf::Range range = DataOf(tags, kAttribute);
  if (tags.Find(73, range) != TagList::kNotFound) {
    tags.SetInt(73, length, range);
  } else if (length != 0) {
    const size_t flags = tags.Find(70, range);
    tags.Insert(flags != TagList::kNotFound ? flags + 1 : range.end, 73, std::to_string(length));
  }
  return Acad::eOk;
}

bool AcDbAttribute::worldDraw(AcGiWorldDraw* world_draw) {
  if (isInvisible()) return true;
  return AcDbText::worldDraw(world_draw);
}

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const char* default_value,
                                                 const char* tag, const char* prompt, AcDbObjectId style,
                                                 double height)
    : AcDbText([&] {
        TagList tags = fx::dxf::NewTextTags("ATTDEF", position, default_value ? default_value : "", style,
                                            height, 0);
        tags.Append(100, kDefinition);
        tags.Append(3, prompt != nullptr ? prompt : "");
        tags.Append(2, tag != nullptr ? tag : "");
        fx::dxf::AppendInt(tags, 70, 0);
        return std::make_unique<AcDbImpObject>(std::move(tags));
      }()) {}

std::string AcDbAttributeDefinition::tag() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::DecodeText(*this, tags.GetString(2, DataOf(tags, kDefinition)));
}

std::string AcDbAttributeDefinition::prompt() const {
  const TagList& tags = impl()->tags();
  return fx::dxf::DecodeText(*this, tags.GetString(3, DataOf(tags, kDefinition)));
}

bool AcDbAttributeDefinition::isInvisible() const { return (Flags(*this, kDefinition) & kInvisible) != 0; }
bool AcDbAttributeDefinition::isConstant() const { return (Flags(*this, kDefinition) & kConstant) != 0; }
bool AcDbAttributeDefinition::isPreset() const { return (Flags(*this, kDefinition) & kPreset) != 0; }
uint16_t AcDbAttributeDefinition::fieldLength() const { return FieldLength(*this, kDefinition); }

// A definition shows its tag, as in a block definition; an insert draws its
// attributes instead and skips its block's definitions (entity_insert_draw.cpp).
bool AcDbAttributeDefinition::worldDraw(AcGiWorldDraw* world_draw) {
  fx::dxf::SetEntityTraits(*this, *world_draw);
  return !fx::dxf::DrawTextLine(*this, *world_draw, tag());
}
