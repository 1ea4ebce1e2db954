// Pixels of another type, by definition.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace dax::oracle {

// Rounded half to even and saturated; to floats one rounding.
template <class To, class Real>
To pixel(Real value) {
  if constexpr (std::is_floating_point_v<To>) return static_cast<To>(value);
  if (std::isnan(value)) return 0;
  const Real low = std::numeric_limits<To>::min(), high = std::numeric_limits<To>::max();
  return static_cast<To>(std::nearbyint(std::clamp(value, low, high)));
}

template <class To, class From>
To converted(From value, double scale, double offset) {
  const double product = static_cast<double>(value) * scale;
  return pixel<To>(product + offset);
}

// The quotient of whole numbers is rounded by its remainder; that of a float and 1 is a product of few bits.
template <class To, class From>
To convertedFullRange(From value) {
  const int64_t from = std::is_floating_point_v<From> ? 1 : int64_t(std::numeric_limits<From>::max());
  const int64_t to = std::is_floating_point_v<To> ? 1 : int64_t(std::numeric_limits<To>::max());
  if constexpr (std::is_floating_point_v<From>)
    return pixel<To>(static_cast<double>(value) * static_cast<double>(to));
  else if constexpr (std::is_floating_point_v<To>)
    return static_cast<To>(static_cast<double>(value) / static_cast<double>(from));
  else {
    const int64_t numerator = std::max<int64_t>(value, 0) * to, down = numerator / from, rest = numerator % from;
    return static_cast<To>(down + (2 * rest > from));
  }
}

}  // namespace dax::oracle
