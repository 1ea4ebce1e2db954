// What benchmarks of channels and masks work on.
#pragma once

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace bench::channels {

constexpr size_t kPixels = pixelCount(kUsualSize);

struct Planes {
  int32_t step = kSize.width;
  Image<uint8_t> colour = noise<uint8_t>({3 * kSize.width, kSize.height});
  Image<uint8_t> result{colour.size}, opaque{{4 * kSize.width, kSize.height}};
  Image<uint8_t> plane[3] = {Image<uint8_t>(kSize), Image<uint8_t>(kSize), Image<uint8_t>(kSize)};
  Image<uint8_t> mask = smoothBlobMask();
  uint64_t digestOfPlanes() const { return digest(plane[0]) ^ 3 * digest(plane[1]) ^ 5 * digest(plane[2]); }
};

}  // namespace bench::channels
