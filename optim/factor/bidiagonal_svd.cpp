#include "optim/factor/bidiagonal_svd.h"

#include <cmath>

#include "optim/factor/householder.h"

namespace dax {
namespace {

// Reflections of a square matrix, whose columns are the rows of `x`: those from the left stay there, those from the right become the
// rows of `across`, both with the ones that lead them.
struct Reflected {
  Rows x, across;
  double *left, *right;  // their factors
};

// Leaves an upper bidiagonal matrix: `diagonal`, and `beside` with element i right of it. `product` of n.
void bidiagonalise(const Reflected& all, double* diagonal, double* beside, double* product) {
  const int32_t n = all.x.rows;
  for (int32_t k = 0; k < n; ++k) {
    double* const v = all.x.row(k) + k;
    double* const w = all.across.row(k);
    // What the last step has left to do from the right, and this one from the left, together, while a column is in the cache.
    const auto finishLast = [&](int32_t j) {
      if (k > 0) addScaled(all.x.row(j) + k, -all.right[k - 1] * all.across.row(k - 1)[j], product + k, n - k);
    };
    finishLast(k);
    diagonal[k] = makeReflection(v, n - k, all.left + k);
    for (int32_t j = k + 1; j < n; ++j) {
      double* const column = all.x.row(j) + k;
      finishLast(j);
      addScaled(column, -all.left[k] * inner(v, column, n - k), v, n - k);
      w[j] = column[0];
    }
    if (k + 1 == n) break;
    beside[k] = makeReflection(w + k + 1, n - k - 1, all.right + k);
    std::fill(product + k + 1, product + n, 0.0);
    for (int32_t j = k + 1; j < n; ++j) addScaled(product + k + 1, w[j], all.x.row(j) + k + 1, n - k - 1);
  }
}

// Rows become the columns of the product of reflections, of which that of row k begins at k + offset.
void formProduct(const Rows& reflections, const double* factors, int32_t offset, const Rows& to) {
  const int32_t n = to.rows;
  setIdentity(to);
  for (int32_t k = n - 1 - offset; k >= 0; --k) {
    const int32_t first = k + offset;
    const double* const v = reflections.row(k) + first;
    for (int32_t i = first; i < n && factors[k] != 0; ++i) {
      double* const row = to.row(i) + first;
      addScaled(row, -factors[k] * inner(v, row, n - first), v, n - first);
    }
  }
}

struct Turn {
  double cosine, sine, length;
};
// (f, g) becomes (length, 0).
Turn turnOf(double f, double g) {
  const double length = std::sqrt(f * f + g * g);
  return length > 0x1p-500 ? Turn{f / length, g / length, length} : Turn{1, 0, f};
}

// QR steps downwards on blocks without a 0 beside the diagonal.
class BidiagonalQr {
 public:
  BidiagonalQr(double* diagonal, double* beside, int32_t n, const Rows& u, const Rows& v)
      : d_(diagonal), e_(beside), n_(n), u_(u), v_(v) {}

  bool run() {
    constexpr int kMaxRounds = 60;
    double largest = 0;
    for (int32_t i = 0; i < n_; ++i) {
      largest = std::max({largest, std::fabs(d_[i]), i + 1 < n_ ? std::fabs(e_[i]) : 0});
    }
    nothing_ = 0x1p-54 * largest;
    for (int32_t last = n_ - 1; last > 0; --last) {
      for (int round = 0; !isNothing(last - 1); ++round) {
        if (round == kMaxRounds) return false;
        int32_t first = last - 1;
        while (first > 0 && !isNothing(first - 1)) --first;
        step(first, last);
      }
    }
    return true;
  }

 private:
  bool isNothing(int32_t i) const {
    return std::fabs(e_[i]) <= nothing_ || std::fabs(e_[i]) <= 0x1p-54 * (std::fabs(d_[i]) + std::fabs(d_[i + 1]));
  }

  // The smaller singular value of the last two rows, unless it is nothing beside the first element.
  double shiftOf(int32_t first, int32_t last) const {
    for (int32_t i = first; i <= last; ++i) {
      if (std::fabs(d_[i]) <= nothing_) return 0;
    }
    const double f = std::fabs(d_[last - 1]), g = std::fabs(e_[last - 1]), h = std::fabs(d_[last]);
    const double sum = f + h, difference = f - h;
    const double larger = (std::sqrt(sum * sum + g * g) + std::sqrt(difference * difference + g * g)) / 2;
    const double shift = f / larger * h, ratio = shift / d_[first];
    return ratio * ratio < 0x1p-52 ? 0 : shift;
  }

