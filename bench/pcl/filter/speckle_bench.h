// Range images for the measurements.
#pragma once

#include <cstdlib>

#include "bench/support/image.h"

namespace bench {

constexpr int kMaxDifference = 16;
constexpr int kMaxSpeckle = 100;
constexpr int16_t kInvalid = 0;

// Hills and valleys with noise of +-4 counts; one pixel in 64 is missing, and one tile of 6 x 6 in 32 is displaced.
inline Image<int16_t> speckledSurface() {
  const Image<int16_t> random = noise<int16_t>();
  Image<int16_t> surface(kSize);
  const auto wave = [](int t, int period) { return std::abs(t % (2 * period) - period); };
  for (int y = 0; y < kSize.height; ++y) {
    for (int x = 0; x < kSize.width; ++x) {
      const auto i = static_cast<size_t>(y) * static_cast<size_t>(kSize.width) + static_cast<size_t>(x);
      const int16_t tile = (*random.pixels)[static_cast<size_t>(y / 6 * 400 + x / 6)];
      int value = 4000 + 3 * wave(x, 300) + 2 * wave(y, 200) + (*random.pixels)[i] % 9;
      if (tile % 32 == 0) value += 500;
      (*surface.pixels)[i] = static_cast<int16_t>((*random.pixels)[i] / 4 == 17 ? kInvalid : value);
    }
  }
  return surface;
}

// Uniformly distributed values: hardly any two pixels are connected.
inline Image<int16_t> noiseSurface() {
  Image<int16_t> image = noise<int16_t>();
  for (int16_t& value : *image.pixels) value = static_cast<int16_t>(value * 100 - 12000);
  return image;
}

}  // namespace bench
