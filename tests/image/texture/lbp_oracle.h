// Local binary patterns by their definition, one pixel at a time.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "daxi/lbp.h"

namespace dax::oracle {

// The place of neighbour k in 1/4096 pixel.
inline long circlePlace(double unit, double radius) {
  return std::lround(4096 * radius * unit);
}

// What a neighbour's four pixels, weighted, are above 4096 times the centre. pixel(x, y) is asked for places around the
// image, too.
template <class Pixel>
double neighbourAbove(const Pixel& pixel, int32_t x, int32_t y, const DaxiLbpCfg& cfg, int32_t k) {
  static const int kAround[8][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
  const auto centre = static_cast<double>(pixel(x, y));
  if (cfg.radius == 0) return static_cast<double>(pixel(x + kAround[k][0], y + kAround[k][1])) - centre;
  const double angle = 2 * M_PI * k / cfg.points;
  const long px = circlePlace(std::cos(angle), cfg.radius), py = circlePlace(std::sin(angle), cfg.radius);
  const auto left = static_cast<int32_t>(std::floor(static_cast<double>(px) / 4096)),
             top = static_cast<int32_t>(std::floor(static_cast<double>(py) / 4096));
  const long a = px - 4096L * left, b = py - 4096L * top;
  const auto both = static_cast<long>(std::floor(static_cast<double>(a * b) / 4096 + 0.5));
  const long weights[4] = {4096 - a - b + both, a - both, b - both, both};
  double sum = 0;
  for (int32_t t = 0; t < 4; ++t) {
    if (weights[t] == 0) continue;
    const auto v = static_cast<double>(pixel(x + left + t % 2, y + top + t / 2));
    sum += static_cast<double>(weights[t]) * (v - centre);
  }
  return sum;
}

template <class Pixel>
uint32_t lbpCode(const Pixel& pixel, int32_t x, int32_t y, const DaxiLbpCfg& cfg) {
  std::vector<bool> bits;
  for (int32_t k = 0; k < cfg.points; ++k) bits.push_back(neighbourAbove(pixel, x, y, cfg, k) >= 0);
  const auto number = [](const std::vector<bool>& of) {
    uint32_t sum = 0;
    for (size_t k = 0; k < of.size(); ++k) sum += of[k] ? 1u << k : 0;
    return sum;
  };
  uint32_t code = number(bits);
  if (cfg.codes == DAXI_LBP_PLAIN) return code;
  uint32_t changes = 0;
  std::vector<bool> turned = bits;
  for (size_t k = 0; k < bits.size(); ++k) {
    changes += bits[k] != bits[(k + 1) % bits.size()];
    std::rotate(turned.begin(), turned.begin() + 1, turned.end());
    code = std::min(code, number(turned));
  }
  if (cfg.codes == DAXI_LBP_ROTATION) return code;
  const auto set = static_cast<uint32_t>(std::count(bits.begin(), bits.end(), true));
  return changes <= 2 ? set : static_cast<uint32_t>(cfg.points) + 1;
}

}  // namespace dax::oracle
