// Rows of pyramids: sums along a row of the source, and rows of the result from such sums.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "daxi/border.h"
#include "image/border/border_index.h"

namespace dax {

// What sums along both directions fit: at most 256 times a level.
template <class T>
using PyramidSum =
    std::conditional_t<std::is_floating_point_v<T>, T, std::conditional_t<sizeof(T) == 1, uint16_t, uint32_t>>;

namespace portable {

// sum / 2^kShift, halves to even.
template <class T, int kShift, class Sum>
T pyramidLevel(Sum sum) {
  if constexpr (std::is_floating_point_v<T>) {
    return sum * (T{1} / (1 << kShift));
  } else {
    return static_cast<T>((sum + ((1 << (kShift - 1)) - 1) + (sum >> kShift & 1)) >> kShift);
  }
}

template <class Sum>
Sum fiveTaps(Sum a, Sum b, Sum c, Sum d, Sum e) {
  return static_cast<Sum>(6 * c + 4 * (b + d) + (a + e));
}

// The columns first..end - 1 of half a row.
template <int kChannels, class T>
void halveAlongX(const T* src, int32_t width, PyramidSum<T>* sums, int32_t first, int32_t end) {
  using Sum = PyramidSum<T>;
  const auto mirrored = [&](int64_t x) { return src + borderIndex(x, width, DAXI_BORDER_MIRROR) * kChannels; };
  int32_t x = first;
  const auto atEdge = [&] {
    const int64_t at = 2 * int64_t{x};
    const T *const a = mirrored(at - 2), *const b = mirrored(at - 1), *const c = mirrored(at);
    const T *const d = mirrored(at + 1), *const e = mirrored(at + 2);
    for (int k = 0; k < kChannels; ++k) sums[x * kChannels + k] = fiveTaps<Sum>(a[k], b[k], c[k], d[k], e[k]);
  };
  for (; x < end && x < 1; ++x) atEdge();
  const int32_t inside = (width - 1) / 2;  // 2x + 2 < width
  for (; x < end && x < inside; ++x) {
    const T* const at = src + ptrdiff_t{2} * x * kChannels;
    for (int k = 0; k < kChannels; ++k) {
      sums[x * kChannels + k] =
          fiveTaps<Sum>(at[k - 2 * kChannels], at[k - kChannels], at[k], at[k + kChannels], at[k + 2 * kChannels]);
    }
  }
  for (; x < end; ++x) atEdge();
}

template <class T>
void halveAlongY(const PyramidSum<T>* const (&rows)[5], T* dst, int32_t count) {
  using Sum = PyramidSum<T>;
  for (int32_t i = 0; i < count; ++i) {
    dst[i] = pyramidLevel<T, 8>(fiveTaps<Sum>(rows[0][i], rows[1][i], rows[2][i], rows[3][i], rows[4][i]));
  }
}

// A row of twice the width, or one pixel less.
template <int kChannels, class T>
void doubleAlongX(const T* src, int32_t width, PyramidSum<T>* sums, int32_t dstWidth) {
  using Sum = PyramidSum<T>;
  const auto both = [&](int32_t x, const T* left, const T* right) {
    const T* const at = src + ptrdiff_t{x} * kChannels;
    Sum* const to = sums + ptrdiff_t{2} * x * kChannels;
    for (int k = 0; k < kChannels; ++k) {
      to[k] = static_cast<Sum>(6 * Sum{at[k]} + (Sum{left[k]} + Sum{right[k]}));
      if (2 * x + 1 < dstWidth) to[k + kChannels] = static_cast<Sum>(4 * (Sum{at[k]} + Sum{right[k]}));
    }
  };
  const auto mirrored = [&](int32_t x) { return src + borderIndex(x, width, DAXI_BORDER_MIRROR) * kChannels; };
  both(0, mirrored(-1), mirrored(1));
  for (int32_t x = 1; x + 1 < width; ++x) {
    const T* const at = src + ptrdiff_t{x} * kChannels;
    Sum* const to = sums + ptrdiff_t{2} * x * kChannels;
    for (int k = 0; k < kChannels; ++k) {
      to[k] = static_cast<Sum>(6 * Sum{at[k]} + (Sum{at[k - kChannels]} + Sum{at[k + kChannels]}));
      to[k + kChannels] = static_cast<Sum>(4 * (Sum{at[k]} + Sum{at[k + kChannels]}));
    }
  }
  if (width > 1) both(width - 1, mirrored(width - 2), mirrored(width));
}

// An even row of the result from three, an odd one from two.
template <class T>
void doubleAlongY(const PyramidSum<T>* const (&rows)[3], bool isOdd, T* dst, int32_t count) {
  using Sum = PyramidSum<T>;
  const Sum *const above = rows[0], *const at = rows[1], *const below = rows[2];
  if (isOdd) {
    for (int32_t i = 0; i < count; ++i) dst[i] = pyramidLevel<T, 6>(static_cast<Sum>(4 * (at[i] + below[i])));
  } else {
    for (int32_t i = 0; i < count; ++i) {
      dst[i] = pyramidLevel<T, 6>(static_cast<Sum>(6 * at[i] + (above[i] + below[i])));
    }
  }
}

}  // namespace portable
}  // namespace dax
