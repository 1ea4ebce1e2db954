// Rows of bitwise operations in blocks of 64 or 16 pixels.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/pixel/logic_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void invertRow(const uint8_t* src, uint8_t* dst, int32_t width) {
  int32_t x = 0;
  for (; x <= width - 64; x += 64) {
    const uint8x16x4_t levels = vld1q_u8_x4(src + x);
    vst1q_u8_x4(dst + x,
                {{vmvnq_u8(levels.val[0]), vmvnq_u8(levels.val[1]), vmvnq_u8(levels.val[2]), vmvnq_u8(levels.val[3])}});
  }
  for (; x <= width - 16; x += 16) vst1q_u8(dst + x, vmvnq_u8(vld1q_u8(src + x)));
  portable::invertRow(src + x, dst + x, width - x);
}

}  // namespace dax::neon
#endif
