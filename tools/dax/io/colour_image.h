#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dax/types.h"

namespace dax::tool {

struct Colour {
  uint8_t red;
  uint8_t green;
  uint8_t blue;
};

// An 8-bit colour image without padding between its rows.
struct ColourImage {
  DaxiSize size;
  std::vector<Colour> pixels;

  Colour& at(int32_t x, int32_t y) { return pixels[static_cast<size_t>(y) * size.width + x]; }
  const Colour& at(int32_t x, int32_t y) const { return pixels[static_cast<size_t>(y) * size.width + x]; }
};

inline ColourImage makeColourImage(DaxiSize size, Colour colour) {
  return {size, std::vector<Colour>(static_cast<size_t>(size.width) * size.height, colour)};
}

// Maps 0..1 to dark blue, green, yellow; perceptually uniform, also in greyscale.
Colour heightColour(double share);

}  // namespace dax::tool
