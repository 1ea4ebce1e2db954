// Runs of pixels: their extremes, and how many lie within limits.
#pragma once

#include <cstdint>
#include <limits>

namespace dax {

template <class T>
struct Limits {
  T min, max;

  // Of no pixels: no pixel is above min or below max.
  static constexpr Limits none() {
    using Of = std::numeric_limits<T>;
    if constexpr (Of::has_infinity) return {Of::infinity(), -Of::infinity()};
    return {Of::max(), Of::min()};
  }
};

namespace portable {

// A NaN is neither.
template <class T>
Limits<T> limitsOfRun(const T* run, int32_t count) {
  Limits<T> found = Limits<T>::none();
  for (int32_t x = 0; x < count; ++x) {
    found.min = run[x] < found.min ? run[x] : found.min;
    found.max = run[x] > found.max ? run[x] : found.max;
  }
  return found;
}

template <class T>
int32_t countWithin(const T* run, int32_t count, T low, T high) {
  int32_t found = 0;
  for (int32_t x = 0; x < count; ++x) found += (run[x] >= low) & (run[x] <= high);
  return found;
}

}  // namespace portable
}  // namespace dax
