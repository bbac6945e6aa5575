// The plug-in in the headless host on a fake terminal, for the room tests
// (tests/rooms, tests/rooms_ui): a drawing of tests/data/rooms or rooms_ui
// open (see make_drawings.py there), entities looked up as the tests name
// them, entities and records added as an analysis would leave them.
// Programs that use it compile rooms_fixture.cpp and link fx_app.
#ifndef FLOORXPORT_TESTS_SUPPORT_ROOMS_FIXTURE_H_
#define FLOORXPORT_TESTS_SUPPORT_ROOMS_FIXTURE_H_

#include <memory>
#include <string>
#include <vector>

#include "console_fixture.h"
#include "host/database.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "rooms/doc_data.h"
#include "rooms/room_record.h"
#include "test_folder.h"

namespace fx::rooms_test {

std::string TestDrawing(const std::string& name);  // tests/data/rooms/NAME
std::string BaseDrawing();                         // tests/data/rooms_ui/rooms_base.dxf
std::string PlanDrawing();                         // tests/data/rooms_ui/rooms_plan.dxf
std::string SampleFloor();                         // examples/sample-floor.dxf

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
  static std::string Handle(AcDbObjectId id) { return id.handle().ascii(); }

  // A closed rectangle on `layer` in model space.
  AcDbObjectId AddRectangle(const char* layer, double x0, double y0, double x1, double y1);
  // A single-line text in model space.
  AcDbObjectId AddText(const char* text, double x, double y);
  // A reference of `block` on layer RoomTags with the attributes its
  // definitions give, valued from `values` in order.
  AcDbObjectId AddInsert(const char* block, double x, double y, const std::vector<std::string>& values = {},
                         double scale = 1);
  // A room record written on `id` as the analysis writes it.
  void WriteRecord(AcDbObjectId id, const std::string& name, AcDbObjectId contour = {}, int32_t flags = 0,
                   const std::string& category = "", const std::string& description = "",
                   const std::string& comment = "");

  fx::testing::TestFolder scratch_{"rooms"};
  const std::string dir_ = scratch_.path().string();
  fx::console::ModuleRegistry modules_;
  std::unique_ptr<fx::console::HostSession> session_;
};

}  // namespace fx::rooms_test

#endif  // FLOORXPORT_TESTS_SUPPORT_ROOMS_FIXTURE_H_
