// Bands of rows of the mean filters in vectors.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "image/window/filter_mean_portable.h"
#include "image/window/mean_pixel_neon.h"
#include "image/window/row_lanes_neon.h"
#include "image/window/window_sums_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The mean of floats, four rows at a time. `columns` holds the column sums of the first row and becomes those of the
// row after the fourth; enter[k] and leave[k] are the rows that lead from row k to the next. `turned` takes 4 n floats:
// the column sums of the four rows, column by column.
inline void turnColumns(float* columns, const float* const (&enter)[4], const float* const (&leave)[4], float* turned,
                        int32_t n) {
  int32_t x = 0;
  for (; x <= n - 4; x += 4) {
    float32x4_t sums = vld1q_f32(columns + x);
    float32x4x4_t rows;
    for (int k = 0; k < 4; ++k) {
      rows.val[k] = sums;
      sums = vsubq_f32(vaddq_f32(sums, vld1q_f32(enter[k] + x)), vld1q_f32(leave[k] + x));
    }
    vst1q_f32(columns + x, sums);
    vst1q_f32_x4(turned + ptrdiff_t{4} * x, transposed(rows));
  }
  for (; x < n; ++x) {
    for (int k = 0; k < 4; ++k) {
      turned[ptrdiff_t{4} * x + k] = columns[x];
      columns[x] = (columns[x] + enter[k][x]) - leave[k][x];
    }
  }
}

// Twin of portable::slide for four rows of a symmetric extension.
inline void meanOfTurned(const float* turned, float* const (&dst)[4], int32_t n, WindowReach reach, float reciprocal) {
  const FourRowWriter<float> to{dst};
  const auto column = [&](int64_t i) { return vld1q_f32(turned + 4 * mirrored(i, n)); };
  float32x4_t sum = vdupq_n_f32(0);
  const auto slide = [&](float32x4_t enter, float32x4_t leave) {
    sum = vsubq_f32(vaddq_f32(sum, enter), leave);
    return vmulq_n_f32(sum, reciprocal);
  };
  for (int64_t i = -int64_t{reach.before}; i <= reach.after; ++i) sum = vaddq_f32(sum, column(i));
  to.column(0, vmulq_n_f32(sum, reciprocal));

  int32_t x = 1;
  const auto slideOne = [&] {
    to.column(x, slide(column(int64_t{x} + reach.after), column(int64_t{x} - 1 - reach.before)));
    ++x;
  };
  while (x < n && x <= reach.before) slideOne();
  for (; int64_t{x} + 3 + reach.after < n; x += 4) {
    const float* const enter = turned + 4 * (ptrdiff_t{x} + reach.after);
    const float* const leave = turned + 4 * (ptrdiff_t{x} - 1 - reach.before);
    float32x4x4_t means;
    for (int k = 0; k < 4; ++k) means.val[k] = slide(vld1q_f32(enter + 4 * k), vld1q_f32(leave + 4 * k));
    to.columns(x, means);
  }
  while (x < n) slideOne();
}

template <class T>
struct MeanStore {
  T* dst;
  float reciprocal;

  void block(int32_t x, const uint32x4x4_t& sums) const {
    uint32x4x4_t pixels;
    for (int k = 0; k < 4; ++k) {
      pixels.val[k] = roundedMean<T>(vmulq_n_f32(floatFromSum<T>(sums.val[k]), reciprocal));
    }
    storePixels(dst + x, pixels);
  }
  void pixel(int32_t x, uint32_t sum) const {
    dst[x] = portable::pixelFromMean<T>(portable::floatFromSum<T>(sum) * reciprocal);
  }
};

// Columns left..right - 1 of a band of integers. Each row of the image is extended by what windows reach beyond the
// columns.
template <class T>
void meanColumns(const MeanBand<T>& band, int32_t left, int32_t right, void* buffer) {
  using Column = WindowColumn<T>;
  const WindowReach reach = band.reachX();
  const ExtendedColumns<Column> extended{static_cast<Column*>(buffer), right - left, reach};
  const bool atLeft = left == 0, atRight = right == band.width;
  const int32_t from = atLeft ? 0 : left - reach.before - 1, to = atRight ? band.width : right + reach.after;
  extended.first[0] = 0;
  const MirroredRows<T> rows{band.rows.src + from, band.rows.step, band.rows.height};
  forEachWindowRow(rows, band.reachY(), band.first, band.end, atLeft ? extended.columns() : extended.first, to - from,
                   moveRow<T>, [&](int32_t y) {
                     if (atLeft) extended.mirrorLeft();
                     if (atRight) extended.mirrorRight();
                     extended.slide(MeanStore<T>{band.dstRow(y) + left, band.reciprocal()});
                   });
}

// The buffer holds the column sums of one row, then those of four rows, transposed.
inline void meanFloats(const MeanBand<float>& band, void* buffer) {
  auto* const columns = static_cast<float*>(buffer);
  float* const turned = columns + band.width;
  const WindowReach reach = band.reachY();
  const auto enter = [&](int32_t y) { return band.rows(int64_t{y} + 1 + reach.after); };
  const auto leave = [&](int32_t y) { return band.rows(int64_t{y} - reach.before); };
  startColumns(band.rows, reach, 0, columns, band.width);
  int32_t y = 0;
  for (; y <= band.end - 4; y += 4) {
    turnColumns(columns, {enter(y), enter(y + 1), enter(y + 2), enter(y + 3)},
                {leave(y), leave(y + 1), leave(y + 2), leave(y + 3)}, turned, band.width);
    meanOfTurned(turned, {band.dstRow(y), band.dstRow(y + 1), band.dstRow(y + 2), band.dstRow(y + 3)}, band.width,
                 band.reachX(), band.reciprocal());
  }
  for (; y < band.end; ++y) {
    portable::storeMeanRow<float>(band, y, columns);
    advanceColumns(band.rows, reach, y, columns, band.width, portable::moveRow<float, float>);
  }
}

// Whether window sums fit 32 bits and the buffer has room for what the vector kernels keep: an extended row of column
// sums, which any buffer for bytes has, or five rows of sums of floats. There are no kernels for double.
template <class T>
bool hasVectorMean(const MeanBand<T>& band) {
  if constexpr (std::is_same_v<T, double>) return false;
  if constexpr (std::is_same_v<T, float>) return band.rows.height >= 5;
  if constexpr (sizeof(T) == 1) return true;
  return band.rows.height >= 2 && int64_t{band.mask.width} * band.mask.height <= 1 << 16;
}

template <class T>
void mean(const MeanBand<T>& band, void* buffer) {
  if (!hasVectorMean(band)) return portable::mean(band, buffer);
  if constexpr (std::is_same_v<T, float>) meanFloats(band, buffer);
  if constexpr (std::is_integral_v<T>) meanColumns(band, 0, band.width, buffer);
}

// Workers that write to the same cache line slow each other down by a tenth, and slices are adjacent: so sums start at
// a cache line. The room for that comes from doing one half of the columns after the other.
inline void meanOfSlice(const MeanBand<uint8_t>& band, uint16_t* slice) {
  constexpr int32_t kMinWidth = 128;
  constexpr uintptr_t kLine = 64;
  if (band.width < std::max(kMinWidth, 2 * band.mask.width)) return mean(band, slice);
  auto* const aligned = reinterpret_cast<uint16_t*>((reinterpret_cast<uintptr_t>(slice) + kLine - 1) / kLine * kLine);
  meanColumns(band, 0, band.width / 2, aligned);
  meanColumns(band, band.width / 2, band.width, aligned);
}

}  // namespace dax::neon
#endif
