// One service client per server, for the whole process: made on first use
// and kept, so a server's clients share their settings and log-in across
// calls. A server key is the word "Default" (the built-in endpoint) or a
// server address, "scheme://host[:port]/", compared case-sensitively.
#ifndef FLOORXPORT_SERVER_CLIENT_CACHE_H_
#define FLOORXPORT_SERVER_CLIENT_CACHE_H_

#include <string>

#include "server/service_client.h"

namespace fx::server {

inline constexpr const char* kDefaultServerKey = "Default";
inline constexpr const char* kServicePath = "external/api/soap/space/drawing/v1";

// The endpoint of a key: the address followed by kServicePath; empty for
// exactly "Default" (any other spelling is an address).
std::string EndpointOf(const std::string& server_key);

// The key's client, made on first use. Never null; it lives until the
// process ends. Look it up again after a call to read its error state.
ProgressDrawingAPIPortBindingProxy* GetClient(const std::string& server_key);
// The key's client, or null when none was made.
ProgressDrawingAPIPortBindingProxy* FindClient(const std::string& server_key);

// Clears the key's call-in-progress flag and frees what its last call read.
// Prints "\nPlanVault: Reset failed." when the key has no client.
void ResetClient(const std::string& server_key);

// The callbacks given to clients made from now on.
void SetCallbacks(StatusCallback status, PercentCallback percent);
void SetTransferCallback(TransferCallback transfer);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_CLIENT_CACHE_H_
