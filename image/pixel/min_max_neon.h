// Rows of minima and maxima in vectors.
#pragma once

#include "image/pixel/element_rows_neon.h"
#include "image/pixel/min_max_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class T, class Vector>
Vector extreme(MinOp, Vector a, Vector b) {
  return Lanes<T>::min(a, b);
}
template <class T, class Vector>
Vector extreme(MaxOp, Vector a, Vector b) {
  return Lanes<T>::max(a, b);
}

// FMINNM takes the number for a quiet NaN only; of a value and itself it makes a signalling one quiet.
#if defined(__aarch64__)
template <>
inline float32x4_t extreme<float>(MinOp, float32x4_t a, float32x4_t b) {
  return vminnmq_f32(vminnmq_f32(a, a), vminnmq_f32(b, b));
}
template <>
inline float32x4_t extreme<float>(MaxOp, float32x4_t a, float32x4_t b) {
  return vmaxnmq_f32(vmaxnmq_f32(a, a), vmaxnmq_f32(b, b));
}
#else
inline float32x4_t chosen(uint32x4_t first, uint32x4_t equal, float32x4_t a, float32x4_t b, uint32x4_t ofEqual) {
  const float32x4_t one = vbslq_f32(vorrq_u32(first, vmvnq_u32(vceqq_f32(b, b))), a, b);
  return vbslq_f32(equal, vreinterpretq_f32_u32(ofEqual), one);
}
template <>
inline float32x4_t extreme<float>(MinOp, float32x4_t a, float32x4_t b) {
  return chosen(vcltq_f32(a, b), vceqq_f32(a, b), a, b, vorrq_u32(vreinterpretq_u32_f32(a), vreinterpretq_u32_f32(b)));
}
template <>
inline float32x4_t extreme<float>(MaxOp, float32x4_t a, float32x4_t b) {
  return chosen(vcgtq_f32(a, b), vceqq_f32(a, b), a, b, vandq_u32(vreinterpretq_u32_f32(a), vreinterpretq_u32_f32(b)));
}
#endif

template <class Op, Operand kOperand, class T>
void extremeRow(const T* a, const T* b, T* dst, int32_t count) {
  const int32_t x =
      forEachBlock<kOperand>(a, b, dst, count, [](auto first, auto second) { return extreme<T>(Op{}, first, second); });
  portable::extremeRow<Op, kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x);
}

}  // namespace dax::neon
#endif
