// Rows of bytes by a table of bytes: four look-ups in a quarter of it each. An index outside a quarter leaves what the others found.
#pragma once

#include "frame/simd.h"
#include "image/convert/blocks_neon.h"
#include "image/convert/lut_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void lutRow(const uint8_t* src, uint8_t* dst, int32_t count, const uint8_t* table) {
  const uint8x16x4_t quarters[4] = {vld1q_u8_x4(table), vld1q_u8_x4(table + 64), vld1q_u8_x4(table + 128),
                                    vld1q_u8_x4(table + 192)};
  const uint8x16_t quarter = vdupq_n_u8(64);
  const int32_t x = forBlocks(count, [&](int32_t first) {
    uint8x16_t index = vld1q_u8(src + first), found = vqtbl4q_u8(quarters[0], index);
    for (int k = 1; k < 4; ++k) {
      index = vsubq_u8(index, quarter);
      found = vqtbx4q_u8(found, quarters[k], index);
    }
    vst1q_u8(dst + first, found);
  });
  portable::lutRow(src + x, dst + x, count - x, table);
}

template <class From, class To>
void lutRow(const From* src, To* dst, int32_t count, const To* table) {
  portable::lutRow(src, dst, count, table);
}

}  // namespace dax::neon
#endif
