// Real numbers to integers, the one way for all families.
#pragma once

#include <cmath>
#include <concepts>
#include <limits>

namespace dax {

// The nearest integer, halves to the even one; beyond the limits of T, its limits; 0 for NaN. (In the default rounding
// mode, which hosts leave alone.)
template <std::integral T, std::floating_point Real>
T roundTo(Real value) {
  using Limits = std::numeric_limits<T>;
  // The greatest T may be rounded up to a power of two, which is above all of T.
  constexpr Real kLow = static_cast<Real>(Limits::min()), kHigh = static_cast<Real>(Limits::max());
  const Real rounded = std::rint(value);
  if (rounded >= kHigh) return Limits::max();
  if (rounded <= kLow) return Limits::min();
  return std::isnan(rounded) ? T{0} : static_cast<T>(rounded);
}

}  // namespace dax
