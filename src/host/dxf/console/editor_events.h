// The headless host's editor (acedEditor): its reactors and the
// notifications the host sends them.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_EDITOR_EVENTS_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_EDITOR_EVENTS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <functional>
#include <vector>

#include "host/documents.h"

namespace fx::console {

class EditorEvents : public AcEditor {
 public:
  // A reactor is notified once however often it is added.
  void addReactor(AcEditorReactor* reactor) override;
  void removeReactor(AcEditorReactor* reactor) override;

  // Each notification reaches the reactors in the order they were added; a
  // reactor may add or remove reactors meanwhile (only those still added
  // are called). An exception from a reactor is reported on the command
  // line and the others are still notified.
  void EndDwgOpen(const char* file_name, AcDbDatabase* database);
  void BeginClose(AcDbDatabase* database);
  void BeginSave(AcDbDatabase* database, const char* intended_name);
  void SaveComplete(AcDbDatabase* database, const char* actual_name);
  void CommandWillStart(const char* command_name);
  void CommandEnded(const char* command_name);

 private:
  void Notify(const std::function<void(AcEditorReactor&)>& call);

  std::vector<AcEditorReactor*> reactors_;
};

// The process's editor; acedEditor() returns it.
EditorEvents& Events();

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_EDITOR_EVENTS_H_
