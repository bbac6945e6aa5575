#include "canned_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fx::exchange_test {
namespace {

constexpr const char* kBoundary = "uuid:0d2e5b8a-42c1-4f0e-9c57-77a3c1e2f7b1";
constexpr const char* kRootId = "<rootpart*0d2e5b8a-42c1-4f0e-9c57-77a3c1e2f7b1@example.jaxws.sun.com>";

std::string Chunked(const std::string& body) {
  std::string out;
  // Uneven chunks, as a streaming writer produces them.
  for (size_t at = 0, size = 7; at < body.size(); at += size, size = size * 3 + 1) {
    const std::string piece = body.substr(at, size);
    char length[16];
    std::snprintf(length, sizeof length, "%zx\r\n", piece.size());
    out += length + piece + "\r\n";
  }
  return out + "0\r\n\r\n";
}

bool SendAll(int connection, const char* data, size_t size) {
  while (size > 0) {
    const ssize_t sent = ::send(connection, data, size, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    data += sent;
    size -= static_cast<size_t>(sent);
  }
  return true;
}

// Reads one request: headers, then a Content-Length body or chunks.
std::string ReadRequest(int connection) {
  std::string request;
  char buffer[65536];
  auto done = [&request]() {
    const size_t end = request.find("\r\n\r\n");
    if (end == std::string::npos) return false;
    const size_t length_at = request.find("Content-Length: ");
    if (length_at != std::string::npos && length_at < end) {
      return request.size() >= end + 4 + std::strtoul(request.c_str() + length_at + 16, nullptr, 10);
    }
    if (request.find("chunked") < end) return request.find("\r\n0\r\n\r\n", end) != std::string::npos;
    return true;
  };
  while (!done()) {
    pollfd ready{connection, POLLIN, 0};
    if (::poll(&ready, 1, 5000) <= 0) break;
    const ssize_t received = ::recv(connection, buffer, sizeof buffer, 0);
    if (received <= 0) break;
    request.append(buffer, static_cast<size_t>(received));
  }
  return request;
}

}  // namespace

CannedReply PlainReply(const std::string& xml, int status, const std::string& content_type) {
  std::ostringstream out;
  out << "HTTP/1.1 " << status << (status == 200 ? " OK" : " Error") << "\r\n"
      << "Content-Type: " << content_type << "\r\nContent-Length: " << xml.size()
      << "\r\nConnection: close\r\n\r\n" << xml;
  return {out.str()};
}

CannedReply ChunkedReply(const std::string& xml) {
  return {"HTTP/1.1 200 OK\r\nContent-Type: text/xml;charset=utf-8\r\n"
          "Transfer-Encoding: chunked\r\nConnection: close\r\n\r\n" + Chunked(xml)};
}

CannedReply MtomReply(const std::string& xml, const std::string& cid,
                      const std::string& attachment) {
  std::string body = std::string("--") + kBoundary + "\r\nContent-Id: " + kRootId +
                     "\r\nContent-Type: application/xop+xml;charset=utf-8;type=\"text/xml\"\r\n"
                     "Content-Transfer-Encoding: binary\r\n\r\n" + xml + "\r\n";
  if (!cid.empty()) {
    body += std::string("--") + kBoundary + "\r\nContent-Id: <" + cid +
            ">\r\nContent-Type: application/octet-stream\r\nContent-Transfer-Encoding: binary\r\n\r\n" +
            attachment + "\r\n";
  }
  body += std::string("--") + kBoundary + "--";
  return {std::string("HTTP/1.1 200 OK\r\nContent-Type: multipart/related;start=\"") + kRootId +
          "\";type=\"application/xop+xml\";boundary=\"" + kBoundary +
          "\";start-info=\"text/xml\"\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n" +
          Chunked(body)};
}

CannedReply UnauthorizedReply() {
  return {"HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"Vantory\"\r\n"
          "Content-Length: 0\r\nConnection: close\r\n\r\n"};
}

CannedServer::CannedServer() {
  listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
  ::listen(listener_, 8);
  ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

CannedServer::~CannedServer() {
  {
    std::lock_guard lock(mutex_);
    stop_ = true;
  }
  ::shutdown(listener_, SHUT_RDWR);
  thread_.join();
  ::close(listener_);
}

std::string CannedServer::address() const {
  return "http://127.0.0.1:" + std::to_string(port_) + "/";
}

void CannedServer::Push(CannedReply reply) {
  std::lock_guard lock(mutex_);
  replies_.push_back(std::move(reply));
}

std::vector<std::string> CannedServer::requests() {
  std::lock_guard lock(mutex_);
  return requests_;
}

void CannedServer::Serve() {
  for (;;) {
    pollfd ready{listener_, POLLIN, 0};
    if (::poll(&ready, 1, 100) < 0) return;
    {
      std::lock_guard lock(mutex_);
      if (stop_) return;
    }
    if ((ready.revents & POLLIN) == 0) continue;
    const int connection = ::accept(listener_, nullptr, nullptr);
    if (connection < 0) continue;
    Answer(connection);
  }
}

void CannedServer::Answer(int connection) {
  const std::string request = ReadRequest(connection);
  CannedReply reply;
  {
    std::lock_guard lock(mutex_);
    requests_.push_back(request);
    if (!replies_.empty()) {
      reply = replies_.front();
      if (replies_.size() > 1) replies_.pop_front();
    }
  }
  SendAll(connection, reply.bytes.data(), std::min(reply.cut_after, reply.bytes.size()));
  ::close(connection);
}

std::string CapturedReply(const std::string& name) {
  std::ifstream file(std::string(FX_REPLIES_DIR) + "/" + name, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

}  // namespace fx::exchange_test
