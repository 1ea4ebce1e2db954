// Gaussian smoothing in double precision, one pixel at a time.
#pragma once

#include <cmath>
#include <vector>

#include "daxi/gauss.h"

namespace dax::oracle {

inline std::vector<double> gaussWeights(double sigma, int32_t side) {
  const int32_t radius = side > 0 ? side / 2 : static_cast<int32_t>(std::ceil(4 * sigma));
  std::vector<double> weights;
  double sum = 0;
  for (int32_t i = -radius; i <= radius; ++i) sum += weights.emplace_back(std::exp(-i * i / (2 * sigma * sigma)));
  for (double& weight : weights) weight /= sum;
  return weights;
}

// pixel(x, y) is asked for places around the image, too.
template <class Pixel>
double gauss(const Pixel& pixel, int32_t x, int32_t y, const std::vector<double>& along,
             const std::vector<double>& down) {
  const auto columns = static_cast<int32_t>(along.size()), rows = static_cast<int32_t>(down.size());
  double sum = 0;
  for (int32_t j = 0; j < rows; ++j) {
    double row = 0;
    for (int32_t i = 0; i < columns; ++i) {
      row += along[static_cast<size_t>(i)] * static_cast<double>(pixel(x + i - columns / 2, y + j - rows / 2));
    }
    sum += down[static_cast<size_t>(j)] * row;
  }
  return sum;
}

}  // namespace dax::oracle
