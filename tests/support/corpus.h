// The drawings of the test corpus, for tests that run over all of them.
#ifndef FLOORXPORT_TESTS_SUPPORT_CORPUS_H_
#define FLOORXPORT_TESTS_SUPPORT_CORPUS_H_

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace fx::testing {

inline std::filesystem::path CorpusDir() {
  const char* env = std::getenv("FX_CORPUS_DIR");
  return env != nullptr && *env != '\0' ? std::filesystem::path(env) : std::filesystem::path(FX_CORPUS_DIR);
}

// Every .dxf below the corpus directory, sorted; empty when it is absent.
inline std::vector<std::filesystem::path> CorpusDrawings() {
  std::vector<std::filesystem::path> drawings;
  std::error_code ec;
  if (!std::filesystem::is_directory(CorpusDir(), ec)) return drawings;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(CorpusDir(), ec)) {
    std::string ext = entry.path().extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    if (entry.is_regular_file() && ext == ".dxf") drawings.push_back(entry.path());
  }
  std::sort(drawings.begin(), drawings.end());
  return drawings;
}

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_CORPUS_H_
