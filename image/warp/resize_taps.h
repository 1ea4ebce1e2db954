// The taps of a resize along one axis: which source pixels an output is made of, and their weights.
#pragma once

#include <cstdint>

namespace dax {

// One axis of a resize; `factor` 0 stands for dst / src.
struct ResizeAxis {
  int32_t src;
  int32_t dst;
  double factor;
  bool widens;  // the kernel, where the axis shrinks

  // Half of the kernel's width, in source pixels.
  double reach() const;
  // Enough for every output.
  int32_t maxTaps() const;
};

// Consecutive source pixels from `first` on, which may lie outside the image; none has weight 0 but in a pair.
struct Taps {
  int32_t first;
  int32_t count;
};

// The taps of output i; their weights, which sum to 1, into weights[0..maxTaps() - 1].
Taps linearTaps(const ResizeAxis& axis, int32_t i, double* weights);

// Weights of two taps as whole numbers of 2^-15, which sum to 1.
constexpr int32_t kWeightBits = 15;
void fixedWeights(const Taps& taps, const double* weights, uint16_t (&fixed)[2]);

}  // namespace dax
