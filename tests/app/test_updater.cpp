// A stand-in for the product update check library: CheckUpdate appends a
// line to the file FX_TEST_UPDATER_LOG names, so a test counts the calls.
#include <cstdio>
#include <cstdlib>

extern "C" __attribute__((visibility("default"))) void CheckUpdate(void) {
  const char* log = std::getenv("FX_TEST_UPDATER_LOG");
  if (log == nullptr) return;
  if (std::FILE* file = std::fopen(log, "a")) {
    std::fputs("CheckUpdate\n", file);
    std::fclose(file);
  }
}
