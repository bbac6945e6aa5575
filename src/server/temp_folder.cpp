#include "server/temp_folder.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

namespace fx::server {

std::string NewUuidText() {
  std::random_device random;
  unsigned char bytes[16];
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  char text[37];
  std::snprintf(text, sizeof text,
                "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                bytes[0], bytes[1], bytes[2], bytes[3], bytes[4], bytes[5], bytes[6], bytes[7],
                bytes[8], bytes[9], bytes[10], bytes[11], bytes[12], bytes[13], bytes[14],
                bytes[15]);
  return text;
}

TempFolder::TempFolder() {
  std::error_code error;
  const char* temp = std::getenv("TEMP");
  const std::filesystem::path base = temp != nullptr && *temp != '\0'
                                         ? std::filesystem::path(temp)
                                         : std::filesystem::temp_directory_path(error);
  if (error) return;
  const std::filesystem::path folder = base / NewUuidText();
  if (::mkdir(folder.c_str(), 0700) == 0) path_ = folder.string();
}

TempFolder::~TempFolder() {
  if (path_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace fx::server
