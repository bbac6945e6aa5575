// Server addresses as the user types them, and the form in which the server
// list and the drawing record keep them: "scheme://host[:port]/".
#ifndef FLOORXPORT_SERVER_SERVER_ADDRESS_H_
#define FLOORXPORT_SERVER_SERVER_ADDRESS_H_

#include <string>
#include <string_view>

namespace fx::server {

// The parts of a URL, as far as a server address needs them.
struct ServerUrl {
  std::string scheme;  // lower case; "https" when the text had none
  std::string host;    // as typed; an IPv6 literal keeps its brackets; empty: not a server address
  unsigned port = 0;   // as typed, else the scheme's default port; 0 when neither is known
  std::string path;    // from the "/" (or "?", "#") after the host on; may be empty
};

// 80 for "http", 443 for "https" (in any letter case); 0 for other schemes.
unsigned DefaultPortOf(std::string_view scheme);

// Splits `text` (leading and trailing blanks ignored). A text without "://"
// has no scheme: "https" is taken and the whole text is host, port and path.
// User information before "@" is dropped. The host comes back empty when
// the text has none or cannot be split: a scheme that is not a letter
// followed by letters, digits, "+", "-" or "."; a port that is not a number
// from 1 to 65535; an IPv6 literal without its "]", or ":", "[" or "]" in
// another host; blanks or control characters in the host.
ServerUrl SplitServerUrl(std::string_view text);

// "scheme://host/", with ":port" after the host when the port is neither 80
// nor 443 (nor unknown); the path is dropped. Empty when the host is empty.
std::string ServerAddressOf(const ServerUrl& url);

// ServerAddressOf(SplitServerUrl(typed)): "example.com" gives
// "https://example.com/", "http://h:8080/x/y" gives "http://h:8080/".
// Empty when `typed` is no server address.
std::string FormServerAddress(std::string_view typed);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SERVER_ADDRESS_H_
