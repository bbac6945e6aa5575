#include "server/download_file.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "host/whole_file.h"

namespace fx::server {
namespace {

constexpr size_t kMaxPartBytes = 100;
std::string g_download_folder;

// Length of the valid UTF-8 sequence at `text[i]`, or 0.
size_t Utf8Length(std::string_view text, size_t i) {
  const auto byte = static_cast<unsigned char>(text[i]);
  size_t length = byte < 0x80 ? 1 : (byte >> 5) == 0x6 ? 2 : (byte >> 4) == 0xE ? 3
                                  : (byte >> 3) == 0x1E ? 4 : 0;
  if (length == 0 || i + length > text.size()) return 0;
  for (size_t k = 1; k < length; ++k) {
    if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

bool Refused(unsigned char c) {
  return c < 0x20 || c == 0x7F || std::strchr("/\\:*?\"<>|", c) != nullptr;
}

}  // namespace

std::string DrawingExtension(std::span<const unsigned char> bytes) {
  if (bytes.size() >= 6 && std::memcmp(bytes.data(), "AC1", 3) == 0) return "dwg";
  return "dxf";
}

std::string SafeFileNamePart(std::string_view name) {
  std::string safe;
  for (size_t i = 0; i < name.size();) {
    const size_t length = Utf8Length(name, i);
    if (length == 0) {
      safe += '_';
      ++i;
      continue;
    }
    if (length == 1 && Refused(static_cast<unsigned char>(name[i]))) {
      safe += '_';
    } else if (safe.size() + length <= kMaxPartBytes) {
      safe.append(name.substr(i, length));
    } else {
      break;
    }
    i += length;
  }
  const size_t start = safe.find_first_not_of(". ");
  safe = start == std::string::npos ? std::string() : safe.substr(start);
  while (!safe.empty() && safe.back() == ' ') safe.pop_back();
  return safe.empty() ? "floor" : safe;
}

std::string DownloadFileName(std::string_view building, std::string_view floor,
                             std::string_view extension) {
  return SafeFileNamePart(building) + "_" + SafeFileNamePart(floor) + "." + std::string(extension);
}

void SetDownloadFolder(const std::string& folder) { g_download_folder = folder; }

std::string DownloadFolder() { return g_download_folder.empty() ? "." : g_download_folder; }

int SaveDownloadedFile(const std::string& path, std::span<const unsigned char> bytes,
                       const std::string& open_drawing) {
  std::error_code error;
  if (!open_drawing.empty() && std::filesystem::equivalent(path, open_drawing, error)) {
    return kSaveDenied;
  }
  if (std::filesystem::exists(path, error) && ::access(path.c_str(), W_OK) != 0) return kSaveDenied;
  return fx::WriteWholeFile(path, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()))
             ? 0
             : -1;
}

}  // namespace fx::server
