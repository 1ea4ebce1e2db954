// When sample consensus has seen enough.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/numeric/elementary.h"

namespace dax {

// Probability that a sample has inliers alone.
inline double cleanShare(int32_t inliers, int32_t n, int32_t sampleSize) {
  double share = 1;
  for (int32_t i = 0; i < sampleSize; ++i) share *= std::max(0.0, static_cast<double>(inliers - i) / (n - i));
  return share;
}

// ln(1 + x): the error of 1 + x is divided out again (Kahan).
inline double logOnePlus(double x) {
  const double sum = 1 + x;
  return sum == 1 ? x : elementary::log(sum) * (x / (sum - 1));
}

// Iterations after which a sample without outliers has been drawn with this confidence.
inline double neededIterations(double confidence, double share) {
  if (!(share > 0)) return std::numeric_limits<double>::infinity();
  if (share >= 1) return 0;
  return std::ceil(logOnePlus(-confidence) / logOnePlus(-share));
}

// Whether so many inliers among n data are more than a wrong model would have by chance: above the 95 % quantile of a
// binomial distribution, by its normal approximation, of a share of 5 % of the data that were not in the sample.
inline bool isMoreThanChance(int32_t inliers, int32_t n, int32_t sampleSize) {
  constexpr double kChance = 0.05, kQuantile = 1.6449;
  const double others = n - sampleSize;
  return inliers - sampleSize > kChance * others + kQuantile * std::sqrt(kChance * (1 - kChance) * others);
}

// How long to go on, and with how many of the data.
struct SacStop {
  double needed;
  int32_t pool;
};

// Over all data.
inline SacStop stopOfAll(double confidence, int32_t inliers, int32_t n, int32_t sampleSize) {
  return {neededIterations(confidence, cleanShare(inliers, n, sampleSize)), n};
}

// The best of all prefixes of the data, which has at least kMinPrefix of them. indices: inliers, ascending.
inline SacStop stopOfPrefixes(double confidence, const int32_t* indices, int32_t inliers, int32_t n,
                              int32_t sampleSize) {
  constexpr int32_t kMinPrefix = 20;
  SacStop best = stopOfAll(confidence, inliers, n, sampleSize);
  for (int32_t i = inliers - 1; i >= 0; --i) {
    const int32_t prefix = indices[i] + 1;
    if (prefix < kMinPrefix || prefix <= sampleSize) break;
    const double needed = neededIterations(confidence, cleanShare(i + 1, prefix, sampleSize));
    if (needed < best.needed && isMoreThanChance(i + 1, prefix, sampleSize)) best = {needed, prefix};
  }
  return best;
}

}  // namespace dax
