// The drawing the studio serves, on the host thread: the console with its
// transcript going to the page, the plug-in loaded, the drawing open; the
// command lines and menu picks the page sends, run one at a time; saving.
//
// A command line runs as `floorxport run -c` runs it, on a fresh command
// runner, so one failure never stops the next command. When it fails (an
// unknown command, a failure, a prompt cancelled) and has changed the
// drawing, the drawing is read back from its last good state
// (last_good_state.h): it is then exactly as before the command, and the
// analysis's problem lists, which live with the open document, are empty
// until the rooms are analysed again.
#ifndef FLOORXPORT_STUDIO_STUDIO_SESSION_H_
#define FLOORXPORT_STUDIO_STUDIO_SESSION_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/module_registry.h"
#include "studio/floor_picture.h"
#include "studio/last_good_state.h"
#include "studio/studio_presenter.h"
#include "studio/studio_terminal.h"

class AcApDocument;

namespace fx::console {
class HostSession;
}

namespace fx::studio {

class HostLoop;
class StudioState;

class StudioSession {
 public:
  // `register_modules` adds the plug-in's modules to the host's registry.
  StudioSession(HostLoop& loop, StudioState& state, std::string drawing,
                const std::function<void(console::ModuleRegistry&)>& register_modules);
  ~StudioSession();

  // Loads the plug-in and reads the drawing. False, with *error, when the
  // drawing cannot be read or the plug-in did not load.
  bool Open(std::string* error);
  // Unloads the plug-in and closes the drawing; questions asked on the way
  // get their console defaults.
  void Close();

  // Starts a command: false while another runs (or waits for the page).
  // A claimed session runs exactly one Run, which releases it.
  bool Claim(const std::string& line);
  // Runs command lines, or the macro of the menu item at a path.
  void Run(const std::vector<std::string>& lines);
  void RunMenuItem(const std::string& path);

  // Saves the drawing to its file, or to `path` which becomes its file.
  // False, with *error, when a command runs or the write failed.
  bool Save(std::string* error);
  bool SaveAs(const std::string& path, std::string* error);

  // The page's answers go to the presenter.
  StudioPresenter& presenter() { return presenter_; }

  std::shared_ptr<const FloorPicture> Picture();
  nlohmann::json Problems() const;
  nlohmann::json Menu() const;

 private:
  AcDbDatabase* database() const;
  void Finish(const std::string& line, bool ok, const std::vector<std::string>& problems);
  bool Restore(std::string* error);
  void Publish();

  StudioState& state_;
  StudioTerminal terminal_;
  console::Console console_;
  StudioPresenter presenter_;
  console::CommandRunner base_runner_;  // the session's: problems outside commands
  console::ModuleRegistry modules_;
  std::unique_ptr<console::HostSession> session_;
  LastGoodState last_good_;
  FloorPictureCache pictures_;
  std::string path_;                     // where Save writes
  AcApDocument* document_ = nullptr;     // the document path_ belongs to
  uint64_t revision_ = 1;
  uint64_t runs_ = 0;                    // command lines run so far
  bool modified_ = false;                // changed since read or saved
  bool busy_ = false;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_SESSION_H_
