#include "fault.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "connection.h"
#include "fault_service.h"
#include "request_log.h"
#include "server.h"
#include "stdsoap2.h"

namespace fx::devserver {
namespace {

constexpr auto kTrickleStep = std::chrono::milliseconds(250);  // one byte each: 4 bytes a second
constexpr std::size_t kMaxHeadBytes = 16 * 1024;

// What the send hook of a connection under the close or trickle fault
// keeps. Each connection is served on its own thread, which alone sends on
// it, so the state is the thread's.
struct SendState {
  FaultMode mode = FaultMode::kClose;
  int (*plain_send)(struct soap*, const char*, std::size_t) = nullptr;
  std::string head;            // the answer's headers, until they are whole
  std::uint64_t sent = 0;      // bytes of the answer passed on so far
  std::uint64_t cut_at = 0;    // close: where the answer is cut; 0 until known
};
thread_local SendState send_state;

bool Stopping(struct soap* soap) {
  const Connection* connection = ConnectionOf(soap);
  return connection != nullptr && connection->server->stopping();
}

// Reads and drops what the client sends until it closes the connection or
// the server stops: the client is left waiting for an answer.
void HoldUntilClientLeaves(struct soap* soap) {
  static thread_local char sink[65536];
  while (!Stopping(soap)) {
    pollfd ready{soap->socket, POLLIN, 0};
    const int events = ::poll(&ready, 1, 1000);
    if (events < 0) break;
    if (events == 0) continue;
    if (::recv(soap->socket, sink, sizeof sink, 0) <= 0) break;
  }
}

// Sends `answer` whole, then closes the connection (after the client has
// had the time to read it, see HoldUntilClientLeaves).
int AnswerAndClose(struct soap* soap, const std::string& answer) {
  soap->fsend(soap, answer.data(), answer.size());
  ::shutdown(soap->socket, SHUT_WR);
  HoldUntilClientLeaves(soap);
  soap->keep_alive = 0;
  return soap->error = SOAP_STOP;
}

std::string Answer(const std::string& status, const char* type, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

// Bytes that no XML or JSON reader takes: binary noise with a stray '<'.
std::string Garbage() {
  std::string bytes = "\x89<\x01\xff{";
  std::uint32_t state = 2463534242u;
  for (int i = 0; i < 512; ++i) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    bytes += static_cast<char>(state & 0xff);
  }
  return bytes;
}

// The answer's body length from its headers, or 0.
std::uint64_t ContentLength(const std::string& head) {
  std::string lower = head;
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
  const std::size_t at = lower.find("\r\ncontent-length:");
  return at == std::string::npos ? 0 : std::strtoull(head.c_str() + at + 17, nullptr, 10);
}

int CutSend(struct soap* soap, const char* data, std::size_t size) {
  SendState& state = send_state;
  if (state.cut_at == 0 && state.head.size() < kMaxHeadBytes) {
    state.head.append(data, std::min(size, kMaxHeadBytes - state.head.size()));
    if (const std::size_t end = state.head.find("\r\n\r\n"); end != std::string::npos) {
      state.cut_at = end + 4 + std::max<std::uint64_t>(1, ContentLength(state.head) / 2);
    }
  }
  if (state.cut_at != 0 && state.sent >= state.cut_at) return soap->error = SOAP_EOF;  // cut before
  if (state.cut_at != 0 && state.sent + size >= state.cut_at) {
    state.plain_send(soap, data, static_cast<std::size_t>(state.cut_at - state.sent));
    state.sent = state.cut_at;
    ::shutdown(soap->socket, SHUT_RDWR);
    return soap->error = SOAP_EOF;
  }
  state.sent += size;
  return state.plain_send(soap, data, size);
}

int TrickleSend(struct soap* soap, const char* data, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) {
    if (Stopping(soap)) return soap->error = SOAP_EOF;
    if (const int rc = send_state.plain_send(soap, data + i, 1); rc != SOAP_OK) return rc;
    std::this_thread::sleep_for(kTrickleStep);
  }
  return SOAP_OK;
}

bool Applies(const FaultConfig& fault, const std::string& name) {
  return fault.names.empty() ||
         std::find(fault.names.begin(), fault.names.end(), name) != fault.names.end();
}

}  // namespace

std::optional<FaultConfig> ParseFault(const std::string& text) {
  static const std::pair<const char*, FaultMode> kModes[] = {
      {"hang", FaultMode::kHang},       {"close", FaultMode::kClose},
      {"garbage", FaultMode::kGarbage}, {"500", FaultMode::kServerError},
      {"401", FaultMode::kUnauthorized}, {"trickle", FaultMode::kTrickle},
  };
  const std::size_t colon = text.find(':');
  const std::string mode = text.substr(0, colon);
  FaultConfig fault;
  const auto known = std::find_if(std::begin(kModes), std::end(kModes),
                                  [&](const auto& entry) { return mode == entry.first; });
  if (known == std::end(kModes)) return std::nullopt;
  fault.mode = known->second;
  if (colon == std::string::npos) return fault;
  for (std::size_t start = colon + 1; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    if (comma > start) fault.names.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
  return fault;
}

int InjectFault(struct soap* soap, const FaultConfig& fault, const std::string& name) {
  if (!Applies(fault, name)) return SOAP_OK;
  Connection& connection = *ConnectionOf(soap);
  connection.server->log().Write(connection.peer + " " + name + ": fault injected");
  switch (fault.mode) {
    case FaultMode::kHang:
      HoldUntilClientLeaves(soap);
      soap->keep_alive = 0;
      return soap->error = SOAP_STOP;
    case FaultMode::kGarbage:
      return AnswerAndClose(soap, Answer("200 OK", "text/xml; charset=utf-8", Garbage()));
    case FaultMode::kServerError:
      return AnswerAndClose(soap, Answer("500 Internal Server Error", "text/html",
                                         "<html><body><h1>500 Internal Server Error</h1></body></html>\n"));
    case FaultMode::kUnauthorized:
      return AnswerAndClose(soap, Answer("401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"" +
                                             std::string(kRealm) + "\"",
                                         "text/plain", "Unauthorized\n"));
    case FaultMode::kClose:
    case FaultMode::kTrickle:
      send_state = SendState{};
      send_state.mode = fault.mode;
      send_state.plain_send = soap->fsend;
      soap->fsend = fault.mode == FaultMode::kClose ? CutSend : TrickleSend;
      return SOAP_OK;
  }
  return SOAP_OK;
}

int FaultInjectingService::dispatch() {
  (void)soap_peek_element(soap);
  const char* tag = soap->tag;
  const char* colon = std::strchr(tag, ':');
  if (const int rc = InjectFault(soap, fault_, colon ? colon + 1 : tag); rc != SOAP_OK) return rc;
  return DrawingService::dispatch();
}

}  // namespace fx::devserver
