// The value of a constant border as a pixel.
#pragma once

#include <algorithm>
#include <limits>
#include <type_traits>

#include "frame/numeric/round.h"

namespace dax {

// The nearest one of the type; of vectors each lane.
template <class T>
T borderPixel(double value) {
  using Limits = std::numeric_limits<T>;
  if constexpr (std::is_integral_v<T>) {
    return roundTo<T>(value);
  } else if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(std::clamp<double>(value, Limits::lowest(), Limits::max()));
  } else {
    return T{} + static_cast<float>(value);
  }
}

}  // namespace dax
