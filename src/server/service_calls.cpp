#include "server/service_calls.h"

#include "server/client_cache.h"

namespace fx::server {
namespace {

constexpr const char* kAttachmentType = "application/octet-stream";

std::string Text(const std::string* value) { return value != nullptr ? *value : std::string(); }

// A call succeeded when it returned 0 and left no error on the client.
int Outcome(ProgressDrawingAPIPortBindingProxy* client, int result) {
  if (result != SOAP_OK) return result;
  return client->soap->error;
}

BuildingEntry ReadBuilding(const ns1__buildingWithFloorsDTO& dto) {
  BuildingEntry building;
  building.id = dto.id;
  building.name = Text(dto.name);
  building.code = Text(dto.code);
  building.city = Text(dto.city);
  if (dto.address != nullptr) {
    if (building.city.empty()) building.city = Text(dto.address->city);
    building.street = Text(dto.address->street);
    building.street2 = Text(dto.address->street2);
  }
  const ns1__stateDTO* state = dto.state;
  if (state == nullptr && dto.address != nullptr) state = dto.address->state;
  if (state != nullptr) building.state = state->name != nullptr ? *state->name : Text(state->code);
  if (dto.floors == nullptr) return building;
  for (const ns1__floorWithDrawingDTO* floor : dto.floors->floor) {
    if (floor == nullptr) continue;
    FloorEntry entry;
    entry.id = floor->id;
    entry.name = Text(floor->name);
    if (floor->area != nullptr) {
      entry.area = *floor->area;
      entry.has_area = true;
    }
    if (floor->drawing != nullptr) {
      entry.drawing_available = floor->drawing->drawingAvailable;
      entry.dwg_available = floor->drawing->dwgAvailable;
      entry.binary_format = Text(floor->drawing->binaryFormat);
      entry.notes = Text(floor->drawing->notes);
    }
    building.floors.push_back(std::move(entry));
  }
  return building;
}

// The runtime reads and writes the buffer in place; it never frees it.
xsd__base64Binary Attachment(std::span<const unsigned char> bytes) {
  xsd__base64Binary binary;
  binary.__ptr = const_cast<unsigned char*>(bytes.data());
  binary.__size = static_cast<int>(bytes.size());
  binary.type = const_cast<char*>(kAttachmentType);
  return binary;
}

}  // namespace

int ListBuildingsAndFloors(const std::string& server_key, std::vector<BuildingEntry>& buildings) {
  buildings.clear();
  ns1__getBuildingsAndFloors request;
  ns1__getBuildingsAndFloorsResponse response;
  int result = GetClient(server_key)->getBuildingsAndFloors(&request, response);
  result = Outcome(GetClient(server_key), result);
  if (result != SOAP_OK) return result;
  for (const ns1__buildingWithFloorsDTO* building : response.building) {
    if (building != nullptr) buildings.push_back(ReadBuilding(*building));
  }
  return SOAP_OK;
}

int CreateFloor(const std::string& server_key, int building_id, const std::string& floor_name,
                int& floor_id) {
  ns1__createFloor request;
  std::string name = floor_name;
  request.buildingId = &building_id;
  request.floorName = &name;
  ns1__createFloorResponse response;
  const int result = Outcome(GetClient(server_key), GetClient(server_key)->createFloor(&request, response));
  if (result == SOAP_OK) floor_id = response.return_;
  return result;
}

int DownloadDrawingFile(const std::string& server_key, int floor_id,
                        std::span<const unsigned char>& bytes) {
  ns1__getDWG request;
  request.floorId = &floor_id;
  ns1__getDWGResponse response;
  ProgressDrawingAPIPortBindingProxy* client = GetClient(server_key);
  const int result = Outcome(client, client->getDWG(&request, response));
  if (result != SOAP_OK) return result;
  if (response.return_ == nullptr || response.return_->__ptr == nullptr) {
    return client->soap->error = SOAP_NO_DATA;
  }
  if (client->IsReceivedAttachment(response.return_->__ptr)) {
    bytes = client->received_attachment();
  } else {
    bytes = {response.return_->__ptr, static_cast<size_t>(response.return_->__size)};
  }
  return SOAP_OK;
}

int UploadDrawing(const std::string& server_key, const Upload& upload) {
  ProgressDrawingAPIPortBindingProxy* client = GetClient(server_key);
  ns1__setDrawing request;
  int floor_id = upload.floor_id;
  std::string notes = upload.notes;
  std::string format = upload.binary_format;
  request.floorId = &floor_id;
  request.dwgFile = Attachment(upload.drawing_file);
  request.drawingFile = Attachment(upload.floor_document);
  request.drawingNotes = &notes;
  request.binaryFormat = &format;
  ns1__setDrawingResponse response;
  return Outcome(client, client->setDrawing(&request, response));
}

}  // namespace fx::server
