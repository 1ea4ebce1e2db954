#include "optim/factor/householder.h"

#include <cmath>
#include <numeric>

#include "optim/factor/product.h"

namespace dax {
namespace {

// Row `to` reflected by what row j of a says.
void reflect(const Rows& a, int32_t j, double tau, double* to) {
  const double* const v = a.row(j) + j;
  const int32_t rest = a.cols - j;
  const double first = to[j];
  const double product = tau * (first + inner(v + 1, to + j + 1, rest - 1));
  to[j] = first - product;
  addScaled(to + j + 1, -product, v + 1, rest - 1);
}

// Reflections of rows first .. end - 1, one by one, applied to the rows of the panel.
void reflectPanel(const Rows& a, int32_t first, int32_t end, double* tau, double* diagonal) {
  for (int32_t j = first; j < end; ++j) {
    diagonal[j] = makeReflection(a.row(j) + j, a.cols - j, tau + j);
    for (int32_t k = j + 1; k < end; ++k) reflect(a, j, tau[j], a.row(k));
  }
}

// The reflections first .. end - 1 together as I - V T V^T (Schreiber and Van Loan 1989), applied transposed to the rows of b:
// each becomes b - ((b V) T) V^T. V's leading elements above the ones are R's, which are set aside and restored.
class BlockReflector {
 public:
  BlockReflector(const Rows& a, int32_t first, int32_t end, const double* tau, double* work)
      : v_{a.row(first) + first, a.step, end - first, a.cols - first}, work_(work) {
    for (int32_t j = 0; j < v_.rows; ++j) {
      double* const row = v_.row(j);
      std::copy_n(row, j + 1, kept(j));
      std::fill_n(row, j, 0.0);
      row[j] = 1;
    }
    for (int32_t j = 0; j < v_.rows; ++j) {
      double products[kReflectionPanel];
      for (int32_t i = 0; i < j; ++i) products[i] = inner(v_.row(i) + j, v_.row(j) + j, v_.cols - j);
      for (int32_t i = 0; i < j; ++i) {
        double sum = 0;
        for (int32_t k = i; k < j; ++k) sum += triangle(i, k) * products[k];
        triangle(i, j) = -tau[first + j] * sum;
      }
      triangle(j, j) = tau[first + j];
    }
  }
  ~BlockReflector() {
    for (int32_t j = 0; j < v_.rows; ++j) std::copy_n(kept(j), j + 1, v_.row(j));
  }
  BlockReflector(const BlockReflector&) = delete;
  BlockReflector& operator=(const BlockReflector&) = delete;

  void applyTransposed(const Rows& b) {
    const Rows products{work_ + 2 * kReflectionPanel * kReflectionPanel, v_.rows, b.rows, v_.rows};
    product(byRows(b.data, b.step), byRows(v_.data, v_.step), products, v_.cols);
    for (int32_t i = 0; i < b.rows; ++i) {
      double* const row = products.row(i);
      for (int32_t j = v_.rows - 1; j >= 0; --j) {
        double sum = 0;
        for (int32_t k = 0; k <= j; ++k) sum += row[k] * triangle(k, j);
        row[j] = sum;
      }
    }
    subtractProduct(byRows(products.data, products.step), byColumns(v_.data, v_.step), b, v_.rows);
  }

