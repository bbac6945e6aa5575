// The servers the user has connected to, and the one chosen last, as kept in
// the settings (section Server): "Server list" holds the addresses joined by
// ";" in the order they were first used, "Last used server" one address.
//
// The settings read a string of 260 or more characters as empty (settings.h),
// so a list that grew that long reads as empty and the next address added
// starts it afresh.
#ifndef FLOORXPORT_SERVER_SERVER_LIST_H_
#define FLOORXPORT_SERVER_SERVER_LIST_H_

#include <string>
#include <string_view>
#include <vector>

namespace fx::server {

inline constexpr char kServerListSeparator = ';';

// The pieces of `list` between ";", in order; empty pieces are skipped.
std::vector<std::string> SplitServerList(std::string_view list);

// Adds `address` at the end of the list unless a piece of it equals the
// address exactly (letter case counts). True when the address is in the
// list afterwards; false when the list could not be written, or for an
// empty address or one holding ";" (nothing is written then).
bool AddServerToList(std::string_view address);

// The "Server list" value as stored (empty when absent).
std::string GetServerList();

std::string GetLastUsedServer();
// True when written.
bool SetLastUsedServer(std::string_view address);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SERVER_LIST_H_
