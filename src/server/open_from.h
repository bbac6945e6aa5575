// Open from: download the drawing stored for a floor the user chooses, save
// it in the download folder under a name made from the building and floor,
// and have the host open it.
#ifndef FLOORXPORT_SERVER_OPEN_FROM_H_
#define FLOORXPORT_SERVER_OPEN_FROM_H_

#include <string>

class AcDbDatabase;

namespace fx::server {

// The server and floor a drawing was opened from.
struct OpenedFloor {
  std::string server;
  int floor_id = -1;
};

// Runs the workflow on the current drawing's record (`database` may be null
// when no drawing is open). Returns kSucceeded with the saved file's `path`
// and the success text in `message` (and, when `opened` is given, the
// server and floor chosen), kCanceled, or a failure with the error text.
// Cancel in the floor dialog is a failure with an empty message.
int OpenFrom(AcDbDatabase* database, std::string& path, std::string& message,
             OpenedFloor* opened = nullptr);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_OPEN_FROM_H_
