// The host thread's work queue. The plug-in and the headless host are
// single-threaded, as in the editor: every call into them runs on the one
// host thread, which takes jobs from this queue. The server's threads post
// jobs and, for a result, wait for it (Call).
//
// While a command waits for the browser (a dialog, a message box, a
// prompt), the host thread keeps taking jobs in a nested RunUntil, so the
// page can still fetch the floor and answer; jobs that would start another
// command refuse to while one runs (StudioSession::Claim).
#ifndef FLOORXPORT_STUDIO_HOST_LOOP_H_
#define FLOORXPORT_STUDIO_HOST_LOOP_H_

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

namespace fx::studio {

class HostLoop {
 public:
  using Job = std::function<void()>;

  // From any thread. Jobs posted after Stop are dropped.
  void Post(Job job);
  // On the host thread: runs jobs in order until `done()` holds (checked
  // before each wait) or the loop is stopped.
  void RunUntil(const std::function<bool()>& done);
  // Ends every RunUntil and drops the jobs not run yet.
  void Stop();
  bool stopped() const;

  // Runs `work` on the host thread and returns its result; nullopt when the
  // loop stopped before it ran.
  template <class T>
  std::optional<T> Call(std::function<T()> work) {
    auto promise = std::make_shared<std::promise<T>>();
    std::future<T> result = promise->get_future();
    Post([promise, work = std::move(work)] { promise->set_value(work()); });
    try {
      return result.get();
    } catch (const std::future_error&) {  // dropped by Stop: the promise was broken
      return std::nullopt;
    }
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Job> jobs_;
  bool stopped_ = false;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_HOST_LOOP_H_
