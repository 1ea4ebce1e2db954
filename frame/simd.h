// NEON intrinsics: the compiler's own on 64-bit ARM, SIMDe's elsewhere. Kernels use them only where DAX_HAVE_NEON is 1.
#pragma once

#if DAX_HAVE_NEON
#if defined(__aarch64__)
#include <arm_neon.h>
#else
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#define SIMDE_ENABLE_NATIVE_ALIASES
// Kernels never convert a float outside the integer's range; files that define DAX_SIMD_CONVERTS_NO_NAN never a NaN.
#define SIMDE_FAST_CONVERSION_RANGE
#ifdef DAX_SIMD_CONVERTS_NO_NAN
#define SIMDE_FAST_NANS
#endif
#include <simde/arm/neon.h>
#pragma GCC diagnostic pop
#endif

namespace dax {

// Transposes a 4 x 4 matrix: element k of vector i becomes element i of vector k.
inline uint32x4x4_t transposed(const uint32x4x4_t& v) {
  const uint32x4_t a = vzip1q_u32(v.val[0], v.val[2]), b = vzip1q_u32(v.val[1], v.val[3]);
  const uint32x4_t c = vzip2q_u32(v.val[0], v.val[2]), d = vzip2q_u32(v.val[1], v.val[3]);
  return {{vzip1q_u32(a, b), vzip2q_u32(a, b), vzip1q_u32(c, d), vzip2q_u32(c, d)}};
}

inline float32x4x4_t transposed(const float32x4x4_t& v) {
  const float32x4_t a = vzip1q_f32(v.val[0], v.val[2]), b = vzip1q_f32(v.val[1], v.val[3]);
  const float32x4_t c = vzip2q_f32(v.val[0], v.val[2]), d = vzip2q_f32(v.val[1], v.val[3]);
  return {{vzip1q_f32(a, b), vzip2q_f32(a, b), vzip1q_f32(c, d), vzip2q_f32(c, d)}};
}

// Packs 64 flag bytes, each 0 or 255, into 64 bits: a byte keeps the bit of its position modulo 8, and three rounds of
// pairwise sums join eight bytes into one.
inline uint64_t gatherBits(uint8x16_t a, uint8x16_t b, uint8x16_t c, uint8x16_t d) {
  constexpr uint8_t kBits[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
  const uint8x16_t bits = vld1q_u8(kBits);
  const uint8x16_t low = vpaddq_u8(vandq_u8(a, bits), vandq_u8(b, bits));
  const uint8x16_t high = vpaddq_u8(vandq_u8(c, bits), vandq_u8(d, bits));
  const uint8x16_t all = vpaddq_u8(low, high);
  return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(all, all)), 0);
}

// Differences of the lower or the upper halves of two vectors in lanes of twice the size. (SIMDe widens in pieces.)
#if defined(__aarch64__)
#define DAX_WIDE_DIFFERENCES(VECTOR, WIDE, SUFFIX, WIDE_SUFFIX)        \
  inline WIDE lowDifference(VECTOR a, VECTOR b) {                      \
    return vsubl_##SUFFIX(vget_low_##SUFFIX(a), vget_low_##SUFFIX(b)); \
  }                                                                    \
  inline WIDE highDifference(VECTOR a, VECTOR b) {                     \
    return vsubl_high_##SUFFIX(a, b);                                  \
  }
#else
#define DAX_WIDE_DIFFERENCES(VECTOR, WIDE, SUFFIX, WIDE_SUFFIX)                                           \
  inline WIDE lowDifference(VECTOR a, VECTOR b) {                                                         \
    return vsubq_##WIDE_SUFFIX(vreinterpretq_##WIDE_SUFFIX##_##SUFFIX(vzip1q_##SUFFIX(a, upperBits(a))),  \
                               vreinterpretq_##WIDE_SUFFIX##_##SUFFIX(vzip1q_##SUFFIX(b, upperBits(b)))); \
  }                                                                                                       \
  inline WIDE highDifference(VECTOR a, VECTOR b) {                                                        \
    return vsubq_##WIDE_SUFFIX(vreinterpretq_##WIDE_SUFFIX##_##SUFFIX(vzip2q_##SUFFIX(a, upperBits(a))),  \
                               vreinterpretq_##WIDE_SUFFIX##_##SUFFIX(vzip2q_##SUFFIX(b, upperBits(b)))); \
  }
