// Matrices of the caller's, row-major with a step, and their copies in double precision to work on.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "dax/status.h"

namespace dax {

template <class T>
struct MatrixView {
  T* data;
  ptrdiff_t step;
  int32_t rows, cols;

  T* row(int32_t i) const { return data + i * step; }
};
template <class T>
using MatrixIn = MatrixView<const T>;

constexpr int32_t kMaxSide = 4096;

inline bool areSides(std::initializer_list<int32_t> sides) {
  return std::all_of(sides.begin(), sides.end(), [](int32_t side) { return side >= 1 && side <= kMaxSide; });
}

// For a query: the bytes of so many doubles.
template <class Doubles>
DaxStatus bytesOf(std::initializer_list<int32_t> sides, const Doubles& doubles, uint64_t* bytes) {
  if (!bytes) return DAX_STS_NULL_POINTER;
  if (!areSides(sides)) return DAX_STS_BAD_PARAM;
  *bytes = sizeof(double) * static_cast<uint64_t>(doubles());
  return DAX_STS_OK;
}

// A matrix in work memory. Where rows are the columns of the caller's matrix, it is transposed: what algorithms combine then
// lies side by side.
using Rows = MatrixView<double>;

// Pieces of a work buffer, in doubles.
class WorkSpace {
 public:
  explicit WorkSpace(void* buffer) : next_(static_cast<double*>(buffer)) {}
  double* take(int64_t count) { return std::exchange(next_, next_ + count); }
  Rows take(int32_t rows, int32_t cols) { return {take(int64_t{rows} * cols), cols, rows, cols}; }
  int32_t* takeIntegers(int64_t count) { return reinterpret_cast<int32_t*>(take((count + 1) / 2)); }

 private:
  double* next_;
};

// x -> x 2^exponent, in two steps, since one power of two would not do; the first is exact wherever the result is normal.
class PowerOfTwo {
 public:
  explicit PowerOfTwo(int exponent) {
    const int held = std::clamp(exponent, -2044, 2046);
    first_ = power(held / 2), second_ = power(held - held / 2);
  }
  double operator()(double x) const { return x * first_ * second_; }

 private:
  static double power(int exponent) { return std::bit_cast<double>(static_cast<uint64_t>(1023 + exponent) << 52); }
  double first_, second_;
};

// The greatest magnitude of what was looked at, as the bits of a double: these are in the order of the numbers, with
// infinities and NaN above them.
class Magnitude {
 public:
  void add(double x) { bits_ = std::max(bits_, std::bit_cast<int64_t>(x) & INT64_MAX); }
  template <class T>
  void add(const T* x, int64_t count) {
    for (int64_t i = 0; i < count; ++i) add(double{x[i]});
  }
  template <class T>
  void add(MatrixIn<T> a) {
    for (int32_t i = 0; i < a.rows; ++i) add(a.row(i), a.cols);
  }
  // On and below the diagonal.
  template <class T>
  void addLower(MatrixIn<T> a) {
    for (int32_t i = 0; i < a.rows; ++i) add(a.row(i), i + 1);
  }

  bool isFinite() const { return bits_ < int64_t{0x7FF} << 52; }
  // e of the magnitude f 2^e with f in [0.5, 1); 0 of zero.
  int exponent() const {
    const int biased = static_cast<int>(bits_ >> 52);
    if (biased > 0) return biased - 1022;
    return bits_ == 0 ? 0 : -1010 - std::countl_zero(static_cast<uint64_t>(bits_));
  }

 private:
  int64_t bits_ = 0;
};

// --- Copies ---

template <class T>
void loadRows(MatrixIn<T> from, PowerOfTwo scale, const Rows& to) {
  for (int32_t i = 0; i < from.rows; ++i) {
    for (int32_t j = 0; j < from.cols; ++j) to.row(i)[j] = scale(double{from.row(i)[j]});
  }
}

// The columns of the caller's matrix become rows.
template <class T>
void loadColumns(MatrixIn<T> from, PowerOfTwo scale, const Rows& to) {
  for (int32_t i = 0; i < from.rows; ++i) {
    for (int32_t j = 0; j < from.cols; ++j) to.row(j)[i] = scale(double{from.row(i)[j]});
  }
}

// Of a symmetric matrix what lies on and below the diagonal is read.
template <class T>
void loadSymmetric(MatrixIn<T> from, PowerOfTwo scale, const Rows& to) {
  for (int32_t i = 0; i < from.rows; ++i) {
    for (int32_t j = 0; j <= i; ++j) to.row(i)[j] = to.row(j)[i] = scale(double{from.row(i)[j]});
  }
}

template <class T>
void store(const double* from, PowerOfTwo scale, T* to, int32_t count) {
  for (int32_t i = 0; i < count; ++i) to[i] = static_cast<T>(scale(from[i]));
}

template <class T>
void storeRows(const Rows& from, PowerOfTwo scale, MatrixView<T> to) {
  for (int32_t i = 0; i < to.rows; ++i) store(from.row(i), scale, to.row(i), to.cols);
}

template <class T>
void storeColumns(const Rows& from, PowerOfTwo scale, MatrixView<T> to) {
  for (int32_t i = 0; i < to.rows; ++i) {
    for (int32_t j = 0; j < to.cols; ++j) to.row(i)[j] = static_cast<T>(scale(from.row(j)[i]));
  }
}

// --- Rows. They must not overlap. ---

// Scalar product as eight partial sums, for what fills them, then two. Short rows are frequent here: that of dense.h, whose order
// of additions the solvers keep, is called, and pads what four do not divide.
inline double inner(const double* a, const double* b, int32_t count) {
  typedef double Pair __attribute__((vector_size(16)));
  Pair sums[4] = {}, left, right;
  int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    for (int k = 0; k < 4; ++k) {
      std::memcpy(&left, a + i + 2 * k, sizeof left);
      std::memcpy(&right, b + i + 2 * k, sizeof right);
      sums[k] += left * right;
    }
  }
  for (; i + 2 <= count; i += 2) {
    std::memcpy(&left, a + i, sizeof left);
    std::memcpy(&right, b + i, sizeof right);
    sums[0] += left * right;
  }
  const Pair sum = (sums[0] + sums[1]) + (sums[2] + sums[3]);
  const double product = sum[0] + sum[1];
  return i < count ? product + a[i] * b[i] : product;
}

inline double squareOf(const double* v, int32_t count) {
  return inner(v, v, count);
}

inline void addScaled(double* __restrict to, double factor, const double* __restrict from, int32_t count) {
  for (int32_t i = 0; i < count; ++i) to[i] += factor * from[i];
}

// (p, q) <- (c p - s q, s p + c q).
inline void rotate(double* __restrict p, double* __restrict q, double cosine, double sine, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const double x = p[i], y = q[i];
    p[i] = cosine * x - sine * y;
    q[i] = sine * x + cosine * y;
  }
}

inline void setIdentity(const Rows& a) {
  for (int32_t i = 0; i < a.rows; ++i) {
    std::fill_n(a.row(i), a.cols, 0.0);
    if (i < a.cols) a.row(i)[i] = 1;
  }
}

// The sign of the element of largest magnitude, the first of equal ones.
inline double signOf(const double* v, int32_t n) {
  double largest = 0;
  for (int32_t i = 0; i < n; ++i) {
    if (std::fabs(v[i]) > std::fabs(largest)) largest = v[i];
  }
  return largest < 0 ? -1 : 1;
}

}  // namespace dax
