#ifndef FX_HOST_DXF_DXF_DIAGNOSTICS_H_
#define FX_HOST_DXF_DXF_DIAGNOSTICS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>
#include <utility>

namespace fx::dxf {

enum class Severity { kWarning, kError };

// Receives what the reader tolerated (warnings) or rejected (errors) while loading.
// Messages carry their place: "FILE:LINE: ..." for ASCII, "FILE: offset N: ..." for binary.
struct DiagnosticSink {
  virtual ~DiagnosticSink() = default;
  virtual void Report(Severity severity, std::string message) = 0;
};

// Why a load failed; the message has the same form as the diagnostics above.
struct LoadError {
  std::string message;
};

// A value as messages quote it: cut to a readable length.
inline std::string QuoteForMessage(std::string_view text) {
  constexpr size_t kMaxQuoted = 40;
  if (text.size() <= kMaxQuoted) return std::string(text);
  return std::string(text.substr(0, kMaxQuoted)) + "...";
}

// Outcome of an operation that can fail without a document to return (writing, saving).
class Status {
 public:
  static Status Ok() { return Status(); }
  static Status Error(std::string message) { return Status(std::move(message)); }

  bool ok() const { return ok_; }
  const std::string& message() const { return message_; }

 private:
  Status() = default;
  explicit Status(std::string message) : ok_(false), message_(std::move(message)) {}

  bool ok_ = true;
  std::string message_;
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_DIAGNOSTICS_H_
