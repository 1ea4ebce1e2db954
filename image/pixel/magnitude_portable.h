// Rows of absolute values and square roots, any instruction set.
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/numeric/round.h"
#include "image/pixel/magnitude.h"

namespace dax {

struct AbsOp {
  static int16_t of(int16_t value) { return static_cast<int16_t>(std::min(std::abs(int32_t{value}), 32767)); }
  static float of(float value) { return std::fabs(value); }
};

// No root of an integer is a half, nor nearer to one than 2^-11.
struct SqrtOp {
  template <class T>
  static T of(T value) {
    return roundTo<T>(std::sqrt(static_cast<float>(std::max<T>(value, 0))));
  }
  static float of(float value) { return std::sqrt(value); }
};

namespace portable {

template <class Op, class T>
void magnitudeRow(const T* src, T* dst, int32_t count) {
  for (int32_t x = 0; x < count; ++x) dst[x] = Op::of(src[x]);
}

}  // namespace portable
}  // namespace dax
