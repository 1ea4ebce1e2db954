// Which pixels lie between two limits that are excluded, and so are not clipped.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace dax {

// NaN and infinities never do.
template <class T>
class Clipping {
 public:
  Clipping(double low, double high) : above_(limitOf(low, std::floor(low))), below_(limitOf(high, std::ceil(high))) {}

  bool isInside(T value) const { return value > above_ && value < below_; }
  bool isLow(T value) const { return value <= above_; }
  bool isHigh(T value) const { return value >= below_; }

 private:
  using Limit = std::conditional_t<std::is_integral_v<T>, int32_t, double>;

  // Integers lie above a limit if they lie above its floor, and below it if below its ceiling.
  static Limit limitOf(double limit, double rounded) {
    if constexpr (std::is_integral_v<T>) {
      constexpr double kFirst = std::numeric_limits<T>::min(), kLast = std::numeric_limits<T>::max();
      return static_cast<int32_t>(std::clamp(rounded, kFirst - 1, kLast + 1));
    } else {
      return limit;
    }
  }

  Limit above_, below_;
};

// The variance that rounding to integers adds.
template <class T>
inline constexpr double kRoundingVariance = std::is_integral_v<T> ? 1.0 / 12 : 0;

}  // namespace dax
