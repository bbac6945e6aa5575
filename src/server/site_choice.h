// Choosing the server a workflow talks to: the site chooser, preselecting
// the drawing record's address (Send to) or the last used server.
#ifndef FLOORXPORT_SERVER_SITE_CHOICE_H_
#define FLOORXPORT_SERVER_SITE_CHOICE_H_

#include <optional>
#include <string>

namespace fx::server {

// The address chosen, or nullopt when the user cancelled. `preselect` is
// shown as the current address when not empty, else the last used server.
std::optional<std::string> ChooseServer(const std::string& preselect);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SITE_CHOICE_H_
