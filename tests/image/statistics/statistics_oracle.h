// Statistics by their definitions, from the list of the pixels that count.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::oracle {

__extension__ using Int128 = __int128;

// The pixels of a channel that a mask chooses, in raster order; without a mask all. An image of three channels is three
// times as wide as the mask.
template <class T>
std::vector<T> chosenPixels(const test::TestImage<T>& image, const test::TestImage<uint8_t>* mask, int32_t channels = 1,
                            int32_t channel = 0) {
  std::vector<T> pixels;
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = 0; x < image.size().width / channels; ++x) {
      if (!mask || mask->at(x, y) != 0) pixels.push_back(image.at(x * channels + channel, y));
    }
  }
  return pixels;
}

// Blocks of 4096, eight lanes, pairs.
inline double pairwise(const std::vector<double>& values) {
  std::vector<double> level, rest;
  for (size_t first = 0; first < values.size(); first += 4096) {
    double l[8] = {};
    const size_t end = std::min(first + 4096, values.size());
    for (size_t i = first; i < end; ++i) l[(i - first) % 8] += values[i];
    const double sum = ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
    (end - first == 4096 ? level : rest).push_back(sum);
  }
  while (!level.empty()) {
    std::vector<double> pairs;
    for (size_t i = 0; i + 1 < level.size(); i += 2) pairs.push_back(level[i] + level[i + 1]);
    if (level.size() % 2) rest.push_back(level.back());
    level = pairs;
  }
  double sum = 0;
  for (size_t i = 0; i < rest.size(); ++i) sum = i == 0 ? rest[0] : rest[i] + sum;
  return sum;
}

// The sum of f(pixel): exact for integers.
template <class T, class F>
double sumOf(const std::vector<T>& pixels, F f) {
  if constexpr (std::is_floating_point_v<T>) {
    std::vector<double> values;
    for (const T pixel : pixels) values.push_back(f(double{pixel}));
    return pairwise(values);
  } else {
    Int128 sum = 0;
    for (const T pixel : pixels) sum += f(Int128{pixel});
    return static_cast<double>(sum);
  }
}

template <class T>
double mean(const std::vector<T>& pixels) {
  return sumOf(pixels, [](auto x) { return x; }) / static_cast<double>(pixels.size());
}

template <class T>
double stdDev(const std::vector<T>& pixels) {
  const auto n = static_cast<double>(pixels.size());
  if constexpr (std::is_floating_point_v<T>) {
    const double centre = mean(pixels);
    return std::sqrt(sumOf(pixels, [=](double x) { return (x - centre) * (x - centre); }) / n);
  } else {
    Int128 sum = 0, squares = 0;
    for (const T pixel : pixels) sum += pixel, squares += Int128{pixel} * pixel;
    return std::sqrt(static_cast<double>(Int128(pixels.size()) * squares - sum * sum)) / n;
  }
}

}  // namespace dax::oracle
