// Commands of the table whose work is not built yet. Each prints
// "\n<local name> is not available yet." and ends normally, so a script that
// uses one goes on with its next line.
#ifndef FLOORXPORT_APP_PENDING_COMMANDS_H_
#define FLOORXPORT_APP_PENDING_COMMANDS_H_

namespace fx::app {

// Prints "\n<command_name> is not available yet.".
void PrintNotAvailable(const char* command_name);

void ExportOptionsDialog();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_PENDING_COMMANDS_H_