inline uint8x16_t upperBits(uint8x16_t) {
  return vdupq_n_u8(0);
}
inline uint16x8_t upperBits(uint16x8_t) {
  return vdupq_n_u16(0);
}
inline int16x8_t upperBits(int16x8_t v) {
  return vshrq_n_s16(v, 15);
}
#endif
DAX_WIDE_DIFFERENCES(uint8x16_t, uint16x8_t, u8, u16)
DAX_WIDE_DIFFERENCES(uint16x8_t, uint32x4_t, u16, u32)
DAX_WIDE_DIFFERENCES(int16x8_t, int32x4_t, s16, s32)
#undef DAX_WIDE_DIFFERENCES

}  // namespace dax

#if !defined(__aarch64__)

// Four consecutive vectors: SIMDe loads them element by element and cannot store them.
#undef vld1q_u8_x4
#undef vld1q_u16_x4
#undef vld1q_s16_x4
#undef vld1q_u32_x4
#undef vld1q_s32_x4
#undef vld1q_f32_x4
#define DAX_FOUR_VECTORS(T, FOUR, SUFFIX)                                                          \
  inline FOUR vld1q_##SUFFIX##_x4(const T* from) {                                                 \
    constexpr int kNext = 16 / sizeof(T);                                                          \
    return {{vld1q_##SUFFIX(from), vld1q_##SUFFIX(from + kNext), vld1q_##SUFFIX(from + 2 * kNext), \
             vld1q_##SUFFIX(from + 3 * kNext)}};                                                   \
  }                                                                                                \
  inline void vst1q_##SUFFIX##_x4(T* to, FOUR from) {                                              \
    constexpr int kNext = 16 / sizeof(T);                                                          \
    for (int i = 0; i < 4; ++i) vst1q_##SUFFIX(to + i * kNext, from.val[i]);                       \
  }
DAX_FOUR_VECTORS(uint8_t, uint8x16x4_t, u8)
DAX_FOUR_VECTORS(uint16_t, uint16x8x4_t, u16)
DAX_FOUR_VECTORS(int16_t, int16x8x4_t, s16)
DAX_FOUR_VECTORS(uint32_t, uint32x4x4_t, u32)
DAX_FOUR_VECTORS(int32_t, int32x4x4_t, s32)
DAX_FOUR_VECTORS(float, float32x4x4_t, f32)
#undef DAX_FOUR_VECTORS

// Every fourth element: SIMDe moves single elements.
#undef vld4q_u32
inline uint32x4x4_t vld4q_u32(const uint32_t* from) {
  return dax::transposed(vld1q_u32_x4(from));
}
#undef vld4q_f32
inline float32x4x4_t vld4q_f32(const float* from) {
  return dax::transposed(vld1q_f32_x4(from));
}
// Every third.
#undef vld3q_f32
inline float32x4x3_t vld3q_f32(const float* from) {
  const float32x4_t a = vld1q_f32(from), b = vld1q_f32(from + 4), c = vld1q_f32(from + 8);
  return {{__builtin_shufflevector(__builtin_shufflevector(a, b, 0, 3, 6, 6), c, 0, 1, 2, 5),
           __builtin_shufflevector(__builtin_shufflevector(a, b, 1, 4, 7, 7), c, 0, 1, 2, 6),
           __builtin_shufflevector(__builtin_shufflevector(a, b, 2, 5, 5, 5), c, 0, 1, 4, 7)}};
}
#undef vld3q_u8
inline uint8x16x3_t vld3q_u8(const uint8_t* from) {
  const uint8x16_t a = vld1q_u8(from), b = vld1q_u8(from + 16), c = vld1q_u8(from + 32);
  const uint8x16_t ab0 = __builtin_shufflevector(a, b, 0, 3, 6, 9, 12, 15, 18, 21, 24, 27, 30, -1, -1, -1, -1, -1);
  const uint8x16_t ab1 = __builtin_shufflevector(a, b, 1, 4, 7, 10, 13, 16, 19, 22, 25, 28, 31, -1, -1, -1, -1, -1);
  const uint8x16_t ab2 = __builtin_shufflevector(a, b, 2, 5, 8, 11, 14, 17, 20, 23, 26, 29, -1, -1, -1, -1, -1, -1);
  return {{__builtin_shufflevector(ab0, c, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 17, 20, 23, 26, 29),
           __builtin_shufflevector(ab1, c, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 18, 21, 24, 27, 30),
           __builtin_shufflevector(ab2, c, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 19, 22, 25, 28, 31)}};
}
#undef vst4q_u32
inline void vst4q_u32(uint32_t* to, uint32x4x4_t from) {
  vst1q_u32_x4(to, dax::transposed(from));
}

