// Calipers: sampling, sums and filter, any pixel type, any instruction set.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/rows.h"
#include "measure/caliper/caliper.h"

namespace dax {

constexpr int kTrackBits = 30;                        // fraction bits of a position on its way along a row
constexpr int kPositionBits = 11;                     // of a sample's position, and so of its weights
constexpr int kRoundingBits = 2 * kPositionBits - 8;  // 8-bit pixels and both weights together are 30 bits
constexpr int32_t kOnePixel = 1 << kPositionBits;

// Positions along a row, in 2^-30 pixel, half a position's unit added so that they are rounded by a shift.
struct SampleTrack {
  int64_t x;
  int64_t y;
  int64_t dx;
  int64_t dy;

  int64_t positionX(int32_t j) const { return (x + j * dx) >> (kTrackBits - kPositionBits); }
  int64_t positionY(int32_t j) const { return (y + j * dy) >> (kTrackBits - kPositionBits); }
};

// The pixels that a sample is made of, those without weight left out.
struct SamplePlace {
  SamplePlace(int64_t x, int64_t y)
      : x0(x >> kPositionBits),
        y0(y >> kPositionBits),
        fx(static_cast<int32_t>(x & (kOnePixel - 1))),
        fy(static_cast<int32_t>(y & (kOnePixel - 1))) {}
  int64_t x1() const { return x0 + (fx != 0); }
  int64_t y1() const { return y0 + (fy != 0); }

  int64_t x0;
  int64_t y0;
  int32_t fx;
  int32_t fy;
};

namespace portable {

// A position moved into the image.
inline SamplePlace placeOf(const SampleTrack& track, int32_t j, DaxiSize size) {
  const int64_t right = int64_t{size.width - 1} << kPositionBits, bottom = int64_t{size.height - 1} << kPositionBits;
  return {std::clamp<int64_t>(track.positionX(j), 0, right), std::clamp<int64_t>(track.positionY(j), 0, bottom)};
}

template <class T>
CaliperSample<T> interpolate(const T* pixels, int32_t step, const SamplePlace& at) {
  using Weight = std::conditional_t<std::is_same_v<T, uint8_t>, uint32_t, int64_t>;
  const T* const row0 = pixels + at.y0 * step;
  const T* const row1 = pixels + at.y1() * step;
  const auto wx = static_cast<Weight>(at.fx), wy = static_cast<Weight>(at.fy);
  const Weight top = row0[at.x0] * (kOnePixel - wx) + row0[at.x1()] * wx;
  const Weight bottom = row1[at.x0] * (kOnePixel - wx) + row1[at.x1()] * wx;
  return static_cast<CaliperSample<T>>((top * (kOnePixel - wy) + bottom * wy + (1 << (kRoundingBits - 1))) >>
                                       kRoundingBits);
}

template <class T>
void sampleRow(const T* pixels, int32_t step, DaxiSize size, const SampleTrack& track, int32_t first, int32_t end,
               CaliperSample<T>* out) {
  for (int32_t j = first; j < end; ++j) out[j] = interpolate(pixels, step, placeOf(track, j, size));
}

// 1 where every pixel of a sample counts, else 0.
inline void sampleMask(const uint8_t* mask, int32_t step, DaxiSize size, const SampleTrack& track, int32_t count,
                       uint8_t* valid) {
  for (int32_t j = 0; j < count; ++j) {
    const SamplePlace at = placeOf(track, j, size);
    const uint8_t* const row0 = mask + at.y0 * step;
    const uint8_t* const row1 = mask + at.y1() * step;
    valid[j] = row0[at.x0] && row0[at.x1()] && row1[at.x0] && row1[at.x1()];
  }
}

template <class Sample, class Sum>
void addColumns(const Sample* patch, int32_t columns, int32_t rows, int32_t first, Sum* sums) {
  for (int32_t k = 0; k < rows; ++k) {
    for (int32_t j = first; j < columns; ++j) sums[j] += rowAt(patch, columns, k)[j];
  }
}

template <class Sample>
int64_t sumOf(const Sample* row, int32_t first, int32_t columns) {
  int64_t sum = 0;
  for (int32_t j = first; j < columns; ++j) sum += row[j];
  return sum;
}

// The input begins half a kernel before the first value.
inline void filter(const float* extended, const float* kernel, int32_t length, int32_t first, int32_t n, float* out) {
  for (int32_t i = first; i < n; ++i) {
    float sum = 0;
    for (int32_t k = 0; k < length; ++k) sum += kernel[k] * extended[i + k];
    out[i] = sum;
  }
}

}  // namespace portable
}  // namespace dax
