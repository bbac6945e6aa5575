#include "host/whole_file.h"

#include <charconv>

namespace fx {
namespace {

constexpr std::string_view kMarker = ".fxtmp-";
constexpr size_t kRandomLength = 8;

bool IsLowerHex(std::string_view text) {
  return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace

std::string TemporaryFileName(std::string_view file_name, long pid, std::string_view random) {
  return "." + std::string(file_name) + std::string(kMarker) + std::to_string(pid) + "-" +
         std::string(random);
}

// Read from the end: NAME itself may hold the marker.
long TemporaryFileOwner(std::string_view file_name) {
  const size_t marker = file_name.rfind(kMarker);
  if (!file_name.starts_with('.') || marker == std::string_view::npos || marker < 2) return 0;
  const std::string_view rest = file_name.substr(marker + kMarker.size());
  const size_t dash = rest.find('-');
  if (dash == std::string_view::npos) return 0;
  const std::string_view random = rest.substr(dash + 1);
  if (random.size() != kRandomLength || !IsLowerHex(random)) return 0;
  long pid = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + dash, pid);
  if (error != std::errc() || end != rest.data() + dash || pid <= 0) return 0;
  return pid;
}

bool WriteWholeFile(const std::string& path, std::string_view bytes, std::string* error,
                    WholeFileOptions options) {
  WholeFile file(path, options);
  if (file.ok() && file.Write(bytes) && file.Commit()) return true;
  if (error != nullptr) *error = file.error();
  return false;
}

}  // namespace fx
