#include "studio/studio_state.h"

namespace fx::studio {

StudioState::StudioState()
    : fields_{{"drawing", nullptr}, {"busy", nullptr},    {"progress", nullptr},
              {"pending", nullptr}, {"view", nullptr},    {"last", nullptr}} {}

void StudioState::Update(const std::function<void(nlohmann::json& fields)>& change) {
  {
    std::lock_guard lock(mutex_);
    change(fields_);
    ++version_;
  }
  changed_.notify_all();
}

void StudioState::AppendTranscript(std::string_view text) {
  if (text.empty()) return;
  {
    std::lock_guard lock(mutex_);
    transcript_ += text;
    ++version_;
  }
  changed_.notify_all();
}

nlohmann::json StudioState::Snapshot(size_t since) const {
  std::lock_guard lock(mutex_);
  size_t from = std::min(since, transcript_.size());
  // Never start inside a UTF-8 sequence: back up to its first byte.
  while (from > 0 && from < transcript_.size() &&
         (static_cast<unsigned char>(transcript_[from]) & 0xC0) == 0x80) {
    --from;
  }
  nlohmann::json snapshot = fields_;
  snapshot["version"] = version_;
  snapshot["transcript"] = {{"from", from}, {"text", transcript_.substr(from)}};
  return snapshot;
}

void StudioState::WaitForChange(uint64_t version, std::chrono::milliseconds timeout) const {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, timeout, [&] { return version_ != version; });
}

}  // namespace fx::studio
