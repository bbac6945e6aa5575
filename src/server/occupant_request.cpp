#include "server/occupant_request.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <vector>

#include "host/dialog.h"
#include "server/http_get.h"
#include "server/log_in.h"
#include "server/occupant_data.h"
#include "server/workflow_result.h"

namespace fx::server {
namespace {

// The header lines of kRoomsRequestHeaders with the log-in filled in; empty
// when a value holds a line break, which would end its header early.
std::vector<std::string> Headers(const std::string& user, const std::string& password) {
  if (user.find_first_of("\r\n") != std::string::npos ||
      password.find_first_of("\r\n") != std::string::npos) {
    return {};
  }
  std::string text(std::char_traits<char>::length(kRoomsRequestHeaders) + user.size() +
                       password.size() + 1,
                   '\0');
  const int length = std::snprintf(text.data(), text.size(), kRoomsRequestHeaders, user.c_str(),
                                   password.c_str());
  std::vector<std::string> headers;
  size_t start = 0;
  const size_t end = length > 0 ? static_cast<size_t>(length) : 0;
  while (start <= end) {
    const size_t next = std::min(text.find('\n', start), end);
    headers.push_back(text.substr(start, next - start));
    start = next + 1;
  }
  fx::WipeText(text);
  return headers;
}

// "HTTP error 500", with the error text of a JSON answer when it has one.
std::string StatusError(const HttpReply& reply) {
  std::string error = "The server answered HTTP " + std::to_string(reply.status) + ".";
  const nlohmann::json answer = nlohmann::json::parse(reply.body, nullptr, false);
  if (answer.is_object()) {
    const auto message = answer.find("error");
    if (message != answer.end() && message->is_string()) {
      error += " " + message->get<std::string>().substr(0, 300);
    }
  }
  return error;
}

}  // namespace

int RequestOccupantRooms(const std::string& server, int floor_id, std::string& body,
                         std::string& error) {
  body.clear();
  error.clear();
  char path[256];
  std::snprintf(path, sizeof path, kRoomsRequestPath, floor_id);
  const std::string url = server + (server.ends_with('/') ? "" : "/") + path;
  for (;;) {
    // Without a log-in yet the headers go empty: an open server answers, a
    // protected one answers 401, and only then is the user asked.
    std::string user;
    std::string password;
    RememberedCredentials(user, password);
    std::vector<std::string> headers = Headers(user, password);
    fx::WipeText(user);
    fx::WipeText(password);
    if (headers.empty()) {
      error = "The user name or the password holds a line break.";
      return kFailed;
    }
    HttpReply reply = HttpGet(url, headers, kRoomsRequestAgent);
    for (std::string& header : headers) fx::WipeText(header);
    if (reply.status == 401) {
      if (AskForCredentials()) continue;
      error = "The server refused the log-in, and the log-in was cancelled.";
      return kCanceled;
    }
    if (!reply.error.empty()) {
      error = reply.error;
      return kFailed;
    }
    if (reply.status != 200) {
      error = StatusError(reply);
      return kFailed;
    }
    body = std::move(reply.body);
    return kSucceeded;
  }
}

}  // namespace fx::server