  void step(int32_t first, int32_t last) {
    const double shift = shiftOf(first, last);
    shift > 0 ? shiftedStep(first, last, shift) : plainStep(first, last);
  }

  void shiftedStep(int32_t first, int32_t last, double shift) {
    double f = (std::fabs(d_[first]) - shift) * ((d_[first] < 0 ? -1 : 1) + shift / d_[first]), g = e_[first];
    for (int32_t i = first; i < last; ++i) {
      const Turn right = turnOf(f, g);
      if (i > first) e_[i - 1] = right.length;
      f = right.cosine * d_[i] + right.sine * e_[i];
      e_[i] = right.cosine * e_[i] - right.sine * d_[i];
      g = right.sine * d_[i + 1];
      d_[i + 1] *= right.cosine;
      const Turn left = turnOf(f, g);
      d_[i] = left.length;
      f = left.cosine * e_[i] + left.sine * d_[i + 1];
      d_[i + 1] = left.cosine * d_[i + 1] - left.sine * e_[i];
      if (i + 1 < last) {
        g = left.sine * e_[i + 1];
        e_[i + 1] *= left.cosine;
      }
      turnVectors(i, right, left);
    }
    e_[last - 1] = f;
  }

  // With shift 0, without a subtraction.
  void plainStep(int32_t first, int32_t last) {
    Turn right{1, 0, 0}, left{1, 0, 0};
    for (int32_t i = first; i < last; ++i) {
      right = turnOf(d_[i] * right.cosine, e_[i]);
      if (i > first) e_[i - 1] = left.sine * right.length;
      left = turnOf(left.cosine * right.length, d_[i + 1] * right.sine);
      d_[i] = left.length;
      turnVectors(i, right, left);
    }
    const double rest = d_[last] * right.cosine;
    d_[last] = rest * left.cosine, e_[last - 1] = rest * left.sine;
  }

  void turnVectors(int32_t i, const Turn& right, const Turn& left) const {
    if (v_.data) rotate(v_.row(i), v_.row(i + 1), right.cosine, -right.sine, v_.cols);
    if (u_.data) rotate(u_.row(i), u_.row(i + 1), left.cosine, -left.sine, u_.cols);
  }

  double *d_, *e_;
  int32_t n_;
  const Rows &u_, &v_;
  double nothing_ = 0;
};

// Not negative, descending.
void sortDescending(double* values, int32_t n, const Rows& u, const Rows& v) {
  for (int32_t i = 0; i < n; ++i) {
    if (values[i] >= 0) continue;
    values[i] = -values[i];
    for (int32_t j = 0; v.data && j < v.cols; ++j) v.row(i)[j] = -v.row(i)[j];
  }
  for (int32_t i = 0; i < n; ++i) {
    const auto largest = static_cast<int32_t>(std::max_element(values + i, values + n) - values);
    if (largest == i) continue;
    std::swap(values[i], values[largest]);
    for (const Rows& rows : {u, v}) {
      if (rows.data) std::swap_ranges(rows.row(i), rows.row(i) + rows.cols, rows.row(largest));
    }
  }
}

}  // namespace

bool bidiagonalSvd(const Rows& a, double* values, const Rows& u, const Rows& v, double* work) {
  const int32_t m = a.cols, n = a.rows;
  const bool isTall = m > n;
  WorkSpace space(work);
  double *const tau = space.take(n), *const diagonal = space.take(n), *const beside = space.take(n);
  Reflected all{a, {}, space.take(n), space.take(n)};
  double* const product = space.take(n);
  if (isTall) {
    factorQr(a, tau, diagonal, space.take(0));
    all.x = space.take(n, n);
    for (int32_t j = 0; j < n; ++j) {
      double* const column = all.x.row(j);
      std::copy_n(a.row(j), j, column);
      std::fill(column + j, column + n, 0.0);
      column[j] = diagonal[j];
    }
  }
  all.across = space.take(n, n);
  bidiagonalise(all, values, beside, product);
  // Only the first n elements of rows of u until the end.
  const Rows left{u.data, u.step, n, n};
  if (u.data) formProduct(all.x, all.left, 0, left);
  if (v.data) formProduct(all.across, all.right, 1, v);
  if (!BidiagonalQr(values, beside, n, left, v).run()) return false;
  sortDescending(values, n, left, v);
  if (u.data && isTall) {
    for (int32_t i = 0; i < n; ++i) std::fill(u.row(i) + n, u.row(i) + m, 0.0);
    applyReflections(a, tau, n, u);
  }
  return true;
}

}  // namespace dax
