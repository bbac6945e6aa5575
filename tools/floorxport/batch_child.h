// One run of the subcommand for a drawing: a child process of this same
// program in a process group of its own, so a time limit or Ctrl-C stops it
// with everything it started.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_CHILD_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_CHILD_H_

#include <sys/types.h>

#include <string>
#include <vector>

namespace fx::cli {

// Starts this program (/proc/self/exe) with `args`: standard input from
// /dev/null, standard output and error into `log_path`, all signals
// unblocked. Returns the child's id, which is also its process group's, or
// -1 with *error.
pid_t StartChild(const std::vector<std::string>& args, const std::string& log_path, std::string* error);

// How a child ended, from wait4.
struct ChildEnd {
  int exit_code = -1;  // -1 when a signal ended it
  int signal = 0;
  long peak_rss_kb = 0;
  double cpu_seconds = 0;
};

// Sends `signal` to the child's whole process group.
void SignalChild(pid_t child, int signal);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_CHILD_H_
