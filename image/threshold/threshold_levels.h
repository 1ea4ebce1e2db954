// Levels of thresholds, found from histograms, and the ramps of soft ones.
#pragma once

#include <cstdint>

#include "image/statistics/histogram.h"

namespace dax {

// The level of greatest between-class variance.
uint8_t otsuLevel(const Histogram& counts);

// The levels between which a soft threshold rises. Equal levels are a hard threshold.
struct LevelPair {
  uint8_t low;
  uint8_t high;
};

// Shares of dark and bright pixels to leave out, and positions 0..1 between what is left.
struct TailPositions {
  float darkTail;
  float brightTail;
  float lowPos;
  float highPos;
};

// Levels at the given positions between the dark and the bright tail of a histogram.
LevelPair relativeLevels(const Histogram& counts, const TailPositions& tails);

// The step 0..soft + 1 of a level on the ramp.
int32_t rampStep(int32_t level, LevelPair levels, uint32_t soft);

}  // namespace dax
