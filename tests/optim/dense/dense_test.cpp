// Dense kernels by their definitions.
#include "optim/dense/dense.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Vector = std::vector<double>;

// Whole numbers, so that sums are exact in any order.
GuardedBuffer<double> whole(int64_t count, uint64_t seed) {
  GuardedBuffer<double> values(static_cast<size_t>(count));
  Random random(seed);
  for (double& value : values) value = random.below(201) - 100;
  return values;
}

TEST(Dense, ScalarProducts) {
  for (int64_t n = 0; n <= 13; ++n) {
    const GuardedBuffer<double> a = whole(n, 1);
    double norm = 0;
    for (int64_t i = 0; i < n; ++i) norm += a[static_cast<size_t>(i)] * a[static_cast<size_t>(i)];
    EXPECT_EQ(sumOfSquares(a.data(), n), norm);
    EXPECT_EQ(PRM_MATRIX_VectorNorm_64f(a.data(), static_cast<int32_t>(n)), std::sqrt(norm));
    for (int32_t count = 1; count <= 9; ++count) {
      const GuardedBuffer<double> columns = whole((count - 1) * 15 + n, 2);
      GuardedBuffer<double> products(static_cast<size_t>(count));
      dots(a.data(), columns.data(), 15, count, n, products.data());
      for (int32_t k = 0; k < count; ++k) {
        double sum = 0;
        for (int64_t i = 0; i < n; ++i) sum += a[static_cast<size_t>(i)] * columns[static_cast<size_t>(k * 15 + i)];
        ASSERT_EQ(products[static_cast<size_t>(k)], sum) << n << ", " << k << " of " << count;
      }
    }
  }
  // Four partial sums: the first and the third are added first.
  const double huge[] = {1e300, 1, -1e300, 2}, ones[] = {1, 1, 1, 1};
  EXPECT_EQ(dot(huge, ones, 4), 3);
}

TEST(Dense, Products) {
  for (int32_t m = 1; m <= 11; ++m) {
    for (int32_t n = 1; n <= 11; ++n) {
      for (const int32_t k : {0, 1, 5}) {
        const GuardedBuffer<double> a = whole(m + 12 * k, 1), b = whole(n + 13 * k, 2);
        for (const bool lower : {false, true}) {
          GuardedBuffer<double> c = whole(m + 14 * (n - 1), 3);
          const Vector before(c.begin(), c.end());
          subtractProduct(m, n, k, a.data(), 12, b.data(), 13, c.data(), 14, lower);
          for (size_t at = 0; at < c.size(); ++at) {
            const auto i = static_cast<int32_t>(at % 14), j = static_cast<int32_t>(at / 14);
            if (lower && i < j) continue;
            double expected = before[at];
            for (int32_t p = 0; i < m && p < k; ++p) {
              expected -= a[static_cast<size_t>(i + 12 * p)] * b[static_cast<size_t>(j + 13 * p)];
            }
            ASSERT_EQ(c[at], expected) << m << " x " << n << " x " << k << " at " << i << ", " << j;
          }
        }
      }
    }
  }
}

// L of a panel, whose rows below the triangle are those of (A L^-T); then x from L L^T x.
TEST(Dense, FactorsAndSolutions) {
  for (const int32_t n : {1, 2, 7, 15, 16, 17, 40}) {
    const int32_t rows = n + 3, ld = rows + 2;
    const auto at = [&](int32_t i, int32_t j) { return static_cast<size_t>(i + j * ld); };
    const GuardedBuffer<double> numbers = whole(ld * n, 5);
    Vector truth(numbers.data(), numbers.data() + ld * n), a(truth.size(), std::nan(""));
    for (int32_t j = 0; j < n; ++j) truth[at(j, j)] = 200 + j;
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t i = j; i < rows; ++i) {
        a[at(i, j)] = 0;
        for (int32_t k = 0; k <= j; ++k) a[at(i, j)] += truth[at(i, k)] * truth[at(j, k)];
      }
    }
    const Vector before = a;
    ASSERT_TRUE(factorPanel(n, rows, a.data(), ld));
    Vector x(static_cast<size_t>(n)), b(x.size());
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t i = j; i < rows; ++i) ASSERT_NEAR(a[at(i, j)], truth[at(i, j)], 1e-9) << n << ": " << i << ", " << j;
      x[static_cast<size_t>(j)] = 1 + j % 5;
    }
    for (int32_t i = 0; i < n; ++i) {
      for (int32_t j = 0; j < n; ++j) {
        b[static_cast<size_t>(i)] += before[at(std::max(i, j), std::min(i, j))] * x[static_cast<size_t>(j)];
      }
    }
    solveLower(n, a.data(), ld, b.data());
    solveLowerTransposed(n, a.data(), ld, b.data());
    for (size_t j = 0; j < x.size(); ++j) ASSERT_NEAR(b[j], x[j], 1e-9) << n;
  }
  for (const auto& [pivot, accepted] :
       {std::pair{kMinPivot, true}, {kMinPivot * 0.999, false}, {std::nan(""), false}}) {
    double a[] = {1, 0, 0, pivot};
    EXPECT_EQ(factorPanel(2, 2, a, 2), accepted) << pivot;
  }
}

