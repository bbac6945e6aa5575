// Room identification: the identifiers, from block inserts (Block mode) or
// name texts (Text mode), in the order found.
#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/editor.h"
#include "rooms/identifier_entity.h"
#include "rooms/room_analysis.h"

namespace fx::rooms {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

// A layer of the three Text-mode layers, by name.
bool LookUpLayer(const std::string& name, AcDbObjectId& id) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  AcDbLayerTable* layers = nullptr;
  Acad::ErrorStatus status =
      database != nullptr ? database->getLayerTable(layers, AcDb::kForRead) : Acad::eNullObjectPointer;
  if (status != Acad::eOk) {
    acutPrintf("\ngetLayerTable = %s", Text(status));
    return false;
  }
  status = layers->getAt(name.c_str(), id);
  layers->close();
  if (status == Acad::eKeyNotFound) {
    acutPrintf("\nLayer \"%s\" not found", name.c_str());
  } else if (status != Acad::eOk) {
    acutPrintf("\ngetAt = %s", Text(status));
  }
  return status == Acad::eOk;
}

bool LookUpBlock(const std::string& name, AcDbObjectId& id) {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  AcDbBlockTable* blocks = nullptr;
  Acad::ErrorStatus status =
      database != nullptr ? database->getBlockTable(blocks, AcDb::kForRead) : Acad::eNullObjectPointer;
  if (status != Acad::eOk) {
    acutPrintf("\ngetBlockTable = %s", Text(status));
    return false;
  }
  status = blocks->getAt(name.c_str(), id);
  blocks->close();
  if (status != Acad::eOk) acutPrintf("\ngetAt = %s", Text(status));
  return status == Acad::eOk;
}

// Attribute tags compare without regard to ASCII case, as the editor does.
bool SameTag(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::toupper(static_cast<unsigned char>(x)) == std::toupper(static_cast<unsigned char>(y));
         });
}

// The values of `tags` among the attributes of the open insert, the first
// attribute of each tag, read in one pass over them (the work of three
// GetAttributeValue calls, with their messages). A tag the insert lacks
// (made from an older definition of the block) says so and keeps an empty
// value: one odd stamp does not stop the floor. False when an attribute
// cannot be opened.
bool ReadAttributeValues(const AcDbBlockReference& insert, const std::string* const (&tags)[3],
                         std::string* const (&values)[3]) {
  bool found[3] = {false, false, false};
  for (AcDbObjectId attribute_id : insert.attributeIds()) {
    AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
    if (attribute.openStatus() != Acad::eOk) {
      acutPrintf("\nacdbOpenObject = %s", Text(attribute.openStatus()));
      acutPrintf("\nGetAttributeValue = %s", Text(attribute.openStatus()));
      return false;
    }
    const std::string tag = attribute->tag();
    for (int i = 0; i < 3; ++i) {
      if (!found[i] && SameTag(tag, *tags[i])) {
        *values[i] = attribute->textString();
        found[i] = true;
      }
    }
  }
  for (int i = 0; i < 3; ++i) {
    if (found[i]) continue;
    acutPrintf("\nAttribute \"%s\" not found", tags[i]->c_str());
    acutPrintf("\nGetAttributeValue = %s", Text(Acad::eKeyNotFound));
    values[i]->clear();
  }
  return true;
}

}  // namespace

bool RoomAnalysis::IsFrozen(AcDbObjectId layer) {
  const auto [slot, inserted] = frozen_.try_emplace(layer, false);
  if (inserted) {
    AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
    slot->second = record.openStatus() == Acad::eOk && record->isFrozen();
  }
  return slot->second;
}

// Step 3. The block's references in model space (references inside other
// blocks or in paper space have no place on the floor), skipping inserts
// on frozen layers.
bool RoomAnalysis::CollectBlockIdentifiers() {
  AcDbObjectId block;
  if (!LookUpBlock(options_.block_name, block)) return false;
  for (const std::string* tag : {&options_.name_tag, &options_.category_tag, &options_.description_tag}) {
    bool has = false;
    if (document_.HasAttribute(block, tag->c_str(), has) != Acad::eOk) return false;
    if (!has) {
      acutPrintf("\nAttribute \"%s\" not found", tag->c_str());
      return false;
    }
  }
  std::vector<AcDbObjectId> references;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) {
      acutPrintf("\npMarkBlock.openStatus = %s", Text(record.openStatus()));
      return false;
    }
    const Acad::ErrorStatus status = record->getBlockReferenceIds(references);
    if (status != Acad::eOk) {
      acutPrintf("\ngetBlockReferenceIds = %s", Text(status));
      return false;
    }
  }
  identifiers_.reserve(references.size());
  for (AcDbObjectId insert : references) {
    Identifier identifier;
    bool skipped = false;
    if (!ReadInsert(insert, skipped, identifier)) return false;
    if (!skipped) identifiers_.push_back(std::move(identifier));
  }
  return true;
}

// One insert: its place and its three attribute values.
bool RoomAnalysis::ReadInsert(AcDbObjectId insert, bool& skipped, Identifier& identifier) {
  AcDbObjectPointer<AcDbBlockReference> reference(insert, AcDb::kForRead);
  if (reference.openStatus() != Acad::eOk) {
    acutPrintf("\npBlockRef.openStatus = %s", Text(reference.openStatus()));
    return false;
  }
  skipped = reference->blockId() != model_space_ || IsFrozen(reference->layerId());
  if (skipped) return true;
  identifier.id = insert;
  const IdentifierPlace place = PlaceOf(*reference.object());
  identifier.point = place.point;
  identifier.record.extents = place.extents;
  unlocks_.Unlock(reference->layerId());
  const std::string* const tags[3] = {&options_.name_tag, &options_.category_tag, &options_.description_tag};
  std::string* const values[3] = {&identifier.record.name, &identifier.record.category,
                                  &identifier.record.description};
  return ReadAttributeValues(*reference.object(), tags, values);
}

// Step 4. The name texts become identifiers; the type and description
// texts are kept by the contour that holds them (the first found wins).
bool RoomAnalysis::CollectTextIdentifiers() {
  AcDbObjectId name_layer;
  AcDbObjectId type_layer;
  AcDbObjectId description_layer;
  if (!LookUpLayer(options_.name_layer, name_layer) || !LookUpLayer(options_.type_layer, type_layer) ||
      !LookUpLayer(options_.description_layer, description_layer)) {
    return false;
  }
  identifiers_.reserve(EntitiesOn(name_layer).size());
  for (AcDbObjectId id : EntitiesOn(name_layer)) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || !IsTextEntity(*entity.object())) continue;
    Identifier identifier;
    identifier.id = id;
    const IdentifierPlace place = PlaceOf(*entity.object());
    identifier.point = place.point;
    identifier.record.name = IdentifierText(*entity.object());
    identifier.record.extents = place.extents;
    identifiers_.push_back(std::move(identifier));
  }
  unlocks_.Unlock(name_layer);
  types_ = TextsByContour(type_layer);
  descriptions_ = TextsByContour(description_layer);
  return true;
}

}  // namespace fx::rooms
