#include "settings/settings_diagnostics.h"

#include <mutex>
#include <set>
#include <utility>

namespace fx::settings {
namespace {

struct DiagnosticsState {
  std::mutex mutex;
  SettingsDiagnostics sink;
  std::set<std::string> reported_topics;
};

DiagnosticsState& State() {
  static DiagnosticsState state;  // never destroyed before a late report
  return state;
}

}  // namespace

SettingsDiagnostics SetSettingsDiagnostics(SettingsDiagnostics sink) {
  DiagnosticsState& state = State();
  const std::lock_guard lock(state.mutex);
  return std::exchange(state.sink, std::move(sink));
}

void ReportSettingsProblemOnce(const std::string& topic, const std::string& message) {
  SettingsDiagnostics sink;
  {
    DiagnosticsState& state = State();
    const std::lock_guard lock(state.mutex);
    if (!state.reported_topics.insert(topic).second) return;
    sink = state.sink;
  }
  if (sink) sink(message);
}

}  // namespace fx::settings
