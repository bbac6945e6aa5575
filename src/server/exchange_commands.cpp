#include "server/exchange_commands.h"

#include <string>

#include "host/database.h"
#include "host/documents.h"
#include "host/editor.h"
#include "server/occupant_import.h"
#include "server/open_from.h"
#include "server/send_to.h"
#include "server/service_errors.h"
#include "server/workflow_result.h"

namespace fx::server {
namespace {

std::optional<int> g_last_result;

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

// The outcome as the commands print it.
void PrintOutcome(int result, const std::string& message) {
  if (result == kCanceled) {
    acutPrintf("\nPlanVault: Operation has been canceled.");
  } else if (result == kSucceeded) {
    acutPrintf("\nPlanVault: %s", message.c_str());
  } else {
    const std::string report = "\nPlanVault: " + ServiceErrorReport(message);
    acutPrintf("%s", report.c_str());
  }
}

}  // namespace

void OpenFromCommand() {
  acutPrintf("\nPlanVault: Start importing...");
  std::string path;
  std::string message;
  OpenedFloor opened;
  const int result = OpenFrom(WorkingDatabase(), path, message, &opened);
  g_last_result = result;
  PrintOutcome(result, message);
  if (result == kSucceeded && acDocManagerPtr()->appContextOpenDocument(path.c_str()) == Acad::eOk) {
    // The occupants of the floor, once the drawing is open.
    ImportAfterOpening(path, opened.server, opened.floor_id);
  }
  acutPrintf("\nPlanVault: Importing is finished.");
}

void SendToCommand() {
  acutPrintf("\nPlanVault: Start Sending...");
  std::string message;
  const int result = SendTo(WorkingDatabase(), message, true, true);
  g_last_result = result;
  PrintOutcome(result, message);
  acutPrintf("\nPlanVault: Sending is finished.");
}

std::optional<int> LastExchangeResult() { return g_last_result; }

}  // namespace fx::server
