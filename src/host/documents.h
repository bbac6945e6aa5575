// Documents (an open drawing in the editor), the document manager, editor
// reactors and per-document application data.
#ifndef FLOORXPORT_HOST_DOCUMENTS_H_
#define FLOORXPORT_HOST_DOCUMENTS_H_

#include <map>
#include <memory>
#include <string>

class AcDbDatabase;

class AcApDocument {
 public:
  virtual ~AcApDocument() = default;
  virtual AcDbDatabase* database() const = 0;
  virtual std::string fileName() const = 0;
};

class AcApDocManagerReactor {
 public:
  virtual ~AcApDocManagerReactor() = default;
  virtual void documentCreated(AcApDocument* document) { (void)document; }
  virtual void documentToBeDestroyed(AcApDocument* document) { (void)document; }
};

class AcApDocManager {
 public:
  virtual ~AcApDocManager() = default;
  virtual AcApDocument* curDocument() const = 0;
  virtual AcApDocument* document(const AcDbDatabase* database) const = 0;
  // Queues a command line to run in `document` as if typed ("_ZOOM _E ").
  virtual int sendStringToExecute(AcApDocument* document, const char* command_line) = 0;
  // Runs `function(data)` in command context once the current command ends.
  virtual int beginExecuteInCommandContext(void (*function)(void*), void* data) = 0;
  // Opens the drawing at `path` as a new document once the current command
  // ends (a command cannot open a document itself); it becomes the current
  // document. Acad::eInvalidInput for a null path.
  virtual int appContextOpenDocument(const char* path) = 0;
  virtual void addReactor(AcApDocManagerReactor* reactor) = 0;
  virtual void removeReactor(AcApDocManagerReactor* reactor) = 0;
};
AcApDocManager* acDocManagerPtr();

// Editor notifications. endDwgOpen fires once a drawing has been read and
// its document made; beginClose before a document's drawing is closed.
class AcEditorReactor {
 public:
  virtual ~AcEditorReactor() = default;
  virtual void endDwgOpen(const char* file_name, AcDbDatabase* database) {
    (void)file_name; (void)database;
  }
  virtual void beginClose(AcDbDatabase* database) { (void)database; }
  virtual void beginSave(AcDbDatabase* database, const char* intended_name) {
    (void)database; (void)intended_name;
  }
  virtual void saveComplete(AcDbDatabase* database, const char* actual_name) {
    (void)database; (void)actual_name;
  }
  virtual void commandWillStart(const char* command_name) { (void)command_name; }
  virtual void commandEnded(const char* command_name) { (void)command_name; }
};

class AcEditor {
 public:
  virtual ~AcEditor() = default;
  virtual void addReactor(AcEditorReactor* reactor) = 0;
  virtual void removeReactor(AcEditorReactor* reactor) = 0;
};
AcEditor* acedEditor();

// Per-document data of type T, made on first use and dropped when its
// document is destroyed.
template <class T>
class AcApDataManager : public AcApDocManagerReactor {
 public:
  AcApDataManager() { acDocManagerPtr()->addReactor(this); }
  ~AcApDataManager() override { acDocManagerPtr()->removeReactor(this); }
  AcApDataManager(const AcApDataManager&) = delete;
  AcApDataManager& operator=(const AcApDataManager&) = delete;

  T& docData(AcApDocument* document) {
    auto& slot = data_[document];
    if (!slot) slot = std::make_unique<T>();
    return *slot;
  }
  T& docData() { return docData(acDocManagerPtr()->curDocument()); }
  void documentToBeDestroyed(AcApDocument* document) override { data_.erase(document); }

 private:
  std::map<AcApDocument*, std::unique_ptr<T>> data_;
};

#endif  // FLOORXPORT_HOST_DOCUMENTS_H_
