// Pixels that are only moved, and tiles of them whose rows become columns.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "image/border/copy_border_portable.h"

namespace dax {

// A pixel of any type with elements of this size: what it holds is not looked at.
template <class Element, int kChannels>
struct __attribute__((may_alias)) MovedPixel {
  using Bits = Element;
  static constexpr bool kIsElement = kChannels == 1;
  Element element[kChannels];
};

// Rows of pixels, upwards where the step is negative. It counts bytes: that of images with three channels need not be whole
// pixels.
template <class Pixel>
struct MovedRows {
  using Byte = std::conditional_t<std::is_const_v<Pixel>, const uint8_t, uint8_t>;
  Byte* bytes;
  ptrdiff_t step;

  Pixel* operator[](int64_t y) const { return reinterpret_cast<Pixel*>(bytes + y * step); }
  MovedRows from(int64_t x, int64_t y) const { return {reinterpret_cast<Byte*>((*this)[y] + x), step}; }
  // The same rows from the last one up.
  MovedRows upwards(int32_t height) const { return {bytes + (height - 1) * step, -step}; }
  MovedRows<const Pixel> readOnly() const { return {bytes, step}; }
};

namespace portable {

template <class Pixel>
void reversePixels(const Pixel* src, Pixel* dst, int32_t count) {
  reverseRun(dst, src, count);
}

// dst(y, x) = src(x, y) for width columns and height rows of the source.
template <class Pixel>
void transposeTile(MovedRows<const Pixel> src, MovedRows<Pixel> dst, int32_t width, int32_t height) {
  for (int32_t x = 0; x < width; ++x) {
    Pixel* const row = dst[x];
    for (int32_t y = 0; y < height; ++y) row[y] = src[y][x];
  }
}

}  // namespace portable
}  // namespace dax
