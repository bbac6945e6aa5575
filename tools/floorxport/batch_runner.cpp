#include "batch_runner.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>

namespace fx::cli {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kTick{200};

struct Running {
  size_t index;
  Clock::time_point start;
  std::chrono::system_clock::time_point started;
  std::optional<Clock::time_point> term_sent;
  bool timed_out = false;
};

// The signals the batch waits for; blocked while it runs, so they are only
// taken by sigtimedwait, never between two steps of the loop.
sigset_t BatchSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (int signal : {SIGCHLD, SIGINT, SIGTERM, SIGHUP}) sigaddset(&set, signal);
  return set;
}

ChildEnd EndOf(int status, const rusage& usage) {
  ChildEnd end;
  if (WIFEXITED(status)) end.exit_code = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
  end.peak_rss_kb = usage.ru_maxrss;
  auto seconds = [](const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6; };
  end.cpu_seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  return end;
}

class Scheduler {
 public:
  Scheduler(const std::vector<BatchTask>& tasks, const RunnerOptions& options)
      : tasks_(tasks), options_(options), signals_(BatchSignals()) {}

  int Run() {
    sigset_t old_mask;
    sigprocmask(SIG_BLOCK, &signals_, &old_mask);
    int stopped_by = 0;
    while (stopped_by == 0 && (next_ < tasks_.size() || !running_.empty())) {
      while (stopped_by == 0 && running_.size() < static_cast<size_t>(options_.jobs) && next_ < tasks_.size()) {
        if (!Start(next_++)) stopped_by = -1;
      }
      if (stopped_by != 0) break;
      const int signal = Wait(NextWake());
      if (signal == SIGINT || signal == SIGTERM || signal == SIGHUP) stopped_by = signal;
      if (!Reap(/*report=*/stopped_by == 0)) stopped_by = -1;
      EnforceTimeLimits();
      if (options_.on_tick) options_.on_tick(running_.size());
    }
    if (stopped_by != 0) StopAll();
    sigprocmask(SIG_SETMASK, &old_mask, nullptr);
    return stopped_by;
  }

 private:
  bool Start(size_t index) {
    std::string error;
    const auto started = std::chrono::system_clock::now();
    const pid_t pid = StartChild(tasks_[index].args, tasks_[index].log_path, &error);
    if (pid > 0) {
      running_[pid] = {index, Clock::now(), started, std::nullopt, false};
      return true;
    }
    TaskEnd end;
    end.index = index;
    end.start_error = error;
    end.started = started;
    return options_.on_end(end);
  }

  // The earliest of the next tick and the next limit of a child.
  Clock::time_point NextWake() const {
    Clock::time_point wake = Clock::now() + kTick;
    for (const auto& [pid, child] : running_) {
      if (child.term_sent) wake = std::min(wake, *child.term_sent + kStopGrace);
      else if (options_.time_limit) wake = std::min(wake, child.start + *options_.time_limit);
    }
    return wake;
  }

  // Waits until `until` or a batch signal; returns the signal, or 0.
  int Wait(Clock::time_point until) const {
    const auto left = std::max(until - Clock::now(), Clock::duration::zero());
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(left).count();
    timespec timeout{static_cast<time_t>(nanoseconds / 1'000'000'000), static_cast<long>(nanoseconds % 1'000'000'000)};
    siginfo_t info;
    const int signal = sigtimedwait(&signals_, &info, &timeout);
    return signal > 0 ? signal : 0;
  }

  // Collects the children that ended; false when on_end stopped the batch.
  bool Reap(bool report) {
    bool go_on = true;
    int status = 0;
    rusage usage{};
    pid_t pid;
    while ((pid = wait4(-1, &status, WNOHANG, &usage)) > 0) {
      auto found = running_.find(pid);
      if (found == running_.end()) continue;
      const Running child = found->second;
      running_.erase(found);
      if (!report || !go_on) continue;
      TaskEnd end;
      end.index = child.index;
      end.child = EndOf(status, usage);
      end.timed_out = child.timed_out;
      end.started = child.started;
      end.wall_seconds = std::chrono::duration<double>(Clock::now() - child.start).count();
      go_on = options_.on_end(end);
    }
    return go_on;
  }

  void EnforceTimeLimits() {
    const Clock::time_point now = Clock::now();
    for (auto& [pid, child] : running_) {
      if (child.term_sent && now >= *child.term_sent + kStopGrace) {
        SignalChild(pid, SIGKILL);
      } else if (!child.term_sent && options_.time_limit && now >= child.start + *options_.time_limit) {
        SignalChild(pid, SIGTERM);
        child.term_sent = now;
        child.timed_out = true;
      }
    }
  }

  // Stops the running children and waits for them; nothing is reported.
  void StopAll() {
    for (auto& [pid, child] : running_) {
      SignalChild(pid, SIGTERM);
      child.term_sent = Clock::now();
    }
    const Clock::time_point deadline = Clock::now() + kStopGrace;
    while (!running_.empty() && Clock::now() < deadline) {
      Wait(std::min(deadline, Clock::now() + kTick));
      Reap(/*report=*/false);
    }
    for (const auto& [pid, child] : running_) SignalChild(pid, SIGKILL);
    for (const auto& [pid, child] : running_) {
      while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
      }
    }
    running_.clear();
  }

  const std::vector<BatchTask>& tasks_;
  const RunnerOptions& options_;
  const sigset_t signals_;
  std::map<pid_t, Running> running_;
  size_t next_ = 0;
};

}  // namespace

int RunTasks(const std::vector<BatchTask>& tasks, const RunnerOptions& options) {
  return Scheduler(tasks, options).Run();
}

}  // namespace fx::cli
