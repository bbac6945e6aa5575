#include "server/send_to.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#include "export/export_formats.h"
#include "export/exporter.h"
#include "host/database.h"
#include "host/dialog.h"
#include "host/documents.h"
#include "rooms/doc_data.h"
#include "server/client_cache.h"
#include "server/server_data.h"
#include "server/server_list.h"
#include "server/service_calls.h"
#include "server/service_errors.h"
#include "server/site_choice.h"
#include "server/sync_dialog.h"
#include "server/temp_folder.h"
#include "server/workflow_result.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::server {
namespace {

constexpr int kVersion2018 = 33;

// Whether the drawing's file is a DWG (by its name or its first bytes): the
// host reads DWG by converting it and saves DXF only, so it is not saved over.
bool IsDwgDrawingFile(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (extension == ".dwg") return true;
  std::ifstream file(path, std::ios::binary);
  char head[6] = {};
  return file.read(head, sizeof head) && std::string_view(head, 4) == "AC10" &&
         std::isdigit(static_cast<unsigned char>(head[4])) &&
         std::isdigit(static_cast<unsigned char>(head[5]));
}

bool ReadWhole(const std::string& path, std::vector<unsigned char>& bytes) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  return !file.bad();
}

// Steps after the folder exists; the folder goes and the client is reset
// whatever they return.
int SendFromFolder(AcDbDatabase* database, const TempFolder& folder, const std::string& server,
                   int floor_id, const std::string& notes, bool save, std::string& message) {
  const std::string drawing_path = database->filename();
  if (drawing_path.empty()) {
    message = "ERROR: Can't extract local file path.";
    return kFailed;
  }
  ServerData record = ReadServerData(database);
  record.server = server;
  record.floor_id = floor_id;
  WriteServerData(record, database);

  const std::string document = (std::filesystem::path(folder.path()) / kFloorDocumentName).string();
  if (!fx::exports::ExportFile(fx::exports::ExportFormat::kDrawing, document, true)) {
    message = "ERROR: Failed to export to .drawing format.";
    return kFailed;
  }
  // The headless host writes the drawing in its own format and version; the
  // version setting only decides whether an unsaved send saves.
  const int version = fx::settings::GetSettingInt(fx::settings::kVantoryDrawingVersion,
                                                  fx::settings::kDrawingVersionNeverChosen,
                                                  fx::settings::kSectionExportOptions);
  if (!(!save && version == kVersion2018) && database->saveAs(drawing_path.c_str()) != Acad::eOk &&
      database->saveAs(drawing_path.c_str()) != Acad::eOk) {
    message = "ERROR: Can't save drawing into the file \"" + drawing_path +
              "\".\n Possibly it's locked by another application.";
    return kFailed;
  }
  std::vector<unsigned char> drawing_bytes;
  std::vector<unsigned char> document_bytes;
  if (!ReadWhole(drawing_path, drawing_bytes) || !ReadWhole(document, document_bytes)) {
    message = "ERROR: Can't save drawing into the file \"" + drawing_path +
              "\".\n Possibly it's locked by another application.";
    return kFailed;
  }
  Upload upload;
  upload.floor_id = floor_id;
  upload.drawing_file = drawing_bytes;
  upload.floor_document = document_bytes;
  upload.notes = notes;
  upload.binary_format = kUploadFormat;
  const int result = UploadDrawing(server, upload);
  if (result != 0) {
    message = CallErrorDetails(server, result, kOpSendTo);
    return kFailed;
  }
  message = "File has been successfully sent to Vantory.";
  // The server now holds the drawing as saved: closing it asks again only
  // after further changes.
  if (AcApDocument* open = acDocManagerPtr()->document(database)) {
    fx::rooms::DocVars().docData(open).setLastUpdateDate(database->tduupdate());
  }
  return kSucceeded;
}

}  // namespace

int SendTo(AcDbDatabase* database, std::string& message, bool save, bool interactive) {
  message.clear();
  if (database == nullptr) {
    message = "ERROR: Can't extract local file path.";
    return kFailed;
  }
  // Sending saves the drawing over its file first: never DXF over a DWG.
  if (const std::string path = database->filename(); IsDwgDrawingFile(path)) {
    message = "ERROR: The drawing \"" + path +
              "\" is a DWG file and is not sent: drawings are saved and sent as DXF. Save it "
              "as DXF first (floorxport convert DRAWING.dwg DRAWING.dxf) and send that file.";
    return kFailed;
  }
  const ServerData record = ReadServerData(database);
  std::string server = record.server;
  int floor_id = record.floor_id;
  std::string notes;
  if (interactive) {
    const std::optional<std::string> chosen =
        ChooseServer(!record.server.empty() ? record.server : GetLastUsedServer());
    if (!chosen) return kCanceled;
    server = *chosen;
    CPvSyncVantoryDialog dialog(SyncMode::kSend, server, record.first_id, record.floor_id);
    if (!dialog.Refresh() || ShowDialog(dialog) < 0 || !dialog.confirmed()) return kCanceled;
    floor_id = dialog.floor_id();
    notes = dialog.notes();
  } else if (server.empty()) {
    message = "ERROR: Invalid server address.";
    return kFailed;
  }

  int result = kFailed;
  {
    TempFolder folder;
    if (!folder.ok()) {
      message = "ERROR: Can't create temp folder.";
      return kFailed;
    }
    result = SendFromFolder(database, folder, server, floor_id, notes, save, message);
  }
  ResetClient(server);
  return result;
}

}  // namespace fx::server
