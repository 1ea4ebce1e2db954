// Points for sample consensus: coordinates of one axis after the other, so that several are rated at a time.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/memory/work_buffer.h"

namespace dax {

// As many numbers as a vector register of 16 bytes holds.
template <class T>
struct ShapeLanes {
  static constexpr int32_t kCount = 16 / sizeof(T);
  typedef T Vector __attribute__((vector_size(16)));
};

constexpr int64_t roundedToLanes(int64_t n) {
  return (n + 3) / 4 * 4;
}

// The median of up to 255 finite coordinates, evenly spread over the points; 0 where there is none.
template <class T>
double middleOf(const T* coordinate, int32_t step, int32_t n) {
  constexpr int32_t kMax = 255;
  double values[kMax];
  const int32_t looked = std::min(n, kMax);
  int32_t count = 0;
  for (int32_t i = 0; i < looked; ++i) {
    const T value = coordinate[static_cast<ptrdiff_t>(int64_t{i} * n / looked) * step];
    if (std::isfinite(value)) values[count++] = value;
  }
  if (count == 0) return 0;
  std::nth_element(values, values + count / 2, values + count);
  return values[count / 2];
}

// n points of D coordinates relative to their middle, and NaN up to a multiple of four.
template <class T, int D>
class ShapePoints {
 public:
  ShapePoints(const T* points, int32_t step, int32_t n, T* memory) : n_(n) {
    for (int d = 0; d < D; ++d) {
      T* const axis = memory + d * roundedToLanes(n);
      middle_[d] = middleOf(points + d, step, n);
      for (int32_t i = 0; i < n; ++i)
        axis[i] = static_cast<T>(points[static_cast<ptrdiff_t>(i) * step + d] - middle_[d]);
      std::fill(axis + n, axis + roundedToLanes(n), std::numeric_limits<T>::quiet_NaN());
      axis_[d] = axis;
    }
  }

  int32_t size() const { return n_; }
  const T* axis(int d) const { return axis_[d]; }
  const double* middle() const { return middle_; }
  void get(int32_t i, double* point) const {
    for (int d = 0; d < D; ++d) point[d] = axis_[d][i];
  }

 private:
  int32_t n_;
  const T* axis_[D];
  double middle_[D];
};

}  // namespace dax
