// The passes of the box filter in vectors. Along rows the four lanes are four rows, so that each row's sums are added
// in the same order as by the portable twin.
#pragma once

#include <cstdint>

#include "image/window/filter_box_portable.h"
#include "image/window/row_lanes_neon.h"

namespace dax::neon {

// Twin of portable::boxRow for four rows, not in place: the two running sums that it subtracts are formed side by side,
// so that nothing needs to be stored.
template <class T, class Sum>
void boxFourRows(const T* const (&src)[4], Sum* const (&dst)[4], int32_t width, int32_t radius) {
  using Lanes = SumLanes<Sum>;
  const FourRowReader<T, Sum> from{src};
  const FourRowWriter<Sum> to{dst};
  auto lead = Lanes::all(Lanes::kNeutral), trail = lead;
  const int32_t right = width - radius;
  int32_t x = 0;
  for (; x < radius; ++x) lead = Lanes::add(lead, from.column(x));
  for (x = 0; x <= radius; ++x) {
    lead = Lanes::add(lead, from.column(x + radius));
    to.column(x, lead);
  }
  for (; x <= right - 4; x += 4) {
    auto columns = from.columns(x + radius);
    const auto leaving = from.columns(x - radius - 1);
    for (int k = 0; k < 4; ++k) {
      lead = Lanes::add(lead, columns.val[k]);
      trail = Lanes::add(trail, leaving.val[k]);
      columns.val[k] = Lanes::subtract(lead, trail);
    }
    to.columns(x, columns);
  }
  for (; x < width; ++x) {
    if (x < right) lead = Lanes::add(lead, from.column(x + radius));
    trail = Lanes::add(trail, from.column(x - radius - 1));
    to.column(x, Lanes::subtract(lead, trail));
  }
}

// Twins of the portable steps down columns.
template <class Sum>
void boxStep(const Sum* before, const Sum* enter, Sum* slot, Sum* dst, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(before + x), result = Lanes::loadFour(slot + x);
    const auto in = Lanes::loadFour(enter + x);
    for (int k = 0; k < 4; ++k) {
      sums.val[k] = Lanes::add(sums.val[k], in.val[k]);
      result.val[k] = Lanes::subtract(sums.val[k], result.val[k]);
    }
    Lanes::storeFour(dst + x, result);
    Lanes::storeFour(slot + x, sums);
  }
  portable::boxStep(before + x, enter + x, slot + x, dst + x, n - x);
}

template <class Sum>
void addTo(Sum* dst, const Sum* before, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(before + x);
    const auto in = Lanes::loadFour(dst + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = Lanes::add(sums.val[k], in.val[k]);
    Lanes::storeFour(dst + x, sums);
  }
  portable::addTo(dst + x, before + x, n - x);
}

template <class Sum>
void subtractInto(Sum* dst, const Sum* lead, const Sum* trail, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(lead + x);
    const auto out = Lanes::loadFour(trail + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = Lanes::subtract(sums.val[k], out.val[k]);
    Lanes::storeFour(dst + x, sums);
  }
  portable::subtractInto(dst + x, lead + x, trail + x, n - x);
}

}  // namespace dax::neon
