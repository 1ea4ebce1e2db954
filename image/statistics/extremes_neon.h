// Runs of at most kMaxRun pixels, a few vectors at a time.
#pragma once

#include <algorithm>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/statistics/extremes_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The lesser and the greater; a NaN in x is passed over.
template <class T, class V>
V lesserOf(V x, V known) {
  if constexpr (std::is_same_v<T, float>) {
    return vbslq_f32(vcltq_f32(x, known), x, known);
  } else {
    return Lanes<T>::min(x, known);
  }
}
template <class T, class V>
V greaterOf(V x, V known) {
  if constexpr (std::is_same_v<T, float>) {
    return vbslq_f32(vcgtq_f32(x, known), x, known);
  } else {
    return Lanes<T>::max(x, known);
  }
}

template <class T>
Limits<T> limitsOfRun(const T* run, int32_t count) {
  using L = Lanes<T>;
  constexpr int32_t kLanes = L::kCount, kBlock = 4 * kLanes;
  const Limits<T> none = Limits<T>::none();
  auto min = L::all(none.min), max = L::all(none.max);
  int32_t x = 0;
  for (; x <= count - kBlock; x += kBlock) {
    const auto four = L::loadFour(run + x);
    for (const auto& vector : four.val) {
      min = lesserOf<T>(vector, min);
      max = greaterOf<T>(vector, max);
    }
  }
  T lowest[kLanes], highest[kLanes];
  L::store(lowest, min);
  L::store(highest, max);
  const Limits<T> rest = portable::limitsOfRun(run + x, count - x);
  return {std::min(rest.min, *std::min_element(lowest, lowest + kLanes)),
          std::max(rest.max, *std::max_element(highest, highest + kLanes))};
}

// All bits of an element where it lies within.
#define DAX_WITHIN(VECTOR, SUFFIX, MASK, AND)                    \
  inline MASK within(VECTOR x, VECTOR low, VECTOR high) {        \
    return AND(vcgeq_##SUFFIX(x, low), vcleq_##SUFFIX(x, high)); \
  }
DAX_WITHIN(uint8x16_t, u8, uint8x16_t, vandq_u8)
DAX_WITHIN(uint16x8_t, u16, uint16x8_t, vandq_u16)
DAX_WITHIN(int16x8_t, s16, uint16x8_t, vandq_u16)
DAX_WITHIN(float32x4_t, f32, uint32x4_t, vandq_u32)
#undef DAX_WITHIN

template <class T>
int32_t countWithin(const T* run, int32_t count, T low, T high) {
  using L = Lanes<T>;
  using Count = std::conditional_t<sizeof(T) == 1, uint8_t, std::conditional_t<sizeof(T) == 2, uint16_t, uint32_t>>;
  constexpr int32_t kBlock = 255 * L::kCount;  // what counters of a byte can count
  const auto lows = L::all(low), highs = L::all(high);
  int32_t found = 0, x = 0;
  while (x <= count - L::kCount) {
    auto counts = Lanes<Count>::all(0);
    const int32_t end = std::min(count - L::kCount, x + kBlock - L::kCount);
    for (; x <= end; x += L::kCount) {
      counts = Lanes<Count>::subtract(counts, within(L::load(run + x), lows, highs));
    }
    Count lanes[L::kCount];
    Lanes<Count>::store(lanes, counts);
    for (const Count lane : lanes) found += static_cast<int32_t>(lane);
  }
  return found + portable::countWithin(run + x, count - x, low, high);
}

}  // namespace dax::neon
#endif
