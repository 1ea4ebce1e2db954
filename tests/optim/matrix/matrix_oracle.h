// Matrices of the tests by their definitions, and calls in memory that faults when it is overrun.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <type_traits>
#include <vector>

#include "prmt.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {

// With padding between the rows; the last row ends with its last element.
template <class T = double>
class Dense {
 public:
  Dense(int32_t rowCount, int32_t colCount, int32_t padding = 0)
      : rows(rowCount),
        cols(colCount),
        step(colCount + padding),
        data_(size_t(rowCount - 1) * size_t(step) + size_t(cols)) {}
  template <class From>
  explicit Dense(const Dense<From>& from, int32_t padding = 0) : Dense(from.rows, from.cols, padding) {
    fill([&](int32_t i, int32_t j) { return from(i, j); });
  }
  Dense(const Dense& from) : Dense(from, 0) {}
  template <class Value>
  void fill(const Value& value) {
    for (int32_t i = 0; i < rows; ++i) {
      for (int32_t j = 0; j < cols; ++j) (*this)(i, j) = static_cast<T>(value(i, j));
    }
  }
  T& operator()(int32_t i, int32_t j) { return data_[size_t(i) * size_t(step) + size_t(j)]; }
  const T& operator()(int32_t i, int32_t j) const { return data_[size_t(i) * size_t(step) + size_t(j)]; }
  T* data() { return data_.data(); }
  const T* data() const { return data_.data(); }

  const int32_t rows, cols, step;

 private:
  GuardedBuffer<T> data_;
};
using Matrix = Dense<double>;

template <class Value>
Matrix matrixOf(int32_t rows, int32_t cols, const Value& value) {
  Matrix result(rows, cols);
  result.fill(value);
  return result;
}

inline Matrix randomMatrix(int32_t rows, int32_t cols, uint64_t seed) {
  Random random(seed);
  return matrixOf(rows, cols, [&](int32_t, int32_t) { return random.below(2000001) / 1e6 - 1; });
}
inline Matrix identity(int32_t n) {
  return matrixOf(n, n, [](int32_t i, int32_t j) { return i == j; });
}
inline Matrix transposed(const Matrix& a) {
  return matrixOf(a.cols, a.rows, [&](int32_t i, int32_t j) { return a(j, i); });
}
inline Matrix operator*(const Matrix& a, const Matrix& b) {
  return matrixOf(a.rows, b.cols, [&](int32_t i, int32_t j) {
    double sum = 0;
    for (int32_t k = 0; k < a.cols; ++k) sum += a(i, k) * b(k, j);
    return sum;
  });
}
inline Matrix scaled(const Matrix& a, double factor) {
  return matrixOf(a.rows, a.cols, [&](int32_t i, int32_t j) { return a(i, j) * factor; });
}
inline double largest(const Matrix& a) {
  double result = 0;
  for (int32_t i = 0; i < a.rows; ++i) {
    for (int32_t j = 0; j < a.cols; ++j)
      result = std::fmax(result, std::isnan(a(i, j)) ? INFINITY : std::fabs(a(i, j)));
  }
  return result;
}
inline double distance(const Matrix& a, const Matrix& b) {
  EXPECT_TRUE(a.rows == b.rows && a.cols == b.cols);
  return largest(matrixOf(a.rows, a.cols, [&](int32_t i, int32_t j) { return a(i, j) - b(i, j); }));
}
inline Matrix withRows(const Matrix& a, const std::vector<int32_t>& order) {
  return matrixOf(static_cast<int32_t>(order.size()), a.cols,
                  [&](int32_t i, int32_t j) { return a(order[size_t(i)], j); });
}
inline Matrix withColumns(const Matrix& a, const std::vector<int32_t>& order) {
  return matrixOf(a.rows, a.cols, [&](int32_t i, int32_t j) { return a(i, order[size_t(j)]); });
}
// How far columns are from being orthonormal.
inline double skew(const Matrix& q) {
  return distance(transposed(q) * q, identity(q.cols));
}
inline Matrix hilbert(int32_t n) {
  return matrixOf(n, n, [](int32_t i, int32_t j) { return 1.0 / (i + j + 1); });
}

// Determinant of whole numbers, exactly, without fractions (Bareiss 1968).
inline int64_t wholeDeterminant(const Matrix& a) {
  const int32_t n = a.rows;
  std::vector<std::vector<__int128>> m(static_cast<size_t>(n), std::vector<__int128>(static_cast<size_t>(n)));
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = 0; j < n; ++j) m[size_t(i)][size_t(j)] = static_cast<int64_t>(a(i, j));
  }
  __int128 previous = 1, sign = 1;
  for (size_t k = 0; k + 1 < m.size(); ++k) {
    size_t pivot = k;
    while (pivot < m.size() && m[pivot][k] == 0) ++pivot;
    if (pivot == m.size()) return 0;
    if (pivot != k) std::swap(m[pivot], m[k]), sign = -sign;
    for (size_t i = k + 1; i < m.size(); ++i) {
      for (size_t j = k + 1; j < m.size(); ++j) m[i][j] = (m[i][j] * m[k][k] - m[i][k] * m[k][j]) / previous;
    }
    previous = m[k][k];
  }
  return static_cast<int64_t>(sign * m.back().back());
}

// The form of a function for double or for float.
template <class T, class F64, class F32>
auto pick(F64* f64, F32* f32) {
  if constexpr (std::is_same_v<T, double>) {
    return f64;
  } else {
    return f32;
  }
}
#define PRMT_MAT(name) pick<T>(PRMT_MAT_##name##_f64, PRMT_MAT_##name##_f32)
#define PRMT_MAT_MT(name) pick<T>(PRMT_MAT_##name##_f64_MT, PRMT_MAT_##name##_f32_MT)

// A work buffer of exactly the bytes that a query tells.
template <class Query, class... Sides>
GuardedBuffer<uint8_t> workFor(Query* query, Sides... sides) {
  uint64_t bytes = 0;
  EXPECT_EQ(query(sides..., &bytes), DAX_STS_OK);
  // Its start is aligned as by malloc.
  return GuardedBuffer<uint8_t>((bytes + 15) / 16 * 16);
}

}  // namespace dax::test
