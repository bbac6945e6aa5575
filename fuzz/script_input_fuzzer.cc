// Fuzz entry for the console's script reading: the input is a script file, read
// as -s reads it, then taken token by token as commands and answers would take
// it, with text sent for execution put in front now and then. Every token must
// come from the script's text, and the input must run out.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "host/dxf/console/script_input.h"

namespace {

std::string ScriptPath() {
  return "/tmp/fx-script-fuzz-" + std::to_string(::getpid()) + ".scr";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string path = ScriptPath();
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) __builtin_trap();
  std::fwrite(data, 1, size, file);
  std::fclose(file);

  fx::console::ScriptInput input;
  std::string error;
  if (!input.AddFile(path, &error)) __builtin_trap();
  std::string token;
  // Each token takes at least one character or ends one line, so the tokens
  // cannot outnumber the characters plus the lines, and each insertion (one
  // in the first `size` steps at most) adds a few.
  constexpr std::string_view kSent = "ZOOM \"E\"\"x\" \n";
  const size_t limit = 2 * size + 16 + size * (kSent.size() + 2);
  for (size_t step = 0; step <= limit; ++step) {
    const uint8_t choice = size > 0 ? data[step % size] : 0;
    if (step < size && choice % 17 == 0) input.InsertFront(kSent);
    const auto end =
        choice % 2 == 0 ? fx::console::TokenEnd::kBlank : fx::console::TokenEnd::kLineEnd;
    if (!input.Next(end, token)) {
      if (input.hasPending()) __builtin_trap();
      return 0;
    }
    if (token.size() > size + 16) __builtin_trap();
  }
  __builtin_trap();  // never ran out
}
