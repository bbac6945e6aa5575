#include "app/transfer_progress.h"

#include <chrono>
#include <cstdio>

#include "host/editor.h"

namespace fx::app {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kRelabelInterval = std::chrono::milliseconds(200);

struct Transfer {
  std::string status;
  bool sending = false;
  Clock::time_point started;
  Clock::time_point labelled;
  size_t last_done = 0;
};

Transfer g_transfer;

}  // namespace

void SetTransferStatus(const char* status) { g_transfer.status = status != nullptr ? status : ""; }

std::string TransferLabel(const std::string& status, size_t done, size_t total, double seconds) {
  constexpr double kMB = 1024.0 * 1024.0;
  char text[128];
  const double rate = seconds > 0 ? done / kMB / seconds : 0;
  if (total > 0) {
    std::snprintf(text, sizeof text, ": %.1f of %.1f MB, %.1f MB/s", done / kMB, total / kMB, rate);
  } else {
    std::snprintf(text, sizeof text, ": %.1f MB, %.1f MB/s", done / kMB, rate);
  }
  return status + text;
}

void ReportTransfer(bool sending, size_t done, size_t total) {
  const Clock::time_point now = Clock::now();
  // A new message starts when the direction changes or the count restarts.
  if (sending != g_transfer.sending || done < g_transfer.last_done) {
    g_transfer.sending = sending;
    g_transfer.started = now;
    g_transfer.labelled = Clock::time_point();
  }
  g_transfer.last_done = done;
  if (now - g_transfer.labelled < kRelabelInterval) return;
  g_transfer.labelled = now;
  const double seconds = std::chrono::duration<double>(now - g_transfer.started).count();
  const std::string label = TransferLabel(g_transfer.status, done, total, seconds);
  acedSetStatusBarProgressMeter(label.c_str(), 0, 100);
  if (total > 0) acedSetStatusBarProgressMeterPos(static_cast<int>(done * 100 / total));
}

}  // namespace fx::app
