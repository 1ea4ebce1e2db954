#include <algorithm>
#include <cmath>

#include "optim/dense/dense.h"
#include "optim/dense/product_block.h"

namespace dax {
namespace {

constexpr int32_t kPanel = 16;  // columns that are reduced one by one

// Factors the columns of a panel from left to right; each is reduced by those on its left.
bool factorColumns(int32_t n, int32_t rows, double* a, ptrdiff_t ld) {
  for (int32_t j = 0; j < n; ++j) {
    double* const column = a + j * ld;
    for (int32_t q = 0; q < j; ++q) {
      const double* const left = a + q * ld;
      const double factor = left[j];
      for (int32_t i = j; i < rows; ++i) column[i] -= factor * left[i];
    }
    if (!(column[j] >= kMinPivot)) return false;
    column[j] = std::sqrt(column[j]);
    const double inverse = 1 / column[j];
    for (int32_t i = j + 1; i < rows; ++i) column[i] *= inverse;
  }
  return true;
}

// The same for rows below a factored triangle.
void reduceRows(int32_t n, int32_t rows, const double* triangle, double* a, ptrdiff_t ld) {
  for (int32_t j = 0; j < n; ++j) {
    double* const column = a + j * ld;
    for (int32_t q = 0; q < j; ++q) {
      const double* const left = a + q * ld;
      const double factor = triangle[j + q * ld];
      for (int32_t i = 0; i < rows; ++i) column[i] -= factor * left[i];
    }
    const double inverse = 1 / triangle[j + j * ld];
    for (int32_t i = 0; i < rows; ++i) column[i] *= inverse;
  }
}

// Factors columns first .. end - 1 of the rows before `end`; columns before `first` are factored.
bool factorSquare(int32_t first, int32_t end, double* a, ptrdiff_t ld) {
  for (int32_t p = first; p < end; p += kPanel) {
    const int32_t width = std::min(kPanel, end - p);
    double* const corner = a + p + p * ld;
    if (p > 0) multiplyTiles<Into::subtract>(end - p, width, {p, a + p, ld, a + p, ld, corner, ld}, true);
    if (!factorColumns(width, end - p, corner, ld)) return false;
  }
  return true;
}

// The same columns of `height` rows from `row` on.
void solveRows(int32_t first, int32_t end, int32_t row, int32_t height, double* a, ptrdiff_t ld) {
  Block block(height, end - first);
  block.add(0, block.n, first, a + row, ld, a + first, ld);
  for (int32_t p = first; p < end; p += kPanel) {
    const int32_t width = std::min(kPanel, end - p);
    block.add(p - first, width, p - first, a + row + first * ld, ld, a + p + first * ld, ld);
    block.subtractFrom(p - first, width, a + row + p * ld, ld, -width);
    reduceRows(width, height, a + p + p * ld, a + row + p * ld, ld);
  }
}

}  // namespace

void subtractProduct(int32_t m, int32_t n, int32_t k, const double* a, ptrdiff_t lda, const double* b, ptrdiff_t ldb,
                     double* c, ptrdiff_t ldc, bool lower) {
  if (k <= Block::kDepth) return multiplyTiles<Into::subtract>(m, n, {k, a, lda, b, ldb, c, ldc}, lower);
  for (int32_t j = 0; j < n; j += Block::kWidth) {
    for (int32_t i = lower ? j : 0; i < m; i += Block::kHeight) {
      Block block(std::min(Block::kHeight, m - i), std::min(Block::kWidth, n - j));
      block.add(0, block.n, k, a + i, lda, b + j, ldb);
      block.subtractFrom(0, block.n, c + i + j * ldc, ldc, lower ? j - i : -block.n);
    }
  }
}

bool factorPanel(int32_t n, int32_t rows, double* a, ptrdiff_t ld) {
  if (n <= kPanel) return factorColumns(n, rows, a, ld);
  for (int32_t first = 0; first < n; first += Block::kWidth) {
    const int32_t end = std::min(first + Block::kWidth, n);
    if (!factorSquare(first, end, a, ld)) return false;
    for (int32_t row = end; row < rows; row += Block::kHeight) {
      solveRows(first, end, row, std::min(Block::kHeight, rows - row), a, ld);
    }
  }
  return true;
}

}  // namespace dax
