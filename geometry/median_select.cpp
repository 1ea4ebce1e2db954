#include "geometry/median_select.h"

#include <algorithm>
#include <functional>

float _DAXS_Median_32f(float* values, int32_t n) {
  float* const middle = values + n / 2;
  std::nth_element(values, middle, values + n);
  if (n % 2 == 1) return *middle;
  const double below = *std::max_element(values, middle);
  return static_cast<float>((below + *middle) / 2);
}

namespace dax {

double valueBelowLargest(float* values, int32_t n, int32_t rank) {
  // values[rank] becomes the next after the `rank` largest, which come before it.
  std::nth_element(values, values + rank, values + n, std::greater<>());
  const double smallestAbove = *std::min_element(values, values + rank);
  return (smallestAbove + values[rank]) / 2;
}

}  // namespace dax
