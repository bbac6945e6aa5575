#include "host/dxf/console/editor_events.h"

#include <algorithm>
#include <exception>

#include "host/editor.h"

namespace fx::console {

void EditorEvents::addReactor(AcEditorReactor* reactor) {
  if (reactor == nullptr) return;
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) {
    reactors_.push_back(reactor);
  }
}

void EditorEvents::removeReactor(AcEditorReactor* reactor) { std::erase(reactors_, reactor); }

void EditorEvents::Notify(const std::function<void(AcEditorReactor&)>& call) {
  const std::vector<AcEditorReactor*> snapshot = reactors_;
  for (AcEditorReactor* reactor : snapshot) {
    if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) continue;
    try {
      call(*reactor);
    } catch (const std::exception& error) {
      acutPrintf("\nAn editor reactor failed: %s", error.what());
    } catch (...) {
      acutPrintf("\nAn editor reactor failed.");
    }
  }
}

void EditorEvents::EndDwgOpen(const char* file_name, AcDbDatabase* database) {
  Notify([&](AcEditorReactor& reactor) { reactor.endDwgOpen(file_name, database); });
}

void EditorEvents::BeginClose(AcDbDatabase* database) {
  Notify([&](AcEditorReactor& reactor) { reactor.beginClose(database); });
}

void EditorEvents::BeginSave(AcDbDatabase* database, const char* intended_name) {
  Notify([&](AcEditorReactor& reactor) { reactor.beginSave(database, intended_name); });
}

void EditorEvents::SaveComplete(AcDbDatabase* database, const char* actual_name) {
  Notify([&](AcEditorReactor& reactor) { reactor.saveComplete(database, actual_name); });
}

void EditorEvents::CommandWillStart(const char* command_name) {
  Notify([&](AcEditorReactor& reactor) { reactor.commandWillStart(command_name); });
}

void EditorEvents::CommandEnded(const char* command_name) {
  Notify([&](AcEditorReactor& reactor) { reactor.commandEnded(command_name); });
}

EditorEvents& Events() {
  static EditorEvents events;
  return events;
}

}  // namespace fx::console

AcEditor* acedEditor() { return &fx::console::Events(); }
