#include "rest_endpoint.h"

#include <charconv>
#include <map>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

#include "request_log.h"
#include "rooms_json.h"
#include "server.h"
#include "stdsoap2.h"
#include "storage.h"

namespace fx::devserver {
namespace {

constexpr std::size_t kDefaultLimit = 2000;

std::string Decode(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '+') {
      out += ' ';
    } else if (text[i] == '%' && i + 2 < text.size()) {
      int value = 0;
      const auto [end, error] = std::from_chars(text.data() + i + 1, text.data() + i + 3, value, 16);
      if (error == std::errc() && end == text.data() + i + 3) {
        out += static_cast<char>(value);
        i += 2;
      } else {
        out += '%';
      }
    } else {
      out += text[i];
    }
  }
  return out;
}

std::map<std::string, std::string> QueryOf(std::string_view query) {
  std::map<std::string, std::string> parameters;
  while (!query.empty()) {
    const auto amp = query.find('&');
    const std::string_view pair = query.substr(0, amp);
    const auto eq = pair.find('=');
    parameters[Decode(pair.substr(0, eq))] =
        eq == std::string_view::npos ? std::string() : Decode(pair.substr(eq + 1));
    query = amp == std::string_view::npos ? std::string_view() : query.substr(amp + 1);
  }
  return parameters;
}

std::optional<long long> Number(const std::string& text) {
  long long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

int Send(struct soap* soap, int status, const std::string& body) {
  soap->http_content = "application/json; charset=utf-8";
  // Stored whole, so the answer carries its Content-Length.
  soap->omode = (soap->omode & ~SOAP_IO) | SOAP_IO_STORE;
  if (soap_response(soap, SOAP_FILE + status) || soap_send_raw(soap, body.data(), body.size()) ||
      soap_end_send(soap)) {
    return soap_closesock(soap);
  }
  return SOAP_OK;
}

int SendError(struct soap* soap, int status, const std::string& message) {
  return Send(soap, status, nlohmann::json{{"error", message}}.dump(
                                -1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int ServeRestRequest(struct soap* soap, Server& server, const std::string& peer,
                     const std::string& user, const std::string& password) {
  const std::string_view target = soap->path;
  const auto question = target.find('?');
  const std::string_view path = target.substr(0, question);
  const std::string_view query =
      question == std::string_view::npos ? std::string_view() : target.substr(question + 1);
  RequestLog& log = server.log();
  if (path != kRoomsPath) {
    log.Write(peer + " GET " + std::string(path) + ": 404");
    return SendError(soap, 404, "No such resource: " + std::string(path));
  }
  const bool header_credentials = !user.empty() || !password.empty();
  if (!(header_credentials ? server.Authorized(user.c_str(), password.c_str())
                           : server.Authorized(soap->userid, soap->passwd))) {
    log.Write(peer + " GET rooms refused: " +
              (header_credentials || soap->userid ? "wrong user name or password"
                                                  : "no credentials"));
    return SendError(soap, 401, "Authentication required: x-auth-username and x-auth-password");
  }

  auto parameters = QueryOf(query);
  const auto floor = Number(parameters["floorId"]);
  if (!floor || *floor <= 0 || *floor > INT32_MAX) {
    return SendError(soap, 400, "floorId must be a floor's id");
  }
  std::size_t limit = kDefaultLimit;
  if (const auto it = parameters.find("limit"); it != parameters.end()) {
    const auto value = Number(it->second);
    if (!value || *value < 0) return SendError(soap, 400, "limit must be a number of rooms");
    limit = static_cast<std::size_t>(*value);
  }
  RoomSelector selector;
  if (const auto it = parameters.find("selector"); it != parameters.end()) {
    selector = ParseRoomSelector(it->second);
  }
  try {
    const auto rooms = server.storage().Rooms(static_cast<int>(*floor), limit);
    if (!rooms) {
      log.Write(peer + " GET rooms of floor " + std::to_string(*floor) + ": no such floor");
      return SendError(soap, 404, "Floor " + std::to_string(*floor) + " not found");
    }
    log.Write(peer + " GET rooms of floor " + std::to_string(*floor) + ": " +
              std::to_string(rooms->size()) + " rooms");
    return Send(soap, 200, RoomsToJson(*rooms, selector));
  } catch (const StorageError& error) {
    log.Write(peer + " GET rooms: " + error.what());
    return SendError(soap, 500, error.what());
  }
}

}  // namespace fx::devserver
