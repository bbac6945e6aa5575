#include "server/service_client.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "server/log_in.h"
#include "server/soap/service_namespaces.h"
#include "server/tls_policy.h"

namespace {

constexpr int kTimeoutSeconds = 10;
// A reply that comes slower than this, over any kTimeoutSeconds from its
// first bytes, fails the call as a silent server does: the receive timeout
// alone would wait for ever on a server trickling a few bytes a second.
constexpr size_t kStallBytesPerSecond = 100;
constexpr const char* kSystemAuthorities = "/etc/ssl/certs";

}  // namespace

ProgressDrawingAPIPortBindingProxy::ProgressDrawingAPIPortBindingProxy(const char* endpoint)
    : DrawingAPIPortBindingProxy(SOAP_ENC_MTOM | SOAP_C_UTFSTRING) {
  endpoint_ = endpoint != nullptr ? endpoint : fx::server::kBuiltInEndpoint;
  soap_endpoint = endpoint_.c_str();
  soap_set_namespaces(soap, fx::server::ServiceNamespaces());
  soap->user = this;
  // A peer that closes early must fail the call, not kill the process.
  soap->socket_flags = MSG_NOSIGNAL;
  const fx::server::TlsPolicy tls = fx::server::CurrentTlsPolicy();
  if (tls.verify) {
    soap_ssl_client_context(soap, SOAP_SSL_REQUIRE_SERVER_AUTHENTICATION | SOAP_TLSv1_2 | SOAP_TLSv1_3,
                            nullptr, nullptr, tls.ca_file.empty() ? nullptr : tls.ca_file.c_str(),
                            tls.ca_file.empty() ? kSystemAuthorities : nullptr, nullptr);
  } else {
    soap_ssl_client_context(soap, SOAP_SSL_NO_AUTHENTICATION | SOAP_SSL_SKIP_HOST_CHECK, nullptr, nullptr,
                            nullptr, nullptr, nullptr);
  }
  StreamAttachments();
  saved_fsend = soap->fsend;
  saved_frecv = soap->frecv;
  soap->fsend = CountingSend;
  soap->frecv = CountingReceive;
  soap->connect_timeout = kTimeoutSeconds;
  soap->recv_timeout = kTimeoutSeconds;
  soap->send_timeout = kTimeoutSeconds;
}

// Attachments move without the runtime's copies: one sent is read straight
// from the caller's buffer (which also spares the runtime's scan of it for
// its MIME boundary), one received is written into one growing buffer.
void ProgressDrawingAPIPortBindingProxy::StreamAttachments() {
  struct Cursor {
    const char* next;
  };
  soap->fmimereadopen = [](struct soap*, void* handle, const char*, const char*,
                           const char*) -> void* { return new Cursor{static_cast<const char*>(handle)}; };
  soap->fmimeread = [](struct soap*, void* handle, char* buffer, size_t size) -> size_t {
    auto* cursor = static_cast<Cursor*>(handle);
    std::memcpy(buffer, cursor->next, size);
    cursor->next += size;
    return size;
  };
  soap->fmimereadclose = [](struct soap*, void* handle) { delete static_cast<Cursor*>(handle); };
  soap->fmimewriteopen = [](struct soap* context, void*, const char*, const char*, const char*,
                            enum soap_mime_encoding) -> void* {
    auto* client = static_cast<ProgressDrawingAPIPortBindingProxy*>(context->user);
    client->received_attachment_.clear();
    if (context->length > context->count) {
      client->received_attachment_.reserve(static_cast<size_t>(context->length - context->count));
    }
    return &client->received_attachment_;
  };
  soap->fmimewrite = [](struct soap*, void* handle, const char* bytes, size_t size) -> int {
    auto* sink = static_cast<std::vector<unsigned char>*>(handle);
    sink->insert(sink->end(), bytes, bytes + size);
    return SOAP_OK;
  };
  soap->fmimewriteclose = [](struct soap*, void*) {};
}

std::string ProgressDrawingAPIPortBindingProxy::LastUrl() const {
  return std::string(soap->host) + soap->path;
}

int ProgressDrawingAPIPortBindingProxy::CountingSend(struct soap* soap, const char* data,
                                                     size_t size) {
  auto* client = static_cast<ProgressDrawingAPIPortBindingProxy*>(soap->user);
  const int result = client->saved_fsend(soap, data, size);
  if (result == SOAP_OK && client->transfer_callback != nullptr) {
    client->sent_ += size;
    const size_t total = static_cast<size_t>(soap->count);
    client->transfer_callback(true, total > 0 ? std::min(client->sent_, total) : client->sent_, total);
  }
  return result;
}

