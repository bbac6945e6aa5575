#include "rooms/replace_block.h"

#include <cctype>
#include <cmath>

#include "host/database.h"
#include "host/dialog.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
#include "rooms/replace_block_dlg.h"

namespace fx::rooms {
namespace {

bool EqualNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(a[i])) !=
        std::toupper(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

// The position of `pattern` in `text` from `from`, ignoring ASCII case.
size_t FindNoCase(std::string_view text, std::string_view pattern, size_t from) {
  if (pattern.size() > text.size()) return std::string_view::npos;
  for (size_t i = from; i + pattern.size() <= text.size(); ++i) {
    if (EqualNoCase(text.substr(i, pattern.size()), pattern)) return i;
  }
  return std::string_view::npos;
}

void PrintStatus(const char* operation, Acad::ErrorStatus status) {
  acutPrintf("\n%s = %s", operation, Acad::acadErrorStatusText(status));
}

// What the replacement needs of an old reference, read while it is open.
struct OldReference {
  AcGePoint3d position;
  double rotation = 0;
  AcDbObjectId owner;
  AcDbObjectId layer;
  AcCmColor color;
  AcDb::LineWeight line_weight = AcDb::kLnWtByLayer;
  std::vector<std::pair<std::string, std::string>> attributes;  // tag, text
};

bool ReadOldReference(AcDbObjectId id, OldReference& old) {
  AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
  if (reference.openStatus() != Acad::eOk) return false;
  old.position = reference->position();
  old.rotation = reference->rotation();
  old.owner = reference->blockId();
  old.layer = reference->layerId();
  old.color = reference->color();
  old.line_weight = reference->lineWeight();
  for (AcDbObjectId attribute_id : reference->attributeIds()) {
    AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
    if (attribute.openStatus() == Acad::eOk) {
      old.attributes.emplace_back(attribute->tag(), attribute->textString());
    }
  }
  return true;
}

void CopyEntityProperties(AcDbObjectId layer, const AcCmColor& color, AcDb::LineWeight weight,
                          AcDbEntity& entity) {
  if (!layer.isNull()) entity.setLayer(layer);
  entity.setColor(color);
  entity.setLineWeight(weight);
}

// Places a text made in block coordinates by `transform` (rotation and
// uniform scale about the normal of the block, as a new reference of scale
// 1 has).
void TransformText(AcDbText& text, const AcGeMatrix3d& transform) {
  const bool aligned = !text.isDefaultAlignment();
  const AcGePoint3d alignment = text.alignmentPoint();
  const double rotation = text.rotation();
  const AcGeVector3d direction =
      transform * AcGeVector3d(std::cos(rotation), std::sin(rotation), 0);
  text.setPosition(transform * text.position());
  if (aligned) text.setAlignmentPoint(transform * alignment);
  text.setRotation(std::atan2(direction.y, direction.x));
  if (transform.scale() != 1.0) text.setHeight(text.height() * transform.scale());
}

// One attribute of the new reference from `definition`; its text from the
// applied expressions. The reference is write-open and in the database.
void AppendAttribute(AcDbBlockReference& reference, const AcDbAttributeDefinition& definition,
                     const AcGeMatrix3d& transform, const ReplaceBlockOptions& options,
                     const OldReference& old) {
  auto* attribute = new AcDbAttribute();
  AcDbObjectId attribute_id;
  if (Acad::ErrorStatus status = reference.appendAttribute(attribute_id, attribute);
      status != Acad::eOk) {
    PrintStatus("pBlockRef->appendAttribute", status);
    delete attribute;
    return;
  }
  CopyEntityProperties(definition.layerId(), definition.color(), definition.lineWeight(),
                       *attribute);
  attribute->setPosition(definition.position());
  attribute->setHeight(definition.height());
  attribute->setRotation(definition.rotation());
  attribute->setTag(definition.tag().c_str());
  attribute->setHorizontalMode(definition.horizontalMode());
  attribute->setVerticalMode(definition.verticalMode());
  if (!definition.isDefaultAlignment()) attribute->setAlignmentPoint(definition.alignmentPoint());
  attribute->setTextString("");
  TransformText(*attribute, transform);
  if (const AppliedExpression* applied = FindExpression(options.expressions, definition.tag())) {
    attribute->setTextString(ApplyExpression(applied->expression, old.attributes).c_str());
  }
  attribute->close();
}

void AppendAttributes(AcDbBlockReference& reference, AcDbObjectId new_block,
                      const ReplaceBlockOptions& options, const OldReference& old) {
  const AcGeMatrix3d transform = reference.blockTransform();
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> block(new_block, AcDb::kForRead);
    if (block.openStatus() != Acad::eOk) return;
    entities = block->entityIds();
  }
  for (AcDbObjectId id : entities) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
    if (definition.openStatus() == Acad::eOk) {
      AppendAttribute(reference, *definition.object(), transform, options, old);
    }
  }
}

