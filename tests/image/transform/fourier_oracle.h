// Transforms by their definitions, in long doubles, angles from exact remainders.
#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test::oracle {

using Number = std::complex<long double>;

inline Number root(int64_t k, int64_t n, bool isBackward) {
  const long double angle = 2 * std::numbers::pi_v<long double> * static_cast<long double>(k % n) / n;
  return {std::cos(angle), isBackward ? std::sin(angle) : -std::sin(angle)};
}

inline std::vector<Number> dft(const std::vector<Number>& x, bool isBackward) {
  const auto n = static_cast<int64_t>(x.size());
  std::vector<Number> roots, sums(x.size());
  for (int64_t k = 0; k < n; ++k) roots.push_back(root(k, n, isBackward));
  for (int64_t u = 0; u < n; ++u) {
    for (int64_t k = 0; k < n; ++k) sums[size_t(u)] += x[size_t(k)] * roots[size_t(u * k % n)];
  }
  return sums;
}

// Rows, then columns; pixel (x, y) is element y W + x.
inline std::vector<Number> dft(std::vector<Number> picture, DaxiSize size, bool isBackward) {
  const auto along = [&](int32_t lines, int32_t count, int32_t next, int32_t step) {
    for (int32_t line = 0; line < lines; ++line) {
      std::vector<Number> x;
      for (int32_t i = 0; i < count; ++i) x.push_back(picture[size_t(line * next + i * step)]);
      x = dft(x, isBackward);
      for (int32_t i = 0; i < count; ++i) picture[size_t(line * next + i * step)] = x[size_t(i)];
    }
  };
  along(size.height, size.width, size.width, 1);
  along(size.width, size.height, 1, size.width);
  return picture;
}

// One dimension: type II, or type III of a backward one.
inline std::vector<double> dct(const std::vector<double>& x, bool isBackward) {
  const auto n = static_cast<int64_t>(x.size());
  std::vector<double> sums;
  for (int64_t i = 0; i < n; ++i) {
    double sum = 0;
    for (int64_t j = 0; j < n; ++j) {
      const int64_t sample = isBackward ? i : j, k = isBackward ? j : i;
      const double weight = std::sqrt((k ? 2.0 : 1.0) / static_cast<double>(n));
      const auto turn = static_cast<double>((2 * sample + 1) * k % (4 * n));
      sum += weight * x[size_t(j)] * std::cos(std::numbers::pi * turn / (2 * static_cast<double>(n)));
    }
    sums.push_back(sum);
  }
  return sums;
}

}  // namespace dax::test::oracle
