// The plug-in's commands: 23 rows under one group, each with its global name
// (typed with "_"), its local name and its flags. The table's order is the
// order of registration and of removal.
#ifndef FLOORXPORT_APP_COMMAND_TABLE_H_
#define FLOORXPORT_APP_COMMAND_TABLE_H_

#include <span>

#include "app/arx_app.h"

namespace fx::app {

inline constexpr const char* kCommandGroup = "PVFloorXport";

std::span<const AcRxCommandEntry> CommandTable();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_COMMAND_TABLE_H_
