// The text inside a gzip file, for tests of the compressed formats.
#ifndef FLOORXPORT_TESTS_SUPPORT_GZIP_FILE_H_
#define FLOORXPORT_TESTS_SUPPORT_GZIP_FILE_H_

#include <zlib.h>

#include <string>

#include "program_runner.h"

namespace fx::testing {

// The uncompressed text of the gzip file at `path`; empty when it is no
// gzip file (zlib would pass other files through as they are).
inline std::string GunzipFile(const std::string& path) {
  const std::string bytes = cli_test::ReadFile(path);
  if (bytes.size() < 2 || static_cast<unsigned char>(bytes[0]) != 0x1F || static_cast<unsigned char>(bytes[1]) != 0x8B)
    return {};
  gzFile file = gzopen(path.c_str(), "rb");
  if (file == nullptr) return {};
  std::string text;
  char buffer[65536];
  int read = 0;
  while ((read = gzread(file, buffer, sizeof buffer)) > 0) text.append(buffer, static_cast<size_t>(read));
  gzclose(file);
  return text;
}

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_GZIP_FILE_H_
