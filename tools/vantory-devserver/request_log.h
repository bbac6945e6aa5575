// One line a request on standard error, for watching the server work:
// time, client, what was asked and how it ended. Thread-safe.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REQUEST_LOG_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REQUEST_LOG_H_

#include <mutex>
#include <string>

namespace fx::devserver {

class RequestLog {
 public:
  explicit RequestLog(bool enabled) : enabled_(enabled) {}
  void Write(const std::string& line);

 private:
  bool enabled_;
  std::mutex mutex_;
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_REQUEST_LOG_H_
