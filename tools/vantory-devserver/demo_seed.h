// --seed-demo: the content a fresh development database starts with, so
// that `floorxport floors` and `send` have something to talk to.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DEMO_SEED_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DEMO_SEED_H_

#include <string>

namespace fx::devserver {

class Storage;

// The sample floor shipped with the sources: `option` when given, else
// examples/sample-floor.dxf of the source tree the program was built from,
// else the one two levels above the program (build/bin/ in a checkout).
// Empty when none is found.
std::string FindSampleDrawing(const std::string& option);

// Adds the demo building "Demo Building" (with an address) and its floors
// "Level 1" and "Level 2". Level 1 gets the sample floor as its stored
// drawing (the DWG part holds the DXF file's bytes, format "dxf"; the
// ".drawing" part is empty) and rooms named after the sample floor's rooms.
// Throws StorageError or std::runtime_error (the sample cannot be read).
void SeedDemo(Storage& storage, const std::string& sample_drawing);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_DEMO_SEED_H_
