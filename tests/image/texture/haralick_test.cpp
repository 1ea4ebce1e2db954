#include "daxi/haralick.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Real = long double;
using Features = std::array<Real, 14>;

struct LevelCounts {
  int32_t levels;
  std::vector<uint32_t> counts;

  explicit LevelCounts(int32_t n) : levels(n), counts(static_cast<size_t>(n * n)) {}
  uint32_t& at(int32_t i, int32_t j) { return counts[static_cast<size_t>(i * levels + j)]; }
};

Features featuresOf(const LevelCounts& of) {
  const size_t n = of.counts.size();
  GuardedBuffer<uint32_t> counts(n);
  std::copy(of.counts.begin(), of.counts.end(), counts.data());
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_HaralickFeaturesBufferSize(of.levels, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  DaxiHaralickFeatures f;
  EXPECT_EQ(DAXI_HaralickFeatures(counts.data(), of.levels, &f, buffer.data()), DAX_STS_OK);
  return {f.angularSecondMoment, f.contrast,          f.correlation,
          f.sumOfSquares,        f.inverseDifference, f.sumAverage,
          f.sumVariance,         f.sumEntropy,        f.entropy,
          f.differenceVariance,  f.differenceEntropy, f.informationMeasure1,
          f.informationMeasure2, f.maximalCorrelation};
}

Real entropy(const std::vector<Real>& p) {
  Real sum = 0;
  for (const Real v : p) sum -= v > 0 ? v * std::log2(v) : 0;
  return sum;
}

Real moment(const std::vector<Real>& p, Real about, int power) {
  Real sum = 0;
  for (size_t k = 0; k < p.size(); ++k) sum += std::pow(static_cast<Real>(k) - about, power) * p[k];
  return sum;
}

// The second largest eigenvalue of the symmetric matrix B B^T, by powers of it without its largest one, whose vector is
// known.
Real secondEigenvalue(const std::vector<std::vector<Real>>& p, const std::vector<Real>& x, const std::vector<Real>& y) {
  const size_t n = x.size();
  std::vector<std::vector<Real>> m(n, std::vector<Real>(n));
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) {
      for (size_t k = 0; k < n; ++k) {
        if (x[i] > 0 && x[j] > 0 && y[k] > 0) m[i][j] += p[i][k] * p[j][k] / (y[k] * std::sqrt(x[i] * x[j]));
      }
      m[i][j] -= std::sqrt(x[i] * x[j]);
    }
  }
  Real value = 0;
  std::vector<Real> v(n);
  for (size_t i = 0; i < n; ++i) v[i] = static_cast<Real>(1 + i * i % 7);
  for (int round = 0; round < 4000; ++round) {
    std::vector<Real> w(n);
    Real length = 0;
    for (size_t i = 0; i < n; ++i) {
      for (size_t j = 0; j < n; ++j) w[i] += m[i][j] * v[j];
      length += w[i] * w[i];
    }
    value = std::sqrt(length);
    if (value == 0) return 0;
    for (size_t i = 0; i < n; ++i) v[i] = w[i] / value;
  }
  return value;
}

// As the paper has them, with f7 about f6.
Features expectedFeatures(LevelCounts of) {
  const auto n = static_cast<size_t>(of.levels);
  std::vector<std::vector<Real>> p(n, std::vector<Real>(n));
  std::vector<Real> x(n + 1), y(n + 1), sums(2 * n + 1), differences(n), all;
  Real total = 0;
  for (const uint32_t count : of.counts) total += count;
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) {
      const Real share = p[i][j] = of.at(static_cast<int32_t>(i), static_cast<int32_t>(j)) / total;
      all.push_back(share);
      x[i + 1] += share, y[j + 1] += share;
      sums[i + j + 2] += share, differences[i > j ? i - j : j - i] += share;
    }
  }
  const Real mx = moment(x, 0, 1), my = moment(y, 0, 1), vx = moment(x, mx, 2), vy = moment(y, my, 2);
  Features f = {};
  Real crossed = 0;
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) {
      const Real step = static_cast<Real>(i) - static_cast<Real>(j);
      f[0] += p[i][j] * p[i][j];
      f[2] += static_cast<Real>((i + 1) * (j + 1)) * p[i][j];
      f[4] += p[i][j] / (1 + step * step);
      if (p[i][j] > 0) crossed -= p[i][j] * std::log2(x[i + 1] * y[j + 1]);
    }
  }
  f[1] = moment(differences, 0, 2);
  f[2] = vx * vy == 0 ? 1 : (f[2] - mx * my) / std::sqrt(vx * vy);
  f[3] = vx;
  f[5] = moment(sums, 0, 1), f[6] = moment(sums, f[5], 2), f[7] = entropy(sums), f[8] = entropy(all);
  f[9] = moment(differences, moment(differences, 0, 1), 2), f[10] = entropy(differences);
  const Real larger = std::max(entropy(x), entropy(y));
  f[11] = larger == 0 ? 0 : (f[8] - crossed) / larger;
  f[12] = std::sqrt(std::max<Real>(0, 1 - std::exp(-2 * std::log(Real{2}) * (crossed - f[8]))));
  f[13] = std::sqrt(secondEigenvalue(p, {x.begin() + 1, x.end()}, {y.begin() + 1, y.end()}));
  return f;
}

