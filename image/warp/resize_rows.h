// Rows of a resize, in one of two arithmetics: whole numbers for bytes that are made of two taps an axis, else double
// precision.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/numeric/round.h"
#include "image/warp/resize_taps.h"

namespace dax {

// Resized rows hold 1/256 levels: 255 * 256 fits 16 bits, the sum of two of them with weights 31.
struct FixedResize {
  using Weight = uint16_t;
  using Mid = uint16_t;
  static constexpr int32_t kMidBits = 8, kHalfMid = 1 << (kWeightBits - kMidBits - 1);

  static void setWeights(const Taps& taps, const double* real, Weight* weights, int32_t) {
    uint16_t fixed[2];
    fixedWeights(taps, real, fixed);
    weights[0] = fixed[0], weights[1] = fixed[1];
  }

  template <int kChannels>
  static void alongX(const uint8_t* src, const int32_t* indices, const Taps*, const Weight* weights, int32_t taps,
                     Mid* mid, int32_t width) {
    for (int32_t x = 0; x < width; ++x) {
      const int32_t* const at = indices + ptrdiff_t{x} * taps;
      const Weight* const w = weights + ptrdiff_t{x} * taps;
      for (int c = 0; c < kChannels; ++c) {
        const uint32_t sum = src[at[0] + c] * uint32_t{w[0]} + src[at[1] + c] * uint32_t{w[1]};
        mid[kChannels * ptrdiff_t{x} + c] = static_cast<Mid>((sum + kHalfMid) >> (kWeightBits - kMidBits));
      }
    }
  }

  // The last rounding is half to even.
  static void alongY(const Mid* const* rows, const Weight* weights, int32_t taps, uint8_t* dst, int32_t count) {
    constexpr int32_t kShift = kWeightBits + kMidBits;
    const Mid *const a = rows[0], *const b = rows[taps - 1];
    const uint32_t wa = weights[0], wb = taps > 1 ? weights[1] : 0;
    for (int32_t i = 0; i < count; ++i) {
      const uint32_t sum = a[i] * wa + b[i] * wb;
      dst[i] = static_cast<uint8_t>((sum + ((1u << (kShift - 1)) - 1) + (sum >> kShift & 1)) >> kShift);
    }
  }
};

template <class T>
struct RealResize {
  using Weight = double;
  using Mid = double;

  static void setWeights(const Taps& taps, const double* real, Weight* weights, int32_t) {
    std::copy(real, real + taps.count, weights);
  }

  template <int kChannels>
  static void alongX(const T* src, const int32_t* indices, const Taps* taps, const Weight* weights, int32_t maxTaps,
                     Mid* mid, int32_t width) {
    for (int32_t x = 0; x < width; ++x) {
      const int32_t* const at = indices + ptrdiff_t{x} * maxTaps;
      const Weight* const w = weights + ptrdiff_t{x} * maxTaps;
      for (int c = 0; c < kChannels; ++c) {
        double sum = w[0] * src[at[0] + c];
        for (int32_t k = 1; k < taps[x].count; ++k) sum += w[k] * src[at[k] + c];
        mid[kChannels * ptrdiff_t{x} + c] = sum;
      }
    }
  }

  static void alongY(const Mid* const* rows, const Weight* weights, int32_t taps, T* dst, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      double sum = weights[0] * rows[0][i];
      for (int32_t k = 1; k < taps; ++k) sum += weights[k] * rows[k][i];
      if constexpr (std::is_integral_v<T>) {
        dst[i] = roundTo<T>(sum);
      } else {
        dst[i] = static_cast<T>(sum);
      }
    }
  }
};

}  // namespace dax
