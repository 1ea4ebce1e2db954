// Twin of the portable bits: 64 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "pcl/filter/speckle_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

struct Lanes16u {
  static uint16x8_t load(const uint16_t* from) { return vld1q_u16(from); }
  static uint16x8_t difference(uint16x8_t a, uint16x8_t b) { return vabdq_u16(a, b); }
  static uint16x8_t same(uint16x8_t a, uint16_t b) { return vceqq_u16(a, vdupq_n_u16(b)); }
};

// The absolute difference of signed values wraps modulo 2^16; as an unsigned number it is exact.
struct Lanes16s {
  static int16x8_t load(const int16_t* from) { return vld1q_s16(from); }
  static uint16x8_t difference(int16x8_t a, int16x8_t b) { return vreinterpretq_u16_s16(vabdq_s16(a, b)); }
  static uint16x8_t same(int16x8_t a, int16_t b) { return vceqq_s16(a, vdupq_n_s16(b)); }
};

inline Lanes16u lanesOf(uint16_t) {
  return {};
}
inline Lanes16s lanesOf(int16_t) {
  return {};
}

// Narrows two vectors of 16-bit flags to one byte for each flag.
inline uint8x16_t flags(uint16x8_t low, uint16x8_t high) {
  return vuzp1q_u8(vreinterpretq_u8_u16(low), vreinterpretq_u8_u16(high));
}

template <class T>
uint64_t alikeBits64(const T* a, const T* b, uint16_t maxDifference) {
  using Lanes = decltype(lanesOf(T{}));
  const auto alike = [&](int32_t i) {
    return vcleq_u16(Lanes::difference(Lanes::load(a + i), Lanes::load(b + i)), vdupq_n_u16(maxDifference));
  };
  return gatherBits(flags(alike(0), alike(8)), flags(alike(16), alike(24)), flags(alike(32), alike(40)),
                    flags(alike(48), alike(56)));
}

template <class T>
uint64_t validBits64(const T* row, T invalid) {
  using Lanes = decltype(lanesOf(T{}));
  const auto same = [&](int32_t i) { return Lanes::same(Lanes::load(row + i), invalid); };
  return ~gatherBits(flags(same(0), same(8)), flags(same(16), same(24)), flags(same(32), same(40)),
                     flags(same(48), same(56)));
}

// Whole words below the first row, where row[-1] is readable even at the start of a row.
template <class T>
PixelBits pixelBits(const T* row, const T* above, bool hasLeft, int32_t n, const Likeness<T>& likeness) {
  if (!above || n < 64) return portable::pixelBits(row, above, hasLeft, n, likeness);
  const uint64_t likeLeft = alikeBits64(row, row - 1, likeness.maxDifference);
  return {validBits64(row, likeness.invalid), hasLeft ? likeLeft : likeLeft & ~uint64_t{1},
          alikeBits64(row, above, likeness.maxDifference)};
}

}  // namespace dax::neon
#endif
