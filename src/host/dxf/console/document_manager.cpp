#include "host/dxf/console/document_manager.h"

#include <algorithm>
#include <exception>

#include "host/database.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/drawing_io.h"
#include "host/editor.h"
#include "host/status.h"

namespace fx::console {

ConsoleDocument::ConsoleDocument(std::unique_ptr<AcDbDatabase> database, std::string file_name)
    : database_(std::move(database)), file_name_(std::move(file_name)) {}

ConsoleDocument::~ConsoleDocument() = default;

DocumentManager::DocumentManager() = default;

// Documents still open at exit go without notifications: their reactors
// may already be gone.
DocumentManager::~DocumentManager() = default;

AcApDocument* DocumentManager::Open(std::unique_ptr<AcDbDatabase> database, std::string file_name) {
  documents_.push_back(
      std::make_unique<ConsoleDocument>(std::move(database), std::move(file_name)));
  ConsoleDocument* document = documents_.back().get();
  MakeCurrent(document);
  Notify([&](AcApDocManagerReactor& reactor) { reactor.documentCreated(document); });
  return document;
}

void DocumentManager::Destroy(AcApDocument* document) {
  auto it = std::find_if(documents_.begin(), documents_.end(),
                         [&](const auto& held) { return held.get() == document; });
  if (it == documents_.end()) return;
  Notify([&](AcApDocManagerReactor& reactor) { reactor.documentToBeDestroyed(document); });
  std::unique_ptr<ConsoleDocument> doomed = std::move(*it);
  documents_.erase(it);
  if (current_ == doomed.get()) {
    MakeCurrent(documents_.empty() ? nullptr : documents_.back().get());
  }
}

void DocumentManager::MakeCurrent(ConsoleDocument* document) {
  current_ = document;
  fx::dxf::SetWorkingDatabase(document != nullptr ? document->database() : nullptr);
}

AcApDocument* DocumentManager::curDocument() const { return current_; }

AcApDocument* DocumentManager::document(const AcDbDatabase* database) const {
  for (const auto& held : documents_) {
    if (database != nullptr && held->database() == database) return held.get();
  }
  return nullptr;
}

int DocumentManager::sendStringToExecute(AcApDocument* document, const char* command_line) {
  if (document == nullptr) document = current_;
  bool held = std::any_of(documents_.begin(), documents_.end(),
                          [&](const auto& doc) { return doc.get() == document; });
  if (!held || command_line == nullptr) return Acad::eInvalidInput;
  CurrentRunner().SendString(command_line);
  return Acad::eOk;
}

int DocumentManager::beginExecuteInCommandContext(void (*function)(void*), void* data) {
  if (function == nullptr) return Acad::eInvalidInput;
  CurrentRunner().ExecuteInCommandContext(function, data);
  return Acad::eOk;
}

int DocumentManager::appContextOpenDocument(const char* path) {
  if (path == nullptr) return Acad::eInvalidInput;
  pending_opens_.emplace_back(path);
  CurrentRunner().ExecuteInCommandContext(
      [](void* data) {
        auto* manager = static_cast<DocumentManager*>(data);
        if (manager->pending_opens_.empty()) return;
        const std::string next = manager->pending_opens_.front();
        manager->pending_opens_.erase(manager->pending_opens_.begin());
        if (manager->opener_) manager->opener_(next);
      },
      this);
  return Acad::eOk;
}

void DocumentManager::addReactor(AcApDocManagerReactor* reactor) {
  if (reactor == nullptr) return;
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) {
    reactors_.push_back(reactor);
  }
}

void DocumentManager::removeReactor(AcApDocManagerReactor* reactor) {
  std::erase(reactors_, reactor);
}

void DocumentManager::Notify(const std::function<void(AcApDocManagerReactor&)>& call) {
  const std::vector<AcApDocManagerReactor*> snapshot = reactors_;
  for (AcApDocManagerReactor* reactor : snapshot) {
    if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) continue;
    try {
      call(*reactor);
    } catch (const std::exception& error) {
      acutPrintf("\nA document reactor failed: %s", error.what());
    } catch (...) {
      acutPrintf("\nA document reactor failed.");
    }
  }
}

DocumentManager& Documents() {
  static DocumentManager manager;
  return manager;
}

}  // namespace fx::console

AcApDocManager* acDocManagerPtr() { return &fx::console::Documents(); }
