#include "app/drawing_sender.h"

#include "server/send_to.h"
#include "server/service_errors.h"

namespace fx::app {
namespace {

// The send the close question offers: no dialogs, the server and floor of
// the drawing record, and no save of its own.
SendOutcome SendToRecordedFloor(AcDbDatabase* database) {
  SendOutcome outcome;
  outcome.result = fx::server::SendTo(database, outcome.text, false, false);
  return outcome;
}

DrawingSender g_sender = SendToRecordedFloor;

}  // namespace

void SetDrawingSender(DrawingSender sender) {
  g_sender = sender != nullptr ? sender : SendToRecordedFloor;
}

SendOutcome SendDrawing(AcDbDatabase* database) { return g_sender(database); }

std::string SendOutcomeMessage(const SendOutcome& outcome) {
  if (outcome.result == kSendCanceled) return "Operation has been canceled.";
  if (outcome.result == kSendSucceeded) return outcome.text;
  return ServiceErrorReport(outcome.text);
}

std::string ServiceErrorReport(std::string_view details) {
  return fx::server::ServiceErrorReport(details);
}

}  // namespace fx::app
