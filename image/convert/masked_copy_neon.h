// Rows of copies where a mask says so. What the mask selects is a bit pattern over sixteen pixels at a time, spread over the bytes
// of their elements by table look-ups.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/convert/blocks_neon.h"
#include "image/convert/masked_copy_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Bytes of sixteen pixels, as vectors.
template <class T, int kChannels>
inline constexpr int kMaskedVectors = sizeof(T) * kChannels;

// Vector k has byte (16 k + i) of the pixels in lane i, which belongs to this pixel.
template <class T, int kChannels>
struct PixelOfByte {
  constexpr PixelOfByte() {
    for (int i = 0; i < 16 * kMaskedVectors<T, kChannels>; ++i)
      index[i] = static_cast<uint8_t>(i / kMaskedVectors<T, kChannels>);
  }
  uint8_t index[16 * kMaskedVectors<T, kChannels>] = {};
};

// sources(x, k): vector k of what is written to the pixels from x on. Stores come last, since the compiler does not know that
// they leave alone what is loaded.
template <class T, int kChannels, class Sources>
int32_t maskedBlocks(const uint8_t* mask, T* dst, int32_t width, Sources sources) {
  constexpr int kVectors = kMaskedVectors<T, kChannels>;
  static constexpr PixelOfByte<T, kChannels> kPixel;
  uint8x16_t spread[kVectors];
  for (int k = 0; k < kVectors; ++k) spread[k] = vld1q_u8(kPixel.index + 16 * k);
  return forBlocks(width, [&](int32_t x) {
    const uint8x16_t levels = vld1q_u8(mask + x), set = vtstq_u8(levels, levels);
    auto* const bytes = reinterpret_cast<uint8_t*>(dst + x * kChannels);
    uint8x16_t result[kVectors];
    for (int k = 0; k < kVectors; ++k) {
      const uint8x16_t selected = vqtbl1q_u8(set, spread[k]);
      result[k] = vbslq_u8(selected, sources(x, k), vld1q_u8(bytes + 16 * k));
    }
    for (int k = 0; k < kVectors; ++k) vst1q_u8(bytes + 16 * k, result[k]);
  });
}

// A byte of the mask for each byte, and four vectors at a time.
template <class Sources>
int32_t maskedBytes(const uint8_t* mask, uint8_t* dst, int32_t width, Sources sources) {
  int32_t x = 0;
  for (; x <= width - 64; x += 64) {
    const uint8x16x4_t set = vld1q_u8_x4(mask + x), source = sources(x);
    uint8x16x4_t to = vld1q_u8_x4(dst + x);
    for (int k = 0; k < 4; ++k) to.val[k] = vbslq_u8(vtstq_u8(set.val[k], set.val[k]), source.val[k], to.val[k]);
    vst1q_u8_x4(dst + x, to);
  }
  return x;
}

template <class T, int kChannels>
int32_t maskedRowBlocks(const T* src, const uint8_t* mask, T* dst, int32_t width) {
  if constexpr (kMaskedVectors<T, kChannels> == 1) {
    return maskedBytes(mask, dst, width, [=](int32_t x) { return vld1q_u8_x4(src + x); });
  } else {
    return maskedBlocks<T, kChannels>(mask, dst, width, [=](int32_t x, int k) {
      return vld1q_u8(reinterpret_cast<const uint8_t*>(src + x * kChannels) + 16 * k);
    });
  }
}

template <class T, int kChannels>
void maskedRow(const T* src, const uint8_t* mask, T* dst, int32_t width) {
  const int32_t x = maskedRowBlocks<T, kChannels>(src, mask, dst, width);
  portable::maskedRow<T, kChannels>(src + x * kChannels, mask + x, dst + x * kChannels, width - x);
}

template <class T, int kChannels>
int32_t maskedConstantBlocks(const T* value, const uint8_t* mask, T* dst, int32_t width) {
  if constexpr (kMaskedVectors<T, kChannels> == 1) {
    const uint8x16_t all = vdupq_n_u8(*value);
    return maskedBytes(mask, dst, width, [=](int32_t) { return uint8x16x4_t{{all, all, all, all}}; });
  } else {
    T repeated[16 * kChannels];
    for (int i = 0; i < 16 * kChannels; ++i) repeated[i] = value[i % kChannels];
    uint8x16_t vectors[kMaskedVectors<T, kChannels>];
    for (int k = 0; k < kMaskedVectors<T, kChannels>; ++k)
      vectors[k] = vld1q_u8(reinterpret_cast<const uint8_t*>(repeated) + 16 * k);
    return maskedBlocks<T, kChannels>(mask, dst, width, [&](int32_t, int k) { return vectors[k]; });
  }
}

template <class T, int kChannels>
void maskedConstantRow(const T* value, const uint8_t* mask, T* dst, int32_t width) {
  const int32_t x = maskedConstantBlocks<T, kChannels>(value, mask, dst, width);
  portable::maskedConstantRow<T, kChannels>(value, mask + x, dst + x * kChannels, width - x);
}

}  // namespace dax::neon
#endif
