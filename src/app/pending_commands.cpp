#include "app/pending_commands.h"

#include "host/editor.h"

namespace fx::app {

void PrintNotAvailable(const char* command_name) {
  acutPrintf("\n%s is not available yet.", command_name);
}

void ExportOptionsDialog() { PrintNotAvailable("vantoryexpdlg"); }

}  // namespace fx::app
