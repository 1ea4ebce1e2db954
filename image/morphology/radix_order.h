// Pixels in the order of their values, by radix: bytes from the lowest on.
#pragma once

#include <cstdint>
#include <utility>

namespace dax {

// Sorts `count` numbers of pixels by keys[number], ascending, keeping the order of equals. Returns where they are:
// `pixels` or `other`.
template <class Bits>
uint32_t* sortByKey(const Bits* keys, uint32_t* pixels, uint32_t* other, uint32_t count) {
  for (uint32_t shift = 0; shift < 8 * sizeof(Bits); shift += 8) {
    uint32_t places[256] = {};
    const auto byteOf = [&](uint32_t pixel) { return (keys[pixel] >> shift) & 255; };
    for (uint32_t i = 0; i < count; ++i) ++places[byteOf(pixels[i])];
    uint32_t sum = 0;
    for (uint32_t& place : places) sum += std::exchange(place, sum);
    for (uint32_t i = 0; i < count; ++i) other[places[byteOf(pixels[i])]++] = pixels[i];
    std::swap(pixels, other);
  }
  return pixels;
}

}  // namespace dax
