// Foreground bits and changes of 64 pixels at once.
#pragma once

#include "frame/simd.h"
#include "measure/blob_find_portable.h"

namespace dax::neon {

// The 64 bits of four blocks of flags, each byte 0 or 255: a byte keeps the bit of its place among eight, and three
// rounds of pairwise sums gather eight bytes in one.
inline uint64_t gatherBits(uint8x16_t a, uint8x16_t b, uint8x16_t c, uint8x16_t d) {
  constexpr uint8_t kPlaces[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
  const uint8x16_t places = vld1q_u8(kPlaces);
  const uint8x16_t low = vpaddq_u8(vandq_u8(a, places), vandq_u8(b, places));
  const uint8x16_t high = vpaddq_u8(vandq_u8(c, places), vandq_u8(d, places));
  const uint8x16_t all = vpaddq_u8(low, high);
  return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(all, all)), 0);
}

inline uint64_t foregroundBits64(const uint8_t* pixels) {
  const uint8x16x4_t p = vld1q_u8_x4(pixels);
  return gatherBits(vtstq_u8(p.val[0], p.val[0]), vtstq_u8(p.val[1], p.val[1]), vtstq_u8(p.val[2], p.val[2]),
                    vtstq_u8(p.val[3], p.val[3]));
}

inline uint64_t changeBits64(const uint8_t* pixels) {
  const uint8x16x4_t p = vld1q_u8_x4(pixels), left = vld1q_u8_x4(pixels - 1);
  return ~gatherBits(vceqq_u8(p.val[0], left.val[0]), vceqq_u8(p.val[1], left.val[1]), vceqq_u8(p.val[2], left.val[2]),
                     vceqq_u8(p.val[3], left.val[3]));
}

}  // namespace dax::neon
