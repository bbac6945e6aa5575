// What the server keeps for one connection, reached from its gSOAP
// context's `user` pointer by the hooks, the REST endpoint and the
// operations.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_CONNECTION_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_CONNECTION_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "mime_stream.h"
#include "stdsoap2.h"

namespace fx::devserver {

class Server;

struct Connection {
  Server* server = nullptr;
  std::string peer;           // address:port of the client
  std::string rest_user;      // x-auth-username
  std::string rest_password;  // x-auth-password
  std::uint64_t received = 0;
  bool too_large = false;
  // The MTOM attachments of the request, each received into one buffer.
  std::vector<std::unique_ptr<ReceivedAttachment>> attachments;
};

// The connection a context serves; null for the listening context.
inline Connection* ConnectionOf(struct soap* soap) { return static_cast<Connection*>(soap->user); }

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_CONNECTION_H_
