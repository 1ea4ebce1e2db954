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

// Exact results in lanes of twice the size, of the lower and of the upper half.
template <class W>
struct Halves {
  W low, high;
};

#define DAX_WIDE_OPERATIONS(VECTOR, SUFFIX, WIDE, DIFFERENCE)                                       \
  inline Halves<WIDE> wide(AddOp, VECTOR a, VECTOR b) {                                             \
    return {vaddl_##SUFFIX(vget_low_##SUFFIX(a), vget_low_##SUFFIX(b)), vaddl_high_##SUFFIX(a, b)}; \
  }                                                                                                 \
  inline Halves<DIFFERENCE> wide(SubOp, VECTOR a, VECTOR b) {                                       \
    return {DIFFERENCE(lowDifference(a, b)), DIFFERENCE(highDifference(a, b))};                     \
  }                                                                                                 \
  inline Halves<WIDE> wide(MulOp, VECTOR a, VECTOR b) {                                             \
    return {vmull_##SUFFIX(vget_low_##SUFFIX(a), vget_low_##SUFFIX(b)), vmull_high_##SUFFIX(a, b)}; \
  }                                                                                                 \
  inline Halves<WIDE> wide(AbsDiffOp, VECTOR a, VECTOR b) {                                         \
    const VECTOR greater = vmaxq_##SUFFIX(a, b), lesser = vminq_##SUFFIX(a, b);                     \
    return {lowDifference(greater, lesser), highDifference(greater, lesser)};                       \
  }
DAX_WIDE_OPERATIONS(uint8x16_t, u8, uint16x8_t, int16x8_t)
DAX_WIDE_OPERATIONS(uint16x8_t, u16, uint32x4_t, int32x4_t)
DAX_WIDE_OPERATIONS(int16x8_t, s16, int32x4_t, int32x4_t)
#undef DAX_WIDE_OPERATIONS

// Saturated.
inline uint8x16_t narrow(uint8_t, Halves<uint16x8_t> v) {
  return vqmovn_high_u16(vqmovn_u16(v.low), v.high);
}
inline uint8x16_t narrow(uint8_t, Halves<int16x8_t> v) {
  return vcombine_u8(vqmovun_s16(v.low), vqmovun_s16(v.high));
}
inline uint16x8_t narrow(uint16_t, Halves<uint32x4_t> v) {
  return vqmovn_high_u32(vqmovn_u32(v.low), v.high);
}
inline uint16x8_t narrow(uint16_t, Halves<int32x4_t> v) {
  return vcombine_u16(vqmovun_s32(v.low), vqmovun_s32(v.high));
}
inline int16x8_t narrow(int16_t, Halves<int32x4_t> v) {
  return vqmovn_high_s32(vqmovn_s32(v.low), v.high);
}

// v / 2^shift, rounded half to even; v + 2^(shift - 1) fits its lanes. An odd quotient is rounded up from a half on, an even
// one above it.
template <class W>
W halvedVector(W v, int32_t shift) {
  using Lane = std::remove_reference_t<decltype(v[0])>;
  const auto places = static_cast<Lane>(shift), belowHalf = static_cast<Lane>((Lane{1} << (shift - 1)) - 1);
  return (v + ((v >> places) & Lane{1}) + belowHalf) >> places;
}

// Products of bytes, up to 255^2, leave room for 2^8, those of 16-bit numbers for 2^16.
template <class T>
constexpr int32_t kMaxVectorFactor = sizeof(T) == 1 ? 9 : 16;

template <class Op, Operand kOperand, class T>
void scaledRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor) {
  int32_t x = 0;
  if (scaleFactor > 0 && scaleFactor <= kMaxVectorFactor<T>) {
    x = forEachBlock<kOperand>(a, b, dst, count, [=](auto first, auto second) {
      auto exact = wide(Op{}, first, second);
      exact.low = halvedVector(exact.low, scaleFactor);
      exact.high = halvedVector(exact.high, scaleFactor);
      return narrow(T{}, exact);
    });
  }
  portable::scaledRow<Op, kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x, scaleFactor);
}

}  // namespace dax::neon
#endif
