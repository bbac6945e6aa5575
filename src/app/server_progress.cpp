#include "app/server_progress.h"

namespace fx::app {
namespace {

ServerProgressCallbacks g_callbacks;

}  // namespace

void SetServerProgressCallbacks(ServerProgressCallbacks callbacks) { g_callbacks = callbacks; }

ServerProgressCallbacks GetServerProgressCallbacks() { return g_callbacks; }

void ReportServerProgressStart(const char* label) {
  if (g_callbacks.start != nullptr) g_callbacks.start(label);
}

void ReportServerProgressPosition(int percent) {
  if (g_callbacks.position != nullptr) g_callbacks.position(percent);
}

}  // namespace fx::app
