// Factors: their product is the matrix, their shape is what was promised.
#include "tests/optim/matrix/matrix_oracle.h"

namespace dax::test {
namespace {

constexpr double kEps = 0x1p-53;

template <class T>
Matrix lowerOf(const Dense<T>& lu) {
  return matrixOf(lu.rows, lu.rows, [&](int32_t i, int32_t j) { return j < i ? double{lu(i, j)} : i == j; });
}
template <class T>
Matrix upperOf(const Dense<T>& lu) {
  return matrixOf(lu.rows, lu.rows, [&](int32_t i, int32_t j) { return j < i ? 0 : double{lu(i, j)}; });
}

template <class T>
void checkLu(const Matrix& matrix) {
  const int32_t n = matrix.rows;
  const Dense<T> a(matrix, 1);
  Dense<T> lu(n, n, 2);
  std::vector<int32_t> pivots(size_t(n), -1);
  auto work = workFor(PRMT_MAT(LU_BufferSize), n);
  ASSERT_EQ(PRMT_MAT(LU)(a.data(), a.step, lu.data(), lu.step, pivots.data(), n, work.data()), DAX_STS_OK);
  const double tolerance = std::is_same_v<T, float> ? 1e-6 * n : 8 * n * kEps;
  EXPECT_LT(distance(lowerOf(lu) * upperOf(lu), withRows(Matrix(a), pivots)), tolerance * n * largest(matrix)) << n;
  EXPECT_LE(largest(lowerOf(lu)), 1);
}

TEST(MatrixFactors, Lu) {
  for (const int32_t n : {1, 2, 5, 31, 32, 33, 70, 100}) {
    checkLu<double>(randomMatrix(n, n, 3));
    checkLu<float>(randomMatrix(n, n, 4));
  }
  // Exact where the numbers are: the largest of a column comes up, the first of equal ones.
  const double a[] = {1, 2, 2, 1, -2, 0, 0, 4, 3};
  double lu[9], buffer[12];
  int32_t pivots[3];
  ASSERT_EQ(PRMT_MAT_LU_f64(a, 3, lu, 3, pivots, 3, buffer), DAX_STS_OK);
  const double expected[] = {1, 2, 2, 1, -4, -2, 0, -1, 1};
  EXPECT_TRUE(std::equal(lu, lu + 9, expected));
  EXPECT_TRUE(pivots[0] == 0 && pivots[1] == 1 && pivots[2] == 2);
  const double singular[] = {1, 2, 2, 4};
  EXPECT_EQ(PRMT_MAT_LU_f64(singular, 2, lu, 2, pivots, 2, buffer), DAX_STS_LU);
}

TEST(MatrixFactors, Cholesky) {
  for (const int32_t n : {1, 3, 16, 70, 100}) {
    const Matrix root = randomMatrix(n, n + 3, 5);
    Matrix a = root * transposed(root);
    // Far apart, and nothing above the diagonal is read.
    const auto size = [](int32_t i) { return std::ldexp(1.0, i % 9 * 30 - 120); };
    a.fill([&](int32_t i, int32_t j) { return j > i ? NAN : a(i, j) * size(i) * size(j); });
    Matrix l(n, n, 1);
    auto work = workFor(PRMT_MAT_Cholesky_BufferSize_f64, n);
    ASSERT_EQ(PRMT_MAT_Cholesky_f64(a.data(), n, l.data(), l.step, n, work.data()), DAX_STS_OK);
    const Matrix product = l * transposed(l);
    for (int32_t i = 0; i < n; ++i) {
      for (int32_t j = 0; j <= i; ++j) {
        ASSERT_NEAR(product(i, j), a(i, j), 8 * n * kEps * std::sqrt(a(i, i) * a(j, j))) << n;
        ASSERT_TRUE(i == j ? l(i, j) > 0 : l(j, i) == 0);
      }
    }
  }
  double l[4], buffer[6];
  for (const auto& a : {std::array{1., 0., 2., 1.}, {0., 0., 0., 1.}, {1., 0., 1., 1.}, {1., 0., 1., 1 + 1e-16}}) {
    EXPECT_EQ(PRMT_MAT_Cholesky_f64(a.data(), 2, l, 2, 2, buffer), DAX_STS_FAILURE);
  }
}

TEST(MatrixFactors, LdltOfAnySymmetricMatrix) {
  for (const int32_t n : {1, 2, 6, 13, 40}) {
    for (const int32_t kind : {0, 1, 2}) {
      // Random; of rank n / 2; with zeros on the diagonal.
      const Matrix root = randomMatrix(n, kind == 1 ? (n + 1) / 2 : n, 6);
      Matrix a = kind == 0 ? matrixOf(n, n, [&](int32_t i, int32_t j) { return root(i, j) + root(j, i); })
                           : root * transposed(root);
      if (kind == 2) a.fill([&](int32_t i, int32_t j) { return i == j ? 0 : a(i, j); });
      Matrix l(n, n, 1);
      std::vector<double> d(size_t(n), 7), e(size_t(n), 7);
      std::vector<int32_t> pivots(size_t(n), -1);
      auto work = workFor(PRMT_MAT_LDLT_BufferSize_f64, n);
      ASSERT_EQ(PRMT_MAT_LDLT_f64(a.data(), n, l.data(), l.step, d.data(), e.data(), pivots.data(), n, work.data()),
                DAX_STS_OK);
      const Matrix block = matrixOf(n, n, [&](int32_t i, int32_t j) {
        return i == j ? d[size_t(i)] : i == j + 1 ? e[size_t(j)] : j == i + 1 ? e[size_t(i)] : 0;
      });
      EXPECT_LT(distance(l * block * transposed(l), withColumns(withRows(a, pivots), pivots)), 64 * n * n * kEps) << n;
      for (int32_t i = 0; i < n; ++i) {
        for (int32_t j = i; j < n; ++j) ASSERT_EQ(l(i, j), i == j);
      }
    }
  }
}

template <class T>
void checkQr(const Matrix& matrix, bool pivoted) {
  const int32_t m = matrix.rows, n = matrix.cols, k = std::min(m, n);
  const Dense<T> a(matrix, 1);
  Dense<T> q(m, k, 1), r(k, n, 2), alone(k, n);
  std::vector<int32_t> pivots(static_cast<size_t>(n));
  int32_t rank = -1;
  for (int32_t j = 0; j < n; ++j) pivots[size_t(j)] = j;
  if (pivoted) {
    auto work = workFor(PRMT_MAT(QRPivot_BufferSize), m, n);
    ASSERT_EQ(PRMT_MAT(QRPivot)(a.data(), a.step, q.data(), q.step, r.data(), r.step, pivots.data(), &rank, m, n,
                                work.data()),
              DAX_STS_OK);
    EXPECT_EQ(rank, k);
    for (int32_t i = 1; i < k; ++i) EXPECT_LE(r(i, i), r(i - 1, i - 1) * (1 + 1e-7)) << i;
  } else {
    auto work = workFor(PRMT_MAT(QR_BufferSize), m, n);
    ASSERT_EQ(PRMT_MAT(QR)(a.data(), a.step, nullptr, 0, alone.data(), n, m, n, work.data()), DAX_STS_OK);
    ASSERT_EQ(PRMT_MAT(QR)(a.data(), a.step, q.data(), q.step, r.data(), r.step, m, n, work.data()), DAX_STS_OK);
    EXPECT_EQ(distance(Matrix(r), Matrix(alone)), 0);
  }
  const double tolerance = std::is_same_v<T, float> ? 2e-6 * k : 16 * (m + n) * kEps;
  EXPECT_LT(skew(Matrix(q)), tolerance) << m << " x " << n;
  EXPECT_LT(distance(Matrix(q) * Matrix(r), withColumns(Matrix(a), pivots)), tolerance * largest(matrix))
      << m << " x " << n;
  for (int32_t i = 0; i < k; ++i) {
    EXPECT_GE(r(i, i), 0);
    for (int32_t j = 0; j < i; ++j) EXPECT_EQ(r(i, j), 0);
  }
}

TEST(MatrixFactors, Qr) {
  for (const auto& [m, n] :
       {std::pair{1, 1}, {1, 5}, {5, 1}, {3, 3}, {4, 9}, {12, 7}, {65, 64}, {130, 100}, {70, 120}}) {
    for (const bool pivoted : {false, true}) {
      checkQr<double>(randomMatrix(m, n, 7), pivoted);
      checkQr<float>(randomMatrix(m, n, 8), pivoted);
    }
  }
}

TEST(MatrixFactors, RankByColumnExchanges) {
  for (const int32_t rank : {0, 1, 3, 6}) {
    const Matrix a = rank == 0 ? scaled(randomMatrix(9, 6, 1), 0) : randomMatrix(9, rank, 1) * randomMatrix(rank, 6, 2);
    Matrix q(9, 6), r(6, 6);
    int32_t pivots[6], found = -1;
    auto work = workFor(PRMT_MAT_QRPivot_BufferSize_f64, 9, 6);
    ASSERT_EQ(PRMT_MAT_QRPivot_f64(a.data(), 6, q.data(), 6, r.data(), 6, pivots, &found, 9, 6, work.data()),
              DAX_STS_OK);
    EXPECT_EQ(found, rank);
    EXPECT_LT(skew(q), 1e-14);
  }
}

struct Svd {
  explicit Svd(const Matrix& a, int32_t accuracy = 0)
      : u(a.rows, std::min(a.rows, a.cols), 1), s(std::min(a.rows, a.cols), 1), v(a.cols, s.rows, 2) {
    auto work = workFor(PRMT_MAT_SVD_BufferSize_f64, a.rows, a.cols);
    EXPECT_EQ(PRMT_MAT_SVD_f64(a.data(), a.step, u.data(), u.step, s.data(), v.data(), v.step, a.rows, a.cols, accuracy,
                               work.data()),
              DAX_STS_OK);
  }
  Matrix u, s, v;
};

void checkSvd(const Matrix& a, double tolerance, int32_t accuracy = 0) {
  const Svd svd(a, accuracy);
  const int32_t k = svd.s.rows;
  EXPECT_LT(skew(svd.u), tolerance) << a.rows << " x " << a.cols;
  EXPECT_LT(skew(svd.v), tolerance) << a.rows << " x " << a.cols;
  const Matrix product = matrixOf(a.rows, k, [&](int32_t i, int32_t j) { return svd.u(i, j) * svd.s(j, 0); });
  EXPECT_LE(distance(product * transposed(svd.v), a), tolerance * largest(a)) << a.rows << " x " << a.cols;
  for (int32_t j = 0; j < k; ++j) {
    EXPECT_GE(svd.s(j, 0), 0);
    EXPECT_LE(svd.s(j, 0), svd.s(std::max(j - 1, 0), 0));
    double extreme = 0;
    for (int32_t i = 0; i < a.cols; ++i) extreme = std::fabs(svd.v(i, j)) > std::fabs(extreme) ? svd.v(i, j) : extreme;
    EXPECT_GT(extreme, 0);
  }
  // Values alone, or with one side, are the same bits.
  Matrix s(k, 1), v(a.cols, k);
  auto work = workFor(PRMT_MAT_SVD_BufferSize_f64, a.rows, a.cols);
  EXPECT_EQ(
      PRMT_MAT_SVD_f64(a.data(), a.step, nullptr, 0, s.data(), nullptr, 0, a.rows, a.cols, 1 - accuracy, work.data()),
      DAX_STS_OK);
  EXPECT_LE(distance(s, svd.s), 2e-16 * (50 + a.rows) * largest(s));
  EXPECT_EQ(
      PRMT_MAT_SVD_f64(a.data(), a.step, nullptr, 0, s.data(), v.data(), k, a.rows, a.cols, accuracy, work.data()),
      DAX_STS_OK);
  EXPECT_EQ(distance(s, svd.s) + distance(v, svd.v), 0);
}

TEST(MatrixFactors, SingularValues) {
  for (const auto& [m, n] : {std::pair{1, 1}, {1, 4}, {6, 1}, {3, 3}, {9, 4}, {4, 9}, {40, 40}, {70, 33}}) {
    checkSvd(randomMatrix(m, n, 9), 2e-15 * (m + n));
  }
  for (const int32_t rank : {1, 2, 5}) checkSvd(randomMatrix(8, rank, 1) * randomMatrix(rank, 6, 2), 1e-14);
  checkSvd(scaled(identity(5), 0), 1e-14);
  checkSvd(matrixOf(5, 4, [](int32_t i, int32_t j) { return i == 2 && j == 1 ? -3 : 0; }), 1e-14);
  checkSvd(hilbert(12), 1e-14);
}

// The fast way, which begins with 65 columns: ranks, zeros, magnitudes that fall, and equal values.
TEST(MatrixFactors, FastSingularValues) {
  for (const auto& [m, n] : {std::pair{65, 65}, {64, 64}, {66, 90}, {130, 65}, {100, 99}, {200, 200}}) {
    checkSvd(randomMatrix(m, n, 9), 1e-15 * (m + n), 1);
  }
  const int32_t n = 80;
  for (const int32_t rank : {1, 30}) checkSvd(randomMatrix(90, rank, 1) * randomMatrix(rank, n, 2), 1e-12, 1);
  checkSvd(scaled(identity(n), 0), 1e-14, 1);
  checkSvd(identity(n), 1e-14, 1);
  checkSvd(matrixOf(n, n, [](int32_t i, int32_t j) { return i == 2 && j == 1 ? -3 : 0; }), 1e-14, 1);
  checkSvd(matrixOf(n, n, [](int32_t i, int32_t j) { return (i == j) + (i + 1 == j); }), 1e-13, 1);
  checkSvd(hilbert(n), 1e-13, 1);
  for (const double base : {0.5, 2.0}) {
    const Matrix random = randomMatrix(n, n, 3);
    checkSvd(matrixOf(n, n, [&](int32_t i, int32_t j) { return random(i, j) * std::pow(base, i + j); }), 1e-13, 1);
  }
}

// Rows and columns of sizes 1e-20 to 1e20 in mixed order: the product of all values is the determinant to the last digits,
// which it would not be if a small one had lost any; and the transpose has the same ones.
TEST(MatrixFactors, SmallSingularValuesKeepTheirDigits) {
  const int32_t n = 8;
  for (uint64_t seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    Matrix whole = matrixOf(n, n, [&](int32_t i, int32_t j) { return random.below(9) - 4 + 20 * (i == j); });
    const double determinant = std::fabs(static_cast<double>(wholeDeterminant(whole)));
    std::vector<int> rows(n), cols(n);
    int exponent = 0;
    for (int& each : rows) exponent += each = random.below(133) - 66;
    for (int& each : cols) exponent += each = random.below(133) - 66;
    whole.fill([&](int32_t i, int32_t j) { return std::ldexp(whole(i, j), rows[size_t(i)] + cols[size_t(j)]); });
    const Svd svd(whole), other(transposed(whole));
    double product = std::ldexp(1 / determinant, -exponent);
    for (int32_t i = 0; i < n; ++i) {
      product *= svd.s(i, 0);
      EXPECT_NEAR(svd.s(i, 0) / other.s(i, 0), 1, 1e-13);
    }
    EXPECT_NEAR(product, 1, 1e-13);
  }
}

void checkEigen(const Matrix& a, double tolerance) {
  const int32_t n = a.rows;
  Matrix vectors(n, n, 1), lower(n, n, 1);
  lower.fill([&](int32_t i, int32_t j) { return j > i ? NAN : a(i, j); });
  std::vector<double> values(static_cast<size_t>(n)), alone(values);
  auto work = workFor(PRMT_MAT_EigSym_BufferSize_f64, n);
  ASSERT_EQ(PRMT_MAT_EigSym_f64(lower.data(), lower.step, values.data(), vectors.data(), vectors.step, n, work.data()),
            DAX_STS_OK);
  ASSERT_EQ(PRMT_MAT_EigSym_f64(lower.data(), lower.step, alone.data(), nullptr, 0, n, work.data()), DAX_STS_OK);
  EXPECT_EQ(values, alone);
  EXPECT_LT(skew(vectors), tolerance) << n;
  const Matrix stretched = matrixOf(n, n, [&](int32_t i, int32_t j) { return vectors(i, j) * values[size_t(j)]; });
  EXPECT_LE(distance(a * vectors, stretched), tolerance * largest(a)) << n;
  EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  for (int32_t j = 0; j < n; ++j) {
    double extreme = 0;
    for (int32_t i = 0; i < n; ++i) extreme = std::fabs(vectors(i, j)) > std::fabs(extreme) ? vectors(i, j) : extreme;
    EXPECT_GT(extreme, 0);
  }
}

TEST(MatrixFactors, SymmetricEigenvalues) {
  for (const int32_t n : {1, 2, 3, 4, 15, 16, 17, 40, 90}) {
    const Matrix root = randomMatrix(n, n, 10);
    checkEigen(matrixOf(n, n, [&](int32_t i, int32_t j) { return root(i, j) + root(j, i); }), 4e-15 * (n + 4));
    // Equal values, and a matrix that is diagonal already.
    checkEigen(matrixOf(n, n, [&](int32_t i, int32_t j) { return 1 + 0.0 * (i + j); }), 4e-15 * (n + 4));
    checkEigen(matrixOf(n, n, [&](int32_t i, int32_t j) { return i == j ? (i * 7) % 5 - 2 : 0; }), 4e-15 * (n + 4));
  }
  // Far apart: formulas for 3 x 3 lose the smallest.
  const double a[] = {1, 0, 0, 0.5, 1, 0, 1e-20, 2e-20, 1e-38};
  double values[3], buffer[30];
  ASSERT_EQ(PRMT_MAT_EigSym_f64(a, 3, values, nullptr, 0, 3, buffer), DAX_STS_OK);
  EXPECT_NEAR(values[1], 0.5, 1e-15);
  EXPECT_NEAR(values[2], 1.5, 1e-15);
  // det = 1e-38 (1 - 0.25) - 1e-40 (1 - 2 + 4)
  EXPECT_NEAR(values[0] / (0.72e-38 / 0.75), 1, 1e-14);
}

}  // namespace
}  // namespace dax::test
