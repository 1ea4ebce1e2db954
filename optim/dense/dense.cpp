#include "optim/dense/dense.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace dax {

void solveLower(int32_t n, const double* l, ptrdiff_t ld, double* x) {
  for (int32_t j = 0; j < n; ++j, l += ld) {
    x[j] /= l[j];
    for (int32_t i = j + 1; i < n; ++i) x[i] -= l[i] * x[j];
  }
}

void solveLowerTransposed(int32_t n, const double* l, ptrdiff_t ld, double* x) {
  for (int32_t j = n - 1; j >= 0; --j) {
    const double* const column = l + j * ld;
    double rest = x[j];
    for (int32_t i = j + 1; i < n; ++i) rest -= column[i] * x[i];
    x[j] = rest / column[j];
  }
}

namespace {

// The four partial sums of a scalar product, in one or two registers. Passed by reference, because the calling
// convention for this type depends on the instruction set.
typedef double Quad __attribute__((vector_size(32)));

inline void loadQuad(Quad& quad, const double* from) {
  std::memcpy(&quad, from, sizeof quad);
}

// The last 1 to 3 elements, padded with zeros.
inline void loadRest(Quad& quad, const double* from, int64_t count) {
  quad = Quad{from[0], count > 1 ? from[1] : 0, count > 2 ? from[2] : 0, 0};
}

template <int kCount>
void dotsOf(const double* v, const double* columns, ptrdiff_t ld, int64_t n, double* products) {
  Quad sums[kCount] = {}, factor, other;
  int64_t i = 0;
  for (; i + 4 <= n; i += 4) {
    loadQuad(factor, v + i);
    for (int k = 0; k < kCount; ++k) {
      loadQuad(other, columns + i + k * ld);
      sums[k] += factor * other;
    }
  }
  if (i < n) {
    loadRest(factor, v + i, n - i);
    for (int k = 0; k < kCount; ++k) {
      loadRest(other, columns + i + k * ld, n - i);
      sums[k] += factor * other;
    }
  }
  for (int k = 0; k < kCount; ++k) products[k] = (sums[k][0] + sums[k][2]) + (sums[k][1] + sums[k][3]);
}

}  // namespace

double dot(const double* a, const double* b, int64_t n) {
  double product;
  dotsOf<1>(a, b, 0, n, &product);
  return product;
}

void dots(const double* v, const double* columns, ptrdiff_t ld, int32_t count, int64_t n, double* products) {
  int32_t k = 0;
  for (; k + 4 <= count; k += 4) dotsOf<4>(v, columns + k * ld, ld, n, products + k);
  if (count - k >= 2) dotsOf<2>(v, columns + k * ld, ld, n, products + k), k += 2;
  if (k < count) dotsOf<1>(v, columns + k * ld, ld, n, products + k);
}

namespace {

// Householder reflection that maps a column to (r, 0, ..., 0): I - 2 v v^T / |v|^2. Stores v in the column and returns
// r; 0 when the norm of the column is below kMinPivot, above 1e300 or NaN.
double reflector(double* v, int32_t m) {
  const double norm = std::sqrt(sumOfSquares(v, m));
  if (!(norm >= kMinPivot && norm <= 1e300)) return 0;
  const double first = v[0] > 0 ? -norm : norm;
  v[0] -= first;
  return first;
}

void reflect(const double* v, int32_t m, double first, double* column) {
  // |v|^2 / 2 = -first v_0
  const double factor = dot(v, column, m) / (first * v[0]);
  for (int32_t i = 0; i < m; ++i) column[i] += factor * v[i];
}

}  // namespace
}  // namespace dax

double PRM_MATRIX_VectorNorm_64f(const double* vector, int32_t n) {
  return std::sqrt(dax::sumOfSquares(vector, n));
}

int32_t PRM_EQUA_LSM_Process_64f(double* a, int32_t m, int32_t n, double* b, double* x, double* scratch,
                                 int32_t* pivots) {
  for (int32_t j = 0; j < n; ++j) pivots[j] = j;
  for (int32_t k = 0; k < n; ++k) {
    int32_t longest = k;
    double maxSquare = -1;
    for (int32_t j = k; j < n; ++j) {
      const double square = dax::sumOfSquares(a + k + ptrdiff_t{j} * m, m - k);
      if (square > maxSquare) maxSquare = square, longest = j;
    }
    if (longest != k) {
      std::swap(pivots[k], pivots[longest]);
      std::swap_ranges(a + ptrdiff_t{k} * m, a + ptrdiff_t{k + 1} * m, a + ptrdiff_t{longest} * m);
    }
    double* const v = a + k + ptrdiff_t{k} * m;
    const double first = dax::reflector(v, m - k);
    if (first == 0) return 0;
    for (int32_t j = k + 1; j < n; ++j) dax::reflect(v, m - k, first, a + k + ptrdiff_t{j} * m);
    dax::reflect(v, m - k, first, b + k);
    scratch[k] = first;
  }
  for (int32_t k = n - 1; k >= 0; --k) {
    double rest = b[k];
    for (int32_t j = k + 1; j < n; ++j) rest -= a[k + ptrdiff_t{j} * m] * scratch[j];
    // The solution replaces the diagonal of R.
    scratch[k] = rest / scratch[k];
  }
  for (int32_t k = 0; k < n; ++k) x[pivots[k]] = scratch[k];
  return 1;
}
