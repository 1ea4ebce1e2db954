// Rows of thresholding in blocks of 64 or 16 pixels.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/threshold/threshold_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void maskRow(const uint8_t* src, uint8_t* dst, int32_t width, uint8_t first, uint8_t span) {
  const uint8x16_t vFirst = vdupq_n_u8(first);
  const uint8x16_t vSpan = vdupq_n_u8(span);
  const auto mask = [&](uint8x16_t levels) { return vcleq_u8(vsubq_u8(levels, vFirst), vSpan); };
  int32_t x = 0;
  for (; x <= width - 64; x += 64) {
    const uint8x16x4_t levels = vld1q_u8_x4(src + x);
    vst1q_u8_x4(dst + x, {{mask(levels.val[0]), mask(levels.val[1]), mask(levels.val[2]), mask(levels.val[3])}});
  }
  for (; x <= width - 16; x += 16) vst1q_u8(dst + x, mask(vld1q_u8(src + x)));
  portable::maskRow(src + x, dst + x, width - x, first, span);
}

// The table in four quarters of 64 levels. An index outside a quarter gives 0 (tbl) or keeps the earlier result (tbx).
inline void mapRow(const uint8_t* src, uint8_t* dst, int32_t width, const uint8_t* table) {
  const uint8x16x4_t q0 = vld1q_u8_x4(table), q1 = vld1q_u8_x4(table + 64);
  const uint8x16x4_t q2 = vld1q_u8_x4(table + 128), q3 = vld1q_u8_x4(table + 192);
  const uint8x16_t quarter = vdupq_n_u8(64);
  int32_t x = 0;
  for (; x <= width - 16; x += 16) {
    uint8x16_t level = vld1q_u8(src + x);
    uint8x16_t result = vqtbl4q_u8(q0, level);
    level = vsubq_u8(level, quarter);
    result = vqtbx4q_u8(result, q1, level);
    level = vsubq_u8(level, quarter);
    result = vqtbx4q_u8(result, q2, level);
    level = vsubq_u8(level, quarter);
    vst1q_u8(dst + x, vqtbx4q_u8(result, q3, level));
  }
  portable::mapRow(src + x, dst + x, width - x, table);
}

}  // namespace dax::neon
#endif
