// Bits of foreground pixels and of changes between neighbours, for any instruction set.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little);

namespace dax::portable {

// Bit i is set where pixel i is not zero, for n <= 64 pixels.
inline uint64_t foregroundBits(const uint8_t* pixels, int32_t n) {
  uint64_t bits = 0;
  for (int32_t i = 0; i < n; ++i) bits |= uint64_t{pixels[i] != 0} << i;
  return bits;
}

inline uint64_t foregroundBits64(const uint8_t* pixels) {
  return foregroundBits(pixels, 64);
}

// Bit i is set where pixel i differs from its left neighbour, which must exist, for n <= 64 pixels.
inline uint64_t changeBits(const uint8_t* pixels, int32_t n) {
  uint64_t bits = 0;
  for (int32_t i = 0; i < n; ++i) bits |= uint64_t{pixels[i] != pixels[i - 1]} << i;
  return bits;
}

inline uint64_t changeBits64(const uint8_t* pixels) {
  return changeBits(pixels, 64);
}

}  // namespace dax::portable
