// Rows of channels in another order: as many pixels at a time as a channel of them is a vector, their bytes by table look-ups.
#pragma once

#include <algorithm>
#include <cstring>
#include <iterator>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/convert/blocks_neon.h"
#include "image/convert/channels_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Where the bytes of a block of pixels come from: an index of a byte of the source, or none for a constant, which is added.
template <class T, int kFrom, int kTo>
struct ByteOrder {
  static constexpr int kPixels = 16 / sizeof(T);
  ByteOrder(const int32_t* order, T value) {
    T constants[kPixels * kTo] = {};
    for (size_t i = 0; i < sizeof constants; ++i) {
      const size_t element = i / sizeof(T), pixel = element / kTo;
      const int32_t channel = order[element % kTo];
      if (channel < 0) constants[element] = value;
      index[i] = channel < 0
                     ? UINT8_MAX
                     : static_cast<uint8_t>((pixel * kFrom + static_cast<size_t>(channel)) * sizeof(T) + i % sizeof(T));
    }
    std::memcpy(constant, constants, sizeof constant);
  }
  uint8_t index[16 * kTo], constant[16 * kTo];
};

// Bytes by their index in several vectors; 0 for an index beyond.
#if defined(__aarch64__)
inline uint8x16_t bytesAt(const uint8x16x3_t& source, uint8x16_t index) {
  return vqtbl3q_u8(source, index);
}
inline uint8x16_t bytesAt(const uint8x16x4_t& source, uint8x16_t index) {
  return vqtbl4q_u8(source, index);
}
inline uint8x16x3_t threeVectors(const uint8_t* from) {
  return vld1q_u8_x3(from);
}
#else
// SIMDe goes through the bytes one by one.
template <class Vectors>
uint8x16_t bytesAt(const Vectors& source, uint8x16_t index) {
  uint8x16_t found = vqtbl1q_u8(source.val[0], index);
  for (size_t k = 1; k < std::size(source.val); ++k) {
    found = vorrq_u8(found, vqtbl1q_u8(source.val[k], vsubq_u8(index, vdupq_n_u8(static_cast<uint8_t>(16 * k)))));
  }
  return found;
}
inline uint8x16x3_t threeVectors(const uint8_t* from) {
  return {{vld1q_u8(from), vld1q_u8(from + 16), vld1q_u8(from + 32)}};
}
#endif

template <int kVectors>
auto loadBytes(const uint8_t* from) {
  if constexpr (kVectors == 3)
    return threeVectors(from);
  else
    return vld1q_u8_x4(from);
}

// Whole blocks; returns the number of their pixels.
template <bool kHasConstant, class T, int kFrom, int kTo>
int32_t swapBlocks(const T* src, T* dst, int32_t width, const ByteOrder<T, kFrom, kTo>& order) {
  constexpr int32_t kPixels = ByteOrder<T, kFrom, kTo>::kPixels;
  uint8x16_t index[kTo], constant[kTo];
  for (int k = 0; k < kTo; ++k)
    index[k] = vld1q_u8(order.index + 16 * k), constant[k] = vld1q_u8(order.constant + 16 * k);
  return forBlocks<kPixels>(width, [&](int32_t x) {
    const auto source = loadBytes<kFrom>(reinterpret_cast<const uint8_t*>(src + x * kFrom));
    auto* const to = reinterpret_cast<uint8_t*>(dst + x * kTo);
    for (int k = 0; k < kTo; ++k) {
      const uint8x16_t chosen = bytesAt(source, index[k]);
      vst1q_u8(to + 16 * k, kHasConstant ? vorrq_u8(chosen, constant[k]) : chosen);
    }
  });
}

template <class T, int kFrom, int kTo>
void swapRow(const T* src, T* dst, int32_t width, const int32_t* order, T value) {
  const ByteOrder<T, kFrom, kTo> bytes(order, value);
  const bool hasConstant = std::any_of(order, order + kTo, [](int32_t channel) { return channel < 0; });
  const int32_t x = hasConstant ? swapBlocks<true>(src, dst, width, bytes) : swapBlocks<false>(src, dst, width, bytes);
  portable::swapRow<T, kFrom, kTo>(src + x * kFrom, dst + x * kTo, width - x, order, value);
}

}  // namespace dax::neon
#endif
