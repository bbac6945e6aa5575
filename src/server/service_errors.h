// What a failed service call tells the user: the class of the runtime's
// error code, and the error report of a workflow.
#ifndef FLOORXPORT_SERVER_SERVICE_ERRORS_H_
#define FLOORXPORT_SERVER_SERVICE_ERRORS_H_

#include <string>
#include <string_view>

namespace fx::server {

inline constexpr const char* kSupportTelephone = "+1 555 010 0199";

// The operation words of the reports.
inline constexpr const char* kOpCreateFloor = "create_floor";
inline constexpr const char* kOpRefreshing = "refreshing";
inline constexpr const char* kOpOpenFrom = "open_from";
inline constexpr const char* kOpSendTo = "send_to";

// "XML error occured." ... "Unknown error occured." for a runtime error code.
const char* ErrorClassText(int code);

// The plug-in's version in its resource form, "0, 1, 0".
std::string VersionText();

// "An unexpected error occurred. Please contact Vantory at <telephone>",
// then "\n\nError details:\n" and `details` when they are not empty.
std::string ServiceErrorReport(std::string_view details);

// The details of a failed call of the client of `server_key` (looked up
// again after the call), for the operation word `op`; `call_result` stands
// in for the client's state when there is no client.
std::string CallErrorDetails(const std::string& server_key, int call_result, const char* op);

// ServiceErrorReport(CallErrorDetails(...)).
std::string CallErrorReport(const std::string& server_key, int call_result, const char* op);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SERVICE_ERRORS_H_
