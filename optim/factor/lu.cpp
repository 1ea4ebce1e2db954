#include "optim/factor/lu.h"

#include <cmath>
#include <numeric>

#include "optim/factor/product.h"

namespace dax {
namespace {

constexpr int32_t kPanelWidth = 32;  // columns that are eliminated one by one

int32_t pivotOf(const Rows& a, int32_t k) {
  int32_t pivot = k;
  double largest = std::fabs(a.row(k)[k]);
  for (int32_t i = k + 1; i < a.rows; ++i) {
    if (const double size = std::fabs(a.row(i)[k]); size > largest) largest = size, pivot = i;
  }
  return pivot;
}

// Columns first .. end - 1 of the rows from `first` on; exchanges whole rows.
bool eliminatePanel(const Rows& a, int32_t first, int32_t end, int32_t* pivots) {
  for (int32_t k = first; k < end; ++k) {
    const int32_t pivot = pivotOf(a, k);
    if (a.row(pivot)[k] == 0) return false;
    if (pivot != k) {
      std::swap(pivots[pivot], pivots[k]);
      std::swap_ranges(a.row(k), a.row(k) + a.cols, a.row(pivot));
    }
    const double* const upper = a.row(k);
    for (int32_t i = k + 1; i < a.rows; ++i) {
      double* const row = a.row(i);
      row[k] /= upper[k];
      addScaled(row + k + 1, -row[k], upper + k + 1, end - k - 1);
    }
  }
  return true;
}

// b <- L^-1 b, for the rows first .. end - 1 of L and b.
void solveUnitLower(const Rows& l, int32_t first, int32_t end, const Rows& b) {
  for (int32_t i = first + 1; i < end; ++i) {
    for (int32_t k = first; k < i; ++k) addScaled(b.row(i), -l.row(i)[k], b.row(k), b.cols);
  }
}

void solveUpper(const Rows& u, int32_t first, int32_t end, const Rows& b) {
  for (int32_t i = end - 1; i >= first; --i) {
    for (int32_t k = i + 1; k < end; ++k) addScaled(b.row(i), -u.row(i)[k], b.row(k), b.cols);
    for (int32_t j = 0; j < b.cols; ++j) b.row(i)[j] /= u.row(i)[i];
  }
}

Rows part(const Rows& a, int32_t row, int32_t rows, int32_t col, int32_t cols) {
  return {a.row(row) + col, a.step, rows, cols};
}

}  // namespace

bool factorLu(const Rows& a, int32_t* pivots) {
  const int32_t n = a.rows;
  std::iota(pivots, pivots + n, 0);
  for (int32_t first = 0; first < n; first += kPanelWidth) {
    const int32_t end = std::min(first + kPanelWidth, n);
    if (!eliminatePanel(a, first, end, pivots)) return false;
    if (end == n) break;
    solveUnitLower(a, first, end, part(a, 0, n, end, n - end));
    subtractProduct(byRows(a.row(end) + first, a.step), byColumns(a.row(first) + end, a.step),
                    part(a, end, n - end, end, n - end), end - first);
  }
  return true;
}

void solveLu(const Rows& lu, const Rows& b) {
  const int32_t n = lu.rows;
  for (int32_t first = 0; first < n; first += kPanelWidth) {
    const int32_t end = std::min(first + kPanelWidth, n);
    solveUnitLower(lu, first, end, b);
    subtractProduct(byRows(lu.row(end) + first, lu.step), byColumns(b.row(first), b.step),
                    part(b, end, n - end, 0, b.cols), end - first);
  }
  for (int32_t end = n; end > 0; end = (end - 1) / kPanelWidth * kPanelWidth) {
    const int32_t first = (end - 1) / kPanelWidth * kPanelWidth;
    solveUpper(lu, first, end, b);
    subtractProduct(byRows(lu.row(0) + first, lu.step), byColumns(b.row(first), b.step), part(b, 0, first, 0, b.cols),
                    end - first);
  }
}

void solveLuTransposed(const Rows& lu, double* b) {
  for (int32_t i = 0; i < lu.rows; ++i) {
    b[i] /= lu.row(i)[i];
    addScaled(b + i + 1, -b[i], lu.row(i) + i + 1, lu.rows - i - 1);
  }
  for (int32_t i = lu.rows - 1; i > 0; --i) addScaled(b, -b[i], lu.row(i), i);
}

double norm1(const Rows& a, double* sums) {
  std::fill_n(sums, a.cols, 0.0);
  for (int32_t i = 0; i < a.rows; ++i) {
    for (int32_t j = 0; j < a.cols; ++j) sums[j] += std::fabs(a.row(i)[j]);
  }
  return *std::max_element(sums, sums + a.cols);
}

namespace {

double sumOfMagnitudes(const double* v, int32_t n) {
  double sum = 0;
  for (int32_t i = 0; i < n; ++i) sum += std::fabs(v[i]);
  return sum;
}

// The columns of the inverse are B = A^-1 P^T of the factors; exchanging columns leaves the norm.
class InverseNorm {
 public:
  InverseNorm(const Rows& lu, double* work) : lu_(lu), n_(lu.rows), x_(work), signs_(work + n_) {}

  double estimate() {
    std::fill_n(x_, n_, 1.0 / n_);
    double best = apply();
    for (int round = 0; round < 5; ++round) {
      for (int32_t i = 0; i < n_; ++i) x_[i] = signs_[i];
      solveLuTransposed(lu_, x_);
      const auto largest = static_cast<int32_t>(
          std::max_element(x_, x_ + n_, [](double a, double b) { return std::fabs(a) < std::fabs(b); }) - x_);
      std::fill_n(x_, n_, 0.0);
      x_[largest] = 1;
      const double norm = apply();
      if (!(norm > best)) break;
      best = norm;
    }
    // A vector of alternating signs and growing size, for which rounds that ended early are far off.
    for (int32_t i = 0; i < n_; ++i) x_[i] = (i % 2 ? -1 : 1) * (1 + i / std::max(n_ - 1.0, 1.0));
    return std::max(best, 2 * apply() / (3.0 * n_));
  }

 private:
  // x <- B x; its norm.
  double apply() {
    solveLu(lu_, {x_, 1, n_, 1});
    for (int32_t i = 0; i < n_; ++i) signs_[i] = x_[i] < 0 ? -1 : 1;
    return sumOfMagnitudes(x_, n_);
  }
  const Rows& lu_;
  int32_t n_;
  double *x_, *signs_;
};

}  // namespace

double reciprocalCondition(const Rows& lu, double norm, double* work) {
  const double inverse = InverseNorm(lu, work).estimate();
  const double product = norm * inverse;
  // A factor that overflowed has no digit left.
  return product <= 1e300 && product > 0 ? 1 / product : 0;
}

}  // namespace dax
