// Progress of long server calls: the server module reports through two
// callbacks, a start with a label and a position in percent, which the
// application registers on initialisation (to drive the status bar) and
// clears on unload. Without callbacks, reports go nowhere.
#ifndef FLOORXPORT_APP_SERVER_PROGRESS_H_
#define FLOORXPORT_APP_SERVER_PROGRESS_H_

namespace fx::app {

using ProgressStartCallback = void (*)(const char* label);
using ProgressPositionCallback = void (*)(int percent);

struct ServerProgressCallbacks {
  ProgressStartCallback start = nullptr;
  ProgressPositionCallback position = nullptr;
};

void SetServerProgressCallbacks(ServerProgressCallbacks callbacks);
ServerProgressCallbacks GetServerProgressCallbacks();

void ReportServerProgressStart(const char* label);
void ReportServerProgressPosition(int percent);

}  // namespace fx::app

#endif  // FLOORXPORT_APP_SERVER_PROGRESS_H_
