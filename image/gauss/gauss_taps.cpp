#include "image/gauss/gauss_taps.h"

#include <algorithm>
#include <cmath>

#include "frame/numeric/elementary.h"

namespace dax {
namespace {

constexpr int32_t kMaxPairs = kMaxGaussRadius + 1;

// Rounds the weights down to whole parts of 2^bits, and up where the most is missing until their sum is exact. Returns the
// error of the filter by it, in levels of 8 bits: at worst the pixels of all weights that are too large are white and the
// others black.
double roundPairs(const double* pairs, int32_t radius, int32_t bits, uint32_t* rounded) {
  const double parts = std::ldexp(1.0, bits);
  double missing[kMaxPairs] = {};
  int32_t order[kMaxPairs] = {};
  uint32_t rest = 1u << bits;
  for (int32_t i = 0; i <= radius; ++i) {
    const double whole = std::floor(pairs[i] * parts);
    rounded[i] = static_cast<uint32_t>(whole);
    missing[i] = pairs[i] * parts - whole;
    rest -= rounded[i];
    order[i] = i;
  }
  std::sort(order, order + radius + 1,
            [&](int32_t a, int32_t b) { return missing[a] != missing[b] ? missing[a] > missing[b] : a < b; });
  for (uint32_t k = 0; k < rest; ++k) ++rounded[order[k]];
  double errors = 0;
  for (int32_t i = 0; i <= radius; ++i) errors += std::fabs(rounded[i] - pairs[i] * parts);
  return errors / parts * 255 / 2;
}

// Without the zeros at its end.
int32_t usedRadius(const uint32_t* rounded, int32_t radius) {
  while (radius > 0 && rounded[radius] == 0) --radius;
  return radius;
}

void groupTaps(GaussTaps<uint16_t>& taps) {
  uint32_t sum = 0;
  taps.groups = 0;
  for (int32_t i = 0; i < taps.count; ++i) {
    if (sum + taps.weight[i] > 1u << 16) {
      taps.groupEnd[taps.groups++] = static_cast<uint16_t>(i);
      sum = 0;
    }
    sum += taps.weight[i];
  }
  taps.groupEnd[taps.groups++] = static_cast<uint16_t>(taps.count);
}

}  // namespace

int32_t gaussRadius(double sigma, int32_t side) {
  return side != 0 ? side / 2 : static_cast<int32_t>(std::ceil(4 * sigma));
}

void gaussPairs(double sigma, int32_t radius, double* pairs) {
  double sum = 0;
  for (int32_t i = radius; i >= 0; --i) {
    const double t = i / sigma;
    pairs[i] = elementary::exp(-0.5 * (t * t)) * (i == 0 ? 0.5 : 1);
    sum += pairs[i];
  }
  for (int32_t i = 0; i <= radius; ++i) pairs[i] /= sum;
}

void makeGaussTaps(double sigma, int32_t side, GaussTaps<uint16_t>& taps) {
  constexpr double kMaxError = 0.003;
  constexpr uint32_t kMaxWeight = UINT16_MAX;
  const int32_t radius = gaussRadius(sigma, side);
  double pairs[kMaxPairs] = {};
  uint32_t rounded[kMaxPairs] = {};
  gaussPairs(sigma, radius, pairs);
  taps.bits = 16;
  while (roundPairs(pairs, radius, taps.bits, rounded) > kMaxError && taps.bits < taps.kMaxBits) ++taps.bits;
  taps.count = 0, taps.radius = usedRadius(rounded, radius);
  for (int32_t i = 0; i <= taps.radius; ++i) {
    for (uint32_t rest = rounded[i]; rest > 0;) {
      const uint32_t part = std::min(rest, kMaxWeight);
      taps.add(i, static_cast<uint16_t>(part));
      rest -= part;
    }
  }
  groupTaps(taps);
}

void makeGaussTaps(double sigma, int32_t side, GaussTaps<int32_t>& taps) {
  const int32_t radius = gaussRadius(sigma, side);
  double pairs[kMaxPairs] = {};
  uint32_t rounded[kMaxPairs] = {};
  gaussPairs(sigma, radius, pairs);
  taps.bits = 30, taps.count = 0;
  roundPairs(pairs, radius, taps.bits, rounded);
  taps.radius = usedRadius(rounded, radius);
  for (int32_t i = 0; i <= taps.radius; ++i) taps.add(i, static_cast<int32_t>(rounded[i]));
}

void makeGaussTaps(double sigma, int32_t side, GaussTaps<float>& taps) {
  double pairs[kMaxPairs] = {};
  taps.count = 0, taps.radius = gaussRadius(sigma, side);
  gaussPairs(sigma, taps.radius, pairs);
  for (int32_t i = 0; i <= taps.radius; ++i) taps.add(i, static_cast<float>(pairs[i] / 2));
}

}  // namespace dax
