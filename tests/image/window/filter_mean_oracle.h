// Local means by their definition, with sums that slide: for integers that is exact, for floats the order is a part of it.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "dax/types.h"

namespace dax::oracle {

// Sums around the elements 0..n - 1 of a line that line(i) gives beyond its ends as well.
template <class Sum, class Line>
std::vector<Sum> windowSums(const Line& line, int32_t n, int32_t window) {
  const int32_t before = window / 2;
  std::vector<Sum> sums(1);
  for (int32_t i = -before; i < window - before; ++i) sums[0] += line(i);
  for (int32_t x = 1; x < n; ++x) {
    sums.push_back((sums.back() + line(x - before + window - 1)) - line(x - before - 1));
  }
  return sums;
}

// Along all columns, then along all rows; row by row. pixel(x, y) is asked for positions around w x h as well.
template <class Sum, class Pixel>
std::vector<Sum> windowSums(const Pixel& pixel, DaxiSize size, DaxiSize mask) {
  const int32_t left = mask.width / 2;
  std::vector<std::vector<Sum>> columns;
  for (int32_t x = -left; x < size.width - left + mask.width - 1; ++x) {
    columns.push_back(
        windowSums<Sum>([&](int32_t y) { return static_cast<Sum>(pixel(x, y)); }, size.height, mask.height));
  }
  std::vector<Sum> result;
  for (size_t y = 0; y < static_cast<size_t>(size.height); ++y) {
    const auto column = [&](int32_t x) { return columns[static_cast<size_t>(x + left)][y]; };
    const std::vector<Sum> row = windowSums<Sum>(column, size.width, mask.width);
    result.insert(result.end(), row.begin(), row.end());
  }
  return result;
}

// The index within 0..n - 1 of a line that goes on symmetrically.
inline int32_t fold(int32_t i, int32_t n) {
  const int32_t j = (i % (2 * n) + 2 * n) % (2 * n);
  return j < n ? j : 2 * n - 1 - j;
}

// How many of the window around i lie in 0..n - 1.
inline int32_t inside(int32_t i, int32_t window, int32_t n) {
  int32_t count = 0;
  for (int32_t k = i - window / 2; k < i - window / 2 + window; ++k) count += k >= 0 && k < n;
  return count;
}

template <class T, class Real>
T toPixel(Real mean) {
  if constexpr (std::is_floating_point_v<T>) return static_cast<T>(mean);
  return static_cast<T>(mean < 0 ? std::ceil(mean - Real(0.5)) : std::floor(mean + Real(0.5)));
}

template <class T, class Pixel>
std::vector<T> mean(const Pixel& pixel, DaxiSize size, DaxiSize mask) {
  using Sum = std::conditional_t<std::is_floating_point_v<T>, T, int64_t>;
  using Real = std::conditional_t<std::is_same_v<T, double>, double, float>;
  const Real reciprocal = Real(1) / static_cast<Real>(int64_t{mask.width} * mask.height);
  const auto extended = [&](int32_t x, int32_t y) { return pixel(fold(x, size.width), fold(y, size.height)); };
  std::vector<T> means;
  for (const Sum sum : windowSums<Sum>(extended, size, mask)) {
    means.push_back(toPixel<T>(static_cast<Real>(sum) * reciprocal));
  }
  return means;
}

// Of the pixels inside the image.
template <class T, class Pixel>
std::vector<T> meanInside(const Pixel& pixel, DaxiSize size, DaxiSize mask) {
  using Sum = std::conditional_t<std::is_floating_point_v<T>, double, int64_t>;
  using Real = std::conditional_t<std::is_floating_point_v<T>, double, float>;
  const auto extended = [&](int32_t x, int32_t y) {
    return x >= 0 && x < size.width && y >= 0 && y < size.height ? pixel(x, y) : T{};
  };
  const std::vector<Sum> sums = windowSums<Sum>(extended, size, mask);
  std::vector<T> means;
  for (int32_t y = 0; y < size.height; ++y) {
    const int64_t rows = inside(y, mask.height, size.height);
    for (int32_t x = 0; x < size.width; ++x) {
      const auto count = static_cast<Real>(rows * inside(x, mask.width, size.width));
      means.push_back(toPixel<T>(static_cast<Real>(sums[means.size()]) / count));
    }
  }
  return means;
}

}  // namespace dax::oracle
