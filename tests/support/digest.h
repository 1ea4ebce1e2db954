// Digests of outputs over fixed inputs, and images to take them from that are the same everywhere. The numbers that the
// *_digest.cpp of the families expect are the same on every machine: a change of one bit in one result shows there, and so
// does a machine that computes differently. They are compiled with NEON kernels, without them, and for the reference
// pool; a family with _MT members takes its digest anew for 1 to 16 threads.
#pragma once

#include <algorithm>

#include "tests/support/test_image.h"

namespace dax::test {

// FNV-1a.
class Digest {
 public:
  Digest& add(const void* data, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) value_ = (value_ ^ static_cast<const uint8_t*>(data)[i]) * 0x100000001B3u;
    return *this;
  }
  template <class T>
  Digest& add(const TestImage<T>& image) {
    for (int32_t y = 0; y < image.size().height; ++y) {
      add(image.row(y), static_cast<size_t>(image.size().width) * sizeof(T));
    }
    return *this;
  }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 0xCBF29CE484222325u;
};

using Image = TestImage<uint8_t>;

// Smooth random hills: sums of random levels over a window, so that thresholds give blobs.
inline Image hills(DaxiSize size, uint64_t seed) {
  TestImage<uint8_t> noise({size.width + 8, size.height + 8});
  noise.randomize(seed);
  Image image(size);
  image.fill([&](int32_t x, int32_t y) {
    int32_t sum = 0;
    for (int32_t i = 0; i < 81; ++i) sum += noise.at(x + i % 9, y + i / 9);
    return std::clamp((sum / 81 - 128) * 5 + 128, 0, 255);
  });
  return image;
}

// A board: squares of about 20 pixels, turned by the angle of the triangle 7, 24, 25, every pixel the mean
// of 4 x 4 samples.
inline Image boardOf(int32_t columns, int32_t rows, DaxiSize size) {
  constexpr int32_t kSquare = 20 * 4 * 25;  // in samples times 25
  Image image(size);
  image.fill([&](int32_t x, int32_t y) {
    int32_t sum = 0;
    for (int32_t i = 0; i < 16; ++i) {
      const int32_t dx = 4 * x + i % 4 - 2 * size.width, dy = 4 * y + i / 4 - 2 * size.height;
      const int32_t u = 24 * dx + 7 * dy + (columns + 1) * kSquare / 2, v = 24 * dy - 7 * dx + (rows + 1) * kSquare / 2;
      const bool inside = u >= 0 && v >= 0 && u < (columns + 1) * kSquare && v < (rows + 1) * kSquare;
      sum += inside && (u / kSquare + v / kSquare) % 2 == 0 ? 40 : 210;
    }
    return sum / 16 + (x * 7 + y * 13) % 5;
  });
  return image;
}

}  // namespace dax::test
