// Deterministic pseudo-random numbers. The engine is fully defined by the C++
// standard and the mapping to ranges is done here (the standard distributions
// are implementation-defined), so a seed gives the same drawing everywhere.
#pragma once

#include <cstdint>
#include <random>

namespace floorgen {

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  // Uniform integer in [low, high].
  int Between(int low, int high) {
    const auto span = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<int>(engine_() % span);
  }

  // True with the given probability in percent.
  bool Chance(int percent) { return Between(0, 99) < percent; }

 private:
  std::mt19937_64 engine_;
};

}  // namespace floorgen
