// A pixel of a pyramid by its definition: all taps at once, in whole numbers.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "dax/types.h"

namespace dax::oracle {

// b a b c, and a single pixel for itself, one step at a time.
inline int32_t mirrored(int32_t i, int32_t n) {
  if (n == 1) return 0;
  while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
  return i;
}

constexpr int32_t kBinomial[5] = {1, 4, 6, 4, 1};

// 256 times the value of half an image.
template <class Pixel>
double halved(const Pixel& pixel, DaxiSize size, int32_t x, int32_t y) {
  double sum = 0;
  for (int32_t j = -2; j <= 2; ++j) {
    for (int32_t i = -2; i <= 2; ++i) {
      sum += kBinomial[i + 2] * kBinomial[j + 2] *
             static_cast<double>(pixel(mirrored(2 * x + i, size.width), mirrored(2 * y + j, size.height)));
    }
  }
  return sum;
}

// 64 times the value of a doubled one: of the taps only those on even positions have a pixel.
template <class Pixel>
double doubled(const Pixel& pixel, DaxiSize size, int32_t x, int32_t y) {
  double sum = 0;
  for (int32_t j = -2; j <= 2; ++j) {
    for (int32_t i = -2; i <= 2; ++i) {
      if ((x + i) % 2 != 0 || (y + j) % 2 != 0) continue;
      sum += kBinomial[i + 2] * kBinomial[j + 2] *
             static_cast<double>(pixel(mirrored((x + i) / 2, size.width), mirrored((y + j) / 2, size.height)));
    }
  }
  return sum;
}

}  // namespace dax::oracle
