#include "server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

#include "connection.h"
#include "drawing_service.h"
#include "fault_service.h"
#include "mime_stream.h"
#include "request_log.h"
#include "rest_endpoint.h"
#include "server/soap/service_namespaces.h"
#include "stdsoap2.h"
#include "tls.h"
#include "users.h"

namespace fx::devserver {
namespace {

// gSOAP's own handlers, which the hooks wrap (the same for every context).
struct DefaultHandlers {
  int (*parse)(struct soap*) = nullptr;
  int (*parse_header)(struct soap*, const char*, const char*) = nullptr;
  std::size_t (*recv)(struct soap*, char*, std::size_t) = nullptr;
  int (*send)(struct soap*, const char*, std::size_t) = nullptr;
  int (*shutdown_socket)(struct soap*, SOAP_SOCKET, int) = nullptr;
};
DefaultHandlers defaults;

// Headers, chunk framing and MIME part headers on top of the body.
constexpr std::uint64_t kFramingAllowance = std::uint64_t{1} << 20;

std::string TooLargeMessage(const ServerConfig& config) {
  return "Request too large: the server accepts requests of at most " +
         std::to_string(config.max_request_bytes >> 20) + " MB (--max-request-mb)";
}

// A 413 answer written directly, for a request without Content-Length that
// outgrows the limit while it is being read.
void SendTooLarge(struct soap* soap, const Connection& connection) {
  const std::string body =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope/\">"
      "<SOAP-ENV:Body><SOAP-ENV:Fault><faultcode>SOAP-ENV:Client</faultcode><faultstring>" +
      TooLargeMessage(connection.server->config()) +
      "</faultstring></SOAP-ENV:Fault></SOAP-ENV:Body></SOAP-ENV:Envelope>\n";
  const std::string head =
      "HTTP/1.1 413 Request Entity Too Large\r\n"
      "Content-Type: text/xml; charset=utf-8\r\n"
      "Content-Length: " + std::to_string(body.size()) + "\r\n"
      "Connection: close\r\n\r\n";
  const std::string reply = head + body;
  defaults.send(soap, reply.data(), reply.size());
}

int ParseHook(struct soap* soap) {
  Connection& connection = *ConnectionOf(soap);
  Server& server = *connection.server;
  if (const int rc = defaults.parse(soap); rc != SOAP_OK) return rc;
  // Every request but a GET is SOAP; its credentials are checked before
  // its body is read. GETs are checked by the REST endpoint.
  if (soap->status != SOAP_GET && !server.Authorized(soap->userid, soap->passwd)) {
    server.log().Write(connection.peer + " SOAP request refused: " +
                       (soap->userid ? "wrong user name or password" : "no credentials"));
    soap->authrealm = kRealm;
    return soap->error = 401;
  }
  return SOAP_OK;
}

int ParseHeaderHook(struct soap* soap, const char* key, const char* value) {
  Connection& connection = *ConnectionOf(soap);
  if (!strcasecmp(key, "x-auth-username")) {
    connection.rest_user = value;
  } else if (!strcasecmp(key, "x-auth-password")) {
    connection.rest_password = value;
  } else if (!strcasecmp(key, "Content-Length")) {
    const ServerConfig& config = connection.server->config();
    errno = 0;
    const unsigned long long length = std::strtoull(value, nullptr, 10);
    if (errno == 0 && length > config.max_request_bytes) {
      connection.too_large = true;
      connection.server->log().Write(connection.peer + " request of " + std::to_string(length) +
                                     " bytes refused: over the limit");
      // Answered at once with 413 and this SOAP 1.1 fault, before the body
      // is read (no envelope has told the version yet).
      soap->version = 1;
      return soap_set_sender_error(soap, soap_strdup(soap, TooLargeMessage(config).c_str()),
                                   nullptr, 413);
    }
  }
  return defaults.parse_header(soap, key, value);
}

std::size_t RecvHook(struct soap* soap, char* buffer, std::size_t length) {
  Connection& connection = *ConnectionOf(soap);
  const std::size_t n = defaults.recv(soap, buffer, length);
  connection.received += n;
  const std::uint64_t limit = connection.server->config().max_request_bytes + kFramingAllowance;
  if (connection.received > limit && !connection.too_large) {
    connection.too_large = true;
    connection.server->log().Write(connection.peer + " request cut off at " +
                                   std::to_string(connection.received) + " bytes: over the limit");
    SendTooLarge(soap, connection);
    return 0;  // the end of the request, as far as the parser is concerned
  }
  return n;
}

// Closing after an answer given before the whole request was read (401,
// 413, a fault): the server stops sending, then reads and discards what
// the client still sends for a while, so that its unread bytes do not
// reset the connection before the client has read the answer.
int ShutdownHook(struct soap* soap, SOAP_SOCKET socket, int how) {
  if (!soap->user) return defaults.shutdown_socket(soap, socket, how);  // the listener
  Connection& connection = *ConnectionOf(soap);
  Server& server = *connection.server;
  if (how != SHUT_RDWR || (soap->error == SOAP_OK && !connection.too_large)) {
    return defaults.shutdown_socket(soap, socket, how);
  }
  ::shutdown(socket, SHUT_WR);
  constexpr int kIdleMs = 2000;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  static thread_local char sink[65536];
  while (!server.stopping() && std::chrono::steady_clock::now() < deadline) {
    pollfd poll_fd{socket, POLLIN, 0};
    if (::poll(&poll_fd, 1, kIdleMs) <= 0) break;
    const ssize_t n = ::recv(socket, sink, sizeof sink, 0);
    if (n <= 0) break;
  }
  return defaults.shutdown_socket(soap, socket, how);
}

int GetHook(struct soap* soap) {
  Connection& connection = *ConnectionOf(soap);
  if (const auto& fault = connection.server->config().fault) {
    if (const int rc = InjectFault(soap, *fault, "rooms"); rc != SOAP_OK) return rc;
  }
  return ServeRestRequest(soap, *connection.server, connection.peer, connection.rest_user,
                          connection.rest_password);
}

std::string PrintableHost(const std::string& host) {
  return host.find(':') != std::string::npos ? "[" + host + "]" : host;
}

}  // namespace

Server::Server(ServerConfig config, Storage& storage, UserStore* users, RequestLog& log)
    : config_(std::move(config)), storage_(storage), users_(users), log_(log) {
  // Every connection's context is a copy of this one: MTOM replies (a
  // binary with a content type goes as an attachment), UTF-8 strings, no
  // keep-alive (SOAP_IO_KEEPALIVE is not set).
  listener_ = soap_new1(SOAP_ENC_MTOM | SOAP_C_UTFSTRING);
  if (!listener_) throw std::runtime_error("out of memory");
  soap_set_namespaces(listener_, fx::server::ServiceNamespaces());
  listener_->bind_flags = SO_REUSEADDR;
  listener_->recv_timeout = config_.io_timeout_seconds;
  listener_->send_timeout = config_.io_timeout_seconds;
  listener_->accept_timeout = 1;  // the accept loop looks at the stop flag every second
  listener_->recv_maxlength = config_.max_request_bytes + 2 * kFramingAllowance;

  defaults.parse = listener_->fparse;
  defaults.parse_header = listener_->fparsehdr;
  defaults.recv = listener_->frecv;
  defaults.send = listener_->fsend;
  defaults.shutdown_socket = listener_->fshutdownsocket;
  listener_->fparse = ParseHook;
  listener_->fparsehdr = ParseHeaderHook;
  listener_->frecv = RecvHook;
  listener_->fshutdownsocket = ShutdownHook;
  listener_->fget = GetHook;
  InstallMimeStreaming(listener_);

  if (!config_.tls_cert.empty()) ConfigureServerTls(listener_, config_.tls_cert);
}

Server::~Server() {
  soap_destroy(listener_);
  soap_end(listener_);
  soap_free(listener_);
}

bool Server::Authorized(const char* name, const char* password) {
  if (!users_) return true;
  if (!name || !password) return false;
  return users_->Verify(name, password);
}

std::string Server::Bind() {
  const SOAP_SOCKET master = soap_bind(listener_, config_.listen.c_str(), config_.port, 64);
  if (!soap_valid_socket(master)) {
    char message[1024] = "";
    soap_sprint_fault(listener_, message, sizeof message);
    throw std::runtime_error("cannot listen on " + PrintableHost(config_.listen) + ":" +
                             std::to_string(config_.port) + ": " + message);
  }
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  int port = config_.port;
  if (getsockname(master, reinterpret_cast<sockaddr*>(&address), &size) == 0) {
    port = ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port
                     : reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
  }
  return std::string(config_.tls_cert.empty() ? "http" : "https") + "://" +
         PrintableHost(config_.listen) + ":" + std::to_string(port) + "/";
}

void Server::Run() {
  while (!stopping_) {
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [&] { return stopping_ || active_ < config_.max_connections; });
    }
    if (stopping_) break;
    const SOAP_SOCKET socket = soap_accept(listener_);
    if (!soap_valid_socket(socket)) {
      if (stopping_) break;
      if (listener_->errnum != 0) {  // zero: the accept timeout
        log_.Write(std::string("accept failed: ") + std::strerror(listener_->errnum));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
      }
      continue;
    }
    struct soap* connection = soap_copy(listener_);
    listener_->socket = SOAP_INVALID_SOCKET;  // the connection's context owns it now
    if (!connection) {
      ::close(socket);
      continue;
    }
    {
      std::lock_guard lock(mutex_);
      ++active_;
      sockets_.insert(socket);
    }
    try {
      std::thread([this, connection] { ServeConnection(connection); }).detach();
    } catch (const std::system_error& error) {
      log_.Write(std::string("no thread for a connection: ") + error.what());
      std::lock_guard lock(mutex_);
      --active_;
      sockets_.erase(socket);
      soap_free(connection);  // closes its socket
    }
  }
  // The listener is closed first: new clients are refused from now on.
  {
    std::lock_guard lock(mutex_);
    if (soap_valid_socket(listener_->master)) {
      ::close(listener_->master);
      listener_->master = SOAP_INVALID_SOCKET;
    }
  }
  WaitForConnections();
}

