// Broken-server behaviour on demand (--fault MODE[:NAME,...]), for testing
// what clients do when the service misbehaves. Nothing here runs unless a
// fault is configured.
//
// A fault applies to the requests it names: SOAP operations by their local
// name (getDWG, setDrawing, getBuildingsAndFloors, createFloor,
// getDrawing) and the REST room list as "rooms"; without names, to every
// request. The modes:
//   hang     accept and read the request, never answer; hold the connection
//            until the client gives up or the server stops
//   close    run the request, send the answer's headers and half of its
//            body, then close the connection
//   garbage  answer 200 with bytes that are neither XML nor JSON
//   500      answer HTTP 500 with an HTML page, as a broken proxy does
//   401      refuse every request with HTTP 401, whatever the credentials
//   trickle  run the request and send the answer at 4 bytes a second
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_H_

#include <optional>
#include <string>
#include <vector>

struct soap;

namespace fx::devserver {

enum class FaultMode { kHang, kClose, kGarbage, kServerError, kUnauthorized, kTrickle };

struct FaultConfig {
  FaultMode mode = FaultMode::kHang;
  std::vector<std::string> names;  // empty: every request
};

// Reads "MODE[:NAME,...]"; nullopt when MODE is not one of the modes.
std::optional<FaultConfig> ParseFault(const std::string& text);

// Called once the request `name` is known, before it runs. SOAP_OK: serve
// the request (its answer may then be cut or slowed); anything else: the
// request was answered (or dropped) here, and that is the serving's result.
int InjectFault(struct soap* soap, const FaultConfig& fault, const std::string& name);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_FAULT_H_
