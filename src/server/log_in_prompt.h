// The log-in prompt of the service clients: the log-in dialog, its user name
// filled with the one remembered so far.
#ifndef FLOORXPORT_SERVER_LOG_IN_PROMPT_H_
#define FLOORXPORT_SERVER_LOG_IN_PROMPT_H_

#include <string>

namespace fx::server {

// A LogInPrompt (log_in.h): shows PvCredentialDialog; false on Cancel.
bool AskLogIn(std::string& user, std::string& password);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_LOG_IN_PROMPT_H_
