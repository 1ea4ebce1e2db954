// Statistics of the grey values of a picture, as its file has them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "daxi/point.h"
#include "io/picture.h"

namespace dax::tool {

inline constexpr std::array kShares = {0.01, 0.05, 0.25, 0.5, 0.75, 0.95, 0.99};

struct ImageStats {
  double mean, stdDev;
  int min, max;
  DaxiPoint32s minAt, maxAt;
  std::array<int, kShares.size()> percentiles;
  uint64_t black, white;         // pixels of value 0, and of the greatest value that the file can hold
  std::vector<uint64_t> counts;  // of bins of one width from 0 to maxValue + 1

  int median() const { return percentiles[kShares.size() / 2]; }
};

// Throws Failure(kRefused).
ImageStats measureStats(const Picture& picture, int bins);

}  // namespace dax::tool