// The new reference for `old`; false when it could not be added.
bool AddNewReference(const OldReference& old, AcDbObjectId new_block,
                     const ReplaceBlockOptions& options) {
  AcDbObjectPointer<AcDbBlockTableRecord> owner(old.owner, AcDb::kForWrite);
  if (owner.openStatus() != Acad::eOk) {
    PrintStatus("pOwner.openStatus", owner.openStatus());
    return false;
  }
  auto* reference = new AcDbBlockReference(old.position, new_block);
  reference->setRotation(old.rotation);
  // The scale is not copied: the new reference keeps scale 1 (kept so). The
  // normal is not either, for want of a setter in the host API: references
  // in the world XY plane (normal +Z, as plans have them) come out exact.
  AcDbObjectId id;
  if (Acad::ErrorStatus status = owner->appendAcDbEntity(id, reference); status != Acad::eOk) {
    PrintStatus("pOwner->appendAcDbEntity", status);
    delete reference;
    return false;
  }
  owner.close();
  CopyEntityProperties(old.layer, old.color, old.line_weight, *reference);
  AppendAttributes(*reference, new_block, options, old);
  reference->close();
  return true;
}

void EraseOldReference(AcDbObjectId id) {
  AcDbEntityPointer reference(id, AcDb::kForWrite);
  Acad::ErrorStatus status = reference.openStatus();
  if (status == Acad::eOk) status = reference->erase();
  if (status != Acad::eOk) PrintStatus("pOldBlockRef->erase", status);
}

}  // namespace

std::string ApplyExpression(
    std::string_view expression,
    const std::vector<std::pair<std::string, std::string>>& old_attributes) {
  std::string text(expression);
  for (const auto& [tag, value] : old_attributes) {
    const std::string pattern = "%" + tag + "%";
    // The search goes on after each inserted text, so a value that holds
    // the pattern itself is not replaced again.
    for (size_t at = FindNoCase(text, pattern, 0); at != std::string::npos;
         at = FindNoCase(text, pattern, at + value.size())) {
      text.replace(at, pattern.size(), value);
    }
  }
  return text;
}

const AppliedExpression* FindExpression(const std::vector<AppliedExpression>& expressions,
                                        std::string_view tag) {
  for (const AppliedExpression& applied : expressions) {
    if (EqualNoCase(applied.tag, tag)) return &applied;
  }
  return nullptr;
}

size_t ReplaceBlockReferences(CDocData& data, const ReplaceBlockOptions& options) {
  AcDbObjectId old_block;
  AcDbObjectId new_block;
  if (data.GetBlockID(options.old_block.c_str(), old_block) != Acad::eOk ||
      data.GetBlockID(options.new_block.c_str(), new_block) != Acad::eOk) {
    return 0;
  }
  std::vector<AcDbObjectId> references;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> block(old_block, AcDb::kForRead);
    if (block.openStatus() != Acad::eOk) {
      PrintStatus("pOldBlock.openStatus", block.openStatus());
      return 0;
    }
    block->getBlockReferenceIds(references);
  }
  size_t replaced = 0;
  for (AcDbObjectId id : references) {
    OldReference old;
    if (!ReadOldReference(id, old)) continue;
    if (!AddNewReference(old, new_block, options)) continue;
    ++replaced;
    if (options.remove_old) EraseOldReference(id);
  }
  return replaced;
}

void ReplaceBlock() {
  CReplaceBlockDlg dialog(acdbHostApplicationServices()->workingDatabase());
  if (fx::ShowDialog(dialog) != CReplaceBlockDlg::kReplace) return;
  ReplaceBlockReferences(DocVars().docData(), dialog.options());
}

}  // namespace fx::rooms
