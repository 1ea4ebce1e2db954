#include "prmt/msp.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Dense = std::vector<std::vector<double>>;

// A matrix in guarded memory of exactly the queried size.
class Matrix {
 public:
  Matrix(int32_t rows, int32_t cols, int64_t capacity)
      : memory_(bytes(rows, cols, capacity), capacity % 2 ? Guard::after : Guard::before) {
    EXPECT_EQ(PRMT_MSP_Init_f64(&msp, rows, cols, capacity, memory_.data()), 0);
  }
  operator PrmtMsp*() { return &msp; }
  operator const PrmtMsp*() const { return &msp; }

  // The elements as a dense matrix; checks what holds for every pattern.
  Dense dense() const {
    Dense result(static_cast<size_t>(msp.rows), std::vector<double>(static_cast<size_t>(msp.cols)));
    EXPECT_EQ(msp.start[0], 0);
    EXPECT_LE(msp.start[msp.cols], msp.capacity);
    for (int32_t j = 0; j < msp.cols; ++j) {
      for (int64_t p = msp.start[j]; p < msp.start[j + 1]; ++p) {
        EXPECT_TRUE(p == msp.start[j] || msp.row[p] > msp.row[p - 1]);
        result[static_cast<size_t>(msp.row[p])][static_cast<size_t>(j)] = msp.value[p];
      }
    }
    return result;
  }
  int64_t count() const { return msp.start[msp.cols]; }

  PrmtMsp msp;

 private:
  static uint64_t bytes(int32_t rows, int32_t cols, int64_t capacity) {
    uint64_t result = 0;
    EXPECT_EQ(PRMT_MSP_BufSize_f64(rows, cols, capacity, &result), 0);
    return result;
  }
  GuardedBuffer<uint8_t> memory_;
};

Dense zeros(int32_t rows, int32_t cols) {
  return Dense(static_cast<size_t>(rows), std::vector<double>(static_cast<size_t>(cols)));
}

// Integers, so that sums are exact in any order. Each element is there with a chance of 1 : sparsity.
void fillRandomly(Matrix& matrix, Dense& dense, uint64_t seed, int32_t sparsity) {
  Random random(seed);
  for (int32_t k = 0; k < matrix.msp.rows * matrix.msp.cols * 2 / sparsity; ++k) {
    const int32_t i = random.below(matrix.msp.rows), j = random.below(matrix.msp.cols);
    const double value = random.below(19) - 9;
    ASSERT_EQ(PRMT_MSP_AddEle_tpl_f64(matrix, i, j, value), 0);
    dense[static_cast<size_t>(i)][static_cast<size_t>(j)] += value;
  }
}

TEST(Msp, OperationsOnRandomMatrices) {
  const int32_t shapes[][4] = {{1, 1, 1, 1}, {5, 3, 7, 2}, {9, 14, 4, 3}, {20, 31, 17, 8}, {40, 7, 40, 20}};
  for (const auto& [m, k, n, sparsity] : shapes) {
    SCOPED_TRACE(testing::Message() << m << " x " << k << " x " << n);
    Matrix a(m, k, m * k), b(k, n, k * n), c(m, k, m * k), product(m, n, m * n), sum(m, k, m * k), turned(k, m, m * k);
    Dense da = zeros(m, k), db = zeros(k, n), dc = zeros(m, k);
    fillRandomly(a, da, 1, sparsity), fillRandomly(b, db, 2, sparsity), fillRandomly(c, dc, 3, sparsity);
    ASSERT_EQ(a.dense(), da);

    uint64_t bytes = 0;
    ASSERT_EQ(PRMT_MSP_Mul_bufsize_f64(a, b, &bytes), 0);
    GuardedBuffer<uint8_t> buffer(bytes);
    ASSERT_EQ(PRMT_MSP_Mul_f64(a, b, product, buffer.data()), 0);
    ASSERT_EQ(PRMT_MSP_Add_f64(2, a, -3, c, sum, buffer.data()), 0);
    ASSERT_EQ(PRMT_MSP_Trans_f64(a, turned), 0);
    Dense dp = zeros(m, n), ds = zeros(m, k), dt = zeros(k, m);
    std::vector<double> ones(static_cast<size_t>(std::max({m, k, n})), 1.0), rowSums(static_cast<size_t>(m)),
        columnSums(static_cast<size_t>(k)), got(static_cast<size_t>(std::max(m, k)));
    for (size_t i = 0; i < da.size(); ++i) {
      for (size_t l = 0; l < db.size(); ++l) {
        for (size_t j = 0; j < dp[0].size(); ++j) dp[i][j] += da[i][l] * db[l][j];
        ds[i][l] = 2 * da[i][l] - 3 * dc[i][l];
        dt[l][i] = da[i][l];
        rowSums[i] += da[i][l], columnSums[l] += da[i][l];
      }
    }
    EXPECT_EQ(product.dense(), dp);
    Matrix exact(m, n, product.count());
    ASSERT_EQ(PRMT_MSP_Mul_f64(a, b, exact, buffer.data()), 0);
    EXPECT_EQ(exact.dense(), dp);
    EXPECT_EQ(sum.dense(), ds);
    EXPECT_EQ(turned.dense(), dt);
    ASSERT_EQ(PRMT_MSP_MulVec_f64(a, ones.data(), got.data()), 0);
    EXPECT_TRUE(std::equal(rowSums.begin(), rowSums.end(), got.begin()));
    ASSERT_EQ(PRMT_MSP_TransMulVec_f64(a, ones.data(), got.data()), 0);
    EXPECT_TRUE(std::equal(columnSums.begin(), columnSums.end(), got.begin()));

    const int32_t step = k + 2;
    std::vector<double> flat(static_cast<size_t>(step * m), 7.0);
    ASSERT_EQ(PRMT_MSP_MspToMat_f64(a, flat.data(), step), 0);
    for (size_t i = 0; i < flat.size(); ++i) {
      const size_t row = i / static_cast<size_t>(step), col = i % static_cast<size_t>(step);
      ASSERT_EQ(flat[i], col < da[0].size() ? da[row][col] : 7.0);
    }
  }
}

