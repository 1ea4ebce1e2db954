#include "tests/optim/matrix/matrix_calls.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, DenseMatrices) {
  Digest digest;
  for (const int32_t n : {3, 9, 70}) {
    for (const auto& operation : operations<double>()) {
      const Matrix root = randomMatrix(n, n, 5);
      Matrix a = root * transposed(root);
      const Outcome<double> result = operation.run(a);
      ASSERT_EQ(result.status, DAX_STS_OK) << operation.name;
      for (const auto& part : result.parts) digest.add(part.numbers.data(), part.numbers.size() * sizeof(double));
      digest.add(result.integers.data(), result.integers.size() * sizeof(int32_t));
    }
    const Matrix a = randomMatrix(n, n + 2, 6), b = randomMatrix(n + 2, n, 7);
    Matrix c(n, n);
    ASSERT_EQ(PRMT_MAT_Mul_f64(a.data(), a.step, b.data(), b.step, c.data(), n, n, n, n + 2), DAX_STS_OK);
    digest.add(c.data(), size_t(n * n) * sizeof(double));
  }
  EXPECT_EQ(digest.value(), 0xE62207B15207E1E9u);
}

}  // namespace
}  // namespace dax::test
