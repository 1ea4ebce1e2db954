#include "optim/factor/jacobi_svd.h"

#include <cfloat>
#include <cmath>
#include <numeric>

#include "optim/factor/householder.h"

namespace dax {
namespace {

constexpr int kMaxSvdSweeps = 60;
constexpr double kNothing = 0x1p-1000;  // squares of norms that count as 0

// Makes the rows of x orthogonal, longest first; `turns` follows, where it has data.
class OneSided {
 public:
  OneSided(const Rows& x, const Rows& turns, double* squares) : x_(x), turns_(turns), squares_(squares) {}

  bool run() {
    for (int sweep = 0; sweep < kMaxSvdSweeps; ++sweep) {
      for (int32_t i = 0; i < x_.rows; ++i) squares_[i] = squareOf(x_.row(i), x_.cols);
      if (!this->sweep()) return true;
    }
    return false;
  }

 private:
  bool sweep() {
    bool turned = false;
    for (int32_t p = 0; p + 1 < x_.rows; ++p) {
      const auto longest = static_cast<int32_t>(std::max_element(squares_ + p, squares_ + x_.rows) - squares_);
      if (longest != p) exchange(p, longest);
      for (int32_t q = p + 1; q < x_.rows; ++q) turned |= turn(p, q);
    }
    return turned;
  }

  void exchange(int32_t p, int32_t q) {
    std::swap(squares_[p], squares_[q]);
    std::swap_ranges(x_.row(p), x_.row(p) + x_.cols, x_.row(q));
    if (turns_.data) std::swap_ranges(turns_.row(p), turns_.row(p) + turns_.cols, turns_.row(q));
  }

  // Rotates two rows so that they are orthogonal; false where they are.
  bool turn(int32_t p, int32_t q) {
    if (!(squares_[q] > kNothing)) return false;
    const double product = inner(x_.row(p), x_.row(q), x_.cols);
    const double tolerance = DBL_EPSILON * std::sqrt(x_.cols);
    if (!(std::fabs(product) > tolerance * (std::sqrt(squares_[p]) * std::sqrt(squares_[q])))) return false;
    const double ratio = (squares_[q] - squares_[p]) / (2 * product);
    const double tangent = (ratio < 0 ? -1 : 1) / (std::fabs(ratio) + std::sqrt(1 + ratio * ratio));
    const double cosine = 1 / std::sqrt(1 + tangent * tangent), sine = cosine * tangent;
    rotate(x_.row(p), x_.row(q), cosine, sine, x_.cols);
    if (turns_.data) rotate(turns_.row(p), turns_.row(q), cosine, sine, turns_.cols);
    const double before = squares_[q];
    squares_[p] -= tangent * product, squares_[q] += tangent * product;
    if (squares_[q] < 0.01 * before) squares_[q] = squareOf(x_.row(q), x_.cols);
    if (squares_[p] < squares_[q]) squares_[p] = squareOf(x_.row(p), x_.cols);
    return true;
  }

  const Rows &x_, &turns_;
  double* squares_;
};

// Rows from `first` on that make the unit rows before them an orthonormal basis; `shares` of v.cols doubles.
void completeBasis(const Rows& v, int32_t first, double* shares) {
  std::fill_n(shares, v.cols, 0.0);
  const auto addShares = [&](const double* row) {
    for (int32_t j = 0; j < v.cols; ++j) shares[j] += row[j] * row[j];
  };
  for (int32_t i = 0; i < first; ++i) addShares(v.row(i));
  for (int32_t i = first; i < v.rows; ++i) {
    // The axis that is farthest from all so far.
    double* const row = v.row(i);
    std::fill_n(row, v.cols, 0.0);
    row[std::min_element(shares, shares + v.cols) - shares] = 1;
    for (int round = 0; round < 2; ++round) {
      for (int32_t k = 0; k < i; ++k) addScaled(row, -inner(v.row(k), row, v.cols), v.row(k), v.cols);
    }
    const double norm = std::sqrt(squareOf(row, v.cols));
    for (int32_t j = 0; j < v.cols; ++j) row[j] /= norm;
    addShares(row);
  }
}

// The rows of R, which rotations make orthogonal.
void copyR(const Rows& a, const double* diagonal, const Rows& x) {
  for (int32_t i = 0; i < x.rows; ++i) {
    std::fill_n(x.row(i), i, 0.0);
    x.row(i)[i] = diagonal[i];
    for (int32_t j = i + 1; j < x.cols; ++j) x.row(i)[j] = a.row(j)[i];
  }
}

}  // namespace

bool jacobiSvd(const Rows& a, double* values, const Rows& u, const Rows& v, double* work) {
  const int32_t m = a.cols, n = a.rows;
  WorkSpace space(work);
  const Rows x = space.take(n, n);
  const Rows turns = u.data ? space.take(n, n) : Rows{nullptr, 0, 0, 0};
  double *const tau = space.take(n), *const diagonal = space.take(n), *const rest = space.take(2 * int64_t{n});
  double* const row = space.take(m);
  int32_t *const pivots = space.takeIntegers(n), *const order = space.takeIntegers(m);
  factorQrPivoted(a, tau, diagonal, pivots, order, rest);
  copyR(a, diagonal, x);
  if (u.data) setIdentity(turns);
  if (!OneSided(x, turns, values).run()) return false;

  int32_t rank = 0;
  for (int32_t i = 0; i < n; ++i) {
    values[i] = values[i] > kNothing ? std::sqrt(values[i]) : 0;
    if (values[i] == 0) continue;
    rank = i + 1;
    for (int32_t j = 0; j < n; ++j) v.row(i)[pivots[j]] = x.row(i)[j] / values[i];
  }
  completeBasis(v, rank, rest);
  if (!u.data) return true;
  for (int32_t i = 0; i < n; ++i) {
    std::fill(std::copy_n(turns.row(i), n, u.row(i)), u.row(i) + m, 0.0);
  }
  applyReflections(a, tau, n, u);
  for (int32_t i = 0; i < n; ++i) {
    std::copy_n(u.row(i), m, row);
    for (int32_t k = 0; k < m; ++k) u.row(i)[order[k]] = row[k];
  }
  return true;
}

}  // namespace dax
