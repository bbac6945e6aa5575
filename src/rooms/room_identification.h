// Room identification (the command vantoryconvert): marks the floor
// outline, collects the room contours and the identifiers (block inserts
// with attributes, or texts on three layers), matches every identifier to
// the first contour that holds it, writes a room record on each identifier
// and rebuilds the document's problem lists. The command's prompts are in
// convert_command.h; this is the work once the answers are known.
#ifndef FLOORXPORT_ROOMS_ROOM_IDENTIFICATION_H_
#define FLOORXPORT_ROOMS_ROOM_IDENTIFICATION_H_

#include <string>

namespace fx::rooms {

class CDocData;

enum class IdentificationMode { kBlock, kText };

struct ConvertOptions {
  std::string floor_layer;
  std::string contour_layer;
  IdentificationMode mode = IdentificationMode::kBlock;
  // Block mode: the block and the tags of its three attributes.
  std::string block_name;
  std::string name_tag;
  std::string category_tag;
  std::string description_tag;
  // Block mode: move the record of each insert that identified a room
  // alone onto its contour and erase the insert.
  bool remove_inserts = false;
  // Text mode: the layers of the name, type and description texts.
  std::string name_layer;
  std::string type_layer;
  std::string description_layer;
};

// Analyses the working database as one floor. Messages and the question
// about a missing floor outline go through the editor. Returns false when
// the analysis ended early (its message printed; records written so far
// stay, the problem lists keep their previous contents). Layers unlocked
// for the run are locked again before it returns, either way.
// `document` receives the intersecting pairs, problem lists, room ids and
// the identified-room count, and analysed() tells whether it completed.
bool IdentifyRooms(const ConvertOptions& options, CDocData& document);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_ROOM_IDENTIFICATION_H_
