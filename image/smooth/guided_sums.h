// What the guided filter computes from the sums of its windows.
#pragma once

#include <cstdint>
#include <type_traits>

#include "image/window/local_sums.h"

namespace dax {

// Products of two pixels, exact but for floats, whose products in double precision are exact too.
template <class T>
using GuidedProduct =
    std::conditional_t<std::is_floating_point_v<T>, double, std::conditional_t<sizeof(T) == 1, uint16_t, uint32_t>>;

// n sum(I p) - sum(I) sum(p), which is n^2 times the covariance.
template <class Sum, class Products>
double covarianceOf(uint32_t n, Sum guide, Sum source, Products products) {
  if constexpr (std::is_floating_point_v<Sum>) {
    return n * products - guide * source;
  } else if constexpr (sizeof(Sum) == 4) {
    return static_cast<double>(static_cast<int64_t>(n * uint64_t{products} - uint64_t{guide} * source));
  } else {
    using Wide = unsigned __int128;
    return static_cast<double>(static_cast<__int128>(Wide{n} * products - Wide{guide} * source));
  }
}

struct GuidedLine {
  float a;
  double b;
};

// spread and covariance are n^2 times theirs.
inline GuidedLine guidedLine(double n, double spread, double covariance, double guide, double source, double eps) {
  const double divisor = spread + eps * n * n;
  const auto a = static_cast<float>(divisor == 0 ? 0 : covariance / divisor);
  return {a, (source - static_cast<double>(a) * guide) / n};
}

}  // namespace dax
