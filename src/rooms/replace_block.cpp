#include "rooms/replace_block.h"

#include <cctype>

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

// The tags and texts of an old reference's attributes, for the expressions.
std::vector<std::pair<std::string, std::string>> OldAttributes(
    const AcDbBlockReference& reference) {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (AcDbObjectId attribute_id : reference.attributeIds()) {
    AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
    if (attribute.openStatus() == Acad::eOk) {
      attributes.emplace_back(attribute->tag(), attribute->textString());
    }
  }
  return attributes;
}

// One attribute of the new reference made from `definition` as the editor
// makes one, placed in block coordinates and then moved by the reference's
// block transform. The reference is write-open and in the database.
void AppendAttribute(AcDbBlockReference& reference, const AcDbAttributeDefinition& definition,
                     const AcGeMatrix3d& transform, const std::string& text) {
  auto* attribute = new AcDbAttribute();  // its text starts empty
  attribute->setPropertiesFrom(&definition);
  attribute->setInvisible(definition.isInvisible());
  // The definition's plane first, for its position and rotation to mean the same.
  attribute->setNormal(definition.normal());
  attribute->setPosition(definition.position());
  attribute->setHeight(definition.height());
  attribute->setRotation(definition.rotation());
  attribute->setTag(definition.tag().c_str());
  attribute->setFieldLength(definition.fieldLength());
  attribute->setHorizontalMode(definition.horizontalMode());
  attribute->setVerticalMode(definition.verticalMode());
  if (!definition.isDefaultAlignment()) attribute->setAlignmentPoint(definition.alignmentPoint());
  attribute->transformBy(transform);
  attribute->setTextString(text.c_str());
  AcDbObjectId attribute_id;
  if (Acad::ErrorStatus status = reference.appendAttribute(attribute_id, attribute);
      status != Acad::eOk) {
    PrintStatus("pBlockRef->appendAttribute", status);
    delete attribute;
    return;
  }
  attribute->close();
}

void AppendAttributes(AcDbBlockReference& reference, AcDbObjectId new_block,
                      const ReplaceBlockOptions& options,
                      const std::vector<std::pair<std::string, std::string>>& old_attributes) {
  const AcGeMatrix3d transform = reference.blockTransform();
  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> block(new_block, AcDb::kForRead);
    if (block.openStatus() != Acad::eOk) return;
    entities = block->entityIds();
  }
  for (AcDbObjectId id : entities) {
    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
    if (definition.openStatus() != Acad::eOk) continue;
    const AppliedExpression* applied = FindExpression(options.expressions, definition->tag());
    const std::string text = applied ? ApplyExpression(applied->expression, old_attributes) : "";
    AppendAttribute(reference, *definition.object(), transform, text);
  }
}

// The new reference for `old` (read-open) in the same owner; false when it
// could not be added.
bool AddNewReference(const AcDbBlockReference& old, AcDbObjectId new_block,
                     const ReplaceBlockOptions& options) {
  AcDbObjectPointer<AcDbBlockTableRecord> owner(old.blockId(), AcDb::kForWrite);
  if (owner.openStatus() != Acad::eOk) {
    PrintStatus("pOwner.openStatus", owner.openStatus());
    return false;
  }
  auto* reference = new AcDbBlockReference(old.position(), new_block);
  // Position, rotation and normal come from the old reference; the scale
  // does not: the new one keeps scale 1 (kept so).
  reference->setNormal(old.normal());
  reference->setRotation(old.rotation());
  reference->setPropertiesFrom(&old);
  AcDbObjectId id;
  if (Acad::ErrorStatus status = owner->appendAcDbEntity(id, reference); status != Acad::eOk) {
    PrintStatus("pOwner->appendAcDbEntity", status);
    delete reference;
    return false;
  }
  owner.close();
  AppendAttributes(*reference, new_block, options, OldAttributes(old));
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
    {
      AcDbObjectPointer<AcDbBlockReference> old(id, AcDb::kForRead);
      if (old.openStatus() != Acad::eOk) continue;
      if (!AddNewReference(*old.object(), new_block, options)) continue;
    }
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
