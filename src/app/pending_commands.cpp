#include "app/pending_commands.h"

#include "host/editor.h"

namespace fx::app {

void PrintNotAvailable(const char* command_name) {
  acutPrintf("\n%s is not available yet.", command_name);
}

void ExportOptionsDialog() { PrintNotAvailable("vantoryexpdlg"); }
void ExportCommandLine() { PrintNotAvailable("vantoryexport"); }
void ConvertDialog() { PrintNotAvailable("vantorconvertdlg"); }
void RoomListDialog() { PrintNotAvailable("vantoryroomlistdlg"); }
void ExportToFile() { PrintNotAvailable("vantoryExportToFile"); }
void AddMarker() { PrintNotAvailable("vantoryaddmarker"); }
void ReplaceBlock() { PrintNotAvailable("vantoryReplaceBlock"); }
void OpenFrom() { PrintNotAvailable("vantoryOpenFrom"); }
void SendTo() { PrintNotAvailable("vantorySendTo"); }
void ZoomToNextEmptyContour() { PrintNotAvailable("vantoryZoomToNextEmptyContour"); }
void ZoomToNextAreaNotFound() { PrintNotAvailable("vantoryZoomToNextAreaNotFound"); }
void ZoomToNextDuplicateNumber() { PrintNotAvailable("vantoryZoomToNextDuplicateNumber"); }
void ZoomToNextIntersectContour() { PrintNotAvailable("vantoryZoomToNextIntersectContour"); }
void ZoomToNextMultiIDs() { PrintNotAvailable("vantoryZoomToNextMultiIDs"); }
void UpdateVantoryData() { PrintNotAvailable("vantoryUpdateVantoryData"); }

}  // namespace fx::app