 private:
  double& triangle(int32_t i, int32_t j) { return work_[i * kReflectionPanel + j]; }
  double* kept(int32_t j) { return work_ + (kReflectionPanel + j) * kReflectionPanel; }
  Rows v_;
  double* work_;
};

}  // namespace

double makeReflection(double* v, int32_t n, double* tau) {
  constexpr double kNothing = 0x1p-1000;
  const double rest = n > 1 ? squareOf(v + 1, n - 1) : 0;
  *tau = 0;
  const double first = v[0];
  if (!(rest > kNothing)) {
    std::fill_n(v + 1, n - 1, 0.0);
    return first;
  }
  const double beta = first > 0 ? -std::sqrt(first * first + rest) : std::sqrt(first * first + rest);
  const double leading = first - beta;
  *tau = -leading / beta;
  const double factor = 1 / leading;
  for (int32_t i = 1; i < n; ++i) v[i] *= factor;
  v[0] = 1;
  return beta;
}

void factorQr(const Rows& a, double* tau, double* diagonal, double* work) {
  const int32_t count = std::min(a.rows, a.cols);
  const int32_t width = count <= 2 * kReflectionPanel ? count : kReflectionPanel;
  for (int32_t first = 0; first < count; first += width) {
    const int32_t end = std::min(first + width, count);
    reflectPanel(a, first, end, tau, diagonal);
    if (width > kReflectionPanel || a.rows - end < 4) {
      for (int32_t j = first; j < end; ++j) {
        for (int32_t k = end; k < a.rows; ++k) reflect(a, j, tau[j], a.row(k));
      }
    } else {
      BlockReflector(a, first, end, tau, work)
          .applyTransposed({a.row(end) + first, a.step, a.rows - end, a.cols - first});
    }
  }
}

namespace {

// What is left of the columns' norms, updated; where cancellation has taken half of the digits it is taken anew (Drmac and
// Bujanovic 2008).
class RestNorms {
 public:
  RestNorms(const Rows& a, double* work) : a_(a), norms_(work), exact_(work + a.rows) {
    for (int32_t j = 0; j < a.rows; ++j) norms_[j] = exact_[j] = std::sqrt(squareOf(a.row(j), a.cols));
  }
  int32_t longest(int32_t from) const {
    return static_cast<int32_t>(std::max_element(norms_ + from, norms_ + a_.rows) - norms_);
  }
  void move(int32_t from, int32_t to) { norms_[to] = norms_[from], exact_[to] = exact_[from]; }
  // After the element j of row k has become R's.
  void reduce(int32_t k, int32_t j) {
    if (norms_[k] == 0) return;
    const double share = a_.row(k)[j] / norms_[k];
    const double left = std::max((1 - share) * (1 + share), 0.0);
    const double ratio = norms_[k] / exact_[k];
    if (left * ratio * ratio > 1.5e-8) {
      norms_[k] *= std::sqrt(left);
    } else {
      norms_[k] = exact_[k] = std::sqrt(squareOf(a_.row(k) + j + 1, a_.cols - j - 1));
    }
  }

 private:
  const Rows& a_;
  double *norms_, *exact_;
};

// Brings the largest element of row j to position j, in all rows.
void exchangeElements(const Rows& a, int32_t j, int32_t* order) {
  const auto isSmaller = [](double x, double y) { return std::fabs(x) < std::fabs(y); };
  double* const row = a.row(j);
  const auto largest = static_cast<int32_t>(std::max_element(row + j, row + a.cols, isSmaller) - row);
  if (largest == j) return;
  std::swap(order[j], order[largest]);
  for (int32_t k = 0; k < a.rows; ++k) std::swap(a.row(k)[j], a.row(k)[largest]);
}

}  // namespace

void factorQrPivoted(const Rows& a, double* tau, double* diagonal, int32_t* pivots, int32_t* order, double* work) {
  std::iota(pivots, pivots + a.rows, 0);
  if (order) std::iota(order, order + a.cols, 0);
  RestNorms norms(a, work);
  for (int32_t j = 0; j < std::min(a.rows, a.cols); ++j) {
    const int32_t pivot = norms.longest(j);
    if (pivot != j) {
      std::swap(pivots[j], pivots[pivot]);
      std::swap_ranges(a.row(j), a.row(j) + a.cols, a.row(pivot));
      norms.move(j, pivot);
    }
    if (order) exchangeElements(a, j, order);
    diagonal[j] = makeReflection(a.row(j) + j, a.cols - j, tau + j);
    for (int32_t k = j + 1; k < a.rows; ++k) {
      reflect(a, j, tau[j], a.row(k));
      norms.reduce(k, j);
    }
  }
}

void applyTransposed(const Rows& a, const double* tau, int32_t count, const Rows& b) {
  for (int32_t j = 0; j < count; ++j) {
    for (int32_t i = 0; i < b.rows; ++i) reflect(a, j, tau[j], b.row(i));
  }
}

void applyReflections(const Rows& a, const double* tau, int32_t count, const Rows& b) {
  for (int32_t j = count - 1; j >= 0; --j) {
    for (int32_t i = 0; i < b.rows; ++i) reflect(a, j, tau[j], b.row(i));
  }
}

void formOrthogonal(const Rows& a, const double* tau, int32_t count, const Rows& q) {
  setIdentity(q);
  // Row i is left alone by the reflections behind it.
  for (int32_t j = count - 1; j >= 0; --j) {
    for (int32_t i = j; i < q.rows; ++i) reflect(a, j, tau[j], q.row(i));
  }
}

void solveR(const Rows& a, const double* diagonal, int32_t n, double* x) {
  for (int32_t j = n - 1; j >= 0; --j) {
    x[j] /= diagonal[j];
    addScaled(x, -x[j], a.row(j), j);
  }
}

void solveRTransposed(const Rows& a, const double* diagonal, int32_t n, double* x) {
  for (int32_t j = 0; j < n; ++j) x[j] = (x[j] - inner(a.row(j), x, j)) / diagonal[j];
}

int32_t rankOf(const double* diagonal, int32_t count, double tolerance) {
  int32_t rank = 0;
  while (rank < count && std::fabs(diagonal[rank]) > tolerance * std::fabs(diagonal[0])) ++rank;
  return rank;
}

}  // namespace dax
