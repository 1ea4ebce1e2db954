// Rows of grey from colour, any instruction set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "image/colour/gray.h"

namespace dax {

// Weights as fractions of kDivisor; products with 16 bits and their sum fit 32.
struct Bt601Gray {
  static constexpr uint32_t kRed = 299, kGreen = 587, kBlue = 114, kDivisor = 1000;
};
struct Bt709Gray {
  static constexpr uint32_t kRed = 2126, kGreen = 7152, kBlue = 722, kDivisor = 10000;
};

namespace portable {

template <class Standard, class W>
constexpr W grayWeight(uint32_t numerator) {
  if constexpr (std::is_floating_point_v<W>) {
    return static_cast<W>(numerator / double{Standard::kDivisor});
  } else {
    return numerator;
  }
}

template <class Standard, class Order, class T>
void grayRow(const T* src, T* dst, int32_t count) {
  using W = std::conditional_t<std::is_floating_point_v<T>, T, uint32_t>;
  constexpr W kRed = grayWeight<Standard, W>(Standard::kRed), kGreen = grayWeight<Standard, W>(Standard::kGreen),
              kBlue = grayWeight<Standard, W>(Standard::kBlue);
  for (ptrdiff_t x = 0; x < count; ++x) {
    const W sum = kRed * src[3 * x + Order::kRed] + kGreen * src[3 * x + 1] + kBlue * src[3 * x + Order::kBlue];
    if constexpr (std::is_floating_point_v<T>) {
      dst[x] = sum;
    } else {
      dst[x] = static_cast<T>((sum + Standard::kDivisor / 2) / Standard::kDivisor);
    }
  }
}

}  // namespace portable
}  // namespace dax
