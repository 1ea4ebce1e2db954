// Rows of channels in another order: as many pixels at a time as a channel of them is a vector, their bytes by table look-ups.
#pragma once

#include <algorithm>
#include <cstring>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/convert/blocks_neon.h"
#include "image/convert/channels_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Where the bytes of a block of pixels come from: an index of a byte of the source, or of the constant, which is in the vector
// behind a source of three; behind one of four there is none, so that it gives 0, and the constant is added.
template <class T, int kFrom, int kTo>
struct ByteOrder {
  static constexpr int kPixels = 16 / sizeof(T);
  ByteOrder(const int32_t* order, T value) {
    T repeated[kPixels], added[kPixels * kTo] = {};
    std::fill_n(repeated, kPixels, value);
    for (size_t i = 0; i < sizeof added; ++i) {
      const size_t element = i / sizeof(T), pixel = element / kTo;
      const int32_t channel = order[element % kTo];
      if (channel < 0) added[element] = value;
      const size_t from = channel < 0 ? kPixels * kFrom : pixel * kFrom + static_cast<size_t>(channel);
      index[i] = static_cast<uint8_t>(from * sizeof(T) + i % sizeof(T));
    }
    std::memcpy(constant, repeated, sizeof constant);
    std::memcpy(addends, added, sizeof addends);
  }
  uint8_t index[16 * kTo], constant[16], addends[16 * kTo];
};

// Four vectors of the source, of which the last may be the constant; bytes by their index in them, 0 for an index beyond.
template <int kVectors>
uint8x16x4_t loadBytes(const uint8_t* from, uint8x16_t constant) {
  return kVectors == 3 ? uint8x16x4_t{{vld1q_u8(from), vld1q_u8(from + 16), vld1q_u8(from + 32), constant}}
                       : vld1q_u8_x4(from);
}
#if defined(__aarch64__)
inline uint8x16_t bytesAt(const uint8x16x4_t& source, uint8x16_t index) {
  return vqtbl4q_u8(source, index);
}
#else
// SIMDe goes through the bytes one by one.
inline uint8x16_t bytesAt(const uint8x16x4_t& source, uint8x16_t index) {
  uint8x16_t found = vqtbl1q_u8(source.val[0], index);
  for (uint8_t k = 1; k < 4; ++k) {
    found = vorrq_u8(found, vqtbl1q_u8(source.val[k], vsubq_u8(index, vdupq_n_u8(static_cast<uint8_t>(16 * k)))));
  }
  return found;
}
#endif

// Whole blocks; returns the number of their pixels.
template <bool kAdds, class T, int kFrom, int kTo>
int32_t swapBlocks(const T* src, T* dst, int32_t width, const ByteOrder<T, kFrom, kTo>& order) {
  constexpr int32_t kPixels = ByteOrder<T, kFrom, kTo>::kPixels;
  const uint8x16_t constant = vld1q_u8(order.constant);
  uint8x16_t index[kTo], addends[kTo];
  for (int k = 0; k < kTo; ++k)
    index[k] = vld1q_u8(order.index + 16 * k), addends[k] = vld1q_u8(order.addends + 16 * k);
  return forBlocks<kPixels>(width, [&](int32_t x) {
    const uint8x16x4_t source = loadBytes<kFrom>(reinterpret_cast<const uint8_t*>(src + x * kFrom), constant);
    uint8x16_t chosen[kTo];
    for (int k = 0; k < kTo; ++k) {
      chosen[k] = bytesAt(source, index[k]);
      if (kAdds) chosen[k] = vorrq_u8(chosen[k], addends[k]);
    }
    auto* const to = reinterpret_cast<uint8_t*>(dst + x * kTo);
    for (int k = 0; k < kTo; ++k) vst1q_u8(to + 16 * k, chosen[k]);
  });
}

template <class T, int kFrom, int kTo>
void swapRow(const T* src, T* dst, int32_t width, const int32_t* order, T value) {
  const ByteOrder<T, kFrom, kTo> bytes(order, value);
  const bool adds = kFrom == 4 && std::any_of(order, order + kTo, [](int32_t channel) { return channel < 0; });
  const int32_t x = adds ? swapBlocks<true>(src, dst, width, bytes) : swapBlocks<false>(src, dst, width, bytes);
  portable::swapRow<T, kFrom, kTo>(src + x * kFrom, dst + x * kTo, width - x, order, value);
}

}  // namespace dax::neon
#endif