// What the blocks of large matrices must not change: each sum is formed in ascending order from 0 and then subtracted.
TEST(Dense, BlocksChangeNoBit) {
  Random random(8);
  const auto numbers = [&](int32_t count) {
    Vector values(static_cast<size_t>(count));
    for (double& value : values) value = random.below(2000001) / 1e6 - 1;
    return values;
  };
  for (const auto& [m, n, k] : {std::array{70, 67, 33}, {33, 65, 100}, {5, 130, 64}, {100, 3, 65}}) {
    const Vector a = numbers(m * k), b = numbers(n * k);
    Vector c = numbers(m * n), expected = c;
    for (int32_t at = 0; at < m * n; ++at) {
      double sum = 0;
      for (int32_t p = 0; p < k; ++p) sum += a[size_t(at % m + p * m)] * b[size_t(at / m + p * n)];
      expected[size_t(at)] -= sum;
    }
    subtractProduct(m, n, k, a.data(), m, b.data(), n, c.data(), m, false);
    ASSERT_EQ(c, expected) << m << " x " << n << " x " << k;
  }
  for (const auto& [n, rows] : {std::pair{64, 64}, {65, 65}, {100, 140}, {130, 131}, {197, 260}}) {
    Vector a = numbers(n * rows);
    for (int32_t j = 0; j < n; ++j) a[size_t(j + j * rows)] = n;
    Vector l = a;
    for (int32_t j = 0; j < n; ++j) {
      double* const column = l.data() + j * rows;
      for (int32_t i = j; i < rows; ++i) {
        double sum = 0;
        for (int32_t p = 0; p < j / 16 * 16; ++p) sum += l[size_t(i + p * rows)] * l[size_t(j + p * rows)];
        column[i] -= sum;
        for (int32_t p = j / 16 * 16; p < j; ++p) column[i] -= l[size_t(j + p * rows)] * l[size_t(i + p * rows)];
      }
      column[j] = std::sqrt(column[j]);
      for (int32_t i = j + 1; i < rows; ++i) column[i] *= 1 / column[j];
    }
    ASSERT_TRUE(factorPanel(n, rows, a.data(), rows));
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t i = j; i < rows; ++i) ASSERT_EQ(a[size_t(i + j * rows)], l[size_t(i + j * rows)]) << i << ", " << j;
    }
  }
  // A pivot that fails in a later block.
  Vector a(100 * 100);
  for (size_t j = 0; j < 100; ++j) a[j * 101] = j == 90 ? 0 : 1;
  EXPECT_FALSE(factorPanel(100, 100, a.data(), 100));
}

TEST(Dense, LeastSquares) {
  for (const auto& [m, n] : {std::pair{9, 4}, {4, 4}, {30, 7}, {1, 1}}) {
    const auto keptA = whole(m * n, 3), keptB = whole(m, 4);
    Vector a(keptA.data(), keptA.data() + m * n), b(keptB.data(), keptB.data() + m), x(static_cast<size_t>(n)),
        scratch(x.size());
    std::vector<int32_t> pivots(x.size());
    ASSERT_EQ(PRM_EQUA_LSM_Process_64f(a.data(), m, n, b.data(), x.data(), scratch.data(), pivots.data()), 1);
    // The rest is orthogonal to every column.
    for (int32_t j = 0; j < n; ++j) {
      double product = 0;
      for (int32_t i = 0; i < m; ++i) {
        double rest = -keptB[static_cast<size_t>(i)];
        for (int32_t k = 0; k < n; ++k) rest += keptA[static_cast<size_t>(i + k * m)] * x[static_cast<size_t>(k)];
        product += rest * keptA[static_cast<size_t>(i + j * m)];
      }
      EXPECT_NEAR(product, 0, 1e-7);
    }
    // A column of nothing, or of what has no norm.
    for (const double none : {0.0, 1e301, std::nan("")}) {
      a.assign(keptA.data(), keptA.data() + m * n), b.assign(keptB.data(), keptB.data() + m);
      std::fill_n(a.end() - m, m, none);
      EXPECT_EQ(PRM_EQUA_LSM_Process_64f(a.data(), m, n, b.data(), x.data(), scratch.data(), pivots.data()), 0);
    }
  }
  double a = kMinPivot, b = 1, x, scratch;
  int32_t pivot;
  EXPECT_EQ(PRM_EQUA_LSM_Process_64f(&a, 1, 1, &b, &x, &scratch, &pivot), 1);
  EXPECT_EQ(x, 1 / kMinPivot);
}

}  // namespace
}  // namespace dax::test
