// The plug-in in the headless host on a fake terminal, with a drawing of the
// rooms_ui data open, and what the room tests need of it: records written as
// an analysis would, entities looked up by handle, transcripts of one run.
#ifndef FLOORXPORT_TESTS_ROOMS_UI_ROOMS_UI_FIXTURE_H_
#define FLOORXPORT_TESTS_ROOMS_UI_ROOMS_UI_FIXTURE_H_

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

// The drawings of tests/data/rooms_ui (see make_drawings.py there).
std::string BaseDrawing();
std::string PlanDrawing();

// Reads a whole file as bytes; empty when it cannot be read.
std::string ReadBytes(const std::string& path);

class RoomsUiTest : public fx::console::ConsoleTest {
 protected:
  RoomsUiTest();
  ~RoomsUiTest() override;

  // Opens `path` with the plug-in loaded (it registers "VantoryApp").
  void Open(const std::string& path);
  AcDbDatabase& db() const;
  fx::rooms::CDocData& docData() const;

  // Runs `script` and returns what this run printed.
  std::string RunScript(const std::string& script);

  // A closed rectangle on `layer` in model space.
  AcDbObjectId AddRectangle(const char* layer, double x0, double y0, double x1, double y1);
  // A single-line text in model space.
  AcDbObjectId AddText(const char* text, double x, double y);
  // A reference of `block` in model space with the attributes its
  // definitions give, valued from `values` in order.
  AcDbObjectId AddInsert(const char* block, double x, double y,
                         const std::vector<std::string>& values = {}, double scale = 1);
  // A room record written on `id` as the analysis writes it.
  void WriteRecord(AcDbObjectId id, const std::string& name, AcDbObjectId contour = {},
                   int32_t flags = 0, const std::string& category = "",
                   const std::string& description = "", const std::string& comment = "");

  std::vector<AcDbObjectId> ModelSpace() const;
  static std::string Handle(AcDbObjectId id) { return id.handle().ascii(); }

  fx::testing::ScratchDir scratch_{"rooms_ui"};
  const std::string dir_ = scratch_.path();
  fx::console::ModuleRegistry modules_;
  std::unique_ptr<fx::console::HostSession> session_;
};

}  // namespace fx::rooms_test

#endif  // FLOORXPORT_TESTS_ROOMS_UI_ROOMS_UI_FIXTURE_H_
