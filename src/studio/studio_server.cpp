#include "studio/studio_server.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include "host/dialog.h"
#include "studio/host_loop.h"
#include "studio/request_guard.h"
#include "studio/studio_page.h"
#include "studio/studio_session.h"
#include "studio/studio_state.h"

namespace fx::studio {
namespace {

constexpr auto kLongPoll = std::chrono::seconds(20);

std::string Dump(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void SendJson(httplib::Response& response, const nlohmann::json& value, int status = 200) {
  response.status = status;
  response.set_header("Cache-Control", "no-store");
  response.set_content(Dump(value), "application/json");
}

void SendError(httplib::Response& response, int status, const std::string& message) {
  SendJson(response, {{"error", message}}, status);
}

// The request's JSON object, or nullopt after answering 400.
std::optional<nlohmann::json> Body(const httplib::Request& request, httplib::Response& response) {
  nlohmann::json body = nlohmann::json::parse(request.body, nullptr, /*allow_exceptions=*/false);
  if (body.is_discarded() || !body.is_object()) {
    SendError(response, 400, "the body is not a JSON object");
    return std::nullopt;
  }
  return body;
}

std::string Text(const nlohmann::json& body, const char* key) {
  auto it = body.find(key);
  return it != body.end() && it->is_string() ? it->get<std::string>() : std::string();
}

long long Number(const nlohmann::json& body, const char* key) {
  auto it = body.find(key);
  return it != body.end() && it->is_number_integer() ? it->get<long long>() : -1;
}

size_t ParamNumber(const httplib::Request& request, const char* name) {
  const std::string text = request.get_param_value(name);
  return text.empty() ? 0 : std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace

class StudioServer::Impl {
 public:
  Impl(HostLoop& loop, StudioState& state, StudioSession& session, std::string token)
      : loop_(loop), state_(state), session_(session), token_(std::move(token)) {
    server_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      // Loopback needs no compression, and the library would compress SVG
      // and JSON with brotli at its slowest setting (a 4 MB floor took 15 s).
      // The request object is the server's own, not const: its header may go.
      const_cast<httplib::Request&>(request).headers.erase("Accept-Encoding");
      return Guard(request, response);
    });
    Routes();
  }

  httplib::Server server_;
  int port_ = 0;

 private:
  httplib::Server::HandlerResponse Guard(const httplib::Request& request, httplib::Response& response) {
    RequestFacts facts;
    facts.token = request.has_param("token") ? request.get_param_value("token")
                                             : request.get_header_value("X-Studio-Token");
    facts.host = request.get_header_value("Host");
    facts.origin = request.get_header_value("Origin");
    const std::string reason = RefusalReason(facts, token_, port_);
    if (reason.empty()) return httplib::Server::HandlerResponse::Unhandled;
    response.status = 403;
    response.set_content("refused: " + reason + "\n", "text/plain");
    return httplib::Server::HandlerResponse::Handled;
  }

  void Routes() {
    server_.Get("/", [](const httplib::Request&, httplib::Response& response) {
      response.set_header("Cache-Control", "no-store");
      // The page is whole: no script, style or font comes from elsewhere.
      response.set_header("Content-Security-Policy",
                          "default-src 'self'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; "
                          "img-src 'self' data: blob:");
      response.set_content(kStudioPage, "text/html; charset=utf-8");
    });
    server_.Get("/api/state", [this](const httplib::Request& request, httplib::Response& response) {
      if (request.has_param("version")) state_.WaitForChange(ParamNumber(request, "version"), kLongPoll);
      SendJson(response, state_.Snapshot(ParamNumber(request, "since")));
    });
    server_.Get("/api/menu", [this](const httplib::Request&, httplib::Response& response) {
      Reply(response, loop_.Call<nlohmann::json>([this] { return session_.Menu(); }));
    });
    server_.Get("/api/problems", [this](const httplib::Request&, httplib::Response& response) {
      Reply(response, loop_.Call<nlohmann::json>([this] { return session_.Problems(); }));
    });
    server_.Get("/api/floor.svg", [this](const httplib::Request&, httplib::Response& response) {
      std::optional<std::shared_ptr<const FloorPicture>> picture =
          loop_.Call<std::shared_ptr<const FloorPicture>>([this] { return session_.Picture(); });
      if (!picture) return SendError(response, 503, "the studio is stopping");
      if ((*picture)->svg.empty()) return SendError(response, 404, "the drawing has nothing to draw");
      const fx::svg::Frame& frame = (*picture)->frame;
      char text[160];
      std::snprintf(text, sizeof text, "%.17g %.17g %.17g %.17g", frame.min.x, frame.min.y, frame.max.x,
                    frame.max.y);
      response.set_header("X-Floor-Frame", text);
      response.set_header("X-Floor-Revision", std::to_string((*picture)->revision));
      response.set_header("Cache-Control", "no-store");
      // The text is shared with the cache: copied once into the response.
      response.set_content((*picture)->svg, "image/svg+xml");
    });
    server_.Post("/api/run", [this](const httplib::Request& request, httplib::Response& response) {
      std::optional<nlohmann::json> body = Body(request, response);
      if (!body) return;
      const std::string line = Text(*body, "line");
      if (line.empty()) return SendError(response, 400, "no command line");
      Start(response, line, [this, line] { session_.Run({line}); });
    });
    server_.Post("/api/menu", [this](const httplib::Request& request, httplib::Response& response) {
      std::optional<nlohmann::json> body = Body(request, response);
      if (!body) return;
      const std::string path = Text(*body, "path");
      if (path.empty()) return SendError(response, 400, "no menu path");
      Start(response, path, [this, path] { session_.RunMenuItem(path); });
    });
    server_.Post("/api/answer", [this](const httplib::Request& request, httplib::Response& response) {
      std::optional<nlohmann::json> body = Body(request, response);
      if (!body) return;
      Answer(*body);
      SendJson(response, {{"accepted", true}}, 202);
    });
    server_.Post("/api/save", [this](const httplib::Request&, httplib::Response& response) {
      Saved(response, loop_.Call<std::string>([this] {
        std::string error;
        return session_.Save(&error) ? std::string() : error;
      }));
    });
    server_.Post("/api/saveas", [this](const httplib::Request& request, httplib::Response& response) {
      std::optional<nlohmann::json> body = Body(request, response);
      if (!body) return;
      const std::string path = Text(*body, "path");
      if (path.empty()) return SendError(response, 400, "no file name");
      Saved(response, loop_.Call<std::string>([this, path] {
        std::string error;
        return session_.SaveAs(path, &error) ? std::string() : error;
      }));
    });
  }

  void Reply(httplib::Response& response, const std::optional<nlohmann::json>& value) {
    if (!value) return SendError(response, 503, "the studio is stopping");
    SendJson(response, *value);
  }

  void Saved(httplib::Response& response, const std::optional<std::string>& error) {
    if (!error) return SendError(response, 503, "the studio is stopping");
    if (!error->empty()) return SendError(response, 409, *error);
    SendJson(response, {{"saved", true}});
  }

  // Claims the session for `what`, then runs `work` after this reply.
  void Start(httplib::Response& response, const std::string& what, HostLoop::Job work) {
    std::optional<bool> claimed = loop_.Call<bool>([this, what] { return session_.Claim(what); });
    if (!claimed) return SendError(response, 503, "the studio is stopping");
    if (!*claimed) return SendError(response, 409, "a command is running");
    loop_.Post(std::move(work));
    SendJson(response, {{"accepted", true}}, 202);
  }

  void Answer(const nlohmann::json& body) {
    const int id = static_cast<int>(Number(body, "id"));
    const std::string action = Text(body, "action");
    const long long index = Number(body, "index");
    std::string value = Text(body, "value");
    loop_.Post([this, id, action, index, value = std::move(value)]() mutable {
      StudioPresenter& presenter = session_.presenter();
      if (action == "set" && index >= 0) presenter.SetField(id, static_cast<size_t>(index), std::move(value));
      if (action == "press" && index >= 0) presenter.Press(id, static_cast<size_t>(index));
      if (action == "cancel") presenter.Cancel(id);
      if (action == "button") presenter.AnswerMessageBox(id, value);
      if (action == "line") presenter.AnswerPrompt(id, value);
      WipeText(value);
    });
  }

  HostLoop& loop_;
  StudioState& state_;
  StudioSession& session_;
  std::string token_;
};

StudioServer::StudioServer(HostLoop& loop, StudioState& state, StudioSession& session, std::string token)
    : impl_(std::make_unique<Impl>(loop, state, session, std::move(token))) {}

StudioServer::~StudioServer() = default;

bool StudioServer::Bind(int port) {
  if (port == 0) {
    port_ = impl_->server_.bind_to_any_port("127.0.0.1");
  } else {
    port_ = impl_->server_.bind_to_port("127.0.0.1", port) ? port : -1;
  }
  if (port_ <= 0) return false;
  impl_->port_ = port_;
  return true;
}

void StudioServer::Listen() { impl_->server_.listen_after_bind(); }

void StudioServer::Stop() { impl_->server_.stop(); }

}  // namespace fx::studio
