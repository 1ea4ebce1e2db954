// Sums over runs of at most kMaxRun pixels, four vectors at a time.
#pragma once

#include <algorithm>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/statistics/sum_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline uint32x4_t addPairs(uint32x4_t sum, uint16x8_t v) {
  return vpadalq_u16(sum, v);
}
inline int32x4_t addPairs(int32x4_t sum, int16x8_t v) {
  return vpadalq_s16(sum, v);
}

// The sum of the pixels.
template <class T>
int32_t totalOfPixels(int32_t count, const T* run) {
  using Sum = std::conditional_t<std::is_signed_v<T>, int32x4_t, uint32x4_t>;
  Sum sums[4] = {};
  int32_t x = 0;
  for (; x <= count - 32; x += 32) {
    const auto four = Lanes<T>::loadFour(run + x);
    for (int k = 0; k < 4; ++k) sums[k] = addPairs(sums[k], four.val[k]);
  }
  const Sum all = (sums[0] + sums[1]) + (sums[2] + sums[3]);
  return static_cast<int32_t>((all[0] + all[1]) + (all[2] + all[3])) + portable::totalOfPixels(count - x, run + x);
}

// Sums of pairs fit 16 bits 128 times.
inline int32_t totalOfPixels(int32_t count, const uint8_t* run) {
  constexpr int32_t kStep = 64, kRound = 128 * kStep;
  uint32x4_t all = vdupq_n_u32(0);
  int32_t x = 0;
  while (x <= count - kStep) {
    uint16x8_t sums[4] = {};
    for (const int32_t end = std::min(count - kStep + 1, x + kRound); x < end; x += kStep) {
      const uint8x16x4_t four = vld1q_u8_x4(run + x);
      for (int k = 0; k < 4; ++k) sums[k] = vpadalq_u8(sums[k], four.val[k]);
    }
    for (const uint16x8_t& sum : sums) all = vpadalq_u16(all, sum);
  }
  return static_cast<int32_t>(vaddvq_u32(all)) + portable::totalOfPixels(count - x, run + x);
}

}  // namespace dax::neon
#endif
