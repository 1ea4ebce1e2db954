// Kernels of Gaussian filters, as taps: pairs of pixels at one distance from the centre, which have one weight. The centre
// makes a pair with itself.
#pragma once

#include <cstdint>

#include "daxi/gauss.h"

namespace dax {

inline constexpr int32_t kMaxGaussRadius = 400;

// Half of the side; `side` 0 stands for the one that sigma needs.
int32_t gaussRadius(double sigma, int32_t side);

// The weights of the pairs at distance 0..radius, half of what their sum counts; all weights sum to 1.
void gaussPairs(double sigma, int32_t radius, double* pairs);

template <class Weight>
struct GaussTaps {
  // Weights of more than 16 bits are taken in parts, of which 2^23 / 65535 exceed the number of pairs.
  static constexpr int32_t kMaxBits = 23, kRoom = kMaxGaussRadius + 1 + 128;

  int32_t count = 0;
  int32_t radius = 0;
  int32_t bits = 0;          // integer weights sum to 2^bits
  int32_t groups = 0;        // of taps, whose sums of weights are at most 2^16
  uint16_t distance[kRoom];  // ascending
  uint16_t groupEnd[kRoom];  // the tap behind the last one of a group
  Weight weight[kRoom];

  void add(int32_t at, Weight value) {
    distance[count] = static_cast<uint16_t>(at);
    weight[count++] = value;
  }
};

// 8u: weights of 16 bits, so many parts of 1 that sums are within 0.003 levels; 16u and 16s: parts of 2^30.
void makeGaussTaps(double sigma, int32_t side, GaussTaps<uint16_t>& taps);
void makeGaussTaps(double sigma, int32_t side, GaussTaps<int32_t>& taps);
void makeGaussTaps(double sigma, int32_t side, GaussTaps<float>& taps);

}  // namespace dax
