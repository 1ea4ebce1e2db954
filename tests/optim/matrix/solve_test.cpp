// Equations, inverses and determinants against exact ones.
#include "tests/optim/matrix/matrix_oracle.h"

namespace dax::test {
namespace {

template <class T>
Dense<T> solve(const Dense<T>& a, const Dense<T>& b, DaxStatus expected = DAX_STS_OK) {
  Dense<T> x(a.rows, b.cols, 1);
  auto work = workFor(PRMT_MAT(Solve_BufferSize), a.rows, b.cols);
  EXPECT_EQ(PRMT_MAT(Solve)(a.data(), a.step, b.data(), b.step, x.data(), x.step, a.rows, b.cols, work.data()),
            expected);
  return x;
}

Matrix inverseOf(const Matrix& a) {
  Matrix x(a.rows, a.rows, 1);
  auto work = workFor(PRMT_MAT_Inverse_BufferSize_f64, a.rows);
  EXPECT_EQ(PRMT_MAT_Inverse_f64(a.data(), a.step, x.data(), x.step, a.rows, work.data()), DAX_STS_OK);
  return x;
}

double norm1(const Matrix& a) {
  double result = 0;
  for (int32_t j = 0; j < a.cols; ++j) {
    double sum = 0;
    for (int32_t i = 0; i < a.rows; ++i) sum += std::fabs(a(i, j));
    result = std::fmax(result, sum);
  }
  return result;
}

double rcondOf(const Matrix& a) {
  double result = -1;
  auto work = workFor(PRMT_MAT_Rcond_BufferSize_f64, a.rows);
  EXPECT_EQ(PRMT_MAT_Rcond_f64(a.data(), a.step, &result, a.rows, work.data()), DAX_STS_OK);
  return result;
}

TEST(MatrixEquations, SolveAndInvert) {
  for (const int32_t n : {1, 2, 3, 4, 5, 12, 33, 80}) {
    for (const int32_t k : {1, 3, 40}) {
      const Matrix a = randomMatrix(n, n, uint64_t(n)), truth = randomMatrix(n, k, 2);
      const double tolerance = 0x1p-50 * n / rcondOf(a);
      EXPECT_LT(distance(solve(a, a * truth), truth), tolerance) << n << ", " << k;
      const Dense<float> single(a), right(a * truth);
      EXPECT_LT(distance(Matrix(solve(single, right)), truth), 1e-6 / rcondOf(a)) << n << ", " << k;
      EXPECT_LT(distance(inverseOf(a) * a, identity(n)), tolerance) << n;
    }
  }
  // In place.
  Matrix a = randomMatrix(6, 6, 1);
  const Matrix kept(a);
  auto work = workFor(PRMT_MAT_Inverse_BufferSize_f64, 6);
  ASSERT_EQ(PRMT_MAT_Inverse_f64(a.data(), 6, a.data(), 6, 6, work.data()), DAX_STS_OK);
  EXPECT_EQ(distance(a, inverseOf(kept)), 0);
}

// Whole matrices whose rows are nearly dependent must not come from formulas.
TEST(MatrixEquations, NearlySingularSmallMatrices) {
  for (const int32_t n : {2, 3, 4}) {
    const Matrix a = matrixOf(n, n, [&](int32_t i, int32_t j) { return 1 + (i == j) * 1e-9 * (i + 1); });
    const Matrix truth = matrixOf(n, 1, [](int32_t i, int32_t) { return i + 1; });
    EXPECT_LT(largest(matrixOf(n, 1,
                               [&](int32_t i, int32_t) {
                                 const Matrix x = solve(a, a * truth);
                                 return (a * x)(i, 0) - (a * truth)(i, 0);
                               })),
              1e-14);
  }
}

TEST(MatrixEquations, Determinants) {
  Random random(3);
  for (int32_t trial = 0; trial < 60; ++trial) {
    const int32_t n = 1 + trial % 10;
    const Matrix a = matrixOf(n, n, [&](int32_t, int32_t) { return random.below(7) - 3; });
    double mantissa = 7;
    int32_t exponent = 7;
    auto work = workFor(PRMT_MAT_Det_BufferSize_f64, n);
    ASSERT_EQ(PRMT_MAT_Det_f64(a.data(), n, &mantissa, &exponent, n, work.data()), DAX_STS_OK);
    const auto exact = static_cast<double>(wholeDeterminant(a));
    EXPECT_NEAR(std::ldexp(mantissa, exponent), exact, 1e-12 * std::fmax(1, std::fabs(exact))) << n;
    EXPECT_TRUE(mantissa == 0 ? exponent == 0 : std::fabs(mantissa) >= 0.5 && std::fabs(mantissa) < 1);
    // What would overflow, and what would not be normal.
    for (const int shift : {1000, -1060}) {
      double same = 7;
      int32_t moved = 7;
      const Matrix far = scaled(a, std::ldexp(1.0, shift));
      ASSERT_EQ(PRMT_MAT_Det_f64(far.data(), n, &same, &moved, n, work.data()), DAX_STS_OK);
      EXPECT_TRUE(same == mantissa && (same == 0 || moved == exponent + n * shift)) << n << ' ' << shift;
    }
  }
}

TEST(MatrixEquations, ConditionEstimate) {
  for (const int32_t n : {1, 2, 3, 7, 20, 60}) {
    for (uint64_t seed = 1; seed <= 5; ++seed) {
      const Matrix a = randomMatrix(n, n, seed);
      const double exact = 1 / (norm1(a) * norm1(inverseOf(a)));
      EXPECT_LT(exact * (1 - 1e-6), rcondOf(a)) << n;
      EXPECT_LT(rcondOf(a), 3 * exact) << n;
    }
  }
  EXPECT_EQ(rcondOf(scaled(identity(3), 0)), 0);
  EXPECT_NEAR(rcondOf(scaled(identity(3), 1e300)), 1, 1e-15);
  EXPECT_NEAR(rcondOf(hilbert(8)) / 2.95e-11, 1, 0.01);
}

TEST(MatrixEquations, HilbertInverse) {
  // Whole numbers; the error stays below the condition number.
  const Matrix inverse = inverseOf(hilbert(5));
  const double corner[] = {25, -300, 1050, -1400, 630};
  for (int32_t j = 0; j < 5; ++j) EXPECT_NEAR(inverse(0, j), corner[j], 1e-7 * std::fabs(corner[j]));
}

TEST(MatrixEquations, SingularOnes) {
  const Matrix a = matrixOf(5, 5, [](int32_t i, int32_t j) { return i * j; }), b = randomMatrix(5, 2, 1);
  Matrix x(5, 5);
  x.fill([](int32_t, int32_t) { return 3; });
  auto work = workFor(PRMT_MAT_Inverse_BufferSize_f64, 5);
  EXPECT_EQ(PRMT_MAT_Inverse_f64(a.data(), 5, x.data(), 5, 5, work.data()), DAX_STS_INVERSION);
  EXPECT_EQ(distance(x, matrixOf(5, 5, [](int32_t, int32_t) { return 3; })), 0);
  solve(a, b, DAX_STS_LU);
  // So small a pivot that x overflows.
  Matrix tiny = identity(5);
  tiny(4, 4) = 0x1p-1060;
  solve(tiny, matrixOf(5, 1, [](int32_t, int32_t) { return 1e20; }), DAX_STS_LU);
}

TEST(MatrixEquations, LeastSquares) {
  for (const auto& [m, n] : {std::pair{1, 1}, {4, 4}, {9, 4}, {60, 33}}) {
    const Matrix a = randomMatrix(m, n, 3), b = randomMatrix(m, 2, 4);
    Matrix x(n, 2, 1);
    auto work = workFor(PRMT_MAT_LeastSquares_BufferSize_f64, m, n, 2);
    ASSERT_EQ(PRMT_MAT_LeastSquares_f64(a.data(), n, b.data(), 2, x.data(), x.step, m, n, 2, work.data()), DAX_STS_OK);
    // The rest is orthogonal to every column.
    const Matrix product = a * x, rest = matrixOf(m, 2, [&](int32_t i, int32_t j) { return product(i, j) - b(i, j); });
    EXPECT_LT(largest(transposed(a) * rest), 1e-12) << m << " x " << n;
  }
  const Matrix flat = randomMatrix(7, 2, 1) * randomMatrix(2, 3, 2), b = randomMatrix(7, 1, 1);
  Matrix x(3, 1);
  auto work = workFor(PRMT_MAT_LeastSquares_BufferSize_f64, 7, 3, 1);
  EXPECT_EQ(PRMT_MAT_LeastSquares_f64(flat.data(), 3, b.data(), 1, x.data(), 1, 7, 3, 1, work.data()),
            DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(PRMT_MAT_LeastSquares_f64(flat.data(), 7, b.data(), 1, x.data(), 1, 3, 7, 1, work.data()),
            DAX_STS_BAD_SIZE);
}

}  // namespace
}  // namespace dax::test
