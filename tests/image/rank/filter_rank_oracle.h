// Ranks by sorting the pixels of each window.
#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <vector>

#include "tests/support/filter_scene.h"

namespace dax::oracle {

// One place of a window: a pixel of the image, the border's value, or none. In memory pixel(x, y) is asked for any position.
template <class T, class Pixel>
std::optional<T> windowPixel(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, int32_t border, T value) {
  if (border == DAXI_BORDER_IN_MEMORY) return pixel(x, y);
  const auto column = test::walkInside(x, size.width, border), row = test::walkInside(y, size.height, border);
  if (column && row) return pixel(*column, *row);
  if (border == DAXI_BORDER_CONSTANT) return value;
  return std::nullopt;
}

template <class T>
T ranked(std::vector<T> pixels, int64_t rank) {
  std::sort(pixels.begin(), pixels.end(), [](T a, T b) { return std::strong_order(a, b) < 0; });
  return pixels[static_cast<size_t>(rank)];
}

template <class T, class Pixel>
T rankFilter(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, DaxiSize window, int64_t rank, int32_t border,
             T value) {
  std::vector<T> found;
  for (int64_t j = 0; j < window.height; ++j) {
    for (int64_t i = 0; i < window.width; ++i) {
      if (const auto p = windowPixel(pixel, x - window.width / 2 + i, y - window.height / 2 + j, size, border, value)) {
        found.push_back(*p);
      }
    }
  }
  const int64_t all = int64_t{window.width} * window.height, left = static_cast<int64_t>(found.size());
  return ranked(found, rank == all - 1 ? left - 1 : rank * left / all);
}

// Each pixel of 3 x 3 as often as its weight says; the lower of two in the middle.
template <class T, class Pixel>
T weightedMedian(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, const uint8_t* weights, int32_t border,
                 T value) {
  std::vector<T> found;
  for (int64_t k = 0; k < 9; ++k) {
    const auto p = windowPixel(pixel, x + k % 3 - 1, y + k / 3 - 1, size, border, value);
    if (p) found.insert(found.end(), weights[k], *p);
  }
  return found.empty() ? pixel(x, y) : ranked(found, static_cast<int64_t>(found.size() - 1) / 2);
}

template <class T, class Pixel>
T hybridMedian(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, int32_t border, T value) {
  std::vector<T> crosses[2];
  for (int64_t j = -2; j <= 2; ++j) {
    for (int64_t i = -2; i <= 2; ++i) {
      const auto p = windowPixel(pixel, x + i, y + j, size, border, value);
      if (p && i * j == 0) crosses[0].push_back(*p);
      if (p && i * i == j * j) crosses[1].push_back(*p);
    }
  }
  const auto middle = [](const std::vector<T>& v) { return ranked(v, static_cast<int64_t>(v.size() / 2)); };
  return middle({middle(crosses[0]), middle(crosses[1]), pixel(x, y)});
}

}  // namespace dax::oracle
