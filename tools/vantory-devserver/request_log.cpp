#include "request_log.h"

#include <cstdio>
#include <ctime>

namespace fx::devserver {

void RequestLog::Write(const std::string& line) {
  if (!enabled_) return;
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char stamp[32];
  std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", &local);
  std::lock_guard lock(mutex_);
  std::fprintf(stderr, "%s %s\n", stamp, line.c_str());
}

}  // namespace fx::devserver
