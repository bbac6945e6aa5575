#include "app/drawing_sender.h"

namespace fx::app {
namespace {

constexpr const char* kSupportTelephone = "+1 555 010 0199";

SendOutcome SendNotAvailable(AcDbDatabase*) {
  return {-1, "Sending drawings to Vantory is not available yet."};
}

DrawingSender g_sender = SendNotAvailable;

}  // namespace

void SetDrawingSender(DrawingSender sender) {
  g_sender = sender != nullptr ? sender : SendNotAvailable;
}

SendOutcome SendDrawing(AcDbDatabase* database) { return g_sender(database); }

std::string SendOutcomeMessage(const SendOutcome& outcome) {
  if (outcome.result == kSendCanceled) return "Operation has been canceled.";
  if (outcome.result == kSendSucceeded) return outcome.text;
  return ServiceErrorReport(outcome.text);
}

std::string ServiceErrorReport(std::string_view details) {
  return std::string("An unexpected error occurred. Please contact Vantory at ") +
         kSupportTelephone + "\n\nError details:\n" + std::string(details);
}

}  // namespace fx::app
