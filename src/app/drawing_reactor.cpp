#include "app/drawing_reactor.h"

#include "app/drawing_sender.h"
#include "host/database.h"
#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::app {
namespace {

AcApDocument* DocumentOf(AcDbDatabase* database) {
  AcApDocManager* documents = acDocManagerPtr();
  return database != nullptr && documents != nullptr ? documents->document(database) : nullptr;
}

}  // namespace

void CPvDrawingReactor::endDwgOpen(const char*, AcDbDatabase* database) {
  AcApDocument* document = DocumentOf(database);
  if (document == nullptr) return;
  rooms::DocVars().docData(document).setLastUpdateDate(database->tduupdate());
}

void CPvDrawingReactor::beginClose(AcDbDatabase* database) {
  AcApDocument* document = DocumentOf(database);
  if (document == nullptr) return;
  const AcDbDate opened = rooms::DocVars().docData(document).lastUpdateDate();
  if (!(database->tduupdate() > opened) || !rooms::HasServerFloorAssociation(database)) return;
  if (acedMessageBox(kSendChangesQuestion, "", MB_YESNO | MB_ICONWARNING) != IDYES) return;
  const std::string message = SendOutcomeMessage(SendDrawing(database));
  acedMessageBox(message.c_str(), "", MB_OK);
}

}  // namespace fx::app
