// Drawing clean-up shortcuts: each runs one of the host's own clean-up
// commands on the current drawing.
#ifndef FLOORXPORT_APP_CLEANUP_COMMANDS_H_
#define FLOORXPORT_APP_CLEANUP_COMMANDS_H_

namespace fx::app {

void DrawingOverkill();
void DrawingAudit();
void DrawingPurge();
void DrawingUnits();
void DrawingExtents();
void DrawingLineweight();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_CLEANUP_COMMANDS_H_
