#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dax/types.h"

namespace dax::tool {

// An 8-bit grey image without padding between its rows.
struct GreyImage {
  DaxiSize size;
  std::vector<uint8_t> pixels;

  int32_t step() const { return size.width; }
  const uint8_t* row(int32_t y) const { return pixels.data() + static_cast<size_t>(y) * size.width; }
  uint8_t* row(int32_t y) { return pixels.data() + static_cast<size_t>(y) * size.width; }
};

// The same with 16 bits.
struct Grey16Image {
  DaxiSize size;
  std::vector<uint16_t> pixels;
};

inline GreyImage makeGreyImage(DaxiSize size) {
  return {size, std::vector<uint8_t>(static_cast<size_t>(size.width) * size.height)};
}

}  // namespace dax::tool
