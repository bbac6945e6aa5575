#include "app/command_table.h"

#include <iterator>

#include "app/about_dialog.h"
#include "app/cleanup_commands.h"
#include "dialogs/convert_dialog.h"
#include "dialogs/export_dialog.h"
#include "export/export_commands.h"
#include "rooms/marker.h"
#include "rooms/navigation.h"
#include "rooms/replace_block.h"
#include "rooms/room_list.h"
#include "rooms/convert_command.h"
#include "server/exchange_commands.h"
#include "server/occupant_import.h"

namespace fx::app {
namespace {

// The dialog that starts room identification, the marker command, the
// command-line export, the zoom-to-next commands and the attribute update
// are transparent: they may run while another command waits for input.
constexpr int32_t kModal = ACRX_CMD_MODAL;
constexpr int32_t kTransparent = ACRX_CMD_TRANSPARENT;

constexpr AcRxCommandEntry Row(const char* global_name, const char* local_name, int32_t flags,
                               AcRxFunctionPtr function) {
  return {kCommandGroup, global_name, local_name, flags, function, nullptr, 0};
}

constexpr AcRxCommandEntry kCommands[] = {
    Row("_expdlg", "vantoryexpdlg", kModal, dialogs::ExportOptionsDialogCommand),
    Row("_export", "vantoryexport", kTransparent, exports::ExportCommand),
    Row("_convertdlg", "vantorconvertdlg", kTransparent, dialogs::ConvertDialogCommand),
    Row("_convert", "vantoryconvert", kModal, rooms::ConvertCommand),
    Row("_roomlistdlg", "vantoryroomlistdlg", kModal, rooms::RoomListDialog),
    Row("_ExportToFile", "vantoryExportToFile", kModal, exports::ExportToFileCommand),
    Row("_addmarker", "vantoryaddmarker", kTransparent, rooms::AddMarker),
    Row("_ReplaceBlock", "vantoryReplaceBlock", kModal, rooms::ReplaceBlock),
    Row("_ShowAbout", "vantoryShowAbout", kModal, ShowAbout),
    Row("_OpenFrom", "vantoryOpenFrom", kModal, fx::server::OpenFromCommand),
    Row("_SendTo", "vantorySendTo", kModal, fx::server::SendToCommand),
    Row("_DrawingOverkill", "vantoryDrawingOverkill", kModal, DrawingOverkill),
    Row("_DrawingAudit", "vantoryDrawingAudit", kModal, DrawingAudit),
    Row("_DrawingPurge", "vantoryDrawingPurge", kModal, DrawingPurge),
    Row("_DrawingUnits", "vantoryDrawingUnits", kModal, DrawingUnits),
    Row("_DrawingExtents", "vantoryDrawingExtents", kModal, DrawingExtents),
    Row("_DrawingLineweight", "vantoryDrawingLineweight", kModal, DrawingLineweight),
    Row("_ZoomToNextEmptyContour", "vantoryZoomToNextEmptyContour", kTransparent,
        rooms::ZoomToNextEmptyContour),
    Row("_ZoomToNextAreaNotFound", "vantoryZoomToNextAreaNotFound", kTransparent,
        rooms::ZoomToNextAreaNotFound),
    Row("_ZoomToNextDuplicateNumber", "vantoryZoomToNextDuplicateNumber", kTransparent,
        rooms::ZoomToNextDuplicateNumber),
    Row("_ZoomToNextIntersectContour", "vantoryZoomToNextIntersectContour", kTransparent,
        rooms::ZoomToNextIntersectContour),
    Row("_ZoomToNextMultiIDs", "vantoryZoomToNextMultiIDs", kTransparent,
        rooms::ZoomToNextMultiIDs),
    Row("_UpdateVantoryData", "vantoryUpdateVantoryData", kTransparent,
        fx::server::UpdateVantoryDataCommand),
};
static_assert(std::size(kCommands) == 23);

}  // namespace

std::span<const AcRxCommandEntry> CommandTable() { return kCommands; }

}  // namespace fx::app
