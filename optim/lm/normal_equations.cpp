#include "optim/lm/normal_equations.h"

#include <algorithm>

#include "optim/dense/dense.h"
#include "optim/sparse/cholesky_analysis.h"
#include "optim/sparse/msp_product.h"

namespace dax {
namespace {

bool isFull(const PrmtMsp& matrix) {
  return elementsOf(matrix) == int64_t{matrix.rows} * matrix.cols;
}

}  // namespace

bool NormalEquations::form(const PrmtMsp& jacobian, const double* weights, const double* residuals) {
  if (jacobian.patternVersion != version_ && !adopt(jacobian)) return false;
  const int32_t m = jacobian.rows;
  for (int32_t i = 0; i < m; ++i) weighted_[i] = weights ? weights[i] * residuals[i] : residuals[i];
  if (isFull(jacobian)) {
    dots(weighted_, jacobian.value, m, jacobian.cols, m, gradient_);
    formDense(jacobian, weights);
  } else {
    multiplyTransposed(jacobian, weighted_, gradient_);
    formSparse(jacobian, weights);
  }
  return true;
}

bool NormalEquations::solve(double lambda, double* step) {
  for (int32_t j = 0; j < matrix_.cols; ++j) step[j] = -gradient_[j];
  return PRM_Cholesky_Process_64f(&factor_, matrix_.value, elementsOf(matrix_), lambda, step) == 1;
}

void NormalEquations::takeVectors(int32_t n, int32_t m) {
  const auto columns = unsignedOf(n), height = unsignedOf(m);
  gradient_ = arena_.take<double>(columns);
  weighted_ = arena_.take<double>(height);
  sums_ = arena_.take<double>(columns);
  seen_ = arena_.take<int32_t>(columns);
  cursor_ = arena_.take<int64_t>(height);
}

void NormalEquations::measure(Arena& arena, int32_t n, int32_t m, uint64_t elements) {
  const auto lower = unsignedOf(n) * (unsignedOf(n) + 1) / 2;
  measureMatrices(arena, n, m, static_cast<int64_t>(elements), static_cast<int64_t>(lower));
  measureCholesky(arena, n, lower);
}

void NormalEquations::measureMatrices(Arena& arena, int32_t n, int32_t m, int64_t elements, int64_t lower) {
  NormalEquations worst(arena);
  worst.takeVectors(n, m);
  takeMatrix(arena, n, m, elements);
  takeMatrix(arena, n, n, lower);
}

bool NormalEquations::adopt(const PrmtMsp& jacobian) {
  arena_.release(mark_);
  version_ = -1;
  takeVectors(jacobian.cols, jacobian.rows);
  if (!(isFull(jacobian) ? layFull(jacobian.cols) : laySparse(jacobian))) return false;
  if (!analyse(arena_, matrix_, factor_)) return false;
  version_ = jacobian.patternVersion;
  return true;
}

// All elements on and below the diagonal.
bool NormalEquations::layFull(int32_t n) {
  matrix_ = takeMatrix(arena_, n, n, int64_t{n} * (n + 1) / 2);
  if (!arena_.fits()) return false;
  int64_t end = 0;
  for (int32_t j = 0; j < n; ++j) {
    matrix_.start[j] = end;
    for (int32_t i = j; i < n; ++i) matrix_.row[end++] = i;
  }
  matrix_.start[n] = end;
  return true;
}

// Elements (i, j) for columns i >= j that share a row of the Jacobian. A first pass counts them.
bool NormalEquations::laySparse(const PrmtMsp& jacobian) {
  const int32_t n = jacobian.cols;
  rows_ = takeMatrix(arena_, n, jacobian.rows, elementsOf(jacobian));
  matrix_ = takeMatrix(arena_, n, n, 0);
  if (!arena_.fits()) return false;
  transpose(jacobian, rows_);
  const uint64_t before = arena_.mark();
  const int64_t elements = layPattern(jacobian, false);
  arena_.release(before);
  matrix_.capacity = elements;
  matrix_.row = arena_.take<int32_t>(unsignedOf(elements));
  matrix_.value = arena_.take<double>(unsignedOf(elements));
  if (!arena_.fits()) return false;
  layPattern(jacobian, true);
  return true;
}

// For each column j of A, ascending: visit(j, p, from, to) for each element p of column j of the Jacobian, where
// from..to - 1 are the elements of its row from column j on, in the transpose; then finish(j).
template <class Visit, class Finish>
void NormalEquations::forEachProduct(const PrmtMsp& jacobian, const Visit& visit, const Finish& finish) {
  std::copy_n(rows_.start, jacobian.rows, cursor_);
  for (int32_t j = 0; j < jacobian.cols; ++j) {
    for (int64_t p = jacobian.start[j]; p < jacobian.start[j + 1]; ++p) {
      const int32_t i = jacobian.row[p];
      visit(j, p, cursor_[i]++, rows_.start[i + 1]);
    }
    finish(j);
  }
}

// Finds the pattern of A and returns its number of elements; `write` also stores the row numbers.
int64_t NormalEquations::layPattern(const PrmtMsp& jacobian, bool write) {
  std::fill_n(seen_, jacobian.cols, -1);
  int64_t end = 0, begin = 0;
  matrix_.start[0] = 0;
  const auto collect = [&](int32_t j, int64_t, int64_t from, int64_t to) {
    for (int64_t q = from; q < to; ++q) {
      const int32_t k = rows_.row[q];
      if (seen_[k] == j) continue;
      seen_[k] = j;
      if (write) matrix_.row[end] = k;
      ++end;
    }
  };
  const auto finish = [&](int32_t j) {
    if (write) std::sort(matrix_.row + begin, matrix_.row + end);
    begin = matrix_.start[j + 1] = end;
  };
  forEachProduct(jacobian, collect, finish);
  return end;
}

void NormalEquations::formSparse(const PrmtMsp& jacobian, const double* weights) {
  transpose(jacobian, rows_);
  std::fill_n(sums_, jacobian.cols, 0.0);
  const auto add = [&](int32_t, int64_t p, int64_t from, int64_t to) {
    const double factor = weights ? weights[jacobian.row[p]] * jacobian.value[p] : jacobian.value[p];
    for (int64_t q = from; q < to; ++q) sums_[rows_.row[q]] += factor * rows_.value[q];
  };
  const auto store = [&](int32_t j) {
    for (int64_t e = matrix_.start[j]; e < matrix_.start[j + 1]; ++e) {
      matrix_.value[e] = sums_[matrix_.row[e]];
      sums_[matrix_.row[e]] = 0;
    }
  };
  forEachProduct(jacobian, add, store);
}

// A full Jacobian is a dense column-major matrix.
void NormalEquations::formDense(const PrmtMsp& jacobian, const double* weights) {
  const int32_t n = jacobian.cols, m = jacobian.rows;
  double* to = matrix_.value;
  for (int32_t j = 0; j < n; to += n - j, ++j) {
    const double* column = jacobian.value + int64_t{j} * m;
    if (weights) {
      for (int32_t i = 0; i < m; ++i) weighted_[i] = weights[i] * column[i];
      column = weighted_;
    }
    dots(column, jacobian.value + int64_t{j} * m, m, n - j, m, to);
  }
}

}  // namespace dax
