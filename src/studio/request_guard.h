// Who may talk to the studio: only a page loaded from the studio itself, on
// this machine, that knows the token printed with its URL. The server binds
// 127.0.0.1 only; the token keeps out other users and programs of the same
// machine; the Host check defeats DNS rebinding (a foreign name resolving to
// 127.0.0.1); the Origin check keeps other pages open in the same browser
// from sending requests.
#ifndef FLOORXPORT_STUDIO_REQUEST_GUARD_H_
#define FLOORXPORT_STUDIO_REQUEST_GUARD_H_

#include <string>

namespace fx::studio {

struct RequestFacts {
  std::string token;   // the ?token= parameter or the X-Studio-Token header
  std::string host;    // the Host header
  std::string origin;  // the Origin header; empty when the request has none
};

// Empty when the request may pass; otherwise the short reason it is refused
// ("wrong token", "foreign Host", "foreign Origin"). The Host must be
// 127.0.0.1:PORT or localhost:PORT; an Origin, when sent, must be the page's
// own: "http://" followed by that Host.
std::string RefusalReason(const RequestFacts& request, const std::string& token, int port);

// 32 hexadecimal digits from the system's random source.
std::string NewToken();

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_REQUEST_GUARD_H_
