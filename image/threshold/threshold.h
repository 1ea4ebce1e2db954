// Parts of thresholding that stand on their own: intervals of grey levels, histograms, levels, ramps.
#pragma once

#include <array>
#include <cstdint>

#include "dax/types.h"

namespace dax {

// A set of grey levels that is one interval on the circle of the 256 levels: `first`, and `count` levels from there on,
// running over from 255 to 0. Complements of intervals are intervals too, so one kernel makes every mask.
struct LevelInterval {
  uint8_t first;
  int32_t count;  // 0..256

  static constexpr LevelInterval none() { return {0, 0}; }
  static constexpr LevelInterval inside(int32_t low, int32_t high) {
    return low <= high ? LevelInterval{static_cast<uint8_t>(low), high - low + 1} : none();
  }
  static constexpr LevelInterval atLeast(int32_t level) { return inside(level, 255); }
  static constexpr LevelInterval below(int32_t level) { return inside(0, level - 1); }
  constexpr LevelInterval complement() const { return {static_cast<uint8_t>(first + count), 256 - count}; }
};

// Writes 255 where the source level is in the interval and 0 elsewhere.
void maskInterval(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                  LevelInterval interval, int32_t isa);

using Histogram = std::array<uint64_t, 256>;

Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size);

// The level of greatest between-class variance.
uint8_t otsuLevel(const Histogram& counts);

// Levels between which a soft threshold rises; equal levels are a hard threshold.
struct LevelPair {
  uint8_t low;
  uint8_t high;
};

struct TailPositions {
  float darkTail;
  float brightTail;
  float lowPos;
  float highPos;
};

// Levels found from the tails of a histogram.
LevelPair relativeLevels(const Histogram& counts, const TailPositions& tails);

// The step 0..soft + 1 that a level takes on the ramp.
int32_t rampStep(int32_t level, LevelPair levels, uint32_t soft);

using LevelTable = std::array<uint8_t, 256>;

// dst = table[src].
void mapLevels(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
               const LevelTable& table, int32_t isa);

}  // namespace dax
