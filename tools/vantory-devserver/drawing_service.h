// The five operations of the drawing service over the store, on one
// connection's gSOAP context. Faults carry the typed detail the service
// description declares (ApplicationException, DrawingNotFoundException,
// IOException), with the message a client shows.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DRAWING_SERVICE_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DRAWING_SERVICE_H_

#include "soapDrawingAPIPortBindingService.h"

namespace fx::devserver {

class Storage;
class RequestLog;
enum class DrawingPart;

class DrawingService : public DrawingAPIPortBindingService {
 public:
  // Serves on `context` (owned by the caller). Downloads are sent as MTOM
  // attachments when the context is in MTOM mode.
  DrawingService(struct soap* context, Storage& storage, RequestLog& log);

  // A service on a copy of this one's context, which it owns.
  DrawingAPIPortBindingService* copy() override;

  int getDrawing(ns1__getDrawing* request, ns1__getDrawingResponse& response) override;
  int getDWG(ns1__getDWG* request, ns1__getDWGResponse& response) override;
  int createFloor(ns1__createFloor* request, ns1__createFloorResponse& response) override;
  int setDrawing(ns1__setDrawing* request, ns1__setDrawingResponse& response) override;
  int getBuildingsAndFloors(ns1__getBuildingsAndFloors* request,
                            ns1__getBuildingsAndFloorsResponse& response) override;

 private:
  int Download(const char* operation, const int* floor_id, DrawingPart part,
               xsd__base64Binary** out);

  Storage& storage_;
  RequestLog& log_;
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DRAWING_SERVICE_H_
