// Median of 3 x 3 pixels by sorting them.
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>

namespace dax::oracle {

// pixel(x, y) is asked for positions inside w x h only. Floats are in the order of IEEE 754 totalOrder.
template <class Pixel>
auto median3x3(const Pixel& pixel, int32_t x, int32_t y, int32_t w, int32_t h) {
  std::array<decltype(pixel(0, 0)), 9> window;
  for (int32_t i = 0; i < 9; ++i) {
    window[static_cast<size_t>(i)] = pixel(std::clamp(x + i % 3 - 1, 0, w - 1), std::clamp(y + i / 3 - 1, 0, h - 1));
  }
  std::sort(window.begin(), window.end(), [](auto a, auto b) { return std::strong_order(a, b) < 0; });
  return window[4];
}

}  // namespace dax::oracle
