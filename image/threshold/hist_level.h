// Levels of histograms, for other files of the library.
#pragma once

#include <cstdint>

#include "daxi/hist_level.h"

namespace dax {

using HistLevelMethod = DaxStatus (*)(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                      DaxiHistLevel* level);

// Occupied levels and sums of a histogram: counts to 2^46, levels to 2^16.
struct HistSums {
  int32_t first = 0, last = -1;
  uint64_t n = 0;
  uint64_t sum = 0;               // of levels
  unsigned __int128 squares = 0;  // of levels

  void add(uint64_t level, uint64_t count) {
    n += count;
    sum += level * count;
    squares += static_cast<unsigned __int128>(level * level) * count;
  }
  HistSums without(const HistSums& part) const {
    HistSums rest;
    rest.n = n - part.n, rest.sum = sum - part.sum, rest.squares = squares - part.squares;
    return rest;
  }
};

// The sum of squared deviations that a class of these sums explains: s^2 / n.
inline double explained(uint64_t n, uint64_t sum) {
  return static_cast<double>(sum) * static_cast<double>(sum) / static_cast<double>(n);
}

DaxStatus checkLevelCfg(const DaxiHistLevelCfg& cfg);

// Checks what all methods check, but for null pointers.
DaxStatus checkHistogram(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg, HistSums& sums);

}  // namespace dax
