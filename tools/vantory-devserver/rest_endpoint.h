// The REST room endpoint, served on the SOAP port through gSOAP's GET hook:
//   GET /external/api/rest/v2/rooms?floorId=N[&limit=L][&selector=S]
// with the headers x-auth-username and x-auth-password (or HTTP Basic)
// when the server authenticates. Answers the floor's rooms as JSON
// (rooms_json.h); errors are JSON objects {"error": "..."} with 400, 401,
// 404 or 500. Any other GET path is 404.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REST_ENDPOINT_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REST_ENDPOINT_H_

#include <string>

struct soap;

namespace fx::devserver {

class Server;

inline constexpr const char* kRoomsPath = "/external/api/rest/v2/rooms";

// Answers the GET request on `soap`; returns SOAP_OK once answered.
int ServeRestRequest(struct soap* soap, Server& server, const std::string& peer,
                     const std::string& user, const std::string& password);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REST_ENDPOINT_H_