TEST(Msp, BlocksMixWithElements) {
  Matrix matrix(6, 5, 30);
  Dense dense = zeros(6, 5);
  Random random(9);
  for (int round = 0; round < 40; ++round) {
    const int32_t rows = 1 + random.below(3), cols = 1 + random.below(3);
    const int32_t row = random.below(7 - rows), col = random.below(6 - cols);
    double block[12];
    for (double& value : block) value = random.below(9) - 4;
    ASSERT_EQ(PRMT_MSP_AddBlk_tpl_f64(matrix, row, col, block, rows, cols, 4), 0);
    for (int32_t i = 0; i < rows; ++i) {
      for (int32_t j = 0; j < cols; ++j)
        dense[static_cast<size_t>(row + i)][static_cast<size_t>(col + j)] += block[4 * i + j];
    }
    ASSERT_EQ(matrix.dense(), dense);
  }
}

TEST(Msp, PatternsStayWhileValuesChange) {
  Matrix matrix(4, 3, 6);
  const int32_t rows[] = {3, 0, 2, 3, 0, 1}, cols[] = {0, 0, 2, 0, 2, 2};
  ASSERT_EQ(PRMT_MSP_SetPattern_f64(matrix, 6, rows, cols), 0);
  EXPECT_EQ(matrix.count(), 5);
  EXPECT_EQ(matrix.dense(), zeros(4, 3));
  const int64_t version = matrix.msp.patternVersion;
  ASSERT_EQ(PRMT_MSP_AddEle_tpl_f64(matrix, 2, 2, 5), 0);
  ASSERT_EQ(PRMT_MSP_SetZero_tpl_f64(matrix), 0);
  EXPECT_EQ(matrix.msp.patternVersion, version);
  EXPECT_EQ(matrix.count(), 5);
  EXPECT_EQ(matrix.dense(), zeros(4, 3));
  ASSERT_EQ(PRMT_MSP_SetDiag_tpl_f64(matrix, 2.5), 0);
  EXPECT_NE(matrix.msp.patternVersion, version);
  EXPECT_EQ(matrix.count(), 6);  // (1, 1) was missing
  EXPECT_EQ(matrix.dense()[1][1], 2.5);
}

// Every way of adding to a matrix that is full fails and leaves it alone; so does a result that does not fit.
TEST(Msp, FullMatrices) {
  Matrix matrix(3, 3, 4);
  const double block[4] = {1, 2, 3, 4};
  ASSERT_EQ(PRMT_MSP_AddBlk_tpl_f64(matrix, 1, 0, block, 2, 2, 2), 0);
  const Dense before = matrix.dense();
  EXPECT_EQ(PRMT_MSP_AddEle_tpl_f64(matrix, 0, 0, 1), PRMT_STS_FULL);
  EXPECT_EQ(PRMT_MSP_AddBlk_tpl_f64(matrix, 0, 0, block, 2, 2, 2), PRMT_STS_FULL);
  EXPECT_EQ(PRMT_MSP_SetDiag_tpl_f64(matrix, 1), PRMT_STS_FULL);
  const int32_t indices[5] = {0, 1, 2, 0, 1};
  EXPECT_EQ(PRMT_MSP_SetPattern_f64(matrix, 5, indices, indices), PRMT_STS_FULL);
  Matrix wide(3, 3, 9), narrow(3, 3, 3);
  ASSERT_EQ(PRMT_MSP_SetDiag_tpl_f64(wide, 1), 0);
  GuardedBuffer<double> buffer(400);
  EXPECT_EQ(PRMT_MSP_Add_f64(1, matrix, 1, wide, narrow, buffer.data()), PRMT_STS_FULL);
  EXPECT_EQ(PRMT_MSP_Mul_f64(matrix, wide, narrow, buffer.data()), PRMT_STS_FULL);
  EXPECT_EQ(PRMT_MSP_Trans_f64(matrix, narrow), PRMT_STS_FULL);
  EXPECT_EQ(matrix.dense(), before);
  EXPECT_EQ(narrow.count(), 0);
  ASSERT_EQ(PRMT_MSP_AddEle_tpl_f64(matrix, 2, 1, 1), 0);  // what is there needs no room
  EXPECT_EQ(matrix.dense()[2][1], 5);
}

}  // namespace
}  // namespace dax::test
