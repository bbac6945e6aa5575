// The studio's HTTP side: the page and its JSON API on 127.0.0.1, every
// request checked by the request guard first. Handlers never touch the
// plug-in: they post jobs to the host thread (HostLoop) and read the state.
//
//   GET  /                     the page
//   GET  /api/state?since=N&version=V
//                              the state (studio_state.h) with the transcript
//                              from byte N; with V, waits up to 20 s for a
//                              version other than V first (long polling)
//   GET  /api/menu             the menu bar (menu_json.h)
//   GET  /api/floor.svg        the floor picture; header X-Floor-Frame gives
//                              "min-x min-y max-x max-y" of its frame
//   GET  /api/problems         the analysis's problems (problem_list.h)
//   POST /api/run     {"line"} run a command line
//   POST /api/menu    {"path"} run a menu item
//   POST /api/answer  {"id", "action", "index", "value"} answer the pending
//                     question: action "set" (field index = value), "press"
//                     (button index), "cancel", "button" (message box
//                     button named value), "line" (a prompt's answer value)
//   POST /api/save    {}        save to the drawing's file
//   POST /api/saveas  {"path"}  save to another file, which becomes the file
//
// Runs and answers return 202 at once (the state tells how they went), 409
// when a command already runs; a refused request gets 403 and the reason.
#ifndef FLOORXPORT_STUDIO_STUDIO_SERVER_H_
#define FLOORXPORT_STUDIO_STUDIO_SERVER_H_

#include <memory>
#include <string>

namespace fx::studio {

class HostLoop;
class StudioSession;
class StudioState;

class StudioServer {
 public:
  // All three must outlive the server; `session` is used on the host thread only.
  StudioServer(HostLoop& loop, StudioState& state, StudioSession& session, std::string token);
  ~StudioServer();
  StudioServer(const StudioServer&) = delete;
  StudioServer& operator=(const StudioServer&) = delete;

  // Binds 127.0.0.1:port (0: a free port). False when it cannot.
  bool Bind(int port);
  int port() const { return port_; }
  // Serves until Stop; from its own thread.
  void Listen();
  void Stop();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
  int port_ = 0;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_SERVER_H_
