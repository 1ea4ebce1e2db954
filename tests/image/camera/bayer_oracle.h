// Colours from a Bayer pattern by their definition: one pixel at a time, from tables of coefficients.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace dax::oracle {

// The colour that the pattern has there: 0 red, 1 green, 2 blue.
inline int32_t bayerColour(int32_t phase, int32_t x, int32_t y) {
  constexpr const char* kPatterns[4] = {"RGGB", "GRBG", "GBRG", "BGGR"};
  const char c = kPatterns[phase][(y & 1) * 2 + (x & 1)];
  return c == 'R' ? 0 : c == 'G' ? 1 : 2;
}

inline int32_t mirrored(int32_t i, int32_t n) {
  while (i < 0 || i >= n) i = i < 0 ? -i : 2 * n - 2 - i;
  return i;
}

// image(x, y) within width x height. Bilinear: the mean of the samples of a colour within 3 x 3, of those at the sides where
// there are any.
template <class Image>
int32_t bilinearBayer(const Image& image, int32_t width, int32_t height, int32_t phase, int32_t x, int32_t y,
                      int32_t c) {
  if (bayerColour(phase, x, y) == c) return image(x, y);
  int32_t sum[2] = {}, count[2] = {};
  for (int32_t dy = -1; dy <= 1; ++dy) {
    for (int32_t dx = -1; dx <= 1; ++dx) {
      if (bayerColour(phase, x + dx, y + dy) != c) continue;
      const int32_t diagonal = dx != 0 && dy != 0;
      sum[diagonal] += image(mirrored(x + dx, width), mirrored(y + dy, height)), ++count[diagonal];
    }
  }
  const int32_t which = count[0] == 0;
  return (sum[which] + count[which] / 2) / count[which];
}

// The filters of Malvar, He and Cutler, figure 2, times two.
inline const int32_t (&mhcFilter(int32_t phase, int32_t x, int32_t y, int32_t c))[5][5] {
  static constexpr int32_t kGreen[5][5] = {
      {0, 0, -2, 0, 0}, {0, 0, 4, 0, 0}, {-2, 4, 8, 4, -2}, {0, 0, 4, 0, 0}, {0, 0, -2, 0, 0}};
  static constexpr int32_t kAlongX[5][5] = {
      {0, 0, 1, 0, 0}, {0, -2, 0, -2, 0}, {-2, 8, 10, 8, -2}, {0, -2, 0, -2, 0}, {0, 0, 1, 0, 0}};
  static constexpr int32_t kAlongY[5][5] = {
      {0, 0, -2, 0, 0}, {0, -2, 8, -2, 0}, {1, 0, 10, 0, 1}, {0, -2, 8, -2, 0}, {0, 0, -2, 0, 0}};
  static constexpr int32_t kCorners[5][5] = {
      {0, 0, -3, 0, 0}, {0, 4, 0, 4, 0}, {-3, 0, 12, 0, -3}, {0, 4, 0, 4, 0}, {0, 0, -3, 0, 0}};
  if (c == 1) return kGreen;
  if (bayerColour(phase, x, y) != 1) return kCorners;
  return bayerColour(phase, x + 1, y) == c ? kAlongX : kAlongY;
}

template <class T, class Image>
int32_t mhcBayer(const Image& image, int32_t width, int32_t height, int32_t phase, int32_t x, int32_t y, int32_t c) {
  if (bayerColour(phase, x, y) == c) return image(x, y);
  const auto& filter = mhcFilter(phase, x, y, c);
  int32_t sum = 8;
  for (int32_t i = 0; i < 25; ++i) {
    sum += filter[i / 5][i % 5] * image(mirrored(x + i % 5 - 2, width), mirrored(y + i / 5 - 2, height));
  }
  return std::clamp<int32_t>(sum >> 4, 0, std::numeric_limits<T>::max());
}

}  // namespace dax::oracle
