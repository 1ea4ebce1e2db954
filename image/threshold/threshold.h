// Thresholding, unchecked, with a choice of kernels.
#pragma once

#include <array>
#include <cstdint>

#include "dax/types.h"

namespace dax {

// A cyclic interval of grey levels: `count` levels from `first` on, with 0 after 255. The complement of an interval is
// an interval too, so one kernel makes every mask.
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

using LevelTable = std::array<uint8_t, 256>;

// dst = table[src].
void mapLevels(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
               const LevelTable& table, int32_t isa);

}  // namespace dax

// 255 from the Otsu level on, else 0; dst may be src.
extern "C" void _DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t isa);
