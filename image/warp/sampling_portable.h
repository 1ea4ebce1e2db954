// Runs of pixels between pixels whose footprints, the pixels that count, all lie inside the image.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "image/warp/kernel_weights.h"
#include "image/warp/sampling.h"

namespace dax {

// How many bits of a position's fraction count.
template <class T>
constexpr int kFractionBits = std::is_integral_v<T> ? 16 : 24;

// Of each position of a run the pixel left of it and the right one, of its row and of the next.
template <class T>
struct Neighbours {
  T above[2 * kChunk];
  T below[2 * kChunk];
};

// Where the footprints of a run begin: first[offsets[i]].
template <class T>
struct Footprints {
  const T* first;
  int64_t step;
  const int32_t* offsets;
};

// Weights of all taps of the positions of a run.
template <int kTaps>
using TapWeights = double[kTaps][kChunk];

// A position's fraction, of which so many bits count.
inline double fractionOf(int64_t position, int bits) {
  const auto units = static_cast<int32_t>(static_cast<uint32_t>(position) >> (32 - bits));
  return units * (1.0 / (int64_t{1} << bits));
}

template <int kTaps>
void weighRun(const int64_t* positions, int32_t count, int bits, double cubicA, TapWeights<kTaps>& weights) {
  for (int32_t i = 0; i < count; ++i) {
    double each[kTaps];
    kernelWeights(fractionOf(positions[i], bits), cubicA, each);
#pragma GCC unroll 6
    for (int k = 0; k < kTaps; ++k) weights[k][i] = each[k];
  }
}

// A pixel of weight 0 does not count, whatever it is.
template <class T>
double withPixel(double sum, double weight, T pixel) {
  if constexpr (std::is_integral_v<T>) return sum + weight * pixel;
  return weight == 0 ? sum : sum + weight * pixel;
}

// The sum of pixel(i, j) over the taps, along x first.
template <class T, int kTaps, class Pixel>
double weightedSum(const double (&wx)[kTaps], const double (&wy)[kTaps], const Pixel& pixel) {
  double sum = 0;
  for (int j = 0; j < kTaps; ++j) {
    double row = 0;
    for (int i = 0; i < kTaps; ++i) row = withPixel<T>(row, wx[i], pixel(i, j));
    sum = wy[j] == 0 ? sum : sum + wy[j] * row;
  }
  return sum;
}

// The nearest level, halves to the even one; 0 for NaN. (As roundTo, without branches.)
template <class T>
T pixelOf(double sum) {
  if constexpr (std::is_integral_v<T>) {
    constexpr double kLow = std::numeric_limits<T>::min(), kHigh = std::numeric_limits<T>::max();
    const auto real = std::bit_cast<double>(std::bit_cast<int64_t>(sum) & -int64_t{sum == sum});
    const double atLeast = real < kLow ? kLow : real, bounded = atLeast > kHigh ? kHigh : atLeast;
    return static_cast<T>(static_cast<int32_t>(std::rint(bounded)));
  } else {
    return static_cast<T>(sum);
  }
}

namespace portable {

// Linear interpolation of pixels from..count - 1: exact until the last rounding where they are integers, whose products have at
// most 50 bits. What has weight 0 does not count.
template <class T>
void linearRun(const Neighbours<T>& around, const int64_t* px, const int64_t* py, int32_t count, T* dst,
               int32_t from = 0) {
  const auto between = [](double first, double second, double part) {
    // Bits are masked, which compilers put into vectors.
    const int64_t mask = std::is_integral_v<T> ? -1 : -int64_t{part > 0};
    const auto counted = std::bit_cast<double>(std::bit_cast<int64_t>(second) & mask);
    return (1 - part) * first + part * counted;
  };
  const T *const above = around.above, *const below = around.below;
  for (int32_t i = from; i < count; ++i) {
    const double fx = fractionOf(px[i], kFractionBits<T>), fy = fractionOf(py[i], kFractionBits<T>);
    const double top = between(above[2 * i], above[2 * i + 1], fx),
                 bottom = between(below[2 * i], below[2 * i + 1], fx);
    if constexpr (std::is_integral_v<T>) {
      dst[i] = static_cast<T>(static_cast<int32_t>(std::rint(between(top, bottom, fy))));
    } else {
      dst[i] = static_cast<T>(between(top, bottom, fy));
    }
  }
}

template <int kTaps, class T>
void sumTaps(const Footprints<T>& at, int32_t count, const TapWeights<kTaps>& x, const TapWeights<kTaps>& y,
             double* sums, int32_t from = 0) {
  for (int32_t i = from; i < count; ++i) {
    double wx[kTaps], wy[kTaps];
    for (int k = 0; k < kTaps; ++k) wx[k] = x[k][i], wy[k] = y[k][i];
    const T* const first = at.first + at.offsets[i];
    sums[i] = weightedSum<T>(wx, wy, [&](int column, int row) { return first[row * at.step + column]; });
  }
}

template <class T>
void roundSums(const double* sums, int32_t count, T* dst, int32_t from = 0) {
  for (int32_t i = from; i < count; ++i) dst[i] = pixelOf<T>(sums[i]);
}

}  // namespace portable
}  // namespace dax
