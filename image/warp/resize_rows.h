// Rows of a resize in double precision.
//
// An arithmetic has a type Mid of rows that are resized along x; Columns, a part of the work buffer that holds the taps of all
// columns; and two steps: alongX from a row of source pixels, whose first is that of the leftmost tap, and alongY, which
// adds up rows.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/memory/work_buffer.h"
#include "frame/numeric/round.h"
#include "image/warp/resize_taps.h"

namespace dax {

template <class T, int kChannels>
struct RealResize {
  using Mid = double;
  using RowWeight = double;

  struct Columns {
    Columns(BufferLayout& layout, int32_t columns, int32_t taps)
        : width(columns),
          maxTaps(taps),
          tapsOf(layout.add<Taps>(static_cast<uint64_t>(columns))),
          weights(layout.add<double>(static_cast<uint64_t>(columns) * static_cast<uint64_t>(taps))) {}

    void set(void* buffer, int32_t x, const Taps& taps, const double* real) const {
      tapsOf.in(buffer)[x] = taps;
      std::copy_n(real, taps.count, weights.in(buffer) + ptrdiff_t{x} * maxTaps);
    }
    void finish(void*) const {}

    int32_t width, maxTaps;
    BufferPiece<Taps> tapsOf;
    BufferPiece<double> weights;
  };

  static Mid midOf(T value) { return value; }
  static void rowWeights(const Taps& taps, const double* real, RowWeight* weights) {
    std::copy_n(real, taps.count, weights);
  }

  static void alongX(const Columns& columns, void* buffer, const T* row, Mid* mid, int32_t) {
    const Taps* const tapsOf = columns.tapsOf.in(buffer);
    const double* w = columns.weights.in(buffer);
    for (int32_t x = 0; x < columns.width; ++x, w += columns.maxTaps) {
      const T* const at = row + ptrdiff_t{tapsOf[x].first} * kChannels;
      for (int c = 0; c < kChannels; ++c) {
        double sum = w[0] * at[c];
        for (int32_t k = 1; k < tapsOf[x].count; ++k) sum += w[k] * at[k * kChannels + c];
        mid[kChannels * ptrdiff_t{x} + c] = sum;
      }
    }
  }

  static void alongY(const Mid* const* rows, const RowWeight* weights, int32_t taps, T* dst, int32_t count, int32_t) {
    constexpr int32_t kBlock = 16;
    for (int32_t i = 0; i < count; i += kBlock) {
      const int32_t n = std::min(kBlock, count - i);
      double sums[kBlock] = {};
      for (int32_t j = 0; j < n; ++j) sums[j] = weights[0] * rows[0][i + j];
      for (int32_t k = 1; k < taps; ++k) {
        for (int32_t j = 0; j < n; ++j) sums[j] += weights[k] * rows[k][i + j];
      }
      for (int32_t j = 0; j < n; ++j) {
        if constexpr (std::is_integral_v<T>) {
          dst[i + j] = roundTo<T>(sums[j]);
        } else {
          dst[i + j] = static_cast<T>(sums[j]);
        }
      }
    }
  }
};

}  // namespace dax
