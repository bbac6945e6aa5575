// Where the settings store reports trouble: a damaged settings file, a file
// that cannot be read or written. The store never prints; the console
// installs a sink that does. Reads and writes still return their defaults and
// failures as usual, so callers need not look here.
#ifndef FLOORXPORT_SETTINGS_SETTINGS_DIAGNOSTICS_H_
#define FLOORXPORT_SETTINGS_SETTINGS_DIAGNOSTICS_H_

#include <functional>
#include <string>

namespace fx::settings {

using SettingsDiagnostics = std::function<void(const std::string& message)>;

// Installs the process-wide sink and returns the one it replaces. An empty
// function (the initial state) drops the messages. The sink is called on the
// thread of the settings call, outside any lock of the store.
SettingsDiagnostics SetSettingsDiagnostics(SettingsDiagnostics sink);

// Sends `message` to the sink unless one of the same `topic` ("damaged:"
// plus the file path, say) was sent before in this process, so a batch run
// reports a damaged file once, not at every read.
void ReportSettingsProblemOnce(const std::string& topic, const std::string& message);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_DIAGNOSTICS_H_
