// Rows of absolute values and square roots in vectors.
#pragma once

#include "image/pixel/element_rows_neon.h"
#include "image/pixel/float_lanes_neon.h"
#include "image/pixel/magnitude_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

#if defined(__aarch64__)
inline float32x4_t roots(float32x4_t v) {
  return vsqrtq_f32(v);
}
#else
inline float32x4_t roots(float32x4_t v) {
  for (int i = 0; i < 4; ++i) v[i] = std::sqrt(v[i]);
  return v;
}
#endif

inline int16x8_t magnitudes(AbsOp, int16x8_t v) {
  return vqabsq_s16(v);
}
inline float32x4_t magnitudes(AbsOp, float32x4_t v) {
  return vabsq_f32(v);
}
inline float32x4_t magnitudes(SqrtOp, float32x4_t v) {
  return roots(v);
}
template <class T, class Vector>
Vector wholeRoots(Vector v) {
  Quarters<T> values = toFloats(v);
  for (float32x4_t& each : values) each = roots(each);
  return fromFloats<T>(values);
}
inline uint8x16_t magnitudes(SqrtOp, uint8x16_t v) {
  return wholeRoots<uint8_t>(v);
}
inline uint16x8_t magnitudes(SqrtOp, uint16x8_t v) {
  return wholeRoots<uint16_t>(v);
}
inline int16x8_t magnitudes(SqrtOp, int16x8_t v) {
  return wholeRoots<int16_t>(vmaxq_s16(v, vdupq_n_s16(0)));
}

template <class Op, class T>
void magnitudeRow(const T* src, T* dst, int32_t count) {
  const int32_t x =
      forEachBlock<Operand::row>(src, src, dst, count, [](auto value, auto) { return magnitudes(Op{}, value); });
  portable::magnitudeRow<Op>(src + x, dst + x, count - x);
}

}  // namespace dax::neon
#endif
