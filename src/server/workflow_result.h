// What Open from and Send to give back to their commands: 0 on success with
// the success text, kCanceled when the user cancelled, any other value on
// failure with the error text or the service error report.
#ifndef FLOORXPORT_SERVER_WORKFLOW_RESULT_H_
#define FLOORXPORT_SERVER_WORKFLOW_RESULT_H_

namespace fx::server {

inline constexpr int kSucceeded = 0;
inline constexpr int kCanceled = -2;
inline constexpr int kFailed = -1;

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_WORKFLOW_RESULT_H_
