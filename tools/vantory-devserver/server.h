// The development server's network side: one listening gSOAP context, a
// thread per connection (gSOAP's soap_copy pattern) up to a limit, receive
// and send timeouts so a stalled client holds only its own thread, HTTP
// Basic authentication, the request size limit, optional TLS, and a stop
// that closes the listener, lets requests in flight finish and drops
// connections still open after a grace period.
//
// POSTs to any path are SOAP requests to the drawing service; GETs are
// routed to the REST room endpoint (rest_endpoint.h). Connections are not
// kept alive: every response closes its connection.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_SERVER_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_SERVER_H_

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "fault.h"

struct soap;

namespace fx::devserver {

class Storage;
class UserStore;
class RequestLog;

struct ServerConfig {
  std::string listen = "127.0.0.1";
  int port = 8080;                      // 0: any free port
  std::string tls_cert;                 // PEM with key and certificate; empty: plain HTTP
  std::uint64_t max_request_bytes = std::uint64_t{256} << 20;
  int io_timeout_seconds = 30;          // longest wait for the peer to send or take data
  int max_connections = 32;             // connections served at once
  int grace_seconds = 10;               // how long a stop waits for requests in flight
  std::optional<FaultConfig> fault;     // broken behaviour on demand (fault.h)
};

inline constexpr const char* kRealm = "Vantory development server";

class Server {
 public:
  // `users` null: no authentication.
  Server(ServerConfig config, Storage& storage, UserStore* users, RequestLog& log);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // Binds the listening socket and returns the server's URL, such as
  // "http://127.0.0.1:8080/". Throws std::runtime_error.
  std::string Bind();
  // Accepts and serves connections until Stop(), then waits for the
  // connections in flight (see the class comment) and returns.
  void Run();
  // Ends Run(). Thread-safe; called from the thread that watches signals.
  void Stop();

  // For the hooks and the REST endpoint of a connection.
  const ServerConfig& config() const { return config_; }
  Storage& storage() { return storage_; }
  RequestLog& log() { return log_; }
  bool stopping() const { return stopping_; }
  // True when authentication is off or `name` and `password` are a user's.
  bool Authorized(const char* name, const char* password);

 private:
  void ServeConnection(struct soap* connection);
  void WaitForConnections();

  ServerConfig config_;
  Storage& storage_;
  UserStore* users_;
  RequestLog& log_;
  struct soap* listener_;
  std::atomic<bool> stopping_{false};

  std::mutex mutex_;
  std::condition_variable changed_;
  int active_ = 0;
  std::set<int> sockets_;  // of the connections being served
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_SERVER_H_
