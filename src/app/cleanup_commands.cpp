#include "app/cleanup_commands.h"

#include "app/pending_commands.h"

namespace fx::app {

void DrawingOverkill() { PrintNotAvailable("vantoryDrawingOverkill"); }
void DrawingAudit() { PrintNotAvailable("vantoryDrawingAudit"); }
void DrawingPurge() { PrintNotAvailable("vantoryDrawingPurge"); }
void DrawingUnits() { PrintNotAvailable("vantoryDrawingUnits"); }
void DrawingExtents() { PrintNotAvailable("vantoryDrawingExtents"); }
void DrawingLineweight() { PrintNotAvailable("vantoryDrawingLineweight"); }

}  // namespace fx::app
