// One-sided erosion, pixel by pixel, with nothing outside the image.
#pragma once

#include <cstdint>
#include <vector>

namespace dax::oracle {

struct ByteImage {
  int32_t width, height;
  std::vector<uint8_t> pixels;

  uint8_t at(int32_t x, int32_t y) const {
    const bool inside = x >= 0 && x < width && y >= 0 && y < height;
    return inside ? pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)] : 0;
  }
  bool operator==(const ByteImage&) const = default;
};

// One pass: (dx, dy) = (1, 0) along rows, (0, 1) along columns.
inline ByteImage erodePass(const ByteImage& image, int32_t dx, int32_t dy) {
  ByteImage result = image;
  for (int32_t y = 0; y < image.height; ++y) {
    for (int32_t x = 0; x < image.width; ++x) {
      const int32_t place = dx ? x : y, last = (dx ? image.width : image.height) - 1;
      const uint8_t before = image.at(x - dx, y - dy), pixel = image.at(x, y), after = image.at(x + dx, y + dy);
      uint8_t value = 255;
      if (place == 0) {
        value = after;
      } else if (place == last) {
        value = before;
      } else if (before != 0 && after == 0) {
        value = 0;
      }
      result.pixels[static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)] =
          pixel ? value : 0;
    }
  }
  return result;
}

inline ByteImage erode(ByteImage image, int32_t iterations) {
  for (int32_t i = 0; i < iterations; ++i) image = erodePass(erodePass(image, 1, 0), 0, 1);
  return image;
}

}  // namespace dax::oracle
