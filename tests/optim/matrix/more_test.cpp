// Problems beyond one factorisation, by what defines their answers.
#include <complex>

#include "tests/optim/matrix/matrix_oracle.h"

namespace dax::test {
namespace {

std::vector<double> ones(int32_t n, double value = 1) {
  return std::vector<double>(size_t(n), value);
}
Matrix column(const std::vector<double>& values) {
  return matrixOf(int32_t(values.size()), 1, [&](int32_t i, int32_t) { return values[size_t(i)]; });
}
Matrix difference(const Matrix& a, const Matrix& b) {
  return matrixOf(a.rows, a.cols, [&](int32_t i, int32_t j) { return a(i, j) - b(i, j); });
}

Matrix pseudoInverse(const Matrix& a, int32_t expectedRank) {
  Matrix x(a.cols, a.rows, 1);
  int32_t rank = -1;
  auto work = workFor(PRMT_MAT_PInv_BufferSize_f64, a.rows, a.cols);
  EXPECT_EQ(PRMT_MAT_PInv_f64(a.data(), a.step, x.data(), x.step, &rank, a.rows, a.cols, work.data()), DAX_STS_OK);
  EXPECT_EQ(rank, expectedRank);
  return x;
}

// The four conditions of Penrose; the shortest least squares are its products.
TEST(MatrixProblems, PseudoInverseAndShortestSolutions) {
  for (const auto& [m, n, rank] : {std::array{1, 1, 1}, {5, 3, 3}, {3, 5, 3}, {6, 6, 2}, {4, 9, 2}, {20, 7, 0}}) {
    const Matrix a = rank == 0 ? scaled(randomMatrix(m, n, 1), 0) : randomMatrix(m, rank, 1) * randomMatrix(rank, n, 2);
    const Matrix x = pseudoInverse(a, rank);
    EXPECT_LT(distance(a * x * a, a), 1e-12);
    EXPECT_LT(distance(x * a * x, x), 1e-12 * (1 + largest(x)));
    EXPECT_LT(distance(transposed(a * x), a * x) + distance(transposed(x * a), x * a), 1e-12);
    const Matrix b = randomMatrix(m, 3, 5);
    Matrix shortest(n, 3, 1);
    int32_t found = -1;
    auto work = workFor(PRMT_MAT_MinNorm_BufferSize_f64, m, n, 3);
    ASSERT_EQ(PRMT_MAT_MinNorm_f64(a.data(), a.step, b.data(), 3, shortest.data(), shortest.step, &found, m, n, 3,
                                   work.data()),
              DAX_STS_OK);
    EXPECT_EQ(found, rank);
    EXPECT_LT(distance(shortest, x * b), 1e-12 * (1 + largest(x)));
  }
}

TEST(MatrixProblems, NullSpaceAndHomogeneousLeastSquares) {
  for (const auto& [m, n, rank] : {std::array{4, 4, 4}, {3, 5, 3}, {8, 5, 3}, {1, 4, 1}, {5, 1, 0}}) {
    const Matrix a = rank == 0 ? scaled(randomMatrix(m, n, 1), 0) : randomMatrix(m, rank, 1) * randomMatrix(rank, n, 2);
    Matrix basis(n, n, 1);
    int32_t dimension = -1;
    double gap = -1, residual = -1;
    auto work = workFor(PRMT_MAT_NullSpace_BufferSize_f64, m, n);
    ASSERT_EQ(PRMT_MAT_NullSpace_f64(a.data(), a.step, basis.data(), basis.step, &dimension, &gap, m, n, work.data()),
              DAX_STS_OK);
    EXPECT_EQ(dimension, n - rank);
    EXPECT_LT(gap, 1e-14);
    EXPECT_LT(largest(a * basis), 1e-13);
    EXPECT_LT(distance(transposed(basis) * basis,
                       matrixOf(n, n, [d = dimension](int32_t i, int32_t j) { return i == j && i < d; })),
              1e-14);
    std::vector<double> x(static_cast<size_t>(n));
    auto room = workFor(PRMT_MAT_Homogeneous_BufferSize_f64, m, n);
    ASSERT_EQ(PRMT_MAT_Homogeneous_f64(a.data(), a.step, x.data(), &residual, &gap, m, n, room.data()), DAX_STS_OK);
    const Matrix rest = transposed(a * column(x)) * (a * column(x));
    EXPECT_NEAR(std::sqrt(rest(0, 0)), residual, 1e-14);
    EXPECT_NEAR((transposed(column(x)) * column(x))(0, 0), 1, 1e-14);
    EXPECT_TRUE(gap >= 0 && gap <= 1);
  }
}

TEST(MatrixProblems, WeightsAreRepeatedRows) {
  const int32_t m = 7, n = 3;
  const Matrix a = randomMatrix(m, n, 3), b = randomMatrix(m, 1, 4);
  const auto weighted = [&](const std::vector<double>& weights, DaxStatus expected = DAX_STS_OK) {
    Matrix x(n, 1);
    auto work = workFor(PRMT_MAT_WeightedLS_BufferSize_f64, m, n, 1);
    EXPECT_EQ(PRMT_MAT_WeightedLS_f64(a.data(), n, weights.data(), b.data(), 1, x.data(), 1, m, n, 1, work.data()),
              expected);
    return x;
  };
  std::vector<double> weights = {1, 2, 3, 1, 0, 2, 1};
  std::vector<int32_t> repeated = {0, 1, 1, 2, 2, 2, 3, 5, 5, 6};
  const Matrix rows = withRows(a, repeated), right = withRows(b, repeated);
  EXPECT_LT(distance(weighted(weights), pseudoInverse(rows, n) * right), 1e-13);
  // Rows that weigh so much are constraints.
  weights[1] = weights[2] = weights[3] = 1e30;
  const Matrix exact = difference(a * weighted(weights), b);
  EXPECT_LT(std::fabs(exact(1, 0)) + std::fabs(exact(2, 0)) + std::fabs(exact(3, 0)), 1e-13);
  weights[4] = -1;
  weighted(weights, DAX_STS_BAD_PARAM);
  weighted(ones(m, 0), DAX_STS_LEAST_SQUARES);
}

TEST(MatrixProblems, Constraints) {
  for (const auto& [m, n, p] : {std::array{6, 4, 2}, {2, 5, 3}, {3, 3, 3}, {9, 3, 1}}) {
    const Matrix a = randomMatrix(m, n, 3), b = randomMatrix(m, 1, 4), c = randomMatrix(p, n, 5),
                 d = randomMatrix(p, 1, 6);
    Matrix x(n, 1);
    auto work = workFor(PRMT_MAT_ConstrainedLS_BufferSize_f64, m, n, p);
    ASSERT_EQ(PRMT_MAT_ConstrainedLS_f64(a.data(), n, b.data(), c.data(), n, d.data(), x.data(), m, n, p, work.data()),
              DAX_STS_OK);
    EXPECT_LT(distance(c * x, d), 1e-13);
    // No step that keeps the constraints goes down: the gradient is a combination of their rows.
    const Matrix gradient = transposed(a) * difference(a * x, b);
    const Matrix along = transposed(c) * (pseudoInverse(transposed(c), p) * gradient);
    EXPECT_LT(distance(gradient, along), 1e-12);
    const Matrix same = matrixOf(p, n, [&](int32_t, int32_t j) { return c(0, j); });
    if (p > 1) {
      EXPECT_EQ(
          PRMT_MAT_ConstrainedLS_f64(a.data(), n, b.data(), same.data(), n, d.data(), x.data(), m, n, p, work.data()),
          DAX_STS_LEAST_SQUARES);
    }
  }
  double x[2] = {1, 1};
  EXPECT_EQ(PRMT_MAT_ConstrainedLS_f64(x, 2, x, x, 2, x, x, 1, 2, 3, x), DAX_STS_BAD_SIZE);
}

TEST(MatrixProblems, TotalLeastSquares) {
  const int32_t m = 30, n = 2;
  const Matrix a = randomMatrix(m, n, 3), truth = matrixOf(n, 1, [](int32_t i, int32_t) { return i + 1; });
  std::vector<double> b(size_t(m), 0.0), x(size_t(n), 0.0);
  double residual = -1;
  for (int32_t i = 0; i < m; ++i) b[size_t(i)] = (a * truth)(i, 0);
  auto work = workFor(PRMT_MAT_TotalLS_BufferSize_f64, m, n);
  ASSERT_EQ(PRMT_MAT_TotalLS_f64(a.data(), n, b.data(), x.data(), &residual, m, n, work.data()), DAX_STS_OK);
  EXPECT_LT(distance(column(x), truth) + residual, 1e-13);
  // (A^T A - s^2 I) x = A^T b
  for (int32_t i = 0; i < m; ++i) b[size_t(i)] += (i % 3 - 1) * 0.1;
  ASSERT_EQ(PRMT_MAT_TotalLS_f64(a.data(), n, b.data(), x.data(), &residual, m, n, work.data()), DAX_STS_OK);
  Matrix normal = transposed(a) * a;
  for (int32_t i = 0; i < n; ++i) normal(i, i) -= residual * residual;
  EXPECT_LT(distance(normal * column(x), transposed(a) * column(b)), 1e-12);
  // Nothing of b in the weakest direction: x would be infinite.
  const Matrix flat = matrixOf(m, n, [](int32_t i, int32_t j) { return i == 0 && j == 0; });
  b.assign(size_t(m), 0.0), b[1] = 1;
  EXPECT_EQ(PRMT_MAT_TotalLS_f64(flat.data(), n, b.data(), x.data(), &residual, m, n, work.data()), DAX_STS_DEGENERATE);
}

TEST(MatrixProblems, GeneralisedEigenvalues) {
  for (const int32_t n : {1, 3, 20}) {
    const Matrix root = randomMatrix(n, n, 3), half = randomMatrix(n, n, 4);
    const Matrix a = matrixOf(n, n, [&](int32_t i, int32_t j) { return half(i, j) + half(j, i); });
    Matrix b = root * transposed(root), vectors(n, n, 1);
    for (int32_t i = 0; i < n; ++i) b(i, i) += 1;
    std::vector<double> values(static_cast<size_t>(n));
    auto work = workFor(PRMT_MAT_EigSymGen_BufferSize_f64, n);
    ASSERT_EQ(
        PRMT_MAT_EigSymGen_f64(a.data(), n, b.data(), n, values.data(), vectors.data(), vectors.step, n, work.data()),
        DAX_STS_OK);
    const Matrix stretched = matrixOf(n, n, [&](int32_t i, int32_t j) { return vectors(i, j) * values[size_t(j)]; });
    EXPECT_LT(distance(a * vectors, b * stretched), 1e-13 * n);
    EXPECT_LT(distance(transposed(vectors) * b * vectors, identity(n)), 1e-13 * n);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    b(0, 0) = -1;
    EXPECT_EQ(PRMT_MAT_EigSymGen_f64(a.data(), n, b.data(), n, values.data(), nullptr, 0, n, work.data()),
              DAX_STS_FAILURE);
  }
}

std::vector<std::complex<double>> eigenvaluesOf(const Matrix& a) {
  std::vector<double> real(static_cast<size_t>(a.rows)), imaginary(real);
  auto work = workFor(PRMT_MAT_EigGeneral_BufferSize_f64, a.rows);
  EXPECT_EQ(PRMT_MAT_EigGeneral_f64(a.data(), a.step, real.data(), imaginary.data(), a.rows, work.data()), DAX_STS_OK);
  std::vector<std::complex<double>> values;
  for (size_t i = 0; i < real.size(); ++i) values.emplace_back(real[i], imaginary[i]);
  return values;
}

// Companion matrices of known roots; the powers' sums of any matrix are traces.
TEST(MatrixProblems, GeneralEigenvalues) {
  const auto turning = eigenvaluesOf(matrixOf(3, 3, [](int32_t i, int32_t j) { return (i + 2) % 3 == j; }));
  const std::complex<double> expected[] = {{1, 0}, {-0.5, std::sqrt(0.75)}, {-0.5, -std::sqrt(0.75)}};
  for (size_t i = 0; i < 3; ++i) EXPECT_LT(std::abs(turning[i] - expected[i]), 1e-14);
  // (x - 1) (x - 2) (x - 3) (x - 4)
  const double last[] = {-24, 50, -35, 10};
  const auto roots = eigenvaluesOf(matrixOf(4, 4, [&](int32_t i, int32_t j) { return j == 3 ? last[i] : i == j + 1; }));
  for (size_t i = 0; i < 4; ++i) EXPECT_LT(std::abs(roots[i] - (4.0 - double(i))), 1e-12);
  for (const int32_t n : {1, 2, 5, 30, 70}) {
    const Matrix a = randomMatrix(n, n, uint64_t(n)), square = a * a;
    std::complex<double> sum = 0, squares = 0;
    double trace = 0, traceOfSquare = 0;
    const auto values = eigenvaluesOf(a);
    for (size_t i = 0; i < values.size(); ++i) {
      sum += values[i], squares += values[i] * values[i];
      trace += a(int32_t(i), int32_t(i)), traceOfSquare += square(int32_t(i), int32_t(i));
      EXPECT_TRUE(i == 0 || values[i].real() <= values[i - 1].real());
      // Pairs together, the one above the axis first.
      EXPECT_TRUE(values[i].imag() <= 0 || values[i + 1] == std::conj(values[i]));
    }
    EXPECT_LT(std::abs(sum - trace) + std::abs(squares - traceOfSquare), 1e-12 * n) << n;
  }
}

Matrix exponential(const Matrix& a) {
  Matrix result(a.rows, a.rows, 1);
  auto work = workFor(PRMT_MAT_Exp_BufferSize_f64, a.rows);
  EXPECT_EQ(PRMT_MAT_Exp_f64(a.data(), a.step, result.data(), result.step, a.rows, work.data()), DAX_STS_OK);
  return result;
}
Matrix logarithm(const Matrix& a, DaxStatus expected = DAX_STS_OK) {
  Matrix result(a.rows, a.rows, 1);
  auto work = workFor(PRMT_MAT_Log_BufferSize_f64, a.rows);
  EXPECT_EQ(PRMT_MAT_Log_f64(a.data(), a.step, result.data(), result.step, a.rows, work.data()), expected);
  return result;
}
Matrix turn(double angle) {
  return matrixOf(2, 2, [&](int32_t i, int32_t j) { return i == j ? std::cos(angle) : (i - j) * std::sin(angle); });
}

TEST(MatrixProblems, ExponentialAndLogarithm) {
  for (const int32_t n : {1, 2, 4, 9, 33}) {
    for (const double size : {1e-8, 0.1, 1.0, 2.0}) {
      const Matrix a = scaled(randomMatrix(n, n, 3), size / std::sqrt(n));
      // The series, of a 2^-6 squared six times.
      Matrix small = scaled(a, 0x1p-6), term = identity(n), series = identity(n);
      for (int k = 1; k < 25; ++k) {
        const Matrix next = scaled(term * small, 1.0 / k);
        term.fill([&](int32_t i, int32_t j) { return next(i, j); });
        series.fill([&](int32_t i, int32_t j) { return series(i, j) + term(i, j); });
      }
      for (int k = 0; k < 6; ++k) {
        const Matrix square = series * series;
        series.fill([&](int32_t i, int32_t j) { return square(i, j); });
      }
      EXPECT_LT(distance(exponential(a), series), 1e-13 * (1 + largest(series))) << n << ' ' << size;
      EXPECT_LT(size > 1 ? 0 : distance(logarithm(exponential(a)), a), 2e-13) << n << ' ' << size;
    }
  }
  for (const double angle : {0.0, 1e-9, 1.0, 3.0, 3.14159, -3.1415926}) {
    const Matrix generator = matrixOf(2, 2, [&](int32_t i, int32_t j) { return (i - j) * angle; });
    EXPECT_LT(distance(exponential(generator), turn(angle)), 1e-14);
    EXPECT_LT(distance(logarithm(turn(angle)), generator), 1e-14 + 0x1p-48 / (3.14159265358979 - std::fabs(angle)));
  }
  // Far out: log of 2^k is k log 2; what overflows is said.
  EXPECT_NEAR(logarithm(scaled(identity(3), 0x1p1000))(1, 1) / (1000 * std::log(2.0)), 1, 1e-15);
  EXPECT_NEAR(logarithm(scaled(identity(3), 0x1p-1070))(2, 2) / (-1070 * std::log(2.0)), 1, 1e-15);
  EXPECT_EQ(largest(exponential(scaled(identity(3), -1e300))), 0);
  Matrix far = scaled(identity(2), 1000), result(2, 2);
  auto work = workFor(PRMT_MAT_Exp_BufferSize_f64, 2);
  EXPECT_EQ(PRMT_MAT_Exp_f64(far.data(), 2, result.data(), 2, 2, work.data()), DAX_STS_FAILURE);
  logarithm(scaled(identity(3), -1), DAX_STS_DEGENERATE);
  logarithm(scaled(identity(3), 0), DAX_STS_DEGENERATE);
  far(1, 0) = NAN;
  EXPECT_EQ(PRMT_MAT_Exp_f64(far.data(), 2, result.data(), 2, 2, work.data()), DAX_STS_DATA_RANGE);
  EXPECT_EQ(PRMT_MAT_Log_f64(far.data(), 2, result.data(), 2, 2, workFor(PRMT_MAT_Log_BufferSize_f64, 2).data()),
            DAX_STS_DATA_RANGE);
  const Dense<float> single(turn(1));
  Dense<float> angle(2, 2), back(2, 2);
  ASSERT_EQ(PRMT_MAT_Log_f32(single.data(), 2, angle.data(), 2, 2, workFor(PRMT_MAT_Log_BufferSize_f32, 2).data()),
            DAX_STS_OK);
  ASSERT_EQ(PRMT_MAT_Exp_f32(angle.data(), 2, back.data(), 2, 2, workFor(PRMT_MAT_Exp_BufferSize_f32, 2).data()),
            DAX_STS_OK);
  EXPECT_LT(distance(Matrix(back), Matrix(single)), 1e-6);
}

}  // namespace
}  // namespace dax::test
