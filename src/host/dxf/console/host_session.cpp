#include "host/dxf/console/host_session.h"

#include "host/database.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/document_manager.h"
#include "host/dxf/console/editor_events.h"
#include "host/dxf/console/host_commands.h"
#include "host/dxf/console/module_registry.h"

namespace fx::console {

HostSession::HostSession(CommandRunner& runner, ModuleRegistry& modules)
    : current_runner_(runner), runner_(runner), modules_(modules) {
  RegisterHostCommands(Commands());
  Documents().SetOpener([this](const std::string& path) {
    std::string error;
    if (!OpenDrawing(path, &error)) runner_.AddProblem(error);
  });
  if (!modules_.LoadAll()) runner_.AddProblem("a plug-in module could not be loaded");
}

HostSession::~HostSession() {
  Documents().SetOpener(nullptr);
  CloseDrawing();
  modules_.UnloadAll();
  RemoveHostCommands(Commands());
}

bool HostSession::OpenDrawing(const std::string& path, std::string* error,
                              const fx::dxf::WarningSink& warnings, fx::dxf::DamagedFile damaged) {
  std::unique_ptr<AcDbDatabase> database = fx::dxf::ReadDrawing(path, error, warnings, damaged);
  if (database == nullptr) return false;
  OpenDatabase(std::move(database), path);
  return true;
}

void HostSession::OpenDatabase(std::unique_ptr<AcDbDatabase> database,
                               const std::string& file_name) {
  CloseDrawing();
  AcDbDatabase* opened = database.get();
  document_ = Documents().Open(std::move(database), file_name);
  Events().EndDwgOpen(file_name.c_str(), opened);
  modules_.SendAll(AcRx::kLoadDwgMsg);
}

bool HostSession::Save(const std::string& path, std::string* error) {
  if (document_ == nullptr) {
    *error = "cannot save " + path + ": no drawing is open";
    return false;
  }
  AcDbDatabase* database = document_->database();
  if (fx::dxf::IsDwgTarget(path)) {
    *error = "cannot save " + path + ": drawings are saved as DXF only, never over a DWG; " +
             (fx::dxf::DwgSourceOf(*database) != nullptr
                  ? "give -o OUT.dxf to save the drawing read from the DWG"
                  : "give an output file ending in .dxf");
    return false;
  }
  Events().BeginSave(database, path.c_str());
  Acad::ErrorStatus status = database->saveAs(path.c_str());
  if (status != Acad::eOk) {
    *error = "cannot save " + path + ": " + Acad::acadErrorStatusText(status);
    return false;
  }
  Events().SaveComplete(database, path.c_str());
  return true;
}

void HostSession::CloseDrawing() {
  if (document_ == nullptr) return;
  Events().BeginClose(document_->database());
  modules_.SendAll(AcRx::kUnloadDwgMsg);
  Documents().Destroy(document_);
  document_ = nullptr;
}

}  // namespace fx::console
