// The quotient of two integers, by its definition: exact in 128-bit integers, then one rounding.
#pragma once

#include "tests/image/pixel/arithmetic_oracle.h"

namespace dax::oracle {

template <class T>
T quotient(T a, T b, int32_t scaleFactor) {
  if constexpr (std::is_floating_point_v<T>) {
    return a / b;
  } else {
    Int128 above = Int128{a} * (b < 0 ? -1 : 1), below = Int128{b} * (b < 0 ? -1 : 1);
    (scaleFactor < 0 ? above : below) *= Int128{1} << (scaleFactor < 0 ? -scaleFactor : scaleFactor);
    Int128 down = above / below;
    if (down * below > above) --down;
    const Int128 twice = 2 * (above - down * below);
    const Int128 rounded = down + (twice > below || (twice == below && down % 2 != 0));
    return static_cast<T>(std::clamp<Int128>(rounded, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
  }
}

}  // namespace dax::oracle
