// Linear interpolation of pixels whose neighbours have been brought together.
#pragma once

#include <cstdint>
#include <type_traits>

#include "image/warp/sampling.h"

namespace dax {

// How many bits of a position's fraction count.
template <class T>
constexpr int kFractionBits = std::is_integral_v<T> ? 16 : 24;

// Of each position of a run the pixel left of it and the right one, of its row and of the next.
template <class T>
struct Neighbours {
  T above[2 * kChunk];
  T below[2 * kChunk];
};

namespace portable {

// Linear interpolation of a pixel and its right neighbour, and of the two below. Integers: exact until the last rounding,
// halves to the even one.
template <class T>
T linearOf(const T* above, const T* below, int64_t px, int64_t py) {
  constexpr int kBits = kFractionBits<T>, kUnused = 32 - kBits;
  const auto fx = static_cast<int32_t>(static_cast<uint32_t>(px) >> kUnused);
  const auto fy = static_cast<int32_t>(static_cast<uint32_t>(py) >> kUnused);
  if constexpr (std::is_integral_v<T>) {
    using Row = std::conditional_t<sizeof(T) == 1, int32_t, int64_t>;
    const auto along = [&](const T* row) {
      const Row left = row[0], right = row[1];
      return (left << kBits) + (right - left) * fx;
    };
    const Row top = along(above), difference = along(below) - top;
    const int64_t sum = (int64_t{top} << kBits) + int64_t{difference} * fy;
    constexpr int64_t kBelowHalf = (int64_t{1} << (2 * kBits - 1)) - 1;
    return static_cast<T>((sum + kBelowHalf + (sum >> 2 * kBits & 1)) >> 2 * kBits);
  } else {
    const auto between = [](double first, double second, int32_t f) {
      const double part = f * 0x1p-24, counted = f ? second : 0;
      return (1 - part) * first + part * counted;
    };
    return static_cast<T>(between(between(above[0], above[1], fx), between(below[0], below[1], fx), fy));
  }
}

template <class T>
void linearRun(const Neighbours<T>& around, const int64_t* px, const int64_t* py, int32_t count, T* dst,
               int32_t from = 0) {
  for (int32_t i = from; i < count; ++i) dst[i] = linearOf(around.above + 2 * i, around.below + 2 * i, px[i], py[i]);
}

}  // namespace portable
}  // namespace dax
