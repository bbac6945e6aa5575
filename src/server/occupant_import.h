// The occupant import, "Update Vantory Attributes" (vantoryUpdateVantoryData):
// asks the service for the rooms of the drawing's floor with their type,
// cost center and users, and shows them in the drawing as inserts of the
// block kImportBlock on the layer kImportLayer, replacing every entity an
// earlier import left on that layer.
//
// The request comes first and the whole import is planned (values,
// positions, sizes) before the drawing is touched: a failed request or an
// answer that cannot be read leaves the drawing as it was.
#ifndef FLOORXPORT_SERVER_OCCUPANT_IMPORT_H_
#define FLOORXPORT_SERVER_OCCUPANT_IMPORT_H_

#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace fx::server {

inline constexpr const char* kImportLayer = "!VANTORYIMPORT";
inline constexpr const char* kImportBlock = "VANTORY-IMPORT-ATTRIBUTES-BLOCK";
// The import layer's colour when the import makes it (palette blue).
inline constexpr int kImportLayerColor = 5;

struct OccupantImportResult {
  int result = -1;  // kSucceeded, kCanceled or kFailed (workflow_result.h)
  std::string error;
  bool drawing_changed = false;  // a failure came after the drawing was changed
  size_t drawing_rooms = 0;  // rooms of the drawing (the room analysis's records)
  size_t updated = 0;       // drawing rooms that received an insert
  size_t without_data = 0;  // drawing rooms that received none
  std::vector<std::string> not_in_drawing;  // answered rooms that match no drawing room
  std::vector<std::string> problems;        // entries of the answer left out or read in part
};

// Imports into `database` the rooms of floor `floor_id` on `server`.
OccupantImportResult ImportOccupants(AcDbDatabase& database, const std::string& server,
                                     int floor_id);

// The command: imports into the working database from the server and floor
// of its drawing record (or those given below) and prints the outcome.
void UpdateVantoryDataCommand();

// The outcome of the command's last run; nullopt before it ran.
std::optional<OccupantImportResult> LastOccupantImport();

// The server and floor the command takes instead of the drawing record's,
// for the rest of the process (the command line's --server and --floor);
// nullopt keeps the record's.
void SetOccupantSource(std::optional<std::string> server, std::optional<int> floor_id);

// After Open from: once the drawing at `path` is open and current, runs the
// command on it with the server and floor it was opened from.
void ImportAfterOpening(const std::string& path, const std::string& server, int floor_id);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_OCCUPANT_IMPORT_H_
