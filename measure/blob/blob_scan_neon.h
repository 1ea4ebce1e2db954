// NEON twins of the bit kernels: 64 pixels at once.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "measure/blob/blob_scan_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

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
#endif
