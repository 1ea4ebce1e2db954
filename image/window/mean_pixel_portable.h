// From sums to means, any type, any instruction set.
#pragma once

#include <cstdint>
#include <type_traits>

namespace dax::portable {

// The precision of a mean before it is rounded to a pixel.
template <class T>
using MeanReal = std::conditional_t<std::is_same_v<T, double>, double, float>;

// A sum of integers that was computed modulo 2^32.
template <class T>
float floatFromSum(uint32_t sum) {
  return static_cast<float>(static_cast<std::conditional_t<std::is_signed_v<T>, int32_t, uint32_t>>(sum));
}

// A pixel from a mean in its range: integers are rounded half away from zero.
template <class T, class Real>
T pixelFromMean(Real mean) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(mean);
  } else {
    return static_cast<T>(mean + (mean < 0 ? Real(-0.5) : Real(0.5)));
  }
}

}  // namespace dax::portable
