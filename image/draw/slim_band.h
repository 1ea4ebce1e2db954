// The part of an anti-aliased line between its ends, where a column of pixels (or a row, for steep lines) crosses two
// parallel sides and nothing else.
//
// With the slope m, |m| <= 1, across the columns, a side at the distance u from a pixel's centre (in the column) leaves beyond
// it of the pixel's unit square, for u >= 0,
//   beyond(u) = q^2 / 2m + max(f - u, 0),  f = (1 - m) / 2,  q = s - u kept within 0..m,  s = (1 + m) / 2,
// and 1 - beyond(-u) for u < 0. Between two sides lies 1 - beyond(h - v) - beyond(h + v).
//
// Four pixels of a row are blended at once, whichever way the line runs: along a row v grows by 1 or by -m.
#pragma once

#include <cmath>

#include "frame/rows.h"
#include "frame/vector4.h"
#include "image/draw/canvas.h"

namespace dax {

// "Along" is x, and "across" y, unless isSteep.
struct SlimBand {
  bool isSteep;
  double along, across;  // a point of the centre line
  double slope;          // across over along, -1..1
  double half;           // across, between the centre line and a side
  int32_t first, end;    // pixels along, within the image
};

using Bits4 = int32_t __attribute__((vector_size(16)));

inline Float4 min4(Float4 a, Float4 b) {
#ifdef __x86_64__
  return __builtin_ia32_minps(a, b);  // which GCC does not make of the comparison
#else
  return a < b ? a : b;
#endif
}

inline Float4 max4(Float4 a, Float4 b) {
#ifdef __x86_64__
  return __builtin_ia32_maxps(a, b);
#else
  return a < b ? b : a;
#endif
}

inline Float4 all4(float v) {
  return Float4{v, v, v, v};
}

class SlimCoverage {
 public:
  explicit SlimCoverage(const SlimBand& band) : half_(all4(static_cast<float>(band.half))) {
    auto slope = static_cast<float>(std::fabs(band.slope));
    inner_ = all4((1 - slope) / 2);
    outer_ = all4((1 + slope) / 2);
    if (!(slope >= 0x1p-60f)) slope = 0;
    slope_ = all4(slope);
    perTwoSlopes_ = all4(slope > 0 ? 0.5f / slope : 0);
  }

  // Of four pixels at these distances from the centre line; beyond its sides 0, or as little less as rounding makes it.
  Float4 operator()(Float4 v) const {
    const Float4 away = reinterpret_cast<Float4>(reinterpret_cast<Bits4>(v) & kMagnitude), near = half_ - away;
    const Bits4 sign = reinterpret_cast<Bits4>(near) & ~kMagnitude;
    const Float4 rest = 0.5f - beyond(reinterpret_cast<Float4>(reinterpret_cast<Bits4>(near) & kMagnitude));
    return (0.5f + reinterpret_cast<Float4>(reinterpret_cast<Bits4>(rest) ^ sign)) - beyond(half_ + away);
  }

 private:
  static constexpr int32_t kMagnitude = 0x7FFFFFFF;

  Float4 beyond(Float4 u) const {
    const Float4 q = min4(max4(outer_ - u, Float4{}), slope_);
    return q * (q * perTwoSlopes_) + max4(inner_ - u, Float4{});
  }

