// The commands Open from (vantoryOpenFrom) and Send to (vantorySendTo): the
// workflows framed by their start and end messages. The result of the last
// one run stays readable, so a batch run can set its exit status.
#ifndef FLOORXPORT_SERVER_EXCHANGE_COMMANDS_H_
#define FLOORXPORT_SERVER_EXCHANGE_COMMANDS_H_

#include <optional>

namespace fx::server {

void OpenFromCommand();
void SendToCommand();

// The workflow result of the last Open from or Send to; nullopt before one ran.
std::optional<int> LastExchangeResult();

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_EXCHANGE_COMMANDS_H_
