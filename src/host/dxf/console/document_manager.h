// The headless host's documents (acDocManagerPtr): one per open drawing, the
// current one's database being the working database.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_DOCUMENT_MANAGER_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_DOCUMENT_MANAGER_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/documents.h"

namespace fx::console {

class ConsoleDocument : public AcApDocument {
 public:
  ConsoleDocument(std::unique_ptr<AcDbDatabase> database, std::string file_name);
  ~ConsoleDocument() override;
  AcDbDatabase* database() const override { return database_.get(); }
  std::string fileName() const override { return file_name_; }

 private:
  std::unique_ptr<AcDbDatabase> database_;
  std::string file_name_;
};

class DocumentManager : public AcApDocManager {
 public:
  DocumentManager();
  ~DocumentManager() override;
  DocumentManager(const DocumentManager&) = delete;
  DocumentManager& operator=(const DocumentManager&) = delete;

  // Makes the document of a drawing, which becomes the current document
  // (its database the working database), then tells the reactors
  // (documentCreated). The manager owns it until Destroy.
  AcApDocument* Open(std::unique_ptr<AcDbDatabase> database, std::string file_name);
  // Tells the reactors (documentToBeDestroyed), then destroys the document
  // and its database. The last document opened before it becomes current;
  // with none left there is no working database.
  void Destroy(AcApDocument* document);

  AcApDocument* curDocument() const override;
  AcApDocument* document(const AcDbDatabase* database) const override;
  // Acad::eInvalidInput for a document the manager does not hold (nullptr
  // means the current one). The line runs when the current command ends.
  int sendStringToExecute(AcApDocument* document, const char* command_line) override;
  int beginExecuteInCommandContext(void (*function)(void*), void* data) override;
  // Runs the opener set by the session after the current command.
  int appContextOpenDocument(const char* path) override;
  // The session's way of opening a drawing from a file: it reports a
  // drawing that cannot be read as a problem of the run.
  void SetOpener(std::function<void(const std::string& path)> opener) { opener_ = std::move(opener); }
  // A reactor is notified once however often it is added.
  void addReactor(AcApDocManagerReactor* reactor) override;
  void removeReactor(AcApDocManagerReactor* reactor) override;

 private:
  void Notify(const std::function<void(AcApDocManagerReactor&)>& call);
  void MakeCurrent(ConsoleDocument* document);

  std::vector<std::unique_ptr<ConsoleDocument>> documents_;  // in order of opening
  ConsoleDocument* current_ = nullptr;
  std::vector<AcApDocManagerReactor*> reactors_;
  std::function<void(const std::string&)> opener_;
  std::vector<std::string> pending_opens_;
};

// The process's document manager; acDocManagerPtr() returns it.
DocumentManager& Documents();

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_DOCUMENT_MANAGER_H_