size_t ProgressDrawingAPIPortBindingProxy::CountingReceive(struct soap* soap, char* data,
                                                           size_t size) {
  auto* client = static_cast<ProgressDrawingAPIPortBindingProxy*>(soap->user);
  const size_t received = client->saved_frecv(soap, data, size);
  if (received > 0 && client->Stalled(received)) {
    client->stalled_ = true;
    return 0;  // the end of the reply; WithLogIn reports a timeout
  }
  if (received > 0 && client->transfer_callback != nullptr) {
    client->received_ += received;
    const size_t total = static_cast<size_t>(soap->length);
    client->transfer_callback(false, total > 0 ? std::min(client->received_, total) : client->received_,
                              total);
  }
  return received;
}

bool ProgressDrawingAPIPortBindingProxy::Stalled(size_t received) {
  const auto now = std::chrono::steady_clock::now();
  if (!window_start_) window_start_ = now;
  window_bytes_ += received;
  if (now - *window_start_ < std::chrono::seconds(kTimeoutSeconds)) return false;
  if (window_bytes_ < kStallBytesPerSecond * kTimeoutSeconds) return true;
  window_start_ = now;
  window_bytes_ = 0;
  return false;
}

// Sends the call, and again after each HTTP 401 the user answers with
// credentials. The runtime forgets credentials after every call, so the
// remembered ones are set again before each attempt.
template <class Call>
int ProgressDrawingAPIPortBindingProxy::WithLogIn(Call call) {
  for (;;) {
    soap->encodingStyle = nullptr;
    fx::server::ApplyCredentials(soap);
    sent_ = 0;
    received_ = 0;
    window_start_.reset();
    window_bytes_ = 0;
    stalled_ = false;
    const int result = call();
    if (stalled_) {
      // Whatever the runtime made of the reply cut short: a transfer that
      // timed out, as when the server sends nothing.
      soap->errnum = ETIMEDOUT;
      return soap->error = SOAP_EOF;
    }
    if (result != 401 || !fx::server::RetryAfterUnauthorized(result)) return result;
  }
}

template <class Call>
int ProgressDrawingAPIPortBindingProxy::WithProgress(const char* status, bool report_start,
                                                     Call call) {
  if (status_callback != nullptr) status_callback(status);
  if (report_start && percent_callback != nullptr) percent_callback(50);
  call_in_progress = true;
  const int result = call();
  call_in_progress = false;
  if (percent_callback != nullptr) percent_callback(100);
  return result;
}

int ProgressDrawingAPIPortBindingProxy::getDWG(ns1__getDWG* request,
                                               ns1__getDWGResponse& response) {
  return WithProgress(fx::server::kReceivingStatus, true, [&] {
    return DrawingAPIPortBindingProxy::getDWG(request, response);
  });
}

// Unlike the other two, no 50 before the call.
int ProgressDrawingAPIPortBindingProxy::getDrawing(ns1__getDrawing* request,
                                                   ns1__getDrawingResponse& response) {
  return WithProgress(fx::server::kReceivingStatus, false, [&] {
    return DrawingAPIPortBindingProxy::getDrawing(request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::setDrawing(ns1__setDrawing* request,
                                                   ns1__setDrawingResponse& response) {
  return WithProgress(fx::server::kSendingStatus, true, [&] {
    return DrawingAPIPortBindingProxy::setDrawing(request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::getDWG(const char* endpoint, const char* action,
                                               ns1__getDWG* request,
                                               ns1__getDWGResponse& response) {
  return WithLogIn([&] {
    return DrawingAPIPortBindingProxy::getDWG(endpoint, action, request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::getDrawing(const char* endpoint, const char* action,
                                                   ns1__getDrawing* request,
                                                   ns1__getDrawingResponse& response) {
  return WithLogIn([&] {
    return DrawingAPIPortBindingProxy::getDrawing(endpoint, action, request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::setDrawing(const char* endpoint, const char* action,
                                                   ns1__setDrawing* request,
                                                   ns1__setDrawingResponse& response) {
  return WithLogIn([&] {
    return DrawingAPIPortBindingProxy::setDrawing(endpoint, action, request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::createFloor(const char* endpoint, const char* action,
                                                    ns1__createFloor* request,
                                                    ns1__createFloorResponse& response) {
  return WithLogIn([&] {
    return DrawingAPIPortBindingProxy::createFloor(endpoint, action, request, response);
  });
}

int ProgressDrawingAPIPortBindingProxy::getBuildingsAndFloors(
    const char* endpoint, const char* action, ns1__getBuildingsAndFloors* request,
    ns1__getBuildingsAndFloorsResponse& response) {
  return WithLogIn([&] {
    return DrawingAPIPortBindingProxy::getBuildingsAndFloors(endpoint, action, request, response);
  });
}
