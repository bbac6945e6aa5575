// The drawing service client the plug-in uses: the generated proxy plus
// progress reports, the log-in on HTTP 401, and the transport settings every
// call needs (credentials again before each call, literal encoding).
#ifndef FLOORXPORT_SERVER_SERVICE_CLIENT_H_
#define FLOORXPORT_SERVER_SERVICE_CLIENT_H_

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "soapDrawingAPIPortBindingProxy.h"

namespace fx::server {

// Percent of a call done (50 before a transfer, 100 after it).
using PercentCallback = void (*)(int percent);
// The status text of a call ("Receiving from Vantory"), UTF-8.
using StatusCallback = void (*)(const char* text);
// Bytes moved so far in the current message, and the message's size when
// known (0 when not, as with a chunked reply). `sending` tells the direction.
using TransferCallback = void (*)(bool sending, size_t done, size_t total);

// The demonstration server a client made without an address talks to.
inline constexpr const char* kBuiltInEndpoint =
    "https://demo.vantory.example/external/api/soap/space/drawing/v1";

inline constexpr const char* kReceivingStatus = "Receiving from Vantory";
inline constexpr const char* kSendingStatus = "Sending to Vantory";

}  // namespace fx::server

// The program's client: getDWG, getDrawing and setDrawing report progress
// (status text and percent) around the call; every operation answers an
// HTTP 401 with the log-in (log_in.h) and tries again while the user gives
// credentials. Made by the client cache (client_cache.h), in MTOM mode.
class ProgressDrawingAPIPortBindingProxy : public DrawingAPIPortBindingProxy {
 public:
  // `endpoint` null means kBuiltInEndpoint.
  explicit ProgressDrawingAPIPortBindingProxy(const char* endpoint);

  fx::server::PercentCallback percent_callback = nullptr;
  fx::server::StatusCallback status_callback = nullptr;
  bool call_in_progress = false;
  // The runtime's own send and receive functions, called by the hooks this
  // client installs in their place (byte counts for the transfer callback).
  int (*saved_fsend)(struct soap*, const char*, size_t) = nullptr;
  size_t (*saved_frecv)(struct soap*, char*, size_t) = nullptr;
  fx::server::TransferCallback transfer_callback = nullptr;

  // The host and path of the last connection ("host/path"), for reports.
  std::string LastUrl() const;

  // The bytes of an attachment received by the last call. The runtime
  // hands it back as the binary's __ptr (IsReceivedAttachment); an inline
  // binary holds its own bytes.
  bool IsReceivedAttachment(const void* ptr) const { return ptr == &received_attachment_; }
  const std::vector<unsigned char>& received_attachment() const { return received_attachment_; }

  using DrawingAPIPortBindingProxy::createFloor;
  using DrawingAPIPortBindingProxy::getBuildingsAndFloors;
  using DrawingAPIPortBindingProxy::getDrawing;
  using DrawingAPIPortBindingProxy::getDWG;
  using DrawingAPIPortBindingProxy::setDrawing;

  int getDWG(ns1__getDWG* request, ns1__getDWGResponse& response) override;
  int getDrawing(ns1__getDrawing* request, ns1__getDrawingResponse& response) override;
  int setDrawing(ns1__setDrawing* request, ns1__setDrawingResponse& response) override;

  // The full forms carry the log-in: the short forms above and the two
  // passed through unchanged all end here.
  int getDWG(const char* endpoint, const char* action, ns1__getDWG* request,
             ns1__getDWGResponse& response) override;
  int getDrawing(const char* endpoint, const char* action, ns1__getDrawing* request,
                 ns1__getDrawingResponse& response) override;
  int setDrawing(const char* endpoint, const char* action, ns1__setDrawing* request,
                 ns1__setDrawingResponse& response) override;
  int createFloor(const char* endpoint, const char* action, ns1__createFloor* request,
                  ns1__createFloorResponse& response) override;
  int getBuildingsAndFloors(const char* endpoint, const char* action,
                            ns1__getBuildingsAndFloors* request,
                            ns1__getBuildingsAndFloorsResponse& response) override;

 private:
  static int CountingSend(struct soap* soap, const char* data, size_t size);
  void StreamAttachments();
  static size_t CountingReceive(struct soap* soap, char* data, size_t size);
  // True when the reply has come slower than kStallBytesPerSecond over a
  // whole window; counts `received` bytes in the current one.
  bool Stalled(size_t received);

  template <class Call>
  int WithLogIn(Call call);
  template <class Call>
  int WithProgress(const char* status, bool report_start, Call call);

  std::string endpoint_;  // soap_endpoint points into it
  size_t sent_ = 0;       // bytes of the current call, both ways
  size_t received_ = 0;
  // The receive rate check (Stalled): when the current window began, and
  // the bytes received in it.
  std::optional<std::chrono::steady_clock::time_point> window_start_;
  size_t window_bytes_ = 0;
  bool stalled_ = false;  // the current call's reply came too slowly
  std::vector<unsigned char> received_attachment_;
};

#endif  // FLOORXPORT_SERVER_SERVICE_CLIENT_H_
