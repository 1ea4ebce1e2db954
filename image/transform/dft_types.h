// Numbers, sides and spectra of Fourier transforms.
#pragma once

#include <cstdint>
#include <type_traits>

#include "dax/types.h"

namespace dax {

constexpr int32_t kMaxDftSide = 1 << 26;

template <class T>
using ComplexOf = std::conditional_t<std::is_same_v<T, float>, DaxComplex32f, DaxComplex64f>;

// The columns of the half of the spectrum that tells all of a real picture's: 0..W / 2.
inline DaxiSize halfSpectrum(DaxiSize size) {
  return {size.width / 2 + 1, size.height};
}

// The smallest number >= n without a prime factor above 7; n in 1..2^27.
int32_t smoothSide(int32_t n);

}  // namespace dax
