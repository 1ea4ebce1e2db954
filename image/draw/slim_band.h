// The part of an anti-aliased line between its ends, where a column of pixels (or a row, for steep lines) crosses two
// parallel sides and nothing else, and no more than eight of its pixels.
//
// With the slope m, |m| <= 1, across the columns, a side at the distance u from a pixel's centre (in the column) leaves beyond
// it of the pixel's unit square, for u >= 0,
//   beyond(u) = q^2 / 2m + max(f - u, 0),  f = (1 - m) / 2,  q = s - u kept within 0..m,  s = (1 + m) / 2,
// and 1 - beyond(-u) for u < 0. Between two sides lies 1 - beyond(h - v) - beyond(h + v).
#pragma once

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
  int32_t first, end;    // pixels along
  int32_t groups;        // of four pixels across that hold all that is touched
};

class SlimCoverage {
 public:
  explicit SlimCoverage(const SlimBand& band)
      : half_(static_cast<float>(band.half)), slope_(static_cast<float>(band.slope < 0 ? -band.slope : band.slope)) {
    inner_ = (1 - slope_) / 2;
    outer_ = (1 + slope_) / 2;
    perTwoSlopes_ = slope_ > 0 ? 0.5f / slope_ : 0;
    if (!(slope_ >= 0x1p-60f)) slope_ = perTwoSlopes_ = 0;
  }

  // Of four pixels at these distances from the centre line.
  Float4 operator()(Float4 v) const {
    v = v < 0 ? -v : v;
    const Float4 near = half_ - v, size = near < 0 ? -near : near, far = beyond(half_ + v);
    const Float4 rest = beyond(size), covered = 1 - (near < 0 ? 1 - rest : rest) - far;
    return covered < 0 ? Float4{} : covered;
  }

 private:
  Float4 beyond(Float4 u) const {
    const Float4 zero{}, whole = zero + slope_;
    Float4 q = outer_ - u, rest = inner_ - u;
    q = q < zero ? zero : q;
    q = q < whole ? q : whole;
    rest = rest < zero ? zero : rest;
    return q * (q * perTwoSlopes_) + rest;
  }

  float half_, slope_, inner_, outer_, perTwoSlopes_;
};

// d + rint((color - d) weight): adding and subtracting 1.5 2^23 rounds halves to even.
inline Float4 blended4(Float4 d, float color, Float4 weight) {
  constexpr float kRound = 12582912;
  const Float4 change = (color - d) * weight;
  return d + ((change + kRound) - kRound);
}

template <class T, int kChannels>
void blendSlimBand(const Canvas& canvas, const Ink& ink, const SlimBand& band) {
  const ptrdiff_t step = canvas.step, alongStep = band.isSteep ? step : kChannels,
                  acrossStep = band.isSteep ? kChannels : step;
  const int32_t limit = band.isSteep ? canvas.size.width : canvas.size.height;
  const double reach = band.half + (band.slope < 0 ? -band.slope : band.slope) / 2;
  const SlimCoverage coverageOf(band);
  for (int32_t i = band.first; i < band.end; ++i) {
    const double centre = band.across + (i - band.along) * band.slope;
    // Rounded down: positions within the image and a little before it.
    const auto start = static_cast<int32_t>(centre - reach + 0.5 + 1024) - 1024;
    T* const column = static_cast<T*>(canvas.pixels) + i * alongStep;
    for (int32_t g = 0; g < band.groups; ++g) {
      const int32_t at = start + 4 * g;
      const auto offset = static_cast<float>(at - centre);
      const Float4 weight = ink.alpha * coverageOf(offset + Float4{0, 1, 2, 3});
      for (int c = 0; c < kChannels; ++c) {
        if (at >= 0 && at + 4 <= limit) {
          T* const p = column + at * acrossStep + c;
          T &p0 = p[0], &p1 = p[acrossStep], &p2 = p[2 * acrossStep], &p3 = p[3 * acrossStep];
          const Float4 d = {static_cast<float>(p0), static_cast<float>(p1), static_cast<float>(p2),
                            static_cast<float>(p3)};
          const Float4 to = blended4(d, ink.color[c], weight);
          p0 = static_cast<T>(to[0]), p1 = static_cast<T>(to[1]), p2 = static_cast<T>(to[2]),
          p3 = static_cast<T>(to[3]);
          continue;
        }
        for (int32_t k = 0; k < 4; ++k) {
          if (at + k < 0 || at + k >= limit) continue;
          T& p = column[(at + k) * acrossStep + c];
          const auto d = static_cast<float>(p);
          p = static_cast<T>(blended4(Float4{} + d, ink.color[c], weight)[k]);
        }
      }
    }
  }
}

}  // namespace dax
