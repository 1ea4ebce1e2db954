#include "prmt/roots.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/equation/aberth.h"
#include "optim/equation/real_roots.h"

namespace dax {
namespace {

// What is too large for a double is counted only; what rounds to one double is one root.
PrmtRealRoots asDoubles(const WideRoots& roots) {
  PrmtRealRoots result{};
  for (int32_t k = 0; k < roots.count; ++k) {
    const auto [x, multiplicity] = roots.at[k];
    const double root = narrow(x) + 0.0;
    if (std::isinf(root)) {
      result.atInfinity += multiplicity;
    } else if (result.count > 0 && result.root[result.count - 1] == root) {
      result.multiplicity[result.count - 1] += multiplicity;
    } else {
      result.root[result.count] = root;
      result.multiplicity[result.count++] = multiplicity;
    }
  }
  return result;
}

DaxStatus realRoots(const double* coefficients, int32_t degree, PrmtRealRoots* roots) {
  DAX_REQUIRE(coefficients && roots, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areFinite(coefficients, degree + 1), DAX_STS_DATA_RANGE);
  WidePolynomial p{degreeOf(coefficients, degree), {}};
  DAX_REQUIRE(p.degree >= 0, DAX_STS_DEGENERATE);
  for (int32_t i = 0; i <= p.degree; ++i) p.a[i] = wide(coefficients[i]);
  *roots = asDoubles(findRealRoots(p));
  return DAX_STS_OK;
}

struct Root {
  double real, imaginary, radius;
};

bool comesFirst(const Root& a, const Root& b) {
  if (a.real != b.real) return a.real < b.real;
  const double first = std::fabs(a.imaginary), second = std::fabs(b.imaginary);
  if (first != second) return first < second;
  return a.imaginary != b.imaginary ? a.imaginary > b.imaginary : a.radius < b.radius;
}

DaxStatus rootsNeed(int32_t degree, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(degree >= 1 && degree <= kMaxDegree, DAX_STS_BAD_PARAM);
  *bytes = sizeof(double) * static_cast<uint64_t>((kAberthDoubles + 3) * (degree + 1));
  return DAX_STS_OK;
}

DaxStatus allRoots(const double* coefficients, int32_t degree, double* real, double* imaginary, double* radius,
                   int32_t* count, int32_t* atInfinity, void* buffer) {
  DAX_REQUIRE(coefficients && real && imaginary && radius && count && atInfinity && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(degree >= 1 && degree <= kMaxDegree, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(areFinite(coefficients, degree + 1), DAX_STS_DATA_RANGE);
  const int32_t top = degreeOf(coefficients, degree);
  DAX_REQUIRE(top >= 0, DAX_STS_DEGENERATE);
  int32_t zeros = 0;
  while (coefficients[zeros] == 0) ++zeros;
  auto* const list = static_cast<Root*>(buffer);
  AberthRoots roots{};
  if (top > zeros) {
    double* const work = static_cast<double*>(buffer) + 3 * (degree + 1);
    DAX_REQUIRE(findRoots(coefficients + zeros, top - zeros, work, roots), DAX_STS_FAILURE);
  }
  int32_t found = 0;
  for (; found < zeros; ++found) list[found] = {0, 0, 0};
  for (int32_t k = 0; k < top - zeros; ++k) {
    const WideComplex& z = roots.at[k];
    const PowerOfTwo scale(z.exponent);
    const Root root{scale(z.re) + 0.0, scale(z.im) + 0.0, narrow(roots.radius[k])};
    if (!std::isinf(root.real) && !std::isinf(root.imaginary)) list[found++] = root;
  }
  std::sort(list, list + found, comesFirst);
  std::fill(list + found, list + degree, Root{0, 0, 0});
  for (int32_t k = 0; k < degree; ++k) {
    real[k] = list[k].real, imaginary[k] = list[k].imaginary, radius[k] = list[k].radius;
  }
  *count = found, *atInfinity = top - found;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_Quadratic_f64(const double coefficients[3], PrmtRealRoots* roots) {
  return dax::realRoots(coefficients, 2, roots);
}

DaxStatus PRMT_EQ_Cubic_f64(const double coefficients[4], PrmtRealRoots* roots) {
  return dax::realRoots(coefficients, 3, roots);
}

DaxStatus PRMT_EQ_Quartic_f64(const double coefficients[5], PrmtRealRoots* roots) {
  return dax::realRoots(coefficients, 4, roots);
}

DaxStatus PRMT_EQ_Roots_BufferSize_f64(int32_t degree, uint64_t* bytes) {
  return dax::rootsNeed(degree, bytes);
}

DaxStatus PRMT_EQ_Roots_f64(const double* coefficients, int32_t degree, double* real, double* imaginary, double* radius,
                            int32_t* count, int32_t* atInfinity, void* buffer) {
  return dax::allRoots(coefficients, degree, real, imaginary, radius, count, atInfinity, buffer);
}
