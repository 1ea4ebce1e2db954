// Vectors of one element type, for NEON kernels that are templates over the type. Kernels for one type use the intrinsics
// of frame/simd.h; code with a single text for every instruction set uses frame/vector4.h.
#pragma once

#include <cstdint>

#include "frame/simd.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class T>
struct Lanes;

// Four vectors are consecutive in memory; a pair holds the even and the odd elements.
#define DAX_LANES(T, VECTOR, SUFFIX)                                            \
  template <>                                                                   \
  struct Lanes<T> {                                                             \
    using Vector = VECTOR##_t;                                                  \
    using Pair = VECTOR##x2_t;                                                  \
    using Four = VECTOR##x4_t;                                                  \
    static constexpr int kCount = 16 / sizeof(T);                               \
    static Vector all(T value) { return vdupq_n_##SUFFIX(value); }              \
    static Vector load(const T* from) { return vld1q_##SUFFIX(from); }          \
    static void store(T* to, Vector v) { vst1q_##SUFFIX(to, v); }               \
    static Pair loadPair(const T* from) { return vld2q_##SUFFIX(from); }        \
    static void storePair(T* to, const Pair& v) { vst2q_##SUFFIX(to, v); }      \
    static Four loadFour(const T* from) { return vld1q_##SUFFIX##_x4(from); }   \
    static void storeFour(T* to, const Four& v) { vst1q_##SUFFIX##_x4(to, v); } \
    static Vector add(Vector a, Vector b) { return vaddq_##SUFFIX(a, b); }      \
    static Vector subtract(Vector a, Vector b) { return vsubq_##SUFFIX(a, b); } \
    static Vector min(Vector a, Vector b) { return vminq_##SUFFIX(a, b); }      \
    static Vector max(Vector a, Vector b) { return vmaxq_##SUFFIX(a, b); }      \
    /* Moves elements up by `places`; the last ones of `before` come first. */  \
    template <int places = 1>                                                   \
    static Vector shift(Vector before, Vector v) {                              \
      return vextq_##SUFFIX(before, v, kCount - places);                        \
    }                                                                           \
  };
DAX_LANES(uint8_t, uint8x16, u8)
DAX_LANES(uint16_t, uint16x8, u16)
DAX_LANES(int16_t, int16x8, s16)
DAX_LANES(uint32_t, uint32x4, u32)
DAX_LANES(int32_t, int32x4, s32)
DAX_LANES(float, float32x4, f32)
#undef DAX_LANES

}  // namespace dax::neon
#endif
