// The piece of an ascending array in which a place lies.
#pragma once

#include <cstdint>

namespace dax {

// Finds the largest i of 0..n - 2 with x[i] <= at, or 0; beginning with the last answer.
class Pieces {
 public:
  Pieces(const double* x, int32_t n) : x_(x), n_(n) {}
  int32_t find(double at) {
    if (contains(last_, at)) return last_;
    int32_t low = 0, high = n_ - 1;
    while (high - low > 1) {
      const int32_t middle = low + (high - low) / 2;
      (x_[middle] <= at ? low : high) = middle;
    }
    return last_ = low;
  }

 private:
  bool contains(int32_t i, double at) const { return (i == 0 || x_[i] <= at) && (i == n_ - 2 || at < x_[i + 1]); }
  const double* x_;
  int32_t n_, last_ = 0;
};

}  // namespace dax
