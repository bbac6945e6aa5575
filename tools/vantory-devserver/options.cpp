#include "options.h"

#include <charconv>
#include <functional>
#include <map>

namespace fx::devserver {

const char* const kUsage =
    "Usage: vantory-devserver --db FILE [options]      serve the drawing service\n"
    "       vantory-devserver --generate-cert FILE     make a self-signed certificate, exit\n"
    "       vantory-devserver adduser --users FILE NAME   add a user (password on stdin)\n"
    "       vantory-devserver rooms --db FILE --floor N --json FILE|-   store a floor's rooms\n"
    "\n"
    "A development server for the Vantory drawing service: SOAP on any POST path\n"
    "(the client uses /external/api/soap/space/drawing/v1), rooms as JSON on\n"
    "GET /external/api/rest/v2/rooms?floorId=N.\n"
    "\n"
    "Options:\n"
    "  --db FILE             SQLite database, created on first start\n"
    "  --seed-demo           fill an empty database with a demo building, two floors,\n"
    "                        the sample floor's drawing and rooms\n"
    "  --sample-drawing FILE the drawing --seed-demo stores (default: the sources'\n"
    "                        examples/sample-floor.dxf)\n"
    "  --users FILE          require HTTP Basic authentication against this file\n"
    "                        (made by adduser); without it the server is open\n"
    "  --tls-cert FILE       serve HTTPS with this PEM file (key and certificate)\n"
    "  --generate-cert FILE  write a self-signed certificate for localhost and exit\n"
    "  --listen ADDR         address to listen on (default 127.0.0.1)\n"
    "  --port N              port (default 8080; 0: any free port)\n"
    "  --max-request-mb N    largest request accepted, in MB (default 256)\n"
    "  --timeout SECONDS     longest wait on a client sending or reading (default 30)\n"
    "  --max-connections N   connections served at once (default 32)\n"
    "  --quiet               no request log on standard error\n"
    "  --fault MODE[:NAME,...]  misbehave on purpose, for testing clients: MODE is\n"
    "                        hang (never answer), close (close mid-answer), garbage\n"
    "                        (neither XML nor JSON), 500, 401 (whatever the log-in)\n"
    "                        or trickle (answer at 4 bytes a second); NAMEs are SOAP\n"
    "                        operations (getDWG, setDrawing, ...) or rooms (REST);\n"
    "                        without them every request\n"
    "  -h, --help            this text\n"
    "\n"
    "The first line on standard output is \"vantory-devserver: listening on URL\".\n"
    "SIGINT or SIGTERM stops the server; requests in flight are finished.\n";

namespace {

using Handler = std::function<void(const std::string&)>;

int Integer(const std::string& option, const std::string& text, int low, int high) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
    throw UsageError(option + " needs a whole number from " + std::to_string(low) + " to " +
                     std::to_string(high) + ", not \"" + text + "\"");
  }
  return value;
}

// Reads `--name value`, `--name=value` and flags; everything else goes to
// `positional`, which may be null when none are allowed.
void Parse(const std::vector<std::string>& args, const std::map<std::string, Handler>& valued,
           const std::map<std::string, std::function<void()>>& flags,
           std::vector<std::string>* positional) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string name = args[i];
    std::optional<std::string> value;
    if (name.rfind("--", 0) == 0) {
      if (const auto eq = name.find('='); eq != std::string::npos) {
        value = name.substr(eq + 1);
        name.resize(eq);
      }
    }
    if (const auto flag = flags.find(name); flag != flags.end()) {
      if (value) throw UsageError(name + " takes no value");
      flag->second();
    } else if (const auto option = valued.find(name); option != valued.end()) {
      if (!value) {
        if (i + 1 >= args.size()) throw UsageError(name + " needs a value");
        value = args[++i];
      }
      option->second(*value);
    } else if (name.size() > 1 && name[0] == '-') {
      throw UsageError("unknown option " + name);
    } else if (positional) {
      positional->push_back(name);
    } else {
      throw UsageError("unexpected argument \"" + name + "\"");
    }
  }
}

}  // namespace

ServeOptions ParseServeOptions(const std::vector<std::string>& args) {
  ServeOptions o;
  Parse(args,
        {
            {"--db", [&](const std::string& v) { o.db = v; }},
            {"--users", [&](const std::string& v) { o.users = v; }},
            {"--tls-cert", [&](const std::string& v) { o.server.tls_cert = v; }},
            {"--generate-cert", [&](const std::string& v) { o.generate_cert = v; }},
            {"--sample-drawing", [&](const std::string& v) { o.sample_drawing = v; }},
            {"--listen", [&](const std::string& v) { o.server.listen = v; }},
            {"--port", [&](const std::string& v) { o.server.port = Integer("--port", v, 0, 65535); }},
            {"--max-request-mb",
             [&](const std::string& v) {
               o.server.max_request_bytes =
                   static_cast<std::uint64_t>(Integer("--max-request-mb", v, 1, 2000)) << 20;
             }},
            {"--timeout",
             [&](const std::string& v) {
               o.server.io_timeout_seconds = Integer("--timeout", v, 1, 3600);
             }},
            {"--fault",
             [&](const std::string& v) {
               o.server.fault = ParseFault(v);
               if (!o.server.fault) throw UsageError("--fault needs MODE[:NAME,...], not \"" + v + "\"");
             }},
            {"--max-connections",
             [&](const std::string& v) {
               o.server.max_connections = Integer("--max-connections", v, 1, 1000);
             }},
        },
        {
            {"--seed-demo", [&] { o.seed_demo = true; }},
            {"--quiet", [&] { o.quiet = true; }},
        },
        nullptr);
  if (o.generate_cert.empty() && o.db.empty()) throw UsageError("--db FILE is required");
  if (o.server.listen.empty()) throw UsageError("--listen needs an address");
  return o;
}

AddUserOptions ParseAddUserOptions(const std::vector<std::string>& args) {
  AddUserOptions o;
  std::vector<std::string> names;
  Parse(args, {{"--users", [&](const std::string& v) { o.users = v; }}}, {}, &names);
  if (o.users.empty()) throw UsageError("adduser needs --users FILE");
  if (names.size() != 1) throw UsageError("adduser needs one user NAME");
  o.name = names[0];
  return o;
}

RoomsOptions ParseRoomsOptions(const std::vector<std::string>& args) {
  RoomsOptions o;
  Parse(args,
        {
            {"--db", [&](const std::string& v) { o.db = v; }},
            {"--floor", [&](const std::string& v) { o.floor = Integer("--floor", v, 1, INT32_MAX); }},
            {"--json", [&](const std::string& v) { o.json = v; }},
        },
        {}, nullptr);
  if (o.db.empty() || o.floor == 0 || o.json.empty()) {
    throw UsageError("rooms needs --db FILE, --floor N and --json FILE");
  }
  return o;
}

}  // namespace fx::devserver
