// Rows of arithmetic in vectors.
#pragma once

#include "image/pixel/arithmetic_portable.h"
#include "image/pixel/element_rows_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Exact results, saturated.
#define DAX_SATURATED_OPERATIONS(VECTOR, SUFFIX)   \
  inline VECTOR apply(AddOp, VECTOR a, VECTOR b) { \
    return vqaddq_##SUFFIX(a, b);                  \
  }                                                \
  inline VECTOR apply(SubOp, VECTOR a, VECTOR b) { \
    return vqsubq_##SUFFIX(a, b);                  \
  }
DAX_SATURATED_OPERATIONS(uint8x16_t, u8)
DAX_SATURATED_OPERATIONS(uint16x8_t, u16)
DAX_SATURATED_OPERATIONS(int16x8_t, s16)
#undef DAX_SATURATED_OPERATIONS

inline uint8x16_t apply(AbsDiffOp, uint8x16_t a, uint8x16_t b) {
  return vabdq_u8(a, b);
}
inline uint16x8_t apply(AbsDiffOp, uint16x8_t a, uint16x8_t b) {
  return vabdq_u16(a, b);
}
inline int16x8_t apply(AbsDiffOp, int16x8_t a, int16x8_t b) {
  return vqsubq_s16(vmaxq_s16(a, b), vminq_s16(a, b));
}
inline uint8x16_t apply(MulOp, uint8x16_t a, uint8x16_t b) {
  const uint16x8_t low = vmull_u8(vget_low_u8(a), vget_low_u8(b)), high = vmull_high_u8(a, b);
  return vqmovn_high_u16(vqmovn_u16(low), high);
}
inline uint16x8_t apply(MulOp, uint16x8_t a, uint16x8_t b) {
  const uint32x4_t low = vmull_u16(vget_low_u16(a), vget_low_u16(b)), high = vmull_high_u16(a, b);
  return vqmovn_high_u32(vqmovn_u32(low), high);
}
inline int16x8_t apply(MulOp, int16x8_t a, int16x8_t b) {
  const int32x4_t low = vmull_s16(vget_low_s16(a), vget_low_s16(b)), high = vmull_high_s16(a, b);
  return vqmovn_high_s32(vqmovn_s32(low), high);
}
inline float32x4_t apply(AddOp, float32x4_t a, float32x4_t b) {
  return vaddq_f32(a, b);
}
inline float32x4_t apply(SubOp, float32x4_t a, float32x4_t b) {
  return vsubq_f32(a, b);
}
inline float32x4_t apply(MulOp, float32x4_t a, float32x4_t b) {
  return vmulq_f32(a, b);
}
inline float32x4_t apply(AbsDiffOp, float32x4_t a, float32x4_t b) {
  return vabsq_f32(vsubq_f32(a, b));
}

template <class Op, Operand kOperand, class T>
void exactRow(const T* a, const T* b, T* dst, int32_t count) {
  const int32_t x =
      forEachBlock<kOperand>(a, b, dst, count, [](auto first, auto second) { return apply(Op{}, first, second); });
  portable::exactRow<Op, kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x);
}

}  // namespace dax::neon
#endif
