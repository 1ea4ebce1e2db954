// Reproducible random numbers.
#pragma once

#include <cstdint>

class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  // 0 .. 1, by splitmix64.
  double uniform() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return static_cast<double>((z ^ (z >> 31)) >> 11) / 9007199254740992.0;
  }
  double between(double low, double high) { return low + (high - low) * uniform(); }
  // Mean 0, standard deviation 1: twelve uniform numbers less 6.
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += uniform();
    return sum;
  }

 private:
  uint64_t state_;
};
