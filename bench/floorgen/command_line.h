// Options of the floorgen program.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace floorgen {

struct Options {
  int rooms = 24;  // per storey, corridors included
  std::uint64_t seed = 1;
  double overlap = 0.0;  // fraction of rooms with enlarged contours
  double target_megabytes = 0.0;  // 0: a single storey
  std::optional<std::string> output;  // standard output if absent
  bool help = false;
};

inline constexpr int kMinRooms = 3;
inline constexpr int kMaxRooms = 1'000'000;  // about 1 kB of memory per room

// Parses the arguments after the program name; throws std::invalid_argument
// with a message for the user on bad input.
Options ParseCommandLine(std::span<const char* const> arguments);

std::string UsageText();

}  // namespace floorgen
