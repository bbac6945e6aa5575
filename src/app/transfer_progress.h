// The progress of a long upload or download on the status bar: the call's
// status text with the bytes moved, the size when known and the rate
// ("Sending to Vantory: 12.4 of 20.0 MB, 85.3 MB/s"), the bar at the share
// of bytes moved.
#ifndef FLOORXPORT_APP_TRANSFER_PROGRESS_H_
#define FLOORXPORT_APP_TRANSFER_PROGRESS_H_

#include <cstddef>
#include <string>

namespace fx::app {

// The status text of the call in progress, set by the status callback.
void SetTransferStatus(const char* status);

// The transfer callback of the service clients.
void ReportTransfer(bool sending, size_t done, size_t total);

// The label for `done` of `total` bytes (0: unknown) after `seconds`.
std::string TransferLabel(const std::string& status, size_t done, size_t total, double seconds);

}  // namespace fx::app

#endif  // FLOORXPORT_APP_TRANSFER_PROGRESS_H_
