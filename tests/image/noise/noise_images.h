// Rendered scenes with normal noise: even shading, a disc, and a checker board of 32 pixels.
#pragma once

#include <cmath>
#include <type_traits>

#include "tests/support/test_image.h"

namespace dax::test {

// Normal deviates by Box and Muller.
class NormalNoise {
 public:
  explicit NormalNoise(uint64_t seed) : random_(seed) {}
  double next() {
    const auto unit = [&] { return (static_cast<double>(random_.next() >> 11) + 0.5) * 0x1p-53; };
    const double radius = std::sqrt(-2 * std::log(unit()));
    return radius * std::cos(2 * 3.14159265358979323846 * unit());
  }

 private:
  Random random_;
};

inline double sceneAt(int32_t x, int32_t y, DaxiSize size) {
  const double dx = x - size.width / 2.0, dy = y - size.height / 2.0, radius = size.height / 4.0;
  const double shading = 20.0 * x / size.width + 10.0 * y / size.height;
  const double board = (x / 32 + y / 32) % 2 ? 25 : 0;
  return 100 + shading + (dx * dx + dy * dy < radius * radius ? 20 : board);
}

// scale: of grey levels; noise of deviation sigma, after scaling.
template <class T>
TestImage<T> noisyScene(DaxiSize size, double sigma, double scale = 1, uint64_t seed = 1) {
  NormalNoise noise(seed);
  TestImage<T> image(size, 3);
  image.fill([&](int32_t x, int32_t y) {
    const double value = scale * sceneAt(x, y, size) + sigma * noise.next();
    return std::is_integral_v<T> ? std::round(std::fmin(std::fmax(value, 0), std::numeric_limits<T>::max())) : value;
  });
  return image;
}

}  // namespace dax::test
