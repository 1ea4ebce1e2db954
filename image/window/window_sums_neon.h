// Running sums of integers in vectors. Columns are 16-bit sums of 8-bit pixels or 32-bit sums of 16-bit ones; all sums
// are modulo the size of their type.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/border/copy_border_neon.h"
#include "image/window/window_reach.h"
#include "image/window/window_sums_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The type of the sums of a column.
template <class T>
using WindowColumn = std::conditional_t<sizeof(T) == 1, uint16_t, uint32_t>;

// Twin of portable::moveRow.
template <class T>
void moveRow(WindowColumn<T>* columns, const T* enter, const T* leave, int32_t n) {
  using Pixels = Lanes<T>;
  using Columns = Lanes<WindowColumn<T>>;
  const auto add = [](auto& sums, auto differences) {
    sums = Columns::add(sums, std::bit_cast<typename Columns::Vector>(differences));
  };
  constexpr int32_t kHalf = 4 * Columns::kCount;
  int32_t x = 0;
  for (; x <= n - 2 * kHalf; x += 2 * kHalf) {
    const auto in = Pixels::loadFour(enter + x), out = Pixels::loadFour(leave + x);
    for (int32_t half = 0; half < 2; ++half) {
      auto sums = Columns::loadFour(columns + x + half * kHalf);
      for (int32_t k = 0; k < 2; ++k) {
        const auto a = in.val[2 * half + k], b = out.val[2 * half + k];
        add(sums.val[2 * k], lowDifference(a, b));
        add(sums.val[2 * k + 1], highDifference(a, b));
      }
      Columns::storeFour(columns + x + half * kHalf, sums);
    }
  }
  portable::moveRow(columns + x, enter + x, leave + x, n - x);
}

// What enters and leaves the window at each of 16 steps; lane i of vector k is that of step 4 i + k.
inline uint32x4x4_t differences(const uint16_t* enter, const uint16_t* leave) {
#if defined(__aarch64__)
  const uint16x4x4_t in = vld4_u16(enter), out = vld4_u16(leave);
  return {{vsubl_u16(in.val[0], out.val[0]), vsubl_u16(in.val[1], out.val[1]), vsubl_u16(in.val[2], out.val[2]),
           vsubl_u16(in.val[3], out.val[3])}};
#else
  uint32x4_t even[2], odd[2];
  for (int k = 0; k < 2; ++k) {
    const uint32x4_t in = vreinterpretq_u32_u16(vld1q_u16(enter + 8 * k));
    const uint32x4_t out = vreinterpretq_u32_u16(vld1q_u16(leave + 8 * k));
    const uint32x4_t low = vdupq_n_u32(0xFFFF);
    even[k] = vsubq_u32(vandq_u32(in, low), vandq_u32(out, low));
    odd[k] = vsubq_u32(vshrq_n_u32(in, 16), vshrq_n_u32(out, 16));
  }
  return {{vuzp1q_u32(even[0], even[1]), vuzp1q_u32(odd[0], odd[1]), vuzp2q_u32(even[0], even[1]),
           vuzp2q_u32(odd[0], odd[1])}};
#endif
}

inline uint32x4x4_t differences(const uint32_t* enter, const uint32_t* leave) {
#if defined(__aarch64__)
  const uint32x4x4_t in = vld4q_u32(enter), out = vld4q_u32(leave);
#else
  const uint32x4x4_t in = vld1q_u32_x4(enter), out = vld1q_u32_x4(leave);
#endif
  uint32x4x4_t steps;
  for (int k = 0; k < 4; ++k) steps.val[k] = vsubq_u32(in.val[k], out.val[k]);
#if defined(__aarch64__)
  return steps;
#else
  return transposed(steps);
#endif
}

// The running sum after each of 16 steps, in the same order. `carry` holds the sum before them in every lane.
inline uint32x4x4_t runningSums(const uint32x4x4_t& steps, uint32x4_t& carry) {
  const uint32x4_t zero = vdupq_n_u32(0);
  const uint32x4_t two = vaddq_u32(steps.val[0], steps.val[1]), three = vaddq_u32(two, steps.val[2]);
  const uint32x4_t four = vaddq_u32(three, steps.val[3]);
  uint32x4_t last = vaddq_u32(four, vextq_u32(zero, four, 3));
  last = vaddq_u32(carry, vaddq_u32(last, vextq_u32(zero, last, 2)));
  const uint32x4_t before = vsubq_u32(last, four);
  carry = vdupq_laneq_u32(last, 3);
  return {{vaddq_u32(before, steps.val[0]), vaddq_u32(before, two), vaddq_u32(before, three), last}};
}

// Slides a window n steps, enter[i] entering and leave[i] leaving at step i. Calls store.block(i, sums) with the sums
// after steps i..i + 15, in the order of differences(), and store.pixel(i, sum) for the rest. Returns the last sum.
template <class Column, class Store>
uint32_t slide(const Column* enter, const Column* leave, int32_t n, uint32_t sum, const Store& store) {
  uint32x4_t carry = vdupq_n_u32(sum);
  int32_t i = 0;
  for (; i <= n - 16; i += 16) store.block(i, runningSums(differences(enter + i, leave + i), carry));
  sum = vgetq_lane_u32(carry, 0);
  for (; i < n; ++i) {
    sum += uint32_t{enter[i]} - leave[i];
    store.pixel(i, sum);
  }
  return sum;
}

// Column sums of a row or a part of it, with those that windows reach beyond it on either side: one that the first
// window does not count any more, `before` ones, `width`, `after` ones.
template <class Column>
struct ExtendedColumns {
  Column* first;
  int32_t width;
  WindowReach reach;

  Column* columns() const { return first + 1 + reach.before; }

  void clear() const { std::fill_n(first, 1 + reach.before + int64_t{width} + reach.after, Column{}); }

  void mirrorLeft() const { reverseRun(columns() - reach.before, columns(), reach.before); }
  void mirrorRight() const { reverseRun(columns() + width, columns() + width - reach.after, reach.after); }

  // Gives the sums around columns 0..width - 1 to `store`.
  template <class Store>
  void slide(const Store& store) const {
    const int32_t mask = reach.before + 1 + reach.after;
    uint32_t sum = 0;
    for (int32_t i = 0; i < mask; ++i) sum += first[i];
    neon::slide(first + mask, first, width, sum, store);
  }
};

}  // namespace dax::neon
#endif
