// Rows of comparisons in vectors.
#pragma once

#include "image/logic/compare_portable.h"
#include "image/logic/mask_rows_neon.h"
#include "image/pixel/element_rows_neon.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Op, class Vector>
auto flagsOf(Op, Vector a, Vector b) {
  return Op::of(a, b);
}
// The compiler's comparisons of floats take care of exceptions, which nobody asks for.
#define DAX_FLOAT_FLAGS(OP, FLAGS)                              \
  inline uint32x4_t flagsOf(OP, float32x4_t a, float32x4_t b) { \
    return FLAGS;                                               \
  }
DAX_FLOAT_FLAGS(LessOp, vcltq_f32(a, b))
DAX_FLOAT_FLAGS(LessEqualOp, vcleq_f32(a, b))
DAX_FLOAT_FLAGS(EqualOp, vceqq_f32(a, b))
DAX_FLOAT_FLAGS(NotEqualOp, vmvnq_u32(vceqq_f32(a, b)))
DAX_FLOAT_FLAGS(GreaterEqualOp, vcgeq_f32(a, b))
DAX_FLOAT_FLAGS(GreaterOp, vcgtq_f32(a, b))
#undef DAX_FLOAT_FLAGS

template <class Op, Operand kOperand, class T>
void compareRow(const T* a, const T* b, uint8_t* dst, int32_t count) {
  using L = Lanes<T>;
  const auto constant = L::all(*b);
  const auto mask = [=](int32_t i) {
    if constexpr (sizeof(T) == 4 && kOperand == Operand::row) {
      const auto first = L::loadFour(a + i), second = L::loadFour(b + i);
      return maskOf16<T>([&](int32_t k) { return flagsOf(Op{}, first.val[k], second.val[k]); });
    } else {
      return maskOf16<T>([&](int32_t k) {
        const int32_t at = i + k * L::kCount;
        return flagsOf(Op{}, L::load(a + at), kOperand == Operand::row ? L::load(b + at) : constant);
      });
    }
  };
  const int32_t x = forEach16(dst, count, mask);
  portable::compareRow<Op, kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x);
}

template <Operand kOperand>
void compareEpsRow(const float* a, const float* b, uint8_t* dst, int32_t count, double eps) {
  const float64x2_t limit = vdupq_n_f64(eps);
  const auto near = [=](float64x2_t first, float64x2_t second) {
    return vreinterpretq_u32_u64(vcleq_f64(vabsq_f64(vsubq_f64(first, second)), limit));
  };
  const int32_t x = forEachMask<float>(dst, count, [=](int32_t i) {
    const float32x4_t first = vld1q_f32(a + i), second = vld1q_f32(operandAt<kOperand>(b, i));
    const uint32x4_t low = near(vcvt_f64_f32(vget_low_f32(first)), vcvt_f64_f32(vget_low_f32(second)));
    return vuzp1q_u32(low, near(vcvt_high_f64_f32(first), vcvt_high_f64_f32(second)));
  });
  portable::compareEpsRow<kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x, eps);
}

}  // namespace dax::neon
#endif
