// NEON intrinsics: the compiler's own on 64-bit ARM, SIMDe's elsewhere. Kernels use them only where DAX_HAVE_NEON is 1.
#pragma once

#if DAX_HAVE_NEON
#if defined(__aarch64__)
#include <arm_neon.h>
#else
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/arm/neon.h>
#pragma GCC diagnostic pop

// SIMDe copies this byte by byte.
#undef vld1q_u8_x4
inline uint8x16x4_t vld1q_u8_x4(const uint8_t* from) {
  return {{vld1q_u8(from), vld1q_u8(from + 16), vld1q_u8(from + 32), vld1q_u8(from + 48)}};
}

// Missing from SIMDe.
inline void vst1q_u8_x4(uint8_t* to, uint8x16x4_t from) {
  for (int i = 0; i < 4; ++i) vst1q_u8(to + 16 * i, from.val[i]);
}
#endif
#endif
