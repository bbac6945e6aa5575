#include "studio/studio_app.h"

#include <pthread.h>

#include <csignal>
#include <thread>

#include "studio/host_loop.h"
#include "studio/request_guard.h"
#include "studio/studio_server.h"
#include "studio/studio_session.h"
#include "studio/studio_state.h"

namespace fx::studio {
namespace {

// SIGINT and SIGTERM, blocked in every thread started after this, so that
// only the waiting thread receives them.
sigset_t BlockStopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

}  // namespace

int RunStudio(const StudioOptions& options, std::FILE* out) {
  const sigset_t signals = BlockStopSignals();
  StudioState state;
  HostLoop loop;
  // This thread is the host thread: the session is made, used and closed here.
  StudioSession session(loop, state, options.drawing, options.register_modules);
  std::string error;
  if (!session.Open(&error)) {
    std::fprintf(stderr, "floorxport: %s\n", error.c_str());
    return 1;
  }
  const std::string token = NewToken();
  StudioServer server(loop, state, session, token);
  if (!server.Bind(options.port)) {
    std::fprintf(stderr, "floorxport: cannot listen on 127.0.0.1:%d\n", options.port);
    return 1;
  }
  std::fprintf(out, "floorxport studio: http://127.0.0.1:%d/?token=%s\n", server.port(), token.c_str());
  std::fflush(out);

  std::thread listener([&server] { server.Listen(); });
  std::thread stopper([&] {
    int received = 0;
    sigwait(&signals, &received);
    state.Update([](nlohmann::json& fields) { fields["closing"] = true; });  // ends long polls
    server.Stop();
    loop.Stop();
  });
  loop.RunUntil([] { return false; });
  listener.join();
  stopper.join();
  session.Close();
  std::fprintf(out, "floorxport studio: stopped\n");
  return 0;
}

}  // namespace fx::studio
