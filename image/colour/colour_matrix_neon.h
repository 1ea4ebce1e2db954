// Rows of pixels times a matrix, a vector of each channel at a time, in double precision.
#pragma once

#include "frame/dispatch.h"
#include "image/colour/colour_matrix_portable.h"
#include "image/convert/convert_neon.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Vectors of the three channels, as floats by quarters, which hold every pixel exactly.
template <class T>
struct ChannelFloats {
  Quarters<T> c[3];
};
inline ChannelFloats<uint8_t> loadChannelFloats(const uint8_t* from) {
  const uint8x16x3_t v = vld3q_u8(from);
  return {{toFloats(v.val[0]), toFloats(v.val[1]), toFloats(v.val[2])}};
}
inline ChannelFloats<uint16_t> loadChannelFloats(const uint16_t* from) {
  const uint16x8x3_t v = vld3q_u16(from);
  return {{toFloats(v.val[0]), toFloats(v.val[1]), toFloats(v.val[2])}};
}
inline ChannelFloats<float> loadChannelFloats(const float* from) {
  const float32x4x3_t v = vld3q_f32(from);
  return {{{v.val[0]}, {v.val[1]}, {v.val[2]}}};
}

struct DoublePair {
  float64x2_t low, high;
};

// Four pixels of a channel, rounded and saturated if integers.
inline float32x4_t lanesOfMatrix(float, const DoublePair& v) {
  return vcvt_high_f32_f64(vcvt_f32_f64(v.low), v.high);
}
template <class T>
int32x4_t lanesOfMatrix(T, const DoublePair& v) {
  return roundedLanes(v.low, v.high);
}

template <class T>
using MatrixLanes = std::array<std::conditional_t<std::is_same_v<T, float>, float32x4_t, int32x4_t>, 4 / sizeof(T)>;

inline void storeMatrixLanes(uint8_t* to, const MatrixLanes<uint8_t>& r, const MatrixLanes<uint8_t>& g,
                             const MatrixLanes<uint8_t>& b) {
  const uint8x16x3_t all = {{narrowed(uint8_t{}, r), narrowed(uint8_t{}, g), narrowed(uint8_t{}, b)}};
  vst3q_u8(to, all);
}
inline void storeMatrixLanes(uint16_t* to, const MatrixLanes<uint16_t>& r, const MatrixLanes<uint16_t>& g,
                             const MatrixLanes<uint16_t>& b) {
  const uint16x8x3_t all = {{narrowed(uint16_t{}, r), narrowed(uint16_t{}, g), narrowed(uint16_t{}, b)}};
  vst3q_u16(to, all);
}
inline void storeMatrixLanes(float* to, const MatrixLanes<float>& r, const MatrixLanes<float>& g,
                             const MatrixLanes<float>& b) {
  const float32x4x3_t all = {{r[0], g[0], b[0]}};
  vst3q_f32(to, all);
}

// Four pixels times a row of the matrix.
inline DoublePair timesMatrixRow(const double (&m)[4], const DoublePair (&c)[3]) {
  const auto sum = [&](float64x2_t a, float64x2_t b, float64x2_t d) {
    const float64x2_t two = vaddq_f64(vmulq_n_f64(a, m[0]), vmulq_n_f64(b, m[1]));
    return vaddq_f64(vaddq_f64(two, vmulq_n_f64(d, m[2])), vdupq_n_f64(m[3]));
  };
  return {sum(c[0].low, c[1].low, c[2].low), sum(c[0].high, c[1].high, c[2].high)};
}

template <class T>
void matrixRow(const T* src, T* dst, int32_t count, const ColourMatrix& by) {
  constexpr int32_t kLanes = 16 / sizeof(T);
  const ColourMatrix local = by;  // which dst cannot be
  ptrdiff_t x = 0;
  for (; x <= count - kLanes; x += kLanes) {
    const ChannelFloats<T> from = loadChannelFloats(src + 3 * x);
    MatrixLanes<T> to[3];
    for (size_t i = 0; i < from.c[0].size(); ++i) {
      DoublePair c[3];
      for (int k = 0; k < 3; ++k) c[k] = {vcvt_f64_f32(vget_low_f32(from.c[k][i])), vcvt_high_f64_f32(from.c[k][i])};
      for (int k = 0; k < 3; ++k) to[k][i] = lanesOfMatrix(T{}, timesMatrixRow(local.m[k], c));
    }
    storeMatrixLanes(dst + 3 * x, to[0], to[1], to[2]);
  }
  portable::matrixRow(src + 3 * x, dst + 3 * x, static_cast<int32_t>(count - x), by);
}

}  // namespace dax::neon
#endif
