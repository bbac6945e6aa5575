// Fuzz entry for the settings file reader: any bytes read without a crash,
// and what was read survives a write and a second read unchanged.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "settings/reg_file_reader.h"
#include "settings/reg_file_writer.h"

namespace {

bool SameFile(const fx::settings::RegFile& a, const fx::settings::RegFile& b) {
  if (a.keys.size() != b.keys.size()) return false;
  for (size_t k = 0; k < a.keys.size(); ++k) {
    if (a.keys[k].path != b.keys[k].path) return false;
    if (a.keys[k].values.size() != b.keys[k].values.size()) return false;
    for (size_t v = 0; v < a.keys[k].values.size(); ++v) {
      const auto& x = a.keys[k].values[v];
      const auto& y = b.keys[k].values[v];
      if (x.name != y.name || x.type != y.type || x.data != y.data) return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<fx::settings::RegFileProblem> problems;
  const fx::settings::RegFile file = fx::settings::ParseRegFile(
      std::string_view(reinterpret_cast<const char*>(data), size), &problems);
  std::vector<fx::settings::RegFileProblem> again_problems;
  const fx::settings::RegFile again =
      fx::settings::ParseRegFile(fx::settings::FormatRegFile(file), &again_problems);
  if (!again_problems.empty() || !SameFile(file, again)) __builtin_trap();
  return 0;
}
