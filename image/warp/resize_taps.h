// The taps of a resize along one axis: which source pixels an output is made of, and their weights.
#pragma once

#include <cstdint>

#include "daxi/interpolation.h"

namespace dax {

// One axis of a resize; `factor` 0 stands for dst / src.
struct ResizeAxis {
  int32_t src;
  int32_t dst;
  double factor;
  bool widens;  // the kernel, where the axis shrinks
  int32_t interpolation;
  double cubicA;

  // Source pixels for one of the result, in each direction.
  double shrinks() const { return factor == 0 ? static_cast<double>(src) / dst : 1 / factor; }
  // What the kernel is widened by.
  double width() const;
  // Half of the kernel's width, in source pixels.
  double reach() const;
  // Enough for every output.
  int32_t maxTaps() const;
};

// Consecutive source pixels from `first` on, which may lie outside the image; the first and the last of more than two
// have weights other than 0.
struct Taps {
  int32_t first;
  int32_t count;
};

// The taps of output i; their weights, which sum to 1, into weights[0..maxTaps() - 1].
Taps resizeTaps(const ResizeAxis& axis, int32_t i, double* weights);

// All taps that are near enough, those of weight 0 too: their ends ascend with i. The weights are lost.
Taps tapsWithin(const ResizeAxis& axis, int32_t i, double* weights);

// The cell of output i of an area by size, [i src, (i + 1) src), in pixels of dst: how much it covers of each, which are
// whole numbers that sum to src; both sides divided by their common divisor.
struct AreaAxis {
  AreaAxis(int32_t src, int32_t dst);
  int64_t src;
  int64_t dst;
  int32_t first(int32_t i) const { return static_cast<int32_t>(i * src / dst); }
  int32_t end(int32_t i) const { return static_cast<int32_t>(((i + 1) * src + dst - 1) / dst); }
  int64_t overlap(int32_t i, int32_t pixel) const;
};

// Weights of two taps as whole numbers of 2^-15, which sum to 1.
constexpr int32_t kWeightBits = 15;
void fixedWeights(const Taps& taps, const double* weights, uint16_t (&fixed)[2]);

// Weights of any sign as whole numbers of 2^-22, which sum to 1: what rounding leaves goes to the greatest.
constexpr int32_t kWideWeightBits = 22;
void wideWeights(const Taps& taps, const double* weights, int32_t* wide);

}  // namespace dax
