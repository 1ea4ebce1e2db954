// Rows of Gaussian filters, pixel by pixel. Along columns a pair is a pixel of a row above and that of the row as far below;
// along rows the results of this are paired left and right. Sums are taken in the order of the taps.
#pragma once

#include <cstddef>
#include <cstdint>

#include "image/gauss/gauss_taps.h"

namespace dax {

template <class T>
struct GaussPixel;

// Between the passes 7 bits below the point: pairs fit 16 bits.
template <>
struct GaussPixel<uint8_t> {
  using Weight = uint16_t;
  using Between = uint16_t;
  using Sum = uint32_t;
  static constexpr int32_t kBetweenBits = 7;
};

// Between the passes 14 bits below the point: pairs fit 32 bits with their sign.
template <class T>
struct GaussWord {
  using Weight = int32_t;
  using Between = int32_t;
  using Sum = int64_t;
  static constexpr int32_t kBetweenBits = 14;
};
template <>
struct GaussPixel<uint16_t> : GaussWord<uint16_t> {};
template <>
struct GaussPixel<int16_t> : GaussWord<int16_t> {};

template <>
struct GaussPixel<float> {
  using Weight = float;
  using Between = float;
  using Sum = float;
};

template <class T>
using GaussTapsOf = GaussTaps<typename GaussPixel<T>::Weight>;

namespace portable {

template <class Sum, class Between, class Weight>
Sum weighted(Between a, Between b, Weight weight) {
  return static_cast<Sum>(weight) * (static_cast<Sum>(a) + static_cast<Sum>(b));
}

// Columns x..end - 1 of a row between the passes. rows: those above and below of every tap.
template <class T>
void gaussColumns(const T* const* rows, const GaussTapsOf<T>& taps, typename GaussPixel<T>::Between* to, ptrdiff_t x,
                  ptrdiff_t end) {
  using P = GaussPixel<T>;
  using Sum = typename P::Sum;
  for (; x < end; ++x) {
    Sum sum = weighted<Sum>(rows[0][x], rows[1][x], taps.weight[0]);
    for (int32_t k = 1; k < taps.count; ++k) sum += weighted<Sum>(rows[2 * k][x], rows[2 * k + 1][x], taps.weight[k]);
    if constexpr (std::is_floating_point_v<T>) {
      to[x] = sum;
    } else {
      const int32_t shift = taps.bits + 1 - P::kBetweenBits;
      to[x] = static_cast<typename P::Between>((sum + (Sum{1} << (shift - 1))) >> shift);
    }
  }
}

// Pixels x..end - 1 of the result. 8u: the sums of the groups are cut to 2^16 parts, so that all together fit 32 bits.
template <class T>
void gaussRow(const typename GaussPixel<T>::Between* from, const GaussTapsOf<T>& taps, T* to, ptrdiff_t x,
              ptrdiff_t end) {
  using P = GaussPixel<T>;
  using Sum = typename P::Sum;
  const auto pair = [&](int32_t k) {
    const ptrdiff_t distance = taps.distance[k];
    return weighted<Sum>(from[x - distance], from[x + distance], taps.weight[k]);
  };
  for (; x < end; ++x) {
    Sum sum = pair(0);
    if constexpr (std::is_same_v<T, uint8_t>) {
      int32_t k = 1;
      Sum all = 0;
      for (int32_t group = 0; group < taps.groups; ++group) {
        for (; k < taps.groupEnd[group]; ++k) sum += pair(k);
        all += sum >> (taps.bits - 16);
        sum = 0;
      }
      to[x] = static_cast<uint8_t>(((all >> 16) + 128) >> 8);
    } else {
      for (int32_t k = 1; k < taps.count; ++k) sum += pair(k);
      if constexpr (std::is_floating_point_v<T>) {
        to[x] = sum;
      } else {
        constexpr int32_t kShift = 30 + 1 + P::kBetweenBits;
        to[x] = static_cast<T>((sum + (Sum{1} << (kShift - 1))) >> kShift);
      }
    }
  }
}

}  // namespace portable
}  // namespace dax
