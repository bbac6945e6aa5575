// The product update check: a library outside this program that may be
// installed beside it. On initialisation its CheckUpdate is called once,
// when the library is there; when it is not, nothing happens and nothing is
// said.
#ifndef FLOORXPORT_APP_UPDATE_CHECK_H_
#define FLOORXPORT_APP_UPDATE_CHECK_H_

#include <string>

namespace fx::app {

// The export the library must have: extern "C" void CheckUpdate(void).
inline constexpr const char* kCheckUpdateSymbol = "CheckUpdate";

// The library's path: libUpdater.so in the directory of the running
// program (the module's own folder, as the program links the plug-in).
// Empty when that directory cannot be found.
std::string UpdaterLibraryPath();

// Calls CheckUpdate once when the library is present. A library that is
// there but cannot be loaded, or has no CheckUpdate, is reported on the
// command line ("\nUpdate check skipped: <reason>") and initialisation goes on.
void RunUpdateCheck();

}  // namespace fx::app

#endif  // FLOORXPORT_APP_UPDATE_CHECK_H_
