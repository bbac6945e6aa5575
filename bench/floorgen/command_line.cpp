#include "command_line.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace floorgen {

namespace {

// Whole-string number parsing, independent of the locale.
template <typename Number>
Number ParseNumber(std::string_view option, std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw std::invalid_argument("invalid value for " + std::string(option) + ": '" + std::string(text) + "'");
  }
  return value;
}

void Require(bool condition, std::string_view option, std::string_view expectation) {
  if (!condition) throw std::invalid_argument(std::string(option) + " must be " + std::string(expectation));
}

}  // namespace

Options ParseCommandLine(std::span<const char* const> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view option = arguments[i];
    if (option == "-h" || option == "--help") {
      options.help = true;
      continue;
    }
    if (i + 1 >= arguments.size()) throw std::invalid_argument("unknown option or missing value: " + std::string(option));
    const std::string_view value = arguments[++i];
    if (option == "--rooms") {
      options.rooms = ParseNumber<int>(option, value);
      Require(options.rooms >= kMinRooms && options.rooms <= kMaxRooms, option, "between 3 and 1000000");
    } else if (option == "--seed") {
      options.seed = ParseNumber<std::uint64_t>(option, value);
    } else if (option == "--overlap") {
      options.overlap = ParseNumber<double>(option, value);
      Require(options.overlap >= 0.0 && options.overlap <= 1.0, option, "between 0 and 1");
    } else if (option == "--target-mb") {
      options.target_megabytes = ParseNumber<double>(option, value);
      Require(std::isfinite(options.target_megabytes) && options.target_megabytes >= 0.0 &&
                  options.target_megabytes <= 1e6,
              option, "between 0 and 1000000");
    } else if (option == "-o") {
      Require(!value.empty(), option, "a file name");
      options.output = std::string(value);
    } else {
      throw std::invalid_argument("unknown option: " + std::string(option));
    }
  }
  return options;
}

std::string UsageText() {
  return "usage: floorgen [--rooms N] [--seed S] [--overlap F] [--target-mb M] [-o FILE]\n"
         "Writes an office floor plan as an ASCII DXF drawing (R2018, millimetres).\n"
         "  --rooms N      rooms per storey, corridors included (3..1000000, default 24)\n"
         "  --seed S       seed of the layout; equal seeds give equal files (default 1)\n"
         "  --overlap F    fraction 0..1 of rooms whose contour overlaps its neighbours (default 0)\n"
         "  --target-mb M  add storeys side by side until the file has at least M MiB\n"
         "  -o FILE        write FILE whole or not at all (default: standard output)\n";
}

}  // namespace floorgen
