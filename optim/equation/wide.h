// Numbers and polynomials with exponents beyond those of doubles: products of coefficients and powers of roots need them.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "optim/factor/view.h"

namespace dax {

// mantissa 2^exponent with 1 <= |mantissa| < 2, or both 0.
struct Wide {
  double mantissa;
  int32_t exponent;
};

inline Wide wide(double x, int32_t exponent = 0) {
  if (x == 0) return {0, 0};
  if (std::fabs(x) < 0x1p-1000) x *= 0x1p100, exponent -= 100;
  const auto bits = std::bit_cast<uint64_t>(x);
  const auto biased = static_cast<int32_t>(bits >> 52 & 0x7FF);
  return {std::bit_cast<double>((bits & ~(uint64_t{0x7FF} << 52)) | uint64_t{1023} << 52), exponent + biased - 1023};
}

// The nearest double, which may be infinite.
inline double narrow(Wide x) {
  return PowerOfTwo(x.exponent)(x.mantissa);
}

// 2^exponent for exponents up to 1023; what is not normal is 0.
inline double powerOrZero(int32_t exponent) {
  return exponent < -1022 ? 0 : std::bit_cast<double>(static_cast<uint64_t>(1023 + exponent) << 52);
}

inline int32_t signOf(Wide x) {
  return (x.mantissa > 0) - (x.mantissa < 0);
}

inline bool areFinite(const double* values, int64_t count) {
  Magnitude magnitude;
  magnitude.add(values, count);
  return magnitude.isFinite();
}

// The index of the last coefficient other than 0; -1 where there is none.
inline int32_t degreeOf(const double* coefficients, int32_t degree) {
  while (degree >= 0 && coefficients[degree] == 0) --degree;
  return degree;
}

}  // namespace dax
