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

// sources(k): vector k of what is written.
template <class T, int kChannels, class Sources>
int32_t maskedBlocks(const uint8_t* mask, T* dst, int32_t width, Sources sources) {
  constexpr int kVectors = kMaskedVectors<T, kChannels>;
  static constexpr PixelOfByte<T, kChannels> kPixel;
  uint8x16_t spread[kVectors];
  for (int k = 0; k < kVectors; ++k) spread[k] = vld1q_u8(kPixel.index + 16 * k);
  return forBlocks(width, [&](int32_t x) {
    const uint8x16_t levels = vld1q_u8(mask + x), set = vtstq_u8(levels, levels);
    auto* const bytes = reinterpret_cast<uint8_t*>(dst + x * kChannels);
    for (int k = 0; k < kVectors; ++k) {
      const uint8x16_t selected = kVectors == 1 ? set : vqtbl1q_u8(set, spread[k]);
      vst1q_u8(bytes + 16 * k, vbslq_u8(selected, sources(x, k), vld1q_u8(bytes + 16 * k)));
    }
  });
}

template <class T, int kChannels>
void maskedRow(const T* src, const uint8_t* mask, T* dst, int32_t width) {
  const int32_t x = maskedBlocks<T, kChannels>(mask, dst, width, [=](int32_t first, int k) {
    return vld1q_u8(reinterpret_cast<const uint8_t*>(src + first * kChannels) + 16 * k);
  });
  portable::maskedRow<T, kChannels>(src + x * kChannels, mask + x, dst + x * kChannels, width - x);
}

template <class T, int kChannels>
void maskedConstantRow(const T* value, const uint8_t* mask, T* dst, int32_t width) {
  T repeated[16 * kChannels];
  for (int i = 0; i < 16 * kChannels; ++i) repeated[i] = value[i % kChannels];
  uint8x16_t vectors[kMaskedVectors<T, kChannels>];
  for (int k = 0; k < kMaskedVectors<T, kChannels>; ++k)
    vectors[k] = vld1q_u8(reinterpret_cast<const uint8_t*>(repeated) + 16 * k);
  const int32_t x = maskedBlocks<T, kChannels>(mask, dst, width, [&](int32_t, int k) { return vectors[k]; });
  portable::maskedConstantRow<T, kChannels>(value, mask + x, dst + x * kChannels, width - x);
}

}  // namespace dax::neon
#endif
