// The log-in to the service: the process-wide credential store and the
// answer to an HTTP 401. Credentials live in this process's memory only:
// they are never written to the settings, a drawing, a log or a file, and
// they are wiped when replaced or when the process ends.
#ifndef FLOORXPORT_SERVER_LOG_IN_H_
#define FLOORXPORT_SERVER_LOG_IN_H_

#include <string>

struct soap;

namespace fx::server {

// Asks the user for credentials, `user` filled with the name remembered so
// far and `password` empty. False when the user cancelled.
using LogInPrompt = bool (*)(std::string& user, std::string& password);

// The prompt shown on a 401; nullptr (the default) cancels every log-in.
void SetLogInPrompt(LogInPrompt prompt);

// Remembers credentials for the rest of the process, as a confirmed log-in
// does (a batch run gives them before its first call).
void RememberCredentials(const std::string& user, const std::string& password);
// The user name remembered so far; empty before the first log-in.
std::string RememberedUser();
// Both remembered values; false when there are none yet.
bool RememberedCredentials(std::string& user, std::string& password);
// Forgets and wipes both values.
void ForgetCredentials();

// Sets the remembered credentials on `soap` for its next call (the runtime
// clears them after every call), or none.
void ApplyCredentials(struct soap* soap);

// Shows the prompt; on OK remembers the entries and returns true. False
// when the user cancelled or there is no prompt.
bool AskForCredentials();

// The answer to a failed send: for HTTP status 401 shows the prompt, and on
// OK remembers the entries and returns true (send again); any other status,
// or Cancel, returns false.
bool RetryAfterUnauthorized(int http_status);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_LOG_IN_H_
