// Arithmetic of two numbers, by its definition: exact in 128-bit integers, then one rounding.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

namespace dax::oracle {

__extension__ using Int128 = __int128;

// n / 2^shift, rounded half to even.
inline Int128 roundedQuotient(Int128 n, int32_t shift) {
  const Int128 divisor = Int128{1} << shift;
  Int128 down = n / divisor;
  if (down * divisor > n) --down;
  const Int128 twice = 2 * (n - down * divisor);
  return down + (twice > divisor || (twice == divisor && down % 2 != 0));
}

template <class W>
W exactResult(std::string_view operation, W a, W b) {
  if (operation == "Add") return a + b;
  if (operation == "Sub") return a - b;
  if (operation == "Mul") return a * b;
  return a > b ? a - b : b - a;
}

template <class T>
T arithmetic(std::string_view operation, T a, T b, int32_t scaleFactor) {
  if constexpr (std::is_floating_point_v<T>) {
    return operation == "AbsDiff" ? std::fabs(a - b) : exactResult(operation, a, b);
  } else {
    const Int128 exact = exactResult<Int128>(operation, a, b);
    const Int128 scaled = scaleFactor > 0 ? roundedQuotient(exact, scaleFactor) : exact * (Int128{1} << -scaleFactor);
    return static_cast<T>(std::clamp<Int128>(scaled, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
  }
}

}  // namespace dax::oracle
