// Runs the subcommand of a batch for many drawings, a given number at a
// time, each as a child process (batch_child.h) with an optional time limit.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RUNNER_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RUNNER_H_

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch_child.h"

namespace fx::cli {

struct BatchTask {
  std::vector<std::string> args;  // the program's arguments
  std::string log_path;           // standard output and error go here
};

struct TaskEnd {
  size_t index = 0;  // into the tasks
  ChildEnd child;
  bool timed_out = false;   // stopped at the time limit
  std::string start_error;  // not empty: the child never ran
  std::chrono::system_clock::time_point started;
  double wall_seconds = 0;
};

struct RunnerOptions {
  int jobs = 1;
  std::optional<std::chrono::milliseconds> time_limit;
  // Called in the order the tasks end; false stops the batch.
  std::function<bool(const TaskEnd&)> on_end;
  // Called a few times a second with the number of tasks running.
  std::function<void(size_t running)> on_tick;
};

// A child past its time limit gets SIGTERM, and SIGKILL this long after.
constexpr std::chrono::seconds kStopGrace{5};

// Runs the tasks in order, options.jobs at a time. SIGINT, SIGTERM and SIGHUP
// stop the batch: the running children are stopped (SIGTERM, then SIGKILL
// after kStopGrace) and not reported, no more are started. Returns 0 when
// every task was reported, the signal that stopped the batch, or -1 when
// on_end did.
int RunTasks(const std::vector<BatchTask>& tasks, const RunnerOptions& options);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RUNNER_H_
