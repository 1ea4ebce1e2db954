// Sums over runs of at most kMaxRun integers, which compilers turn into vectors: what is summed is one of the maps below.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "image/statistics/pixel_runs.h"

namespace dax {

// Of a pixel, or of two: its value, how far it is from 0, how far they are apart. Floats become doubles first.
struct PixelValue {
  template <class T>
  static auto of(T a) {
    if constexpr (std::is_floating_point_v<T>) {
      return double{a};
    } else {
      return int32_t{a};
    }
  }
};
struct Magnitude {
  template <class T>
  static auto of(T a) {
    const auto value = PixelValue::of(a);
    return value < 0 ? -value : value;
  }
  template <class T>
  static auto of(T a, T b) {
    const auto first = PixelValue::of(a), second = PixelValue::of(b);
    if constexpr (std::is_floating_point_v<T>) {
      return std::fabs(first - second);
    } else {
      return std::max(first, second) - std::min(first, second);
    }
  }
};

namespace portable {

// |sum| < 2^14 * 2^16.
template <class Map, class... T>
int32_t totalOfRun(int32_t count, const T*... rows) {
  int32_t sum = 0;
  for (int32_t x = 0; x < count; ++x) sum += Map::of(rows[x]...);
  return sum;
}

template <class T>
int32_t totalOfPixels(int32_t count, const T* run) {
  return totalOfRun<PixelValue>(count, run);
}

template <class Map, class First, class... T>
uint64_t squaresOfRun(int32_t count, const First* first, const T*... rows) {
  using Sum = std::conditional_t<sizeof(First) == 1, uint32_t, uint64_t>;  // of bytes: < 2^14 * 2^16
  Sum sum = 0;
  for (int32_t x = 0; x < count; ++x) {
    const auto value = static_cast<uint32_t>(Map::of(first[x], rows[x]...));
    sum += value * value;
  }
  return sum;
}

template <class Map, class... T>
int32_t largestOfRun(int32_t count, const T*... rows) {
  int32_t largest = 0;
  for (int32_t x = 0; x < count; ++x) largest = std::max(largest, int32_t{Map::of(rows[x]...)});
  return largest;
}

}  // namespace portable
}  // namespace dax
