// A GET over HTTP or HTTPS through libcurl, for the service's REST API.
//
// The transport settings are the drawing service client's: a 10-second
// connect timeout, any server certificate accepted (self-signed, private
// authority, another name), and a server that stops sending for 10 seconds
// fails the call. Replies are read into memory up to a limit; a longer one
// fails while it is being read. No redirects are followed, so the request's
// headers (which carry the log-in) go to the address given and nowhere else.
// Nothing of the request is logged.
#ifndef FLOORXPORT_SERVER_HTTP_GET_H_
#define FLOORXPORT_SERVER_HTTP_GET_H_

#include <cstddef>
#include <string>
#include <vector>

namespace fx::server {

inline constexpr size_t kMaxReplyBytes = 16 * 1024 * 1024;

struct HttpReply {
  int status = 0;     // the HTTP status; 0 when no reply came
  std::string body;   // decoded (gzip and deflate are accepted)
  std::string error;  // why the transfer failed; empty when a whole reply came
};

// GETs `url` with `headers` ("Name: value" each) and the user agent
// `user_agent`, keeping at most `max_bytes` of reply body.
HttpReply HttpGet(const std::string& url, const std::vector<std::string>& headers,
                  const char* user_agent, size_t max_bytes = kMaxReplyBytes);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_HTTP_GET_H_
