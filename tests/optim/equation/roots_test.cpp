// Polynomials that were multiplied out of known roots, in whole numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

#include "prmt.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Polynomial = std::vector<double>;

Polynomial times(const Polynomial& a, const Polynomial& b) {
  Polynomial product(a.size() + b.size() - 1);
  for (size_t i = 0; i < a.size(); ++i) {
    for (size_t j = 0; j < b.size(); ++j) product[i + j] += a[i] * b[j];
  }
  return product;
}

// Factors (x - root), times a factor.
Polynomial fromRoots(const std::vector<double>& roots, Polynomial product = {1}) {
  for (const double root : roots) product = times(product, {-root, 1});
  return product;
}

PrmtRealRoots solve(const Polynomial& p, DaxStatus expected = DAX_STS_OK) {
  GuardedBuffer<double> coefficients(p.size());
  std::copy(p.begin(), p.end(), coefficients.begin());
  PrmtRealRoots roots{};
  auto* const function = p.size() == 3   ? PRMT_EQ_Quadratic_f64
                         : p.size() == 4 ? PRMT_EQ_Cubic_f64
                                         : PRMT_EQ_Quartic_f64;
  EXPECT_EQ(function(coefficients.data(), &roots), expected);
  return roots;
}

// The same roots and multiplicities, to a share of each.
void expectRoots(const PrmtRealRoots& found, std::vector<double> truth, double tolerance) {
  std::sort(truth.begin(), truth.end());
  std::vector<double> listed;
  for (int32_t k = 0; k < found.count; ++k) {
    EXPECT_TRUE(k == 0 || found.root[k - 1] < found.root[k]);
    listed.insert(listed.end(), size_t(found.multiplicity[k]), found.root[k]);
  }
  ASSERT_EQ(listed.size(), truth.size());
  for (size_t i = 0; i < truth.size(); ++i) EXPECT_LE(std::fabs(listed[i] - truth[i]), tolerance * std::fabs(truth[i]));
}

void expectAs(const Polynomial& p, const std::vector<double>& truth, double tolerance = 0x1p-51) {
  expectRoots(solve(p), truth, tolerance);
}

TEST(RealRoots, EveryMultiplicity) {
  const std::vector<double> places = {-7, -2, 0, 1, 3, 10};
  for (const double a : places) {
    for (const double b : places) {
      expectAs(fromRoots({a, b}), {a, b}, 1e-14);
      expectAs(fromRoots({a, b}, {-8, -4, -4}), {a, b}, 1e-13);  // and a pair off the axis
      expectAs(fromRoots({a}, {3, 1, 1}), {a}, 1e-14);
      for (const double c : places) {
        expectAs(fromRoots({a, b, c}, {5}), {a, b, c}, 1e-13);
        for (const double d : places) expectAs(fromRoots({a, b, c, d}, {-3}), {a, b, c, d}, 1e-12);
      }
    }
  }
  expectAs({4, 0, 5, 0, 1}, {});
  expectAs({-1, 0, 0, 0, 1}, {-1, 1}, 0);
}

TEST(RealRoots, WhereFormulasFail) {
  expectAs({1, -1e8, 1}, {1.00000000000000010e-8, 99999999.99999999});
  // The discriminant, truly 7.56, is 0 in doubles.
  const PrmtRealRoots near = solve({94906268.375, -2 * 94906267.0, 94906265.625});
  EXPECT_EQ(near.count, 2);
  expectAs({1, 2, 1 + 0x1p-52}, {});
  expectAs({1, 2, 1}, {-1, -1}, 0);
  expectAs(times(fromRoots({1, 1000, 1e6}), {-1, 1000}), {0.001, 1, 1000, 1e6});
  expectAs(fromRoots({1, 1, 2, 3}), {1, 1, 2, 3});
}

TEST(RealRoots, AnyMagnitude) {
  expectAs({1, -1e200, 1}, {1e-200, 1e200});
  expectAs({1e-300, -1e300, 1e300}, {0, 1});  // 1e-600 is 0
  expectAs({6e-310, -11e-310, 6e-310, -1e-310}, {1, 2, 3}, 1e-11);
  const PrmtRealRoots far = solve({6, -11, 6, -1, 1e-320});
  expectRoots(far, {1, 2, 3}, 1e-14);
  EXPECT_EQ(far.atInfinity, 1);
  EXPECT_EQ(solve({5, 0, 0, 0, 0}).count, 0);
  expectAs({-6, 3, 0, 0, 0}, {2}, 0);
  solve({0, 0, 0}, DAX_STS_DEGENERATE);
  solve({0, NAN, 1, 1}, DAX_STS_DATA_RANGE);
  solve({0, 1, 1, 1, INFINITY}, DAX_STS_DATA_RANGE);
}

// |p(x)| over the sum of its terms' magnitudes.
double backwardError(const Polynomial& p, double x) {
  long double value = 0, magnitude = 0;
  for (size_t i = p.size(); i-- > 0;) {
    value = value * x + p[i], magnitude = magnitude * std::fabs((long double)x) + std::fabs((long double)p[i]);
  }
  return static_cast<double>(std::fabs(value) / magnitude);
}