  Float4 half_, slope_, inner_, outer_, perTwoSlopes_;
};

// Four elements of a row as floats, and back: the last bits of whole numbers to which kUnit was added are the numbers.
constexpr float kUnit = 12582912;  // 1.5 2^23

inline Float4 fourFloats(const uint8_t* from) {
  using Bytes = uint8_t __attribute__((vector_size(16)));
  int32_t word;
  std::memcpy(&word, from, sizeof word);
  const auto bytes = reinterpret_cast<Bytes>(Bits4{word, 0, 0, 0});
  const Bytes apart =
      __builtin_shufflevector(bytes, Bytes{}, 0, 16, 16, 16, 1, 16, 16, 16, 2, 16, 16, 16, 3, 16, 16, 16);
  return __builtin_convertvector(reinterpret_cast<Bits4>(apart), Float4);
}

inline Float4 fourFloats(const uint16_t* from) {
  using Shorts = uint16_t __attribute__((vector_size(16)));
  int64_t word;
  std::memcpy(&word, from, sizeof word);
  using Words = int64_t __attribute__((vector_size(16)));
  const auto shorts = reinterpret_cast<Shorts>(Words{word, 0});
  const Shorts apart = __builtin_shufflevector(shorts, Shorts{}, 0, 8, 1, 8, 2, 8, 3, 8);
  return __builtin_convertvector(reinterpret_cast<Bits4>(apart), Float4);
}

inline void storeFour(uint8_t* to, Float4 raised) {
  using Bytes = uint8_t __attribute__((vector_size(16)));
  const auto bytes = reinterpret_cast<Bytes>(raised);
  const Bytes close = __builtin_shufflevector(bytes, bytes, 0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12);
  std::memcpy(to, &close, 4);
}

inline void storeFour(uint16_t* to, Float4 raised) {
  using Shorts = uint16_t __attribute__((vector_size(16)));
  const auto shorts = reinterpret_cast<Shorts>(raised);
  const Shorts close = __builtin_shufflevector(shorts, shorts, 0, 2, 4, 6, 0, 2, 4, 6);
  std::memcpy(to, &close, 8);
}

// Elements become d + rint((color - d) weight): adding kUnit rounds halves to even.
template <class T>
void blendFour(T* at, Float4 color, Float4 weight) {
  const Float4 d = fourFloats(at);
  storeFour(at, d + ((color - d) * weight + kUnit));
}

template <class T, int kChannels>
void blendFourPixels(T* at, const Ink& ink, Float4 w) {
  const float* const c = ink.color;
  if constexpr (kChannels == 1) {
    blendFour(at, all4(c[0]), w);
  } else {
    blendFour(at, Float4{c[0], c[1], c[2], c[0]}, __builtin_shufflevector(w, w, 0, 0, 0, 1));
    blendFour(at + 4, Float4{c[1], c[2], c[0], c[1]}, __builtin_shufflevector(w, w, 1, 1, 2, 2));
    blendFour(at + 8, Float4{c[2], c[0], c[1], c[2]}, __builtin_shufflevector(w, w, 2, 3, 3, 3));
  }
}

// Of row y the pixels from `low` to `high` - 1 at less than `run` from middle + y perRow are touched; pixel x lies
// ahead + y aheadPerRow + x aheadPerPixel from the centre line.
struct SlimRows {
  int32_t top, bottom, low, high;
  double run, middle, perRow;
  double ahead, aheadPerRow, aheadPerPixel;
};

inline SlimRows slimRowsOf(const SlimBand& band, DaxiSize size) {
  const double slope = band.slope, reach = band.half + std::fabs(slope) / 2 + 0.5;
  const double start = band.across - band.along * slope;  // the centre line is at start + slope along
  if (band.isSteep) return {band.first, band.end, 0, size.width, reach, start, slope, -start, -slope, 1};
  const double a = start + slope * band.first, b = start + slope * (band.end - 1);
  const auto row = [&](double y) { return static_cast<int32_t>(y < 0 ? 0 : y > size.height ? size.height : y); };
  SlimRows rows = {row((a < b ? a : b) - reach + 1),
                   row((a < b ? b : a) + reach + 1),
                   band.first,
                   band.end,
                   0x1p31,
                   0,
                   0,
                   -start,
                   1,
                   -slope};
  if (std::fabs(slope) > 1e-6)
    rows.run = reach / std::fabs(slope), rows.middle = -start / slope, rows.perRow = 1 / slope;
  return rows;
}

template <class T, int kChannels>
void blendSlimBand(const Canvas& canvas, const Ink& ink, const SlimBand& band) {
  const SlimCoverage coverageOf(band);
  const SlimRows rows = slimRowsOf(band, canvas.size);
  const auto step = static_cast<float>(rows.aheadPerPixel);
  const Float4 steps = {0, step, 2 * step, 3 * step}, alpha = all4(ink.alpha);
  const auto column = [&](double x) {
    return static_cast<int32_t>(x < rows.low ? rows.low : x > rows.high ? rows.high : x);
  };
  // Within the image rows of few pixels have the same number of fours.
  const int32_t fours = rows.run < 6 ? (static_cast<int32_t>(2 * rows.run) + 4) / 4 : 0;
  for (int32_t y = rows.top; y < rows.bottom; ++y) {
    T* const row = rowAt(static_cast<T*>(canvas.pixels), canvas.step, y);
    const double middle = rows.middle + y * rows.perRow, ahead = rows.ahead + y * rows.aheadPerRow;
    const auto weightsAt = [&](int32_t x) {
      return alpha * coverageOf(static_cast<float>(ahead + x * rows.aheadPerPixel) + steps);
    };
    const double edge = middle - rows.run + 1;
    if (fours > 0 && edge >= rows.low && edge + 4 * fours <= rows.high) {
      int32_t x = static_cast<int32_t>(edge);
      for (int32_t i = 0; i < fours; ++i, x += 4) {
        blendFourPixels<T, kChannels>(row + ptrdiff_t{x} * kChannels, ink, weightsAt(x));
      }
      continue;
    }
    const int32_t to = column(middle + rows.run + 1);
    for (int32_t x = column(edge); x < to; x += 4) {
      T* const at = row + ptrdiff_t{x} * kChannels;
      if (x + 4 <= rows.high) {  // what is not touched has no coverage
        blendFourPixels<T, kChannels>(at, ink, weightsAt(x));
        continue;
      }
      T last[4 * kChannels] = {};
      const size_t bytes = static_cast<size_t>(to - x) * kChannels * sizeof(T);
      std::memcpy(last, at, bytes);
      blendFourPixels<T, kChannels>(last, ink, weightsAt(x));
      std::memcpy(at, last, bytes);
    }
  }
}

}  // namespace dax
