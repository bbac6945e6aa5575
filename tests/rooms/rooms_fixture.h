// The plug-in in the headless host on a fake terminal, with one of the
// drawings of tests/data/rooms open (see make_drawings.py there), and the
// look-ups the room analysis tests need: stamps and texts by name,
// contours by their first corner.
#ifndef FLOORXPORT_TESTS_ROOMS_ROOMS_FIXTURE_H_
#define FLOORXPORT_TESTS_ROOMS_ROOMS_FIXTURE_H_

#include <memory>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "scratch_dir.h"
#include "host/database.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "rooms/doc_data.h"
#include "rooms/room_record.h"

namespace fx::rooms_test {

// A drawing of tests/data/rooms by file name ("problems.dxf").
std::string TestDrawing(const std::string& name);
std::string SampleFloor();  // examples/sample-floor.dxf

// The command lines of the two modes on problems.dxf.
std::string BlockModeLine(const char* remove_inserts = "No");
std::string TextModeLine();

class RoomsTest : public fx::console::ConsoleTest {
 protected:
  RoomsTest();
  ~RoomsTest() override;

  // Opens `path` with the plug-in loaded (it registers "VantoryApp").
  void Open(const std::string& path);
  AcDbDatabase& db() const;
  fx::rooms::CDocData& docData() const;

  // Runs `script` and returns what this run printed.
  std::string RunScript(const std::string& script);

  // Model-space entities, in order.
  std::vector<AcDbObjectId> ModelSpace() const;
  // The inserts whose NAME attribute is `name`, in model-space order.
  std::vector<AcDbObjectId> StampsNamed(const std::string& name) const;
  // The TEXT and MTEXT of layer Names showing `name`, in model-space order.
  std::vector<AcDbObjectId> NamesShowing(const std::string& name) const;
  // The polyline of `layer` whose first vertex is (x, y); null if none.
  AcDbObjectId ContourAt(double x, double y, const char* layer = "Contours") const;
  // The record of `id`; an empty record with name "(none)" when it has none.
  fx::rooms::RoomRecord Record(AcDbObjectId id) const;

  fx::testing::ScratchDir dir_{"rooms"};
  fx::console::ModuleRegistry modules_;
  std::unique_ptr<fx::console::HostSession> session_;
};

}  // namespace fx::rooms_test

#endif  // FLOORXPORT_TESTS_ROOMS_ROOMS_FIXTURE_H_
