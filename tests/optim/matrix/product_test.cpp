// Products by their definition, bit by bit.
#include "frame/tiles.h"
#include "tests/optim/matrix/matrix_oracle.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
void compareProducts(int32_t m, int32_t n, int32_t k, PoolThreads on) {
  Dense<T> a(randomMatrix(m, k, 1), 1), b(randomMatrix(k, n, 2), 2), c(m, n, 3);
  Dense<T> aTurned(transposed(Matrix(a))), bTurned(transposed(Matrix(b)));
  // One sum in ascending order, rounded once.
  const Dense<T> expected(Matrix(a) * Matrix(b));
  const auto compare = [&](DaxStatus status, const char* form) {
    ASSERT_EQ(status, DAX_STS_OK);
    for (int32_t i = 0; i < m; ++i) {
      for (int32_t j = 0; j < n; ++j) ASSERT_EQ(c(i, j), expected(i, j)) << form << ' ' << m << ' ' << n << ' ' << k;
    }
    c.fill([](int32_t, int32_t) { return -7; });
  };
  compare(PRMT_MAT(Mul)(a.data(), a.step, b.data(), b.step, c.data(), c.step, m, n, k), "Mul");
  compare(PRMT_MAT(MulAtB)(aTurned.data(), m, b.data(), b.step, c.data(), c.step, m, n, k), "MulAtB");
  compare(PRMT_MAT(MulABt)(a.data(), a.step, bTurned.data(), k, c.data(), c.step, m, n, k), "MulABt");
  const auto [pool, threads] = on;
  compare(PRMT_MAT_MT(Mul)(pool, threads, a.data(), a.step, b.data(), b.step, c.data(), c.step, m, n, k), "Mul_MT");
  compare(PRMT_MAT_MT(MulAtB)(pool, threads, aTurned.data(), m, b.data(), b.step, c.data(), c.step, m, n, k),
          "MulAtB_MT");
  compare(PRMT_MAT_MT(MulABt)(pool, threads, a.data(), a.step, bTurned.data(), k, c.data(), c.step, m, n, k),
          "MulABt_MT");
  Dense<T> gram(k, k, 1), onPool(k, k, 2);
  ASSERT_EQ(PRMT_MAT(Gram)(a.data(), a.step, gram.data(), gram.step, m, k), DAX_STS_OK);
  ASSERT_EQ(PRMT_MAT_MT(Gram)(pool, threads, a.data(), a.step, onPool.data(), onPool.step, m, k), DAX_STS_OK);
  const Dense<T> square(transposed(Matrix(a)) * Matrix(a));
  EXPECT_EQ(distance(Matrix(gram), Matrix(square)), 0);
  EXPECT_EQ(distance(Matrix(onPool), Matrix(square)), 0);
}

TEST(MatrixProducts, AreSumsInOrder) {
  MockPool pool;
  for (const auto& [m, n, k] : {std::array{1, 1, 1},
                                {2, 3, 4},
                                {4, 4, 4},
                                {5, 2, 9},
                                {3, 8, 7},
                                {9, 9, 64},
                                {64, 17, 65},
                                {70, 33, 130},
                                {131, 5, 3}}) {
    compareProducts<double>(m, n, k, {&pool, 3});
    compareProducts<float>(m, n, k, {&pool, 5});
  }
  EXPECT_GT(pool.tiles, 0);
  pool.failingTile = 0;
  const double a[] = {1, 2, 3, 4, 5};
  double c[25];
  EXPECT_EQ(PRMT_MAT_Mul_f64_MT(&pool, 2, a, 1, a, 5, c, 5, 5, 5, 1), pool.failure);
  EXPECT_EQ(PRMT_MAT_Gram_f64_MT(&pool, 2, a, 5, c, 5, 1, 5), pool.failure);
}

TEST(MatrixProducts, LetNanAndInfinityThrough) {
  Matrix a = randomMatrix(9, 9, 1), c(9, 9);
  a(2, 3) = NAN, a(4, 4) = INFINITY;
  const Matrix b = identity(9);
  ASSERT_EQ(PRMT_MAT_Mul_f64(a.data(), 9, b.data(), 9, c.data(), 9, 9, 9, 9), DAX_STS_OK);
  for (int32_t j = 0; j < 9; ++j) {
    EXPECT_TRUE(std::isnan(c(2, j)));
    EXPECT_EQ(std::isnan(c(4, j)), j != 4) << "infinity times zero";
    EXPECT_EQ(c(1, j), a(1, j));
  }
}

}  // namespace
}  // namespace dax::test
