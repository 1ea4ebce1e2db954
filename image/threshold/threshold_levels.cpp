#include "image/threshold/threshold_levels.h"

#include <algorithm>
#include <cfloat>

namespace dax {
namespace {

uint64_t total(const Histogram& counts) {
  uint64_t sum = 0;
  for (const uint64_t count : counts) sum += count;
  return sum;
}

}  // namespace

uint8_t otsuLevel(const Histogram& counts) {
  // Rounding may bring a sum of shares above 1. At the next float, 1 + FLT_EPSILON, the denominator below is 0.
  constexpr float kAboveOne = 1 + FLT_EPSILON;
  const float pixels = static_cast<float>(total(counts));
  std::array<float, 256> p;
  for (size_t i = 0; i < p.size(); ++i) p[i] = static_cast<float>(counts[i]) / pixels;

  float mean = 0;
  for (size_t i = 1; i < p.size(); ++i) mean += static_cast<float>(i) * p[i];

  float weight = 0, firstMoment = 0, best = 0;
  uint8_t level = 0;
  for (size_t i = 0; i < p.size(); ++i) {
    weight += p[i];
    if (weight >= kAboveOne) break;
    firstMoment += static_cast<float>(i) * p[i];
    const float difference = mean * weight - firstMoment;
    const float variance = difference * difference / (weight - weight * weight + FLT_EPSILON);
    if (variance > best) {
      best = variance;
      level = static_cast<uint8_t>(i);
    }
  }
  return level;
}

LevelPair relativeLevels(const Histogram& counts, const TailPositions& tails) {
  const float pixels = static_cast<float>(total(counts));
  const auto exceeds = [&](uint64_t count, float tail) { return static_cast<float>(count) / pixels > tail; };

  int32_t dark = 0;
  uint64_t atOrBelow = counts[0];
  while (dark < 255 && !exceeds(atOrBelow, tails.darkTail)) atOrBelow += counts[static_cast<size_t>(++dark)];

  int32_t bright = 255;
  uint64_t atOrAbove = counts[255];
  while (bright > 0 && !exceeds(atOrAbove, tails.brightTail)) atOrAbove += counts[static_cast<size_t>(--bright)];

  // Positions lie in 0..1, so that both levels lie between dark and bright.
  const auto levelAt = [&](float position) {
    return dark + static_cast<int32_t>(position * static_cast<float>(bright - dark));
  };
  const int32_t a = levelAt(tails.lowPos), b = levelAt(tails.highPos);
  return {static_cast<uint8_t>(a < b ? a : b), static_cast<uint8_t>(a < b ? b : a)};
}

int32_t rampStep(int32_t level, LevelPair levels, uint32_t soft) {
  const int32_t steps = static_cast<int32_t>(soft) + 1;
  if (level >= levels.high) return steps;
  if (level <= levels.low) return 0;
  const int32_t range = levels.high - levels.low;
  return (2 * (level - levels.low) * steps + range) / (2 * range);
}

}  // namespace dax
