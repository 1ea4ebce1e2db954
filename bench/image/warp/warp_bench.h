// What is warped, remapped and unrolled: a turn by 0.3 and a tilt with 1080p from and to.
#pragma once

#include <algorithm>
#include <cmath>

#include "bench/support/image.h"

namespace bench {

// From the destination to the source.
inline void turnBack(double (&m)[9]) {
  const double c = std::cos(0.3), s = std::sin(0.3), x = (kSize.width - 1) / 2.0, y = (kSize.height - 1) / 2.0;
  const double turn[9] = {c, s, x - (c * x + s * y), -s, c, y - (c * y - s * x), 0, 0, 1};
  std::copy_n(turn, 9, m);
}

inline void tiltBack(double (&m)[9]) {
  turnBack(m);
  m[6] = 0.2 / kSize.width;
  m[7] = -0.1 / kSize.height;
}

// Places of the turn, as floats.
inline Image<float> turnMap(bool isX) {
  double m[9];
  turnBack(m);
  Image<float> map(kSize);
  const double* const row = m + (isX ? 0 : 3);
  for (size_t i = 0; i < map.pixels->size(); ++i) {
    const auto width = static_cast<size_t>(kSize.width);
    map.data()[i] =
        static_cast<float>(row[0] * static_cast<double>(i % width) + row[1] * static_cast<double>(i / width) + row[2]);
  }
  return map;
}

// Rows of the rings: columns are angles.
inline const DaxiSize kRing = {kSize.width, kSize.height / 2};

}  // namespace bench
