#include "drawing_service.h"

#include <span>
#include <string>

#include "mime_stream.h"
#include "request_log.h"
#include "server/soap/service_namespaces.h"
#include "storage.h"

namespace fx::devserver {
namespace {

enum class FaultType { kApplication, kDrawingNotFound, kIO };

template <class Exception>
Exception* NewException(struct soap* soap, Exception* exception, const std::string& message) {
  exception->message = soap_new_std__string(soap);
  *exception->message = message;
  return exception;
}

// A SOAP 1.1 server fault whose detail is the typed exception a client
// reads (faultstring and detail message are the same text).
int Fault(struct soap* soap, FaultType type, const std::string& message) {
  soap_receiver_fault(soap, message.c_str(), nullptr);
  SOAP_ENV__Detail* detail = soap_new_SOAP_ENV__Detail(soap);
  switch (type) {
    case FaultType::kApplication:
      detail->ns1__ApplicationException_ =
          NewException(soap, soap_new_ns1__ApplicationException(soap), message);
      break;
    case FaultType::kDrawingNotFound:
      detail->ns1__DrawingNotFoundException_ =
          NewException(soap, soap_new_ns1__DrawingNotFoundException(soap), message);
      break;
    case FaultType::kIO:
      detail->ns1__IOException_ = NewException(soap, soap_new_ns1__IOException(soap), message);
      break;
  }
  soap->fault->detail = detail;
  return SOAP_FAULT;
}

std::string* Text(struct soap* soap, const std::string& value) {
  std::string* text = soap_new_std__string(soap);
  *text = value;
  return text;
}

// Optional text: absent when empty.
std::string* OptionalText(struct soap* soap, const std::string& value) {
  return value.empty() ? nullptr : Text(soap, value);
}

template <class T>
T* Value(struct soap* soap, T value) {
  T* p = static_cast<T*>(soap_malloc(soap, sizeof(T)));
  if (p) *p = value;
  return p;
}

std::optional<std::string> Optional(const std::string* text) {
  if (!text) return std::nullopt;
  return *text;
}

ns1__buildingWithFloorsDTO* BuildingDto(struct soap* soap, const BuildingWithFloors& source) {
  const BuildingRecord& b = source.building;
  auto* dto = soap_new_ns1__buildingWithFloorsDTO(soap);
  dto->id = b.id;
  dto->dateCreated = static_cast<time_t>(b.created);
  dto->name = Text(soap, b.name);
  dto->code = OptionalText(soap, b.code);
  dto->city = OptionalText(soap, b.city);
  dto->latitude = OptionalText(soap, b.latitude);
  dto->longitude = OptionalText(soap, b.longitude);
  if (!b.state_code.empty() || !b.state_name.empty()) {
    dto->state = soap_new_ns1__stateDTO(soap);
    dto->state->code = OptionalText(soap, b.state_code);
    dto->state->name = OptionalText(soap, b.state_name);
  }
  if (!b.street.empty() || !b.street2.empty() || !b.city.empty() || !b.postal_code.empty()) {
    dto->address = soap_new_ns1__addressDTO(soap);
    dto->address->id = Value(soap, b.id);
    dto->address->city = OptionalText(soap, b.city);
    dto->address->postalCode = OptionalText(soap, b.postal_code);
    dto->address->street = OptionalText(soap, b.street);
    dto->address->street2 = OptionalText(soap, b.street2);
    dto->address->state = dto->state;
  }
  dto->floors = soap_new__ns1__buildingWithFloorsDTO_floors(soap);
  for (const FloorRecord& f : source.floors) {
    auto* floor = soap_new_ns1__floorWithDrawingDTO(soap);
    floor->id = f.id;
    floor->name = Text(soap, f.name);
    if (f.area) floor->area = Value(soap, *f.area);
    floor->dateCreated = Value(soap, static_cast<time_t>(f.created));
    floor->dateUpdated = static_cast<time_t>(f.updated);
    if (f.drawing) {
      floor->drawing = soap_new_ns1__drawingDTO(soap);
      floor->drawing->id = f.id;
      floor->drawing->dwgAvailable = f.drawing->dwg_size > 0;
      floor->drawing->drawingAvailable = f.drawing->drawing_size > 0;
      if (f.drawing->notes) floor->drawing->notes = Text(soap, *f.drawing->notes);
      if (f.drawing->binary_format) {
        floor->drawing->binaryFormat = Text(soap, *f.drawing->binary_format);
      }
    }
    dto->floors->floor.push_back(floor);
  }
  return dto;
}

}  // namespace

DrawingService::DrawingService(struct soap* context, Storage& storage, RequestLog& log)
    : DrawingAPIPortBindingService(context), storage_(storage), log_(log) {
  // The table shared with the client (it knows the XOP namespace).
  soap_set_namespaces(context, fx::server::ServiceNamespaces());
}

DrawingAPIPortBindingService* DrawingService::copy() {
  struct soap* context = soap_copy(soap);
  if (!context) return nullptr;
  auto* service = new DrawingService(context, storage_, log_);
  service->soap_own = true;
  return service;
}

int DrawingService::getBuildingsAndFloors(ns1__getBuildingsAndFloors*,
                                          ns1__getBuildingsAndFloorsResponse& response) {
  try {
    std::size_t floors = 0;
    for (const BuildingWithFloors& building : storage_.BuildingsAndFloors()) {
      response.building.push_back(BuildingDto(soap, building));
      floors += building.floors.size();
    }
    log_.Write("getBuildingsAndFloors: " + std::to_string(response.building.size()) +
               " buildings, " + std::to_string(floors) + " floors");
    return SOAP_OK;
  } catch (const StorageError& error) {
    log_.Write(std::string("getBuildingsAndFloors: ") + error.what());
    return Fault(soap, FaultType::kIO, error.what());
  }
}

int DrawingService::createFloor(ns1__createFloor* request, ns1__createFloorResponse& response) {
  if (!request || !request->buildingId) {
    return Fault(soap, FaultType::kApplication, "createFloor needs a buildingId");
  }
  if (!request->floorName || request->floorName->find_first_not_of(" \t") == std::string::npos) {
    return Fault(soap, FaultType::kApplication, "createFloor needs a floorName");
  }
  const int building = *request->buildingId;
  try {
    const std::optional<int> id = storage_.CreateFloor(building, *request->floorName);
    if (!id) {
      log_.Write("createFloor: building " + std::to_string(building) + " not found");
      return Fault(soap, FaultType::kApplication,
                   "Building " + std::to_string(building) + " not found");
    }
    response.return_ = *id;
    log_.Write("createFloor: floor " + std::to_string(*id) + " \"" + *request->floorName +
               "\" in building " + std::to_string(building));
    return SOAP_OK;
  } catch (const StorageError& error) {
    log_.Write(std::string("createFloor: ") + error.what());
    return Fault(soap, FaultType::kIO, error.what());
  }
}

int DrawingService::getDWG(ns1__getDWG* request, ns1__getDWGResponse& response) {
  return Download("getDWG", request ? request->floorId : nullptr, DrawingPart::kDwg,
                  &response.return_);
}

int DrawingService::getDrawing(ns1__getDrawing* request, ns1__getDrawingResponse& response) {
  return Download("getDrawing", request ? request->floorId : nullptr, DrawingPart::kDrawing,
                  &response.return_);
}

int DrawingService::Download(const char* operation, const int* floor_id, DrawingPart part,
                             xsd__base64Binary** out) {
  if (!floor_id) return Fault(soap, FaultType::kApplication, std::string(operation) + " needs a floorId");
  const int floor = *floor_id;
  const char* what = part == DrawingPart::kDwg ? "DWG" : "drawing";
  unsigned char* buffer = nullptr;
  std::size_t size = 0;
  try {
    // The bytes are read straight into the reply's buffer, which the
    // context frees after sending.
    const auto result = storage_.ReadDrawingPart(
        floor, part,
        [&](std::size_t n) {
          buffer = static_cast<unsigned char*>(soap_malloc(soap, n));
          return buffer;
        },
        &size);
    if (result == Storage::ReadResult::kNoFloor) {
      log_.Write(std::string(operation) + ": floor " + std::to_string(floor) + " not found");
      return Fault(soap, FaultType::kDrawingNotFound,
                   "Floor " + std::to_string(floor) + " not found");
    }
    if (result == Storage::ReadResult::kNoData) {
      log_.Write(std::string(operation) + ": floor " + std::to_string(floor) + " has no " + what);
      return Fault(soap, FaultType::kDrawingNotFound,
                   "Floor " + std::to_string(floor) + " has no stored " + what);
    }
  } catch (const StorageError& error) {
    log_.Write(std::string(operation) + ": " + error.what());
    return Fault(soap, FaultType::kIO, error.what());
  }
  auto* binary = soap_new_xsd__base64Binary(soap);
  binary->__ptr = buffer;
  binary->__size = static_cast<int>(size);
  // A content type makes the binary an MTOM attachment in MTOM mode (sent
  // from the buffer by mime_stream.h's reader).
  binary->type = soap_strdup(soap, "application/octet-stream");
  *out = binary;
  log_.Write(std::string(operation) + ": floor " + std::to_string(floor) + ", " +
             std::to_string(size) + " bytes");
  return SOAP_OK;
}

int DrawingService::setDrawing(ns1__setDrawing* request, ns1__setDrawingResponse&) {
  if (!request || !request->floorId) {
    return Fault(soap, FaultType::kApplication, "setDrawing needs a floorId");
  }
  const int floor = *request->floorId;
  const auto dwg = ReceivedBytes(soap, request->dwgFile);
  const auto drawing = ReceivedBytes(soap, request->drawingFile);
  try {
    if (!storage_.SaveDrawing(floor, dwg, drawing, Optional(request->drawingNotes),
                              Optional(request->binaryFormat))) {
      log_.Write("setDrawing: floor " + std::to_string(floor) + " not found");
      return Fault(soap, FaultType::kDrawingNotFound,
                   "Floor " + std::to_string(floor) + " not found");
    }
  } catch (const StorageError& error) {
    log_.Write(std::string("setDrawing: ") + error.what());
    return Fault(soap, FaultType::kIO, error.what());
  }
  log_.Write("setDrawing: floor " + std::to_string(floor) + ", DWG " +
             std::to_string(dwg.size()) + " bytes, drawing " + std::to_string(drawing.size()) +
             " bytes");
  return SOAP_OK;
}

}  // namespace fx::devserver
