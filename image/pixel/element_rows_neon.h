// Vectors of a row and of a second operand: four at a time, or three, after which a pattern repeats.
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
  constexpr int32_t kLanes = L::kCount;
  int32_t x = 0;
  if constexpr (kOperand == Operand::row) {
    for (; x <= count - 4 * kLanes; x += 4 * kLanes) {
      auto first = L::loadFour(a + x);
      const auto second = L::loadFour(b + x);
      for (int k = 0; k < 4; ++k) first.val[k] = f(first.val[k], second.val[k]);
      L::storeFour(dst + x, first);
    }
  } else {
    const std::array pattern = {L::load(b), L::load(b + kLanes), L::load(b + 2 * kLanes)};
    for (; x <= count - 3 * kLanes; x += 3 * kLanes) {
      const std::array first = {L::load(a + x), L::load(a + x + kLanes), L::load(a + x + 2 * kLanes)};
      for (int k = 0; k < 3; ++k) L::store(dst + x + k * kLanes, f(first[k], pattern[k]));
    }
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
