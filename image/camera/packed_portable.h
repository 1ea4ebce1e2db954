// Pixels of 10 and 12 bits in streams of bytes, any instruction set.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace dax {

// Pixel i of a stream, and the bytes of a pair of pixels (i even) or a group of four.
template <int32_t kBitsOfPixel>
struct BitStream {
  static constexpr int32_t kBits = kBitsOfPixel, kBitsInStream = kBits, kGroup = kBits == 10 ? 4 : 2;
  static constexpr uint32_t kMax = (1u << kBits) - 1;

  static uint32_t pixel(const uint8_t* stream, int64_t i) {
    const uint8_t* const at = stream + i * kBits / 8;
    return (at[0] | uint32_t{at[1]} << 8) >> (i * kBits % 8) & kMax;
  }

  // The bits of a group, the first byte lowest.
  static uint64_t group(const uint16_t (&pixels)[kGroup]) {
    uint64_t bits = 0;
    for (int32_t k = 0; k < kGroup; ++k) bits |= uint64_t{std::min<uint32_t>(pixels[k], kMax)} << (k * kBits);
    return bits;
  }
};

template <int32_t kBitsOfPixel>
struct GigEPairs {
  static constexpr int32_t kBits = kBitsOfPixel, kBitsInStream = 12, kGroup = 2;
  static constexpr uint32_t kMax = (1u << kBits) - 1, kLowMax = kMax >> 8;

  static uint32_t pixel(const uint8_t* stream, int64_t i) {
    const uint8_t* const at = stream + i / 2 * 3;
    const uint32_t high = i % 2 == 0 ? at[0] : at[2], low = i % 2 == 0 ? at[1] : at[1] >> 4u;
    return high << (kBits - 8) | (low & kLowMax);
  }

  static uint64_t group(const uint16_t (&pixels)[kGroup]) {
    const uint32_t a = std::min<uint32_t>(pixels[0], kMax), b = std::min<uint32_t>(pixels[1], kMax);
    return a >> (kBits - 8) | (a & kLowMax) << 8 | (b & kLowMax) << 12 | (b >> (kBits - 8)) << 16;
  }
};

// Bytes that so many pixels take.
template <class Format>
constexpr int64_t packedBytes(int64_t pixels) {
  return (pixels * Format::kBitsInStream + 7) / 8;
}

namespace portable {

// Pixels first..first + count - 1 of a stream.
template <class Format>
void unpackRow(const uint8_t* stream, int64_t first, uint16_t* dst, int32_t count) {
  for (ptrdiff_t i = 0; i < count; ++i) dst[i] = static_cast<uint16_t>(Format::pixel(stream, first + i));
}

}  // namespace portable
}  // namespace dax