#undef vtrn1q_u8
inline uint8x16_t vtrn1q_u8(uint8x16_t a, uint8x16_t b) {
  const uint16x8_t even = vandq_u16(vreinterpretq_u16_u8(a), vdupq_n_u16(0xFF));
  return vreinterpretq_u8_u16(vorrq_u16(even, vshlq_n_u16(vreinterpretq_u16_u8(b), 8)));
}
#undef vtrn1q_u16
inline uint16x8_t vtrn1q_u16(uint16x8_t a, uint16x8_t b) {
  const uint32x4_t even = vandq_u32(vreinterpretq_u32_u16(a), vdupq_n_u32(0xFFFF));
  return vreinterpretq_u16_u32(vorrq_u32(even, vshlq_n_u32(vreinterpretq_u32_u16(b), 16)));
}

// Widening of the lower half: SIMDe does it in pieces.
#undef vmovl_u8
inline uint16x8_t vmovl_u8(uint8x8_t v) {
  return (uint16x8_t)_mm_cvtepu8_epi16(
      (__m128i)__builtin_shufflevector(v, v, 0, 1, 2, 3, 4, 5, 6, 7, -1, -1, -1, -1, -1, -1, -1, -1));
}
#undef vmovl_u16
inline uint32x4_t vmovl_u16(uint16x4_t v) {
  return (uint32x4_t)_mm_cvtepu16_epi32((__m128i)__builtin_shufflevector(v, v, 0, 1, 2, 3, -1, -1, -1, -1));
}
#undef vaddl_u8
inline uint16x8_t vaddl_u8(uint8x8_t a, uint8x8_t b) {
  return vmovl_u8(a) + vmovl_u8(b);
}
#undef vaddl_high_u8
inline uint16x8_t vaddl_high_u8(uint8x16_t a, uint8x16_t b) {
  const uint8x16_t zero = {};
  return (uint16x8_t)vzip2q_u8(a, zero) + (uint16x8_t)vzip2q_u8(b, zero);
}
#undef vmull_high_u8
inline uint16x8_t vmull_high_u8(uint8x16_t a, uint8x16_t b) {
  const uint8x16_t zero = {};
  return (uint16x8_t)vzip2q_u8(a, zero) * (uint16x8_t)vzip2q_u8(b, zero);
}
#undef vmlal_high_u8
inline uint16x8_t vmlal_high_u8(uint16x8_t sum, uint8x16_t a, uint8x16_t b) {
  return sum + vmull_high_u8(a, b);
}
#undef vmlal_u8
inline uint16x8_t vmlal_u8(uint16x8_t sum, uint8x8_t a, uint8x8_t b) {
  return sum + vmovl_u8(a) * vmovl_u8(b);
}

// The doubled product's upper half; factors are not both -32768, the only product that saturates.
#undef vqdmulhq_s16
inline int16x8_t vqdmulhq_s16(int16x8_t a, int16x8_t b) {
  const uint16x8_t low = (uint16x8_t)a * (uint16x8_t)b;
  const auto high = (int16x8_t)_mm_mulhi_epi16((__m128i)a, (__m128i)b);
  return high * 2 + (int16x8_t)(low >> 15);
}

#undef vqrdmulhq_n_s16
inline int16x8_t vqrdmulhq_n_s16(int16x8_t a, int16_t b) {
  return (int16x8_t)_mm_mulhrs_epi16((__m128i)a, _mm_set1_epi16(b));
}

// SIMDe multiplies as signed numbers, whose product may overflow.
#undef vmull_u16
inline uint32x4_t vmull_u16(uint16x4_t a, uint16x4_t b) {
  return vmovl_u16(a) * vmovl_u16(b);
}
#undef vmull_high_u16
inline uint32x4_t vmull_high_u16(uint16x8_t a, uint16x8_t b) {
  return vmovl_u16(vget_high_u16(a)) * vmovl_u16(vget_high_u16(b));
}

// Missing from SIMDe.
#define vrshrn_high_n_u16(low, v, n) vcombine_u8(low, vrshrn_n_u16(v, n))
#define vrshrn_high_n_u32(low, v, n) vcombine_u16(low, vrshrn_n_u32(v, n))
inline float32x4_t vdivq_f32(float32x4_t a, float32x4_t b) {
  return a / b;
}
#endif
#endif