TEST(RealRoots, RandomCoefficients) {
  Random random(1);
  const auto coefficient = [&] { return (random.below(2000001) - 1000000) * std::exp2(random.below(41) - 20); };
  for (int32_t trial = 0; trial < 3000; ++trial) {
    const Polynomial p = {coefficient(), coefficient(), coefficient(), coefficient(), coefficient()};
    const PrmtRealRoots roots = solve(p);
    EXPECT_EQ(roots.count % 2, 0);
    for (int32_t k = 0; k < roots.count; ++k) EXPECT_LE(backwardError(p, roots.root[k]), 16 * 0x1p-52);
    // Powers of two do not matter.
    Polynomial scaled = p;
    for (int i = 0; i < 5; ++i) scaled[size_t(i)] = std::ldexp(p[size_t(i)], 300 - 100 * i);
    const PrmtRealRoots same = solve(scaled);
    ASSERT_EQ(same.count, roots.count);
    for (int32_t k = 0; k < roots.count; ++k) EXPECT_EQ(same.root[k], std::ldexp(roots.root[k], 100));
  }
}

// --- Any degree ---

struct AllRoots {
  std::vector<std::complex<double>> z;
  std::vector<double> radius;
  int32_t atInfinity = -1;
};

AllRoots solveAll(const Polynomial& p, DaxStatus expected = DAX_STS_OK) {
  const auto degree = static_cast<int32_t>(p.size()) - 1;
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_EQ_Roots_BufferSize_f64(degree, &bytes), DAX_STS_OK);
  GuardedBuffer<double> coefficients(p.size()), real(p.size() - 1), imaginary(p.size() - 1), radius(p.size() - 1);
  GuardedBuffer<double> work(bytes / sizeof(double));
  std::copy(p.begin(), p.end(), coefficients.begin());
  int32_t count = 0;
  AllRoots result;
  EXPECT_EQ(PRMT_EQ_Roots_f64(coefficients.data(), degree, real.data(), imaginary.data(), radius.data(), &count,
                              &result.atInfinity, work.data()),
            expected);
  for (size_t k = 0; k < size_t(count); ++k) {
    result.z.emplace_back(real[k], imaginary[k]);
    result.radius.push_back(radius[k]);
    if (imaginary[k] < 0) {
      EXPECT_EQ(result.z[k], std::conj(result.z[k - 1]));
    }
    EXPECT_TRUE(k == 0 || real[k - 1] <= real[k]);
  }
  return result;
}

// Each has an exact root within its radius.
void expectNear(const AllRoots& found, const std::vector<double>& truth, double tolerance) {
  ASSERT_EQ(found.z.size(), truth.size());
  for (size_t k = 0; k < truth.size(); ++k) {
    double nearest = INFINITY;
    for (const double root : truth) nearest = std::min(nearest, std::abs(found.z[k] - root));
    EXPECT_EQ(found.z[k].imag(), 0) << k;
    EXPECT_LE(nearest, found.radius[k]);
    EXPECT_LE(nearest, tolerance * std::max(1.0, std::fabs(truth[k]))) << found.z[k];
  }
}

TEST(AllRoots, WholeOnes) {
  expectNear(solveAll(fromRoots({-3, 0, 0, 1, 2, 5})), {-3, 0, 0, 1, 2, 5}, 1e-13);
  expectNear(solveAll(fromRoots({1, 2, 3, 4, 5, 6, 7, 8, 9, 10})), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 1e-8);
  expectNear(solveAll(fromRoots({-2, 1, 1, 1})), {-2, 1, 1, 1}, 1e-4);
  expectNear(solveAll({4, -2}), {2}, 0);
  EXPECT_EQ(solveAll({7, 0, 0}).z.size(), 0u);
  solveAll({0, 0}, DAX_STS_DEGENERATE);
  solveAll({0, -INFINITY}, DAX_STS_DATA_RANGE);
}

TEST(AllRoots, OfUnityAndOfAnyMagnitude) {
  for (const size_t n : {5, 64, 201, 512}) {
    Polynomial p(n + 1);
    p[0] = -1, p[n] = 1;
    const AllRoots found = solveAll(p);
    ASSERT_EQ(found.z.size(), n);
    size_t reals = 0;
    for (const auto& z : found.z) {
      EXPECT_NEAR(std::abs(z), 1, 1e-14);
      reals += z.imag() == 0;
    }
    EXPECT_EQ(reals, n % 2 == 0 ? 2u : 1u);
    const std::complex<double> first(std::cos(2 * M_PI / double(n)), std::sin(2 * M_PI / double(n)));
    EXPECT_TRUE(std::any_of(found.z.begin(), found.z.end(), [&](auto z) { return std::abs(z - first) < 1e-14; }));
  }
  expectNear(solveAll({1, -1e200, 1}), {1e-200, 1e200}, 1e-15);
  const AllRoots far = solveAll({6, -11, 6, -1, 1e-320});
  expectNear(far, {1, 2, 3}, 1e-13);
  EXPECT_EQ(far.atInfinity, 1);
}

TEST(AllRoots, AsTheRealOnes) {
  Random random(3);
  for (int32_t trial = 0; trial < 300; ++trial) {
    Polynomial p(5);
    for (double& each : p) each = random.below(2001) - 1000 + 0.5;
    const PrmtRealRoots real = solve(p);
    const AllRoots all = solveAll(p);
    ASSERT_EQ(all.z.size(), 4u);
    int32_t k = 0;
    for (size_t i = 0; i < 4; ++i) {
      if (all.z[i].imag() == 0) {
        ASSERT_LT(k, real.count);
        EXPECT_NEAR(all.z[i].real(), real.root[k], all.radius[i] + 1e-15);
        ++k;
      }
    }
    EXPECT_EQ(k, real.count);
  }
}

}  // namespace
}  // namespace dax::test
