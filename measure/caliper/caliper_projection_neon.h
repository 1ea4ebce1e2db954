// NEON twins of the sums of samples of 8-bit images.
#pragma once

#include <algorithm>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "measure/caliper/caliper_projection_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void addColumns(const uint16_t* patch, int32_t columns, int32_t rows, int64_t* sums) {
  int32_t j = 0;
  for (; j <= columns - 8; j += 8) {
    uint32x4_t low = vdupq_n_u32(0), high = low;
    for (int32_t k = 0; k < rows; ++k) {
      const uint16x8_t samples = vld1q_u16(rowAt(patch, columns, k) + j);
      low = vaddw_u16(low, vget_low_u16(samples));
      high = vaddw_u16(high, vget_high_u16(samples));
    }
    auto* const to = reinterpret_cast<uint64_t*>(sums + j);
    vst1q_u64(to, vaddw_u32(vld1q_u64(to), vget_low_u32(low)));
    vst1q_u64(to + 2, vaddw_u32(vld1q_u64(to + 2), vget_high_u32(low)));
    vst1q_u64(to + 4, vaddw_u32(vld1q_u64(to + 4), vget_low_u32(high)));
    vst1q_u64(to + 6, vaddw_u32(vld1q_u64(to + 6), vget_high_u32(high)));
  }
  portable::addColumns(patch, columns, rows, j, sums);
}

// Steps of vpadalq that cannot overflow 32 bits: each adds two samples of at most 65280 to a lane.
constexpr int32_t kMaxSteps = 32000;

inline int64_t sumOf(const uint16_t* row, int32_t columns) {
  int64_t sum = 0;
  int32_t j = 0;
  while (j <= columns - 8) {
    const int32_t end = std::min(columns - 8, j + 8 * kMaxSteps);
    uint32x4_t lanes = vdupq_n_u32(0);
    for (; j <= end; j += 8) lanes = vpadalq_u16(lanes, vld1q_u16(row + j));
    sum += static_cast<int64_t>(vaddlvq_u32(lanes));
  }
  return sum + portable::sumOf(row, j, columns);
}

}  // namespace dax::neon
#endif
