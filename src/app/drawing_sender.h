// Sending a drawing back to the Vantory server it belongs to, as the drawing
// reactor offers when a changed drawing closes, and the message that tells
// the user how it went. The send is the server module's Send to without
// dialogs; tests may put another in its place.
#ifndef FLOORXPORT_APP_DRAWING_SENDER_H_
#define FLOORXPORT_APP_DRAWING_SENDER_H_

#include <string>
#include <string_view>

class AcDbDatabase;

namespace fx::app {

inline constexpr int kSendSucceeded = 0;
inline constexpr int kSendCanceled = -2;

// kSendSucceeded with the operation's own result text, kSendCanceled, or
// any other result with the error text.
struct SendOutcome {
  int result = kSendSucceeded;
  std::string text;
};

using DrawingSender = SendOutcome (*)(AcDbDatabase* database);

// Replaces the send operation; nullptr restores Send to.
void SetDrawingSender(DrawingSender sender);
SendOutcome SendDrawing(AcDbDatabase* database);

// "Operation has been canceled." for a cancelled send, the result text for
// a successful one, otherwise the service error report with the error text.
std::string SendOutcomeMessage(const SendOutcome& outcome);

// "An unexpected error occurred. Please contact Vantory at <telephone>
// \n\nError details:\n<details>"
std::string ServiceErrorReport(std::string_view details);

}  // namespace fx::app

#endif  // FLOORXPORT_APP_DRAWING_SENDER_H_
