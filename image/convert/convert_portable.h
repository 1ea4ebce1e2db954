// Rows of pixels of another type, any instruction set.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "daxi/convert.h"
#include "frame/numeric/round.h"

namespace dax::portable {

// A real number as a pixel.
template <class To, class Real>
To pixelOf(Real value) {
  if constexpr (std::is_floating_point_v<To>)
    return static_cast<To>(value);
  else
    return roundTo<To>(value);
}

template <class To, class From>
To saturatedPixel(From value) {
  if constexpr (std::is_floating_point_v<From> || std::is_floating_point_v<To>) {
    return pixelOf<To>(static_cast<float>(value));
  } else {
    using Limits = std::numeric_limits<To>;
    constexpr int32_t kMin = Limits::min(), kMax = Limits::max();
    return static_cast<To>(std::min(std::max(int32_t{value}, kMin), kMax));
  }
}

// Values as they are.
template <class From, class To>
void plainRow(const From* src, To* dst, int32_t count) {
  for (int32_t x = 0; x < count; ++x) dst[x] = saturatedPixel<To>(src[x]);
}

// src * scale + offset in the type Real.
template <class Real, class From, class To>
void linearRow(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg) {
  const auto scale = static_cast<Real>(cfg.scale), offset = static_cast<Real>(cfg.offset);
  for (int32_t x = 0; x < count; ++x) dst[x] = pixelOf<To>(static_cast<Real>(src[x]) * scale + offset);
}

// A scale as the sum of two floats; products of the first, of 16 bits, with bytes are exact.
struct SplitScale {
  explicit SplitScale(double scale) {
    int exponent;
    const double mantissa = std::frexp(scale, &exponent);
    high = static_cast<float>(std::ldexp(std::rint(std::ldexp(mantissa, 16)), exponent - 16));
    low = static_cast<float>(scale - high);
  }
  float high, low;
};

// src * scale in single precision, nearly always correctly rounded.
template <class From>
void splitRow(const From* src, float* dst, int32_t count, double scale) {
  const SplitScale parts(scale);
  for (int32_t x = 0; x < count; ++x)
    dst[x] = static_cast<float>(src[x]) * parts.high + static_cast<float>(src[x]) * parts.low;
}

template <class T>
inline constexpr uint32_t kFullRange = std::is_floating_point_v<T>
                                           ? 1
                                           : static_cast<uint32_t>(std::numeric_limits<T>::max());

// Integers: with an odd divisor no quotient lies half way between two.
template <class From, class To>
void fullRangeRow(const From* src, To* dst, int32_t count) {
  constexpr uint32_t kFrom = kFullRange<From>, kTo = kFullRange<To>;
  if constexpr (std::is_floating_point_v<From>) {
    linearRow<double>(src, dst, count, {kTo, 0});
  } else if constexpr (std::is_floating_point_v<To>) {
    for (int32_t x = 0; x < count; ++x) dst[x] = static_cast<To>(src[x]) / static_cast<To>(kFrom);
  } else {
    for (int32_t x = 0; x < count; ++x) {
      const auto value = static_cast<uint32_t>(std::max(int32_t{src[x]}, 0));
      dst[x] = static_cast<To>((value * kTo + kFrom / 2) / kFrom);
    }
  }
}

}  // namespace dax::portable