void Server::Stop() {
  std::lock_guard lock(mutex_);
  stopping_ = true;
  // Wakes an accept waiting for a client.
  if (soap_valid_socket(listener_->master)) ::shutdown(listener_->master, SHUT_RDWR);
  changed_.notify_all();
}

void Server::WaitForConnections() {
  std::unique_lock lock(mutex_);
  if (!changed_.wait_for(lock, std::chrono::seconds(config_.grace_seconds),
                         [&] { return active_ == 0; })) {
    log_.Write("stopping: dropping " + std::to_string(active_) + " connections still open");
    for (int socket : sockets_) ::shutdown(socket, SHUT_RDWR);
  }
  changed_.wait(lock, [&] { return active_ == 0; });
}

void Server::ServeConnection(struct soap* soap) {
  const SOAP_SOCKET socket = soap->socket;
  Connection connection;
  connection.server = this;
  connection.peer = PrintableHost(soap->host) + ":" + std::to_string(soap->port);
  soap->user = &connection;
  if (!config_.tls_cert.empty() && soap_ssl_accept(soap) != SOAP_OK) {
    // OpenSSL's reason, on one line.
    std::string reason = soap->fault && soap->fault->faultstring ? soap->fault->faultstring : "";
    for (char& c : reason) {
      if (c == '\n' || c == '\r' || c == '"') c = ' ';
    }
    reason.erase(0, std::min(reason.size(), reason.find_first_not_of(' ')));
    log_.Write(connection.peer + " TLS handshake failed: " + reason);
  } else if (config_.fault) {
    FaultInjectingService service(soap, storage_, log_, *config_.fault);
    service.serve();
  } else {
    DrawingService service(soap, storage_, log_);
    service.serve();
  }
  soap_destroy(soap);
  soap_end(soap);
  soap_free(soap);  // closes the socket if still open
  std::lock_guard lock(mutex_);
  sockets_.erase(socket);
  --active_;
  changed_.notify_all();
}

}  // namespace fx::devserver
