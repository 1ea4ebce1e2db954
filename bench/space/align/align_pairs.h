// Paired points to align, the same for all.
#pragma once

#include <cstdint>
#include <vector>

namespace bench {

constexpr int32_t kPairs = 100000;

struct Pairs {
  std::vector<double> from, to;
};

// A turn by the angle of the triangle 3, 4, 5, a shift, noise.
inline Pairs pairs() {
  Pairs made;
  uint32_t seed = 1;
  const auto draw = [&seed] {
    seed = seed * 1664525 + 1013904223;
    return static_cast<int32_t>(seed) * 0x1p-31;
  };
  for (int32_t i = 0; i < kPairs; ++i) {
    const double x = draw(), y = draw(), z = draw();
    made.from.insert(made.from.end(), {x, y, z});
    made.to.insert(made.to.end(),
                   {0.6 * x - 0.8 * y + 10 + 0.01 * draw(), 0.8 * x + 0.6 * y - 5 + 0.01 * draw(), z + 0.01 * draw()});
  }
  return made;
}

}  // namespace bench