void expectFeatures(const LevelCounts& counts, const char* what) {
  const Features expected = expectedFeatures(counts), found = featuresOf(counts);
  for (size_t k = 0; k < expected.size(); ++k) {
    const auto truth = static_cast<double>(expected[k]);
    EXPECT_NEAR(static_cast<double>(found[k]), truth, 1e-9 * std::max(1.0, std::fabs(truth))) << what << " f" << k + 1;
  }
}

TEST(Haralick, FeaturesEqualThePaper) {
  Random random(5);
  for (const int32_t levels : {2, 3, 8, 13}) {
    LevelCounts counts(levels), sparse(levels), symmetric(levels);
    for (int32_t i = 0; i < levels; ++i) {
      for (int32_t j = 0; j < levels; ++j) {
        counts.at(i, j) = static_cast<uint32_t>(random.below(1000)) << (std::abs(i - j) == 1 ? 4 : 0);
        if (i != 1 && j != levels / 2) sparse.at(i, j) = counts.at(i, j);
      }
    }
    for (int32_t i = 0; i < levels; ++i) {
      for (int32_t j = 0; j < levels; ++j) symmetric.at(i, j) = counts.at(i, j) + counts.at(j, i);
    }
    expectFeatures(counts, "any");
    expectFeatures(sparse, "some levels");
    expectFeatures(symmetric, "symmetric");
  }
}

TEST(Haralick, OfOneLevelOfLevelsApartAndOfIndependentOnes) {
  LevelCounts one(8), apart(8), independent(6), huge(2);
  one.at(5, 5) = 12345;
  const Features flat = featuresOf(one);
  EXPECT_EQ(flat[2], 1);
  for (const size_t k : {1u, 3u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 13u}) EXPECT_EQ(flat[k], 0) << "f" << k + 1;
  EXPECT_EQ(flat[5], 12);  // levels count from 1
  apart.at(1, 1) = 5, apart.at(6, 6) = 9;
  EXPECT_NEAR(static_cast<double>(featuresOf(apart)[13]), 1, 1e-12);
  for (int32_t i = 0; i < 36; ++i) independent.at(i / 6, i % 6) = static_cast<uint32_t>((i / 6 + 1) * (i % 6 + 2));
  const Features none = featuresOf(independent);
  EXPECT_NEAR(static_cast<double>(none[2]), 0, 1e-12);
  EXPECT_NEAR(static_cast<double>(none[12]), 0, 1e-6);  // the root of rounding
  EXPECT_NEAR(static_cast<double>(none[13]), 0, 1e-12);
  for (uint32_t& count : huge.counts) count = UINT32_MAX;
  EXPECT_NEAR(static_cast<double>(featuresOf(huge)[8]), 2, 1e-12);
}

TEST(Haralick, NothingHasNoFeatures) {
  const LevelCounts none(4);
  DaxiHaralickFeatures f;
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_HaralickFeaturesBufferSize(4, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  EXPECT_EQ(DAXI_HaralickFeatures(none.counts.data(), 4, &f, buffer.data()), DAX_STS_DEGENERATE);
}

}  // namespace
}  // namespace dax::test
