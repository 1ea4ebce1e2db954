#pragma once

#include <cstdint>

namespace dax::tool {

// SplitMix64.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}

  uint64_t bits() {
    state_ += 0x9E3779B97F4A7C15u;
    uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  // A random integer in [low, high].
  int integer(int low, int high) { return low + static_cast<int>(bits() % static_cast<uint64_t>(high - low + 1)); }

  // A multiple of 1/64 in [low, high].
  double real(int low, int high) { return integer(low * 64, high * 64) / 64.0; }

 private:
  uint64_t state_;
};

}  // namespace dax::tool
