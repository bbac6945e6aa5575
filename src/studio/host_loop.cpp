#include "studio/host_loop.h"

#include <utility>

namespace fx::studio {

void HostLoop::Post(Job job) {
  {
    std::lock_guard lock(mutex_);
    if (stopped_) return;
    jobs_.push_back(std::move(job));
  }
  wake_.notify_all();
}

void HostLoop::RunUntil(const std::function<bool()>& done) {
  while (!done()) {
    Job job;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return stopped_ || !jobs_.empty(); });
      if (stopped_) return;
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    // A job that throws is dropped; a Call waiting for it gets nullopt.
    try {
      job();
    } catch (...) {
    }
  }
}

void HostLoop::Stop() {
  std::deque<Job> dropped;  // destroyed outside the lock: their promises break
  {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    dropped.swap(jobs_);
  }
  wake_.notify_all();
}

bool HostLoop::stopped() const {
  std::lock_guard lock(mutex_);
  return stopped_;
}

}  // namespace fx::studio
