// The drawing service with a configured fault (fault.h) injected; kept
// apart so that what only reads the configuration does not pull in the
// generated service.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_SERVICE_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_SERVICE_H_

#include "drawing_service.h"
#include "fault.h"

namespace fx::devserver {

// The drawing service with the fault injected after each request's
// operation is read from the envelope.
class FaultInjectingService : public DrawingService {
 public:
  FaultInjectingService(struct soap* context, Storage& storage, RequestLog& log,
                        const FaultConfig& fault)
      : DrawingService(context, storage, log), fault_(fault) {}

  using DrawingService::dispatch;
  int dispatch() override;

 private:
  const FaultConfig& fault_;
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_SERVICE_H_
