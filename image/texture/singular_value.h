// The second largest singular value of a square matrix.
#pragma once

#include <cmath>
#include <cstdint>

namespace dax {

// Householder's reflections turn a matrix, row by row n x n, into a bidiagonal one of the same singular values; then
// bisection on the symmetric tridiagonal matrix with a diagonal of zeros, whose eigenvalues are these and their
// negatives (Golub and Kahan 1965). No product of the matrix with itself, so that small values keep their digits.
class SecondSingularValue {
 public:
  static constexpr int32_t kRoom = 4;

  // a: the matrix, which is overwritten; room for kRoom n numbers.
  SecondSingularValue(double* a, int32_t n, double* room)
      : a_(a), n_(n), v_(room), products_(room + n), band_(room + 2 * n) {}

  // Of a matrix whose largest singular value is 1, or below.
  double compute() {
    if (n_ < 2) return 0;
    for (int32_t k = 0; k < n_; ++k) {
      band_[2 * k] = clearColumn(k);
      if (k + 1 < n_) band_[2 * k + 1] = clearRow(k);
    }
    double low = 0, high = 1;
    for (int round = 0; round < 60; ++round) {
      const double middle = (low + high) / 2;
      if (countBelow(middle) <= 2 * n_ - 2) {
        low = middle;
      } else {
        high = middle;
      }
    }
    return low;
  }

 private:
  double* row(int32_t i) const { return a_ + static_cast<int64_t>(i) * n_; }

  // Makes of v_[from..n - 1] the vector v of a reflection x - v (v x) that maps it to a multiple of the first unit
  // vector, which is returned; v is 0 where there is nothing to do.
  double reflect(int32_t from) {
    double squares = 0;
    for (int32_t i = from; i < n_; ++i) squares += v_[i] * v_[i];
    const double head = v_[from], length = head > 0 ? -std::sqrt(squares) : std::sqrt(squares);
    v_[from] = head - length;
    const double half = squares - head * length;  // |v|^2 / 2
    const double scale = half > 0 ? 1 / std::sqrt(half) : 0;
    for (int32_t i = from; i < n_; ++i) v_[i] *= scale;
    return length;
  }

  // Reflects the rows from k on, so that column k has nothing below its diagonal; returns that.
  double clearColumn(int32_t k) {
    for (int32_t i = k; i < n_; ++i) v_[i] = row(i)[k];
    const double diagonal = reflect(k);
    for (int32_t j = k + 1; j < n_; ++j) products_[j] = 0;
    for (int32_t i = k; i < n_; ++i) {
      for (int32_t j = k + 1; j < n_; ++j) products_[j] += v_[i] * row(i)[j];
    }
    for (int32_t i = k; i < n_; ++i) {
      for (int32_t j = k + 1; j < n_; ++j) row(i)[j] -= v_[i] * products_[j];
    }
    return diagonal;
  }

  // Reflects the columns behind k, so that row k has nothing behind the next to its diagonal; returns that.
  double clearRow(int32_t k) {
    for (int32_t j = k + 1; j < n_; ++j) v_[j] = row(k)[j];
    const double beside = reflect(k + 1);
    for (int32_t i = k + 1; i < n_; ++i) {
      double product = 0;
      for (int32_t j = k + 1; j < n_; ++j) product += v_[j] * row(i)[j];
      for (int32_t j = k + 1; j < n_; ++j) row(i)[j] -= product * v_[j];
    }
    return beside;
  }

  // How many eigenvalues of the tridiagonal matrix lie below x > 0 (Sturm's sequence).
  int32_t countBelow(double x) const {
    constexpr double kTiny = 1e-300;
    double pivot = -x;
    int32_t count = 1;
    for (int32_t i = 0; i < 2 * n_ - 1; ++i) {
      pivot = -x - band_[i] * band_[i] / (pivot == 0 ? kTiny : pivot);
      count += pivot < 0;
    }
    return count;
  }

  double* a_;
  int32_t n_;
  double* v_;
  double* products_;  // of v and the columns
  double* band_;
};

}  // namespace dax
