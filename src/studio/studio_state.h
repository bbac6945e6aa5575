// What the page sees of the studio, as one JSON document that the host
// thread updates and the server's threads read. Every update bumps the
// version, so a page can wait for the next change instead of polling fast.
//
// Fields (each written by the part that owns it):
//   drawing   {name, path, modified, revision}: revision changes whenever
//             the drawing may have changed, and with it the floor picture
//   busy      the command line running, or null
//   progress  {label, percent} while the status-bar meter runs, or null
//   pending   the dialog, message box or prompt waiting for an answer, or null
//   view      {x, y, width, height} of the active view in picture units
//   last      {run, line, ok, problems} of the last command line run; run
//             counts the runs
// The transcript is kept apart, as text that only grows: a page asks for it
// from the offset it has.
#ifndef FLOORXPORT_STUDIO_STUDIO_STATE_H_
#define FLOORXPORT_STUDIO_STUDIO_STATE_H_

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace fx::studio {

class StudioState {
 public:
  StudioState();

  void Update(const std::function<void(nlohmann::json& fields)>& change);
  void AppendTranscript(std::string_view text);

  // The fields, the version and the transcript from byte `since` on
  // ({"transcript": {"from": N, "text": "..."}}); a `since` past the end, or
  // inside a character, starts where the text can be cut.
  nlohmann::json Snapshot(size_t since) const;
  // Waits until the version differs from `version` or `timeout` passes.
  void WaitForChange(uint64_t version, std::chrono::milliseconds timeout) const;

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  nlohmann::json fields_;
  std::string transcript_;
  uint64_t version_ = 1;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_STUDIO_STATE_H_
