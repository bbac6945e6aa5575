// What room identification reads from an identifying entity: the point
// handed to the inside test, and the text of a name, type or description.
//
// The point is where a user sees the label:
//   block insert   its insertion point: the point the user placed, around
//                  which stamp blocks are drawn (the extents of an insert
//                  also hold long or invisible attributes);
//   TEXT, MTEXT    the centre of its extents, whatever its justification or
//                  attachment: the anchor of a top-left MTEXT or of a
//                  left-aligned TEXT is a corner of the label, which on real
//                  plans often lies on or beyond the wall of a small room;
//                  the anchor when the text has no extents (empty).
#ifndef FLOORXPORT_ROOMS_IDENTIFIER_ENTITY_H_
#define FLOORXPORT_ROOMS_IDENTIFIER_ENTITY_H_

#include <string>

#include "host/geometry.h"

class AcDbEntity;

namespace fx::rooms {

// Where an identifier is: the point handed to the inside test, and the
// extents its record keeps (the box of the point alone when the entity has
// no extents, as an empty text).
struct IdentifierPlace {
  AcGePoint3d point;
  AcDbExtents extents;
};
IdentifierPlace PlaceOf(const AcDbEntity& entity);

// True for the entities that name rooms in Text mode: TEXT and MTEXT.
bool IsTextEntity(const AcDbEntity& entity);

// The text of a TEXT as stored, or the plain text of an MTEXT (formatting
// codes removed; paragraph and line breaks become one blank each, so a
// two-line stamp "C004\PRéserve" reads "C004 Réserve").
std::string IdentifierText(const AcDbEntity& entity);

// `text` without blanks (spaces and tabs) at both ends: names compare so.
std::string TrimBlanks(const std::string& text);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_IDENTIFIER_ENTITY_H_
