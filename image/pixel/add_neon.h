// Saturated sum of two rows, 16 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/pixel/add_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void addRow(const uint8_t* a, const uint8_t* b, uint8_t* dst, int32_t width) {
  int32_t x = 0;
  for (; x <= width - 16; x += 16) vst1q_u8(dst + x, vqaddq_u8(vld1q_u8(a + x), vld1q_u8(b + x)));
  portable::addRow(a + x, b + x, dst + x, width - x);
}

}  // namespace dax::neon
#endif
