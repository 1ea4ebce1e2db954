// The library's random numbers: PCG-XSH-RR 64/32. The same seed and stream give the same numbers on every machine.
// O'Neill, PCG: A family of simple fast space-efficient statistically good algorithms for random number generation,
// HMC-CS-2014-0905, 2014.
#pragma once

#include <bit>
#include <cstdint>

namespace dax {

class Pcg32 {
 public:
  // Generators of one seed and different streams (below 2^63) are independent.
  constexpr explicit Pcg32(uint64_t seed, uint64_t stream = 0) : increment_(stream << 1 | 1) {
    next();
    state_ += seed;
    next();
  }

  constexpr uint32_t next() {
    const uint64_t state = state_;
    state_ = state * 6364136223846793005u + increment_;
    return std::rotr(static_cast<uint32_t>((state >> 18 ^ state) >> 27), static_cast<int>(state >> 59));
  }

  // Uniform in 0..n - 1, exactly; n >= 1. Takes one number, seldom more. Lemire, Fast random integer generation in an
  // interval, ACM Transactions on Modeling and Computer Simulation 29, 2019.
  constexpr uint32_t below(uint32_t n) {
    uint64_t product = uint64_t{next()} * n;
    if (static_cast<uint32_t>(product) < n) {
      const uint32_t surplus = -n % n;  // 2^32 modulo n
      while (static_cast<uint32_t>(product) < surplus) product = uint64_t{next()} * n;
    }
    return static_cast<uint32_t>(product >> 32);
  }

  // A multiple of 2^-53 in [0, 1), uniform. Takes two numbers.
  constexpr double unit() {
    const uint64_t high = next();
    return static_cast<double>((high << 32 | next()) >> 11) * 0x1p-53;
  }

 private:
  uint64_t state_ = 0;
  uint64_t increment_;
};

}  // namespace dax
