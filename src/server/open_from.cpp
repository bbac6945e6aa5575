#include "server/open_from.h"

#include <filesystem>
#include <span>
#include <vector>

#include "host/database.h"
#include "host/dialog.h"
#include "server/download_file.h"
#include "server/server_data.h"
#include "server/server_list.h"
#include "server/service_calls.h"
#include "server/service_errors.h"
#include "server/site_choice.h"
#include "server/sync_dialog.h"
#include "server/workflow_result.h"

namespace fx::server {

int OpenFrom(AcDbDatabase* database, std::string& path, std::string& message, OpenedFloor* opened) {
  path.clear();
  message.clear();
  const ServerData record = database != nullptr ? ReadServerData(database) : ServerData{};
  const std::optional<std::string> server = ChooseServer(GetLastUsedServer());
  if (!server) return kCanceled;

  CPvSyncVantoryDialog dialog(SyncMode::kOpen, *server, record.first_id, record.floor_id);
  // Cancel here is a failure without a message, unlike Cancel in the site
  // chooser: the command then reports an unexpected error with no details.
  if (!dialog.Refresh() || ShowDialog(dialog) < 0 || !dialog.confirmed()) return kFailed;

  std::span<const unsigned char> bytes;
  const int result = DownloadDrawingFile(*server, dialog.floor_id(), bytes);
  if (result != 0) {
    message = CallErrorDetails(*server, result, kOpOpenFrom);
    return result;
  }
  const std::string name =
      DownloadFileName(dialog.building_name(), dialog.floor_name(), DrawingExtension(bytes));
  const std::string target = (std::filesystem::path(DownloadFolder()) / name).string();
  const std::string open_drawing = database != nullptr ? database->filename() : std::string();
  const int saved = SaveDownloadedFile(target, bytes, open_drawing);
  if (saved == kSaveDenied) {
    message = "Can't overwrite existing file - access denied. Possibly the drawing is already opened.";
    return kFailed;
  }
  if (saved != 0) {
    message = "Unexpected error occured while saving operation.";
    return kFailed;
  }
  path = target;
  if (opened != nullptr) *opened = {*server, dialog.floor_id()};
  message = "File has been successfully imported. Output file name: " + target;
  return kSucceeded;
}

}  // namespace fx::server
