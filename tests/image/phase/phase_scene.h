// Scenes of soft spots, which can be moved, turned and scaled without error.
#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {

struct Motion {
  double dx = 0, dy = 0, angle = 0, scale = 1;  // about the centre of the image
};

class SpotScene {
 public:
  // Some spots lie outside the image, and move into it.
  SpotScene(DaxiSize size, uint64_t seed) : size_(size) {
    Random random(seed);
    const auto in = [&](double low, double high) { return low + (high - low) * random.below(1 << 20) / (1 << 20); };
    const int32_t count = size.width * size.height / 16;
    for (int32_t i = 0; i < count; ++i) {
      spots_.push_back({in(-0.8, 0.8) * size.width, in(-0.8, 0.8) * size.height, in(1.2, 2.6), in(-80, 80)});
    }
  }

  // 125 on the average, with a deviation of about 25.
  TestImage<double> seen(const Motion& by) const {
    TestImage<double> image(size_);
    image.fill([](int32_t, int32_t) { return 125; });
    const double c = by.scale * std::cos(by.angle), s = by.scale * std::sin(by.angle);
    for (const Spot& spot : spots_) {
      const double x = (size_.width - 1) / 2.0 + by.dx + c * spot.x - s * spot.y;
      const double y = (size_.height - 1) / 2.0 + by.dy + s * spot.x + c * spot.y;
      draw(image, x, y, spot.sigma * by.scale, spot.height);
    }
    return image;
  }

 private:
  struct Spot {
    double x, y, sigma, height;
  };

  void draw(TestImage<double>& image, double x, double y, double sigma, double height) const {
    const double reach = 5 * sigma;
    const auto first = [](double low) { return static_cast<int32_t>(std::fmax(std::ceil(low), 0)); };
    for (int32_t v = first(y - reach); v < size_.height && v <= y + reach; ++v) {
      for (int32_t u = first(x - reach); u < size_.width && u <= x + reach; ++u) {
        image.at(u, v) += height * std::exp(-((u - x) * (u - x) + (v - y) * (v - y)) / (2 * sigma * sigma));
      }
    }
  }

  DaxiSize size_;
  std::vector<Spot> spots_;
};

// With noise of this deviation, from sums of twelve numbers.
template <class T>
TestImage<T> asPixels(const TestImage<double>& scene, double gain = 1, double offset = 0, double noise = 0,
                      uint64_t seed = 1) {
  TestImage<T> image(scene.size(), 3);
  Random random(seed);
  image.fill([&](int32_t x, int32_t y) {
    double sum = -6;
    for (int i = 0; noise > 0 && i < 12; ++i) sum += random.below(1 << 20) / double{1 << 20};
    const double value = offset + gain * scene.at(x, y) + noise * sum;
    return std::is_floating_point_v<T> ? value : std::rint(std::clamp(value, 0.0, 255.0));
  });
  return image;
}

}  // namespace dax::test
