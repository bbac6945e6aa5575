#include "rooms/identifier_entity.h"

#include "host/db_entities.h"

namespace fx::rooms {
namespace {

AcGePoint3d Middle(const AcGePoint3d& a, const AcGePoint3d& b) {
  return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
}

}  // namespace

IdentifierPlace PlaceOf(const AcDbEntity& entity) {
  IdentifierPlace place;
  const bool has_extents = entity.getGeomExtents(place.extents) == Acad::eOk && !place.extents.isEmpty();
  if (const auto* insert = dynamic_cast<const AcDbBlockReference*>(&entity)) {
    place.point = insert->position();
  } else if (has_extents) {
    place.point = Middle(place.extents.minPoint(), place.extents.maxPoint());
  } else if (const auto* text = dynamic_cast<const AcDbText*>(&entity)) {
    place.point = text->position();  // no extents (empty): where it is anchored
  } else if (const auto* mtext = dynamic_cast<const AcDbMText*>(&entity)) {
    place.point = mtext->location();
  }
  if (!has_extents) place.extents.set(place.point, place.point);
  return place;
}

bool IsTextEntity(const AcDbEntity& entity) {
  // Attributes and attribute definitions are texts too, but never
  // model-space labels of their own.
  if (dynamic_cast<const AcDbAttribute*>(&entity) != nullptr ||
      dynamic_cast<const AcDbAttributeDefinition*>(&entity) != nullptr) {
    return false;
  }
  return dynamic_cast<const AcDbText*>(&entity) != nullptr || dynamic_cast<const AcDbMText*>(&entity) != nullptr;
}

std::string IdentifierText(const AcDbEntity& entity) {
  if (const auto* text = dynamic_cast<const AcDbText*>(&entity)) return text->textString();
  const auto* mtext = dynamic_cast<const AcDbMText*>(&entity);
  if (mtext == nullptr) return {};
  std::string plain = mtext->text();
  for (char& c : plain) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return plain;
}

std::string TrimBlanks(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace fx::rooms
