// Foreground bits of 64 pixels at once.
#pragma once

#include "frame/simd.h"
#include "measure/blob_find_portable.h"

namespace dax::neon {

// Each byte keeps the bit of its place among eight; three rounds of pairwise sums gather eight bytes in one.
inline uint64_t foregroundBits64(const uint8_t* pixels) {
  constexpr uint8_t kPlaces[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
  const uint8x16_t places = vld1q_u8(kPlaces);
  const uint8x16x4_t p = vld1q_u8_x4(pixels);
  const auto bits = [&](uint8x16_t block) { return vandq_u8(vtstq_u8(block, block), places); };
  const uint8x16_t low = vpaddq_u8(bits(p.val[0]), bits(p.val[1]));
  const uint8x16_t high = vpaddq_u8(bits(p.val[2]), bits(p.val[3]));
  const uint8x16_t all = vpaddq_u8(low, high);
  return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(all, all)), 0);
}

}  // namespace dax::neon
