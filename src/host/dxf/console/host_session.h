// One run of the headless host. For its lifetime the command runner is the
// current one, the host commands are registered and the modules are loaded
// (kInitAppMsg; kUnloadAppMsg at the end). A drawing opens and closes with
// the notifications the editor sends, in this order:
//
//   open:  documentCreated, endDwgOpen, kLoadDwgMsg
//   save:  beginSave, (the write), saveComplete when it succeeded
//   close: beginClose, kUnloadDwgMsg, documentToBeDestroyed
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_HOST_SESSION_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_HOST_SESSION_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string>

#include "host/dxf/console/command_runner.h"
#include "host/dxf/drawing_io.h"

class AcApDocument;

namespace fx::console {

class ModuleRegistry;

class HostSession {
 public:
  // `runner` and `modules` must outlive the session. A module that fails to
  // load is reported as a problem of the run.
  HostSession(CommandRunner& runner, ModuleRegistry& modules);
  // Closes a drawing still open, unloads the modules, removes the host commands.
  ~HostSession();
  HostSession(const HostSession&) = delete;
  HostSession& operator=(const HostSession&) = delete;

  // Reads the drawing at `path` and opens it. False, with *error, when it
  // cannot be read; warnings about a drawing that loaded go to `warnings`.
  bool OpenDrawing(const std::string& path, std::string* error,
                   const fx::dxf::WarningSink& warnings = nullptr,
                   fx::dxf::DamagedFile damaged = fx::dxf::DamagedFile::kRefuse);
  // Opens a drawing already in memory, as if read from `file_name`. At most
  // one drawing is open: an open one is closed first.
  void OpenDatabase(std::unique_ptr<AcDbDatabase> database, const std::string& file_name);
  // Saves the open drawing to `path` (whole or not at all). False, with
  // *error naming the file and the status, when no drawing is open or the
  // write failed.
  bool Save(const std::string& path, std::string* error);
  void CloseDrawing();

  AcApDocument* document() const { return document_; }

 private:
  ScopedRunner current_runner_;
  CommandRunner& runner_;
  ModuleRegistry& modules_;
  AcApDocument* document_ = nullptr;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_HOST_SESSION_H_
