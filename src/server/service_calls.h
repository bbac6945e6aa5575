// The drawing service's operations as the workflows use them: plain values
// in and out, read out of the client's replies at once so the client can be
// reset afterwards. Each returns the runtime's error code of the call: 0 on
// success, otherwise the code the error report classifies.
#ifndef FLOORXPORT_SERVER_SERVICE_CALLS_H_
#define FLOORXPORT_SERVER_SERVICE_CALLS_H_

#include <span>
#include <string>
#include <vector>

namespace fx::server {

struct FloorEntry {
  int id = 0;
  std::string name;
  double area = 0;
  bool has_area = false;
  bool drawing_available = false;
  bool dwg_available = false;
  std::string binary_format;  // what the stored drawing file is, as the sender said
  std::string notes;
};

struct BuildingEntry {
  int id = 0;
  std::string name;
  std::string city;
  std::string street;
  std::string street2;
  std::string code;
  std::string state;
  std::vector<FloorEntry> floors;
};

// getBuildingsAndFloors. No building is an empty list, not an error.
int ListBuildingsAndFloors(const std::string& server_key, std::vector<BuildingEntry>& buildings);

// createFloor; `floor_id` receives the new floor's id.
int CreateFloor(const std::string& server_key, int building_id, const std::string& floor_name,
                int& floor_id);

// getDWG: the floor's drawing file, in `bytes`, which stay valid until the
// next call on the server's client or its reset. A success without a file
// in the reply counts as a failure of the call (SOAP_NO_DATA).
int DownloadDrawingFile(const std::string& server_key, int floor_id,
                        std::span<const unsigned char>& bytes);

struct Upload {
  int floor_id = 0;
  std::span<const unsigned char> drawing_file;   // dwgFile
  std::span<const unsigned char> floor_document; // drawingFile
  std::string notes;
  std::string binary_format;
};

// setDrawing; the files travel as MTOM attachments.
int UploadDrawing(const std::string& server_key, const Upload& upload);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SERVICE_CALLS_H_
