// Polynomials that are solved for time, the same for all.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace bench {

constexpr int kQuartics = 256;  // a call solves as many, since one takes a microsecond

using Quartic = std::array<double, 5>;

// Numbers of -1 to 1.
class Numbers {
 public:
  double next() {
    seed_ = seed_ * 1664525 + 1013904223;
    return static_cast<int32_t>(seed_) * 0x1p-31;
  }

 private:
  uint32_t seed_ = 1;
};

// With random coefficients, or with four roots of -1 to 1.
inline std::vector<Quartic> quartics(bool areRootsReal) {
  Numbers numbers;
  std::vector<Quartic> made(kQuartics);
  for (Quartic& p : made) {
    if (!areRootsReal) {
      for (double& each : p) each = numbers.next();
      continue;
    }
    p = {1, 0, 0, 0, 0};
    for (size_t degree = 1; degree <= 4; ++degree) {
      const double root = numbers.next();
      for (size_t i = degree; i > 0; --i) p[i] = p[i - 1] - root * p[i];
      p[0] *= -root;
    }
  }
  return made;
}

inline std::vector<double> coefficients(int32_t degree) {
  Numbers numbers;
  std::vector<double> made(static_cast<size_t>(degree) + 1);
  for (double& each : made) each = numbers.next();
  return made;
}

constexpr int32_t kDegrees[] = {8, 20, 60};

inline const char* titleOfDegree(int32_t degree) {
  return degree == 8 ? "roots of degree 8" : degree == 20 ? "roots of degree 20" : "roots of degree 60";
}

}  // namespace bench
