// Derivatives by the product of two kernels, one pixel at a time, in double precision.
#pragma once

#include <cstdint>
#include <vector>

namespace dax::oracle {

struct Derivative {
  std::vector<double> along, down;
};

// kernel: 0 Sobel, 1 Prewitt, 2 Scharr.
inline Derivative derivative(int kernel, bool isX, int32_t aperture) {
  static const std::vector<double> smooth3[] = {{1, 2, 1}, {1, 1, 1}, {3, 10, 3}};
  static const std::vector<double> smooth5[] = {{1, 4, 6, 4, 1}, {1, 1, 1, 1, 1}, {6, 62, 120, 62, 6}};
  static const std::vector<double> derive5[] = {{-1, -2, 0, 2, 1}, {-2, -1, 0, 1, 2}, {-21, -86, 0, 86, 21}};
  const std::vector<double> smooth = aperture == 3 ? smooth3[kernel] : smooth5[kernel];
  const std::vector<double> derive = aperture == 3 ? std::vector<double>{-1, 0, 1} : derive5[kernel];
  return isX ? Derivative{derive, smooth} : Derivative{smooth, derive};
}

inline double scaleOf(int kernel, int32_t aperture) {
  return kernel == 2 && aperture == 5 ? 0x1p-16 : 1;
}

// pixel(x, y) is asked for places around the image, too.
template <class Pixel>
double product(const Pixel& pixel, int32_t x, int32_t y, const Derivative& kernel) {
  const auto columns = static_cast<int32_t>(kernel.along.size()), rows = static_cast<int32_t>(kernel.down.size());
  double sum = 0;
  for (int32_t j = 0; j < rows; ++j) {
    for (int32_t i = 0; i < columns; ++i) {
      sum += kernel.down[static_cast<size_t>(j)] * kernel.along[static_cast<size_t>(i)] *
             static_cast<double>(pixel(x + i - columns / 2, y + j - rows / 2));
    }
  }
  return sum;
}

}  // namespace dax::oracle
