// The command vantoryconvert (global name _convert): room identification
// from the command line, as typed, scripted or sent by the room
// identification dialog.
//
// Prompts, in order, each answer read with acedGetString (a blank or a line
// end ends it; a quoted answer keeps its blanks):
//   "\nEnter FloorArea layer: ", "\nEnter room contours layer: ",
//   "\nRoom Identification" with "[Block/Text]:", then in Block mode
//   "\nEnter block name: ", "\nEnter Name Attribute: ",
//   "\nEnter Category Attribute: ", "\nEnter Description Attribute: " and
//   "\nDo you want remove block inserts?" with "[Yes/No]:"; in Text mode
//   "\nEnter name attribute text entities layer: ",
//   "\nEnter type attribute text entities layer: ",
//   "\nEnter description attribute text entities layer: ".
// Every answer is read before the work starts, so a script line carries
// the whole command even when one answer is wrong (an empty layer name
// then ends the command with its "Please select" message). Cancelled
// input ends the command without a word.
#ifndef FLOORXPORT_ROOMS_CONVERT_COMMAND_H_
#define FLOORXPORT_ROOMS_CONVERT_COMMAND_H_

#include <optional>

#include "rooms/room_identification.h"

namespace fx::rooms {

// Asks the prompts above; nullopt when the input was cancelled.
std::optional<ConvertOptions> AskConvertOptions();

// The command: asks, then identifies the rooms of the current document.
void ConvertCommand();

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_CONVERT_COMMAND_H_
