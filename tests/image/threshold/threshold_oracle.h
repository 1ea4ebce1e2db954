// Thresholding, one pixel and one level at a time.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "daxi/threshold.h"

namespace dax::oracle {

// Whether a level is set by methods 2 and 3.
inline bool isSet(const DaxiThresholdBinCfg& c, uint32_t level) {
  if (c.method == DAXI_THRESHOLD_SINGLE) return c.polarity == 1 ? level < c.t1 : level >= c.t1;
  if (c.t2 >= c.t1) return c.t1 <= level && level <= c.t2;
  return level < c.t2 || level > c.t1;
}

// The objective of Otsu's method for level t, in double precision.
inline double betweenClassVariance(const std::array<uint64_t, 256>& counts, int t) {
  double pixels = 0, sum = 0, weight = 0, moment = 0;
  for (int i = 0; i < 256; ++i) {
    const double n = static_cast<double>(counts[static_cast<size_t>(i)]);
    pixels += n;
    sum += n * i;
    if (i <= t) weight += n, moment += n * i;
  }
  weight /= pixels;
  const double difference = sum / pixels * weight - moment / pixels;
  return difference * difference / (weight - weight * weight + 1.1920929e-7);
}

// The soft ramp by its definition: the nearest of soft + 2 equally spaced steps, halves upwards.
inline int32_t rampStep(int32_t level, int32_t low, int32_t high, int32_t soft) {
  if (level >= high) return soft + 1;
  if (level <= low) return 0;
  return static_cast<int32_t>(std::floor(static_cast<double>(level - low) * (soft + 1) / (high - low) + 0.5));
}

}  // namespace dax::oracle
