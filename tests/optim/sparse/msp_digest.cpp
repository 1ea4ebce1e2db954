#include <gtest/gtest.h>

#include "prmt.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Products, sums and transposes of sparse matrices, written out in full.

TEST(Digests, SparseMatrices) {
  Random random(12);
  std::vector<std::vector<double>> memory;
  const auto matrix = [&](int32_t rows, int32_t cols, int32_t elements) {
    uint64_t bytes = 0;
    PRMT_MSP_BufSize_f64(rows, cols, 4000, &bytes);
    PrmtMsp result;
    PRMT_MSP_Init_f64(&result, rows, cols, 4000, memory.emplace_back(bytes / sizeof(double) + 1).data());
    for (int32_t i = 0; i < elements; ++i) {
      const int32_t row = random.below(rows), col = random.below(cols);
      PRMT_MSP_AddEle_tpl_f64(&result, row, col, (random.below(2001) - 1000) / 7.0);
    }
    return result;
  };
  const PrmtMsp a = matrix(40, 30, 200), b = matrix(30, 50, 250), c = matrix(40, 50, 150);
  PrmtMsp product = matrix(40, 50, 0), sum = matrix(40, 50, 0), transposed = matrix(50, 40, 0);
  std::vector<double> buffer(10000), full(2000), in(50, 1 / 3.0), out(40);
  ASSERT_EQ(PRMT_MSP_Mul_f64(&a, &b, &product, buffer.data()), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_Add_f64(0.3, &product, -1.7, &c, &sum, buffer.data()), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_Trans_f64(&sum, &transposed), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_MspToMat_f64(&transposed, full.data(), 40), PRMT_STS_OK);
  ASSERT_EQ(PRMT_MSP_MulVec_f64(&sum, in.data(), out.data()), PRMT_STS_OK);
  Digest digest;
  digest.add(full.data(), full.size() * sizeof(double)).add(out.data(), out.size() * sizeof(double));
  EXPECT_EQ(digest.value(), 0x6D6EDA83153D2FD3u);
}

}  // namespace
}  // namespace dax::test
