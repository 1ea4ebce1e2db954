// Images with a frame of one pixel, whose pixels are numbered through, so that neighbours need no checks of edges.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "dax/types.h"
#include "frame/check.h"
#include "frame/numeric/total_order.h"

namespace dax {

constexpr int32_t kMaxFramedSide = 32768;

// Offsets from a pixel to its neighbours, in raster order; differences of numbers are taken modulo 2^32.
struct Neighbours {
  std::array<uint32_t, 8> offsets;
  int32_t count;
  const uint32_t* begin() const { return offsets.data(); }
  const uint32_t* end() const { return offsets.data() + count; }
};

struct FramedGrid {
  explicit FramedGrid(DaxiSize imageSize) : size(imageSize), stride(static_cast<uint32_t>(imageSize.width) + 2) {}
  uint64_t cells() const { return uint64_t{stride} * (static_cast<uint64_t>(size.height) + 2); }
  uint32_t at(int32_t x, int32_t y) const {
    return (static_cast<uint32_t>(y) + 1) * stride + static_cast<uint32_t>(x) + 1;
  }
  Neighbours neighbours(int32_t connectivity) const {
    const uint32_t s = stride;
    if (connectivity == 4) return {{0 - s, 0u - 1, 1, s}, 4};
    return {{0 - s - 1, 0 - s, 1 - s, 0u - 1, 1, s - 1, s, s + 1}, 8};
  }
  // Calls use(x, y, number) for all pixels in raster order.
  template <class Use>
  void forEach(Use use) const {
    for (int32_t y = 0; y < size.height; ++y) {
      uint32_t p = at(0, y);
      for (int32_t x = 0; x < size.width; ++x) use(x, y, p++);
    }
  }
  // Calls use(number) for the frame.
  template <class Use>
  void forFrame(Use use) const {
    const auto all = static_cast<uint32_t>(cells());
    for (uint32_t p = 0; p < stride; ++p) use(p), use(all - 1 - p);
    for (uint32_t p = stride; p < all; p += stride) use(p - 1), use(p);
  }

  DaxiSize size;
  uint32_t stride;
};

inline bool fitsFrame(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, kMaxFramedSide);
}

inline bool isConnectivity(int32_t connectivity) {
  return connectivity == 4 || connectivity == 8;
}

// Pixels as unsigned integers of the same order, or of the reverse one; 0 is a frame that nothing rises from.
template <class T, bool isReverse = false>
struct Height {
  using Key = typename OrderKey<T>::Key;
  using Bits = std::make_unsigned_t<Key>;
  static constexpr Bits kFlip = static_cast<Bits>((std::is_signed_v<Key> ? Bits{1} << (8 * sizeof(Bits) - 1) : 0) ^
                                                  (isReverse ? std::numeric_limits<Bits>::max() : 0));
  static Bits of(T pixel) { return static_cast<Bits>(static_cast<Bits>(OrderKey<T>::of(pixel)) ^ kFlip); }
  static T pixel(Bits bits) { return OrderKey<T>::pixel(static_cast<Key>(static_cast<Bits>(bits ^ kFlip))); }
};

}  // namespace dax
