#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dax/types.h"

namespace dax::tool {

// A grey image without padding between its rows.
template <class Pixel>
struct PixelImage {
  DaxiSize size;
  std::vector<Pixel> pixels;

  int32_t step() const { return size.width; }
  const Pixel* row(int32_t y) const { return pixels.data() + static_cast<size_t>(y) * size.width; }
  Pixel* row(int32_t y) { return pixels.data() + static_cast<size_t>(y) * size.width; }
};

using GreyImage = PixelImage<uint8_t>;
using Grey16Image = PixelImage<uint16_t>;

template <class Pixel>
PixelImage<Pixel> makeImage(DaxiSize size) {
  return {size, std::vector<Pixel>(static_cast<size_t>(size.width) * size.height)};
}

inline GreyImage makeGreyImage(DaxiSize size) {
  return makeImage<uint8_t>(size);
}

}  // namespace dax::tool
