// Median of a square window by sorting its pixels.
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>

namespace dax::oracle {

// pixel(x, y) is asked for positions inside w x h only. Floats are in the order of IEEE 754 totalOrder.
template <int32_t side, class Pixel>
auto median(const Pixel& pixel, int32_t x, int32_t y, int32_t w, int32_t h) {
  std::array<decltype(pixel(0, 0)), size_t{side} * side> window;
  for (int32_t i = 0; i < side * side; ++i) {
    window[static_cast<size_t>(i)] =
        pixel(std::clamp(x + i % side - side / 2, 0, w - 1), std::clamp(y + i / side - side / 2, 0, h - 1));
  }
  std::sort(window.begin(), window.end(), [](auto a, auto b) { return std::strong_order(a, b) < 0; });
  return window[window.size() / 2];
}

}  // namespace dax::oracle
