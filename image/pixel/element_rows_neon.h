// Vectors of a row and of a second operand, three at a time, after which a pattern repeats.
#pragma once

#include <array>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/pixel/element_rows_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// dst = f(a, b) by whole blocks; returns how many elements these were.
template <Operand kOperand, class T, class F>
int32_t forEachBlock(const T* a, const T* b, T* dst, int32_t count, F f) {
  using L = Lanes<T>;
  constexpr int32_t kLanes = L::kCount, kBlock = 3 * kLanes;
  const auto load = [](const T* from) {
    return std::array{L::load(from), L::load(from + kLanes), L::load(from + 2 * kLanes)};
  };
  [[maybe_unused]] std::array<typename L::Vector, 3> pattern;
  if constexpr (kOperand == Operand::pattern) pattern = load(b);
  int32_t x = 0;
  for (; x <= count - kBlock; x += kBlock) {
    const auto first = load(a + x);
    if constexpr (kOperand == Operand::row) pattern = load(b + x);
    for (int k = 0; k < 3; ++k) L::store(dst + x + k * kLanes, f(first[k], pattern[k]));
  }
  return x;
}

// The second operand of element x.
template <Operand kOperand, class T>
const T* operandAt(const T* b, int32_t x) {
  return kOperand == Operand::row ? b + x : b;
}

}  // namespace dax::neon
#endif
