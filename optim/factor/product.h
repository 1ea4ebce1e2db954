// Products of dense matrices by tiles of registers. Each element is one sum in ascending order of the inner index, so that
// blocks, tiles and threads change no bit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "optim/factor/view.h"

namespace dax {

// An operand of a product: element (i, p) of the left one, (p, j) of the right one, lies at data[outer * i + inner * p].
template <class T>
struct Operand {
  const T* data;
  ptrdiff_t outer, inner;

  const T* at(int32_t i, int32_t p) const { return data + i * outer + p * inner; }
};

template <class T>
Operand<T> byRows(const T* data, ptrdiff_t step) {
  return {data, step, 1};
}
template <class T>
Operand<T> byColumns(const T* data, ptrdiff_t step) {
  return {data, 1, step};
}

// What becomes of a product.
enum class Keep { all, upper, subtracted };

class ProductBlock {
 public:
  static constexpr int32_t kHeight = 64, kWidth = 8, kDepth = 64;

  // The sums of rows x columns elements from (i, j) on, over k terms.
  template <class T>
  void multiply(const Operand<T>& a, const Operand<T>& b, int32_t i, int32_t rows, int32_t j, int32_t columns,
                int32_t k) {
    std::fill_n(sums_, rows * kWidth, 0.0);
    for (int32_t p = 0; p < k; p += kDepth) {
      const int32_t depth = std::min(kDepth, k - p);
      pack(b, j, columns, p, depth);
      for (int32_t r = 0; r < rows; r += 4) {
        const Operand<T> part{a.at(i + r, p), a.outer, a.inner};
        double* const sums = sums_ + r * kWidth;
        if (rows - r < 4) {
          for (int32_t q = 0; q < rows - r; ++q) addRow(part.at(q, 0), a.inner, depth, sums + q * kWidth);
        } else {
          addTile(part, 0, depth, sums);
          if (columns > 4) addTile(part, 4, depth, sums);
        }
      }
    }
  }
  const double* row(int32_t r) const { return sums_ + r * kWidth; }

 private:
  typedef double Pair __attribute__((vector_size(16)));

  // Missing columns are 0.
  template <class T>
  void pack(const Operand<T>& b, int32_t j, int32_t columns, int32_t p, int32_t depth) {
    for (int32_t q = 0; q < depth; ++q) {
      const T* const from = b.data + j * b.outer + (p + q) * b.inner;
      for (int32_t c = 0; c < kWidth; ++c) panel_[q * kWidth + c] = c < columns ? double{from[c * b.outer]} : 0;
    }
  }

  // Four rows, four columns.
  template <class T>
  void addTile(const Operand<T>& a, int32_t column, int32_t depth, double* sums) const {
    Pair tile[4][2];
    for (int r = 0; r < 4; ++r) std::memcpy(tile[r], sums + r * kWidth + column, sizeof tile[r]);
    const double* panel = panel_ + column;
    const T *first = a.at(0, 0), *second = a.at(1, 0), *third = a.at(2, 0), *fourth = a.at(3, 0);
    for (int32_t p = 0; p < depth; ++p, panel += kWidth) {
      Pair b[2];
      std::memcpy(b, panel, sizeof b);
      const ptrdiff_t at = p * a.inner;
      const double factors[4] = {double{first[at]}, double{second[at]}, double{third[at]}, double{fourth[at]}};
      for (int r = 0; r < 4; ++r) {
        tile[r][0] += b[0] * factors[r];
        tile[r][1] += b[1] * factors[r];
      }
    }
    for (int r = 0; r < 4; ++r) std::memcpy(sums + r * kWidth + column, tile[r], sizeof tile[r]);
  }

  template <class T>
  void addRow(const T* a, ptrdiff_t inner, int32_t depth, double* sums) const {
    for (int32_t p = 0; p < depth; ++p) {
      const double factor = a[p * inner];
      for (int32_t c = 0; c < kWidth; ++c) sums[c] += panel_[p * kWidth + c] * factor;
    }
  }

  double panel_[kDepth * kWidth];
  double sums_[kHeight * kWidth];
};

// Rows first .. end - 1 of the product into c. kKeep upper: only elements on and above the diagonal mean something; subtracted:
// the product is subtracted from c.
template <Keep kKeep, class T, class Result>
void multiplyRows(const Operand<T>& a, const Operand<T>& b, MatrixView<Result> c, int32_t k, int32_t first,
                  int32_t end) {
  ProductBlock block;
  for (int32_t i = first; i < end; i += ProductBlock::kHeight) {
    const int32_t rows = std::min(ProductBlock::kHeight, end - i);
    for (int32_t j = kKeep == Keep::upper ? i / ProductBlock::kWidth * ProductBlock::kWidth : 0; j < c.cols;
         j += ProductBlock::kWidth) {
      const int32_t columns = std::min(ProductBlock::kWidth, c.cols - j);
      block.multiply(a, b, i, rows, j, columns, k);
      for (int32_t r = 0; r < rows; ++r) {
        Result* const to = c.row(i + r) + j;
        for (int32_t q = 0; q < columns; ++q) {
          to[q] = static_cast<Result>(kKeep == Keep::subtracted ? double{to[q]} - block.row(r)[q] : block.row(r)[q]);
        }
      }
    }
  }
}

inline void subtractProduct(const Operand<double>& a, const Operand<double>& b, const Rows& c, int32_t k) {
  if (c.rows > 0 && c.cols > 0 && k > 0) multiplyRows<Keep::subtracted>(a, b, c, k, 0, c.rows);
}
inline void product(const Operand<double>& a, const Operand<double>& b, const Rows& c, int32_t k) {
  multiplyRows<Keep::all>(a, b, c, k, 0, c.rows);
}

}  // namespace dax
