// Bilinear samples along a row, for any pixel type and any instruction set.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/rows.h"
#include "measure/caliper/caliper_sample.h"

namespace dax {

constexpr int kTrackBits = 30;     // fraction bits of positions while they advance along a row
constexpr int kPositionBits = 11;  // fraction bits of a sample's position, and so of its weights
// Bits to drop from pixel * weight * weight (30 bits for 8-bit pixels), so that 8 fraction bits remain.
constexpr int kRoundingBits = 2 * kPositionBits - 8;
constexpr int32_t kOnePixel = 1 << kPositionBits;

// Positions along a row in units of 2^-30 pixel. Half of 1/2048 pixel is added, so that a shift rounds them.
struct SampleTrack {
  int64_t x;
  int64_t y;
  int64_t dx;
  int64_t dy;

  int64_t positionX(int32_t j) const { return (x + j * dx) >> (kTrackBits - kPositionBits); }
  int64_t positionY(int32_t j) const { return (y + j * dy) >> (kTrackBits - kPositionBits); }
};

// The four pixels of a sample and their weights. Pixels with weight 0 are not read: they may lie outside the image.
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

// A position clamped to the image.
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

template <class T>
void sampleRow(const T* pixels, int32_t step, DaxiSize size, const SampleTrack& track, int32_t count,
               CaliperSample<T>* out) {
  sampleRow(pixels, step, size, track, 0, count, out);
}

// 1 where the mask is set at every pixel of a sample, else 0.
inline void sampleMask(const uint8_t* mask, int32_t step, DaxiSize size, const SampleTrack& track, int32_t count,
                       uint8_t* valid) {
  for (int32_t j = 0; j < count; ++j) {
    const SamplePlace at = placeOf(track, j, size);
    const uint8_t* const row0 = mask + at.y0 * step;
    const uint8_t* const row1 = mask + at.y1() * step;
    valid[j] = row0[at.x0] && row0[at.x1()] && row1[at.x0] && row1[at.x1()];
  }
}

}  // namespace portable
}  // namespace dax
